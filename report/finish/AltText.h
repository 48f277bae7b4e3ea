#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/finish/ChartContext.h"

namespace quillon::report {

/// What a screen reader says of a chart for which the author gave no text: kind, title, series, and the range
/// of the values.
std::u16string makeAltText(const ChartContext& context);

/// The same of what is read of a document.
struct ShownData {
    ChartKind kind;
    std::optional<std::u16string> title = {};
    /// The series that the chart shows: of a pie, the first alone.
    std::vector<std::u16string> names = {};
    std::vector<double> values = {};
};
std::u16string makeAltText(const ShownData& shown);

}  // namespace quillon::report
