#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "report/fill/ChartMarkup.h"
#include "report/options/ChartData.h"

namespace quillon::report {

/// From the first day of dates that count from 1900 to that of those from 1904.
constexpr double daysTo1904 = 1'462;

/// The categories of a chart, as its caches hold them.
struct Categories {
    enum class Kind : std::uint8_t { None, Text, Number, Date, Levels };

    Kind kind = Kind::None;
    /// Names, or the innermost level; numbers and dates otherwise, dates as the chart counts them.
    Points points = {};
    /// Further levels, the outermost first; an empty text goes on with the one before.
    std::vector<Points> levels = {};
    /// Of numbers and dates; empty where nothing is known.
    std::string format = {};

    bool isText() const { return kind == Kind::Text || kind == Kind::Levels; }
    /// Whether they are dates with times of day, which an axis of dates cannot keep apart.
    bool haveTimes() const;
    bool operator==(const Categories& other) const
    {
        return kind == other.kind && points == other.points && levels == other.levels;
    }
};

/// The categories of one series.
Categories readCategories(const ChartMarkup& part, const SeriesMarkup& series);
/// Those that `data` asks for in a chart that had `before`. Texts that are numbers, or dates as in
/// "2026-07-31", are so where the old ones were.
Categories makeCategories(const ChartData& data, const Categories& before, bool is1904);
/// A text for each category, by which they are matched.
std::vector<std::string> getNames(const Categories& categories, bool is1904);

/// The x values of a series, cut or filled up to `count`; 1, 2, 3 where it has none.
Points readXValues(const ChartMarkup& part, const SeriesMarkup& series, std::size_t count);

/// The data of a chart, as its caches hold it. Series that are shorter than others end in missing points.
ChartData readChartData(const ChartMarkup& part);

/// Whether the only number of a literal stands for every point, as amounts of error bars do.
bool isForAll(const PointSource& source, const Points& points);

}  // namespace quillon::report
