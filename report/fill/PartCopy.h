#pragma once

#include <string>

#include "report/fill/ChartFinder.h"
#include "report/package/Package.h"

namespace quillon::report {

/// Copies a chart part with what belongs to it alone: workbook, style, colours, drawn shapes. Returns the
/// name of the copy.
std::string copyChart(Package& document, const std::string& part);

/// Lets a drawing show the chart part `copy` in place of `part`.
void showCopy(Package& document, const ChartDrawing& drawing, const std::string& part,
              const std::string& copy);

/// Gives a chart part a copy of a workbook that others have as well.
void copyWorkbook(Package& document, const std::string& part, const Relationship& workbook);

}  // namespace quillon::report
