#pragma once

#include <cstdint>

#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

struct ChartOptions;

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
    constexpr ChartKinds without(ChartKinds others) const
    {
        auto rest = *this;
        rest.bits_ &= ~others.bits_;
        return rest;
    }

 private:
    std::uint32_t bits_;
};

inline constexpr ChartKinds everyKind{ChartKind::Bar,     ChartKind::Column,   ChartKind::Line,
                                      ChartKind::Pie,     ChartKind::Area,     ChartKind::Doughnut,
                                      ChartKind::Scatter, ChartKind::Bubble,   ChartKind::Radar,
                                      ChartKind::Stock,   ChartKind::Waterfall};
/// Each point has a colour of its own, and the legend names the points.
inline constexpr ChartKinds sliceKinds{ChartKind::Pie, ChartKind::Doughnut};
/// Each point has a place on two value axes.
inline constexpr ChartKinds pointKinds{ChartKind::Scatter, ChartKind::Bubble};
/// What stands upon one category axis, each series as it likes.
inline constexpr ChartKinds combinedKinds{ChartKind::Column, ChartKind::Line, ChartKind::Area};

/// The kind that the class of the chart stands for.
/// Throws: std::runtime_error for a chart of a class that stands for none.
QUILLON_EXPORT ChartKind getKind(const chart::Chart& chart);
/// The same, unless the options choose another.
QUILLON_EXPORT ChartKind getKind(const chart::Chart& chart, const ChartOptions& options);

}  // namespace quillon::report
