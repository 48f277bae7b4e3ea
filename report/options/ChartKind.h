#pragma once

#include <cstdint>

#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

/// The kinds of chart that a document can show.
enum class ChartKind : std::uint8_t {
    Bar,
    Column,
    Line,
    Pie,
    Area,
    Doughnut,
    Scatter,
    Bubble,
    Radar,
    Stock,
    Waterfall
};

/// A set of kinds, for the rules and options that suit only some of them.
class ChartKinds {
 public:
    template <typename... Kinds>
    explicit constexpr ChartKinds(Kinds... kinds) : bits_(((1U << static_cast<unsigned>(kinds)) | ... | 0U))
    {
    }
    constexpr bool contains(ChartKind kind) const { return (bits_ >> static_cast<unsigned>(kind) & 1U) != 0; }

 private:
    std::uint32_t bits_;
};

/// The kind that the class of the chart stands for.
QUILLON_EXPORT ChartKind getKind(const chart::Chart& chart);

}  // namespace quillon::report
