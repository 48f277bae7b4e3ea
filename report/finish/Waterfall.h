#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/options/ChartData.h"

namespace quillon::report {

/// The extension of the base of a waterfall that holds the author's series.
inline constexpr std::string_view waterfallMark = "{5C1D8A64-0B7E-4D0B-9A38-6E2F1B7C9D53}";

/// The series that draw a waterfall, in the order of their colours and columns. Bars that cross 0 have a part
/// of their own below it. The base is invisible: it carries the others, and stands first in the stack.
enum class WaterfallPart : std::uint8_t {
    Increase,
    Decrease,
    Total,
    Base,
    IncreaseBelow,
    DecreaseBelow,
    TotalBelow
};

/// The series that draws the part, and the cells of its points: a column behind the author's series.
struct WaterfallSeries {
    WaterfallPart part;
    std::u16string name;
    std::vector<double> values;
};

/// Which categories show a total. Throws: ChartError for a total that is no category.
std::vector<bool> findTotals(const std::vector<std::u16string>& categories,
                             const std::vector<std::u16string>& totals);

/// What draws `series`: Increase, Decrease, Total and Base, and all parts below 0 where a bar crosses it. A
/// total shows its own value, from 0 on, and the changes behind it start there; where that is missing, the
/// sum of all before. A missing change is none.
std::vector<WaterfallSeries> makeWaterfall(const chart::DataSeries& series, const std::vector<bool>& totals);

}  // namespace quillon::report
