#pragma once

#include <cstdint>
#include <string>

#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

/// A document of one page, for a program that draws documents: the chart stands in its upper left corner.
struct Preview {
    /// A .docx file.
    std::string document;
    /// The size of the chart in English Metric Units (914,400 an inch). The page is as wide, and an inch
    /// higher, so that the chart never moves to a second one.
    std::int64_t width = 0;
    std::int64_t height = 0;
};

/// Makes the document. There is no workbook in it, and equal charts give equal bytes. `data` is what the
/// chart's data set cannot say; its own data set is not looked at. Throws: std::runtime_error for a width or
/// height that is not a length, and one that names what in the chart cannot be written.
QUILLON_EXPORT Preview makePreview(const chart::Chart& chart, const ChartOptions& options = {},
                                   const Listener& listener = {}, const ChartData& data = {});

}  // namespace quillon::report
