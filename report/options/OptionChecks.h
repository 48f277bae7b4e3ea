#pragma once

#include "report/options/ChartOptions.h"

namespace quillon::report {

/// Refuses options that are right by themselves and do not go together, or not with the kind of chart.
/// Throws: ChartError that names the options and says what is allowed.
void checkTogether(const ChartOptions& options, ChartKind kind);

/// Whether the data labels of that kind can stand there.
bool canLabelsStandAt(LabelPosition position, ChartKind kind, bool isStacked);

}  // namespace quillon::report
