#include "report/fill/ChartReader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "report/fill/SerialDate.h"
#include "report/options/NumberText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// Whether the category axis of the series is one of dates.
bool hasDateAxis(const ChartMarkup& part, const SeriesMarkup& series)
{
    const auto& axes = part.getGroups()[series.group].axes;
    for (const auto element : part.getPlotArea().getChildren())
        if (element.is(Ns::Chart, "dateAx") &&
            std::find(axes.begin(), axes.end(), element.findChild("axId").getAttribute("val").value_or("")) !=
                axes.end())
            return true;
    return false;
}

/// All texts by a reader of numbers; nothing when one is no number. Empty ones are missing.
template <typename Read>
std::optional<Points> toNumbers(const std::vector<std::string>& texts, Read read)
{
    Points points;
    for (const auto& text : texts) {
        points.numbers.push_back(text.empty() ? missing : read(text));
        if (!text.empty() && std::isnan(points.numbers.back())) return {};
    }
    return points;
}

Points toPoints(const std::vector<std::u16string>& texts)
{
    Points points{.areText = true};
    points.texts.reserve(texts.size());
    for (const auto& text : texts) points.texts.push_back(toCellText(text));
    return points;
}

std::vector<std::u16string> fromPoints(const std::vector<std::string>& texts)
{
    std::vector<std::u16string> units;
    units.reserve(texts.size());
    for (const auto& text : texts) units.push_back(fromCellText(text));
    return units;
}

Categories makeNumbers(const ChartData& data, Categories::Kind kind)
{
    Categories categories{
        .kind = kind, .points = {.numbers = data.categoryValues}, .format = data.categoryFormat};
    categories.points.resize(data.dataSet->getCategories().size());
    return categories;
}

/// Texts that say what the numbers of the old categories were.
std::optional<Categories> readNumbers(const std::vector<std::string>& texts, Categories::Kind before)
{
    std::optional<Points> points;
    if (before == Categories::Kind::Number)
        points = toNumbers(texts, [](const auto& text) { return readCachedNumber(text); });
    if (before == Categories::Kind::Date)
        points = toNumbers(texts, [](const auto& text) { return readDate(text); });
    if (!points) return {};
    return Categories{.kind = before, .points = *points};
}

void shift(Categories& categories, double days)
{
    for (auto& number : categories.points.numbers) number += days;
}

Categories makePlainCategories(const ChartData& data, const Categories& before)
{
    if (data.categoryKind != CategoryKind::Text && !data.categoryValues.empty())
        return makeNumbers(data, data.categoryKind == CategoryKind::Number ? Categories::Kind::Number
                                                                           : Categories::Kind::Date);
    Categories categories{.kind = Categories::Kind::Text, .points = toPoints(data.dataSet->getCategories())};
    if (data.categoryKind != CategoryKind::Text && data.levels.empty())
        if (const auto numbers = readNumbers(categories.points.texts, before.kind)) return *numbers;
    for (const auto& level : data.levels) {
        categories.levels.push_back(toPoints(level));
        categories.levels.back().resize(categories.points.getSize());
        categories.kind = Categories::Kind::Levels;
    }
    return categories;
}

/// What a series says beyond its name and points.
SeriesDetails readDetails(const ChartMarkup& part, const SeriesMarkup& series, std::size_t count)
{
    const auto readNumbers = [&](const PointSource& source) {
        if (source.kind == PointSource::Kind::None) return std::vector<double>();
        auto points = part.readCache(source).read(false);
        if (isForAll(source, points)) points.numbers.assign(count, points.numbers[0]);
        points.resize(count);
        return points.numbers;
    };
    auto format = part.readCache(series.values).getFormat();
    return {.numberFormat = format == "General" ? "" : format,
            .sizes = readNumbers(series.sizes),
            .errorsPlus = readNumbers(series.errors.plus),
            .errorsMinus = readNumbers(series.errors.minus)};
}

std::shared_ptr<chart::DataSeries> readSeries(const ChartMarkup& part, const SeriesMarkup& series,
                                              std::size_t count)
{
    auto read = chart::DataSeries::create(fromCellText(series.name));
    auto values = part.readCache(series.values).read(false);
    values.resize(count);
    if (part.getShape(series) == GroupShape::Categories) {
        for (const double value : values.numbers) read->appendPoint(value);
        return read;
    }
    const auto x = readXValues(part, series, count);
    for (std::size_t i = 0; i < count; ++i) read->appendPoint(x.numbers[i], values.numbers[i]);
    return read;
}

}  // namespace

bool Categories::haveTimes() const
{
    return kind == Kind::Date && std::ranges::any_of(points.numbers, [](double date) {
               return std::isfinite(date) && date != std::floor(date);
           });
}

bool isForAll(const PointSource& source, const Points& points)
{
    return source.isLiteral() && points.getSize() == 1;
}

Points readXValues(const ChartMarkup& part, const SeriesMarkup& series, std::size_t count)
{
    const bool isNumber = series.categories.kind == PointSource::Kind::Number ||
                          series.categories.kind == PointSource::Kind::NumberLiteral;
    auto points = isNumber ? part.readCache(series.categories).read(false) : Points();
    // Texts and none at all stand at 1, 2, 3.
    if (!isNumber)
        for (std::size_t i = 0; i < part.countPoints(series.values); ++i)
            points.numbers.push_back(static_cast<double>(i + 1));
    points.resize(count);
    return points;
}

Categories readCategories(const ChartMarkup& part, const SeriesMarkup& series)
{
    const auto& source = series.categories;
    if (source.kind == PointSource::Kind::None || source.kind == PointSource::Kind::Value) return {};
    const auto cache = part.readCache(source);
    if (source.kind == PointSource::Kind::Levels) {
        Categories categories{.kind = Categories::Kind::Levels, .points = cache.read(true)};
        for (auto level = cache.getLevelCount(); level-- > 1;)
            categories.levels.push_back(part.readCache(source, level).read(true));
        return categories;
    }
    if (source.isText()) return {.kind = Categories::Kind::Text, .points = cache.read(true)};
    const bool isDate = isDateFormat(cache.getFormat()) || hasDateAxis(part, series);
    return {.kind = isDate ? Categories::Kind::Date : Categories::Kind::Number,
            .points = cache.read(false),
            .format = cache.getFormat() == "General" ? "" : cache.getFormat()};
}

Categories makeCategories(const ChartData& data, const Categories& before, bool is1904)
{
    if (data.dataSet->getCategories().empty()) return {};
    auto categories = makePlainCategories(data, before);
    if (categories.kind == Categories::Kind::Date && is1904) shift(categories, -daysTo1904);
    return categories;
}

std::vector<std::string> getNames(const Categories& categories, bool is1904)
{
    if (categories.points.areText) return categories.points.texts;
    std::vector<std::string> names;
    for (const double number : categories.points.numbers) {
        if (std::isnan(number))
            names.emplace_back();
        else if (categories.kind == Categories::Kind::Date)
            names.push_back(writeDate(number + (is1904 ? daysTo1904 : 0)));
        else
            names.push_back(writeCachedNumber(number));
    }
    return names;
}

ChartData readChartData(const ChartMarkup& part)
{
    std::size_t count = 0;
    bool hasCategories = false;
    for (const auto& series : part.getSeries()) {
        count = std::max(count, part.countPoints(series.values));
        hasCategories = hasCategories || part.getShape(series) == GroupShape::Categories;
    }
    Categories categories;
    if (const auto* named = part.findCategories()) categories = readCategories(part, *named);
    auto names = getNames(categories, part.is1904());
    for (std::size_t i = 0; hasCategories && categories.kind == Categories::Kind::None && i < count; ++i)
        names.push_back(std::to_string(i + 1));
    ChartData data(chart::DataSet::create(fromPoints(names)));
    data.categoryKind = categories.kind == Categories::Kind::Number ? CategoryKind::Number
                        : categories.kind == Categories::Kind::Date ? CategoryKind::Date
                                                                    : CategoryKind::Text;
    data.categoryFormat = categories.format;
    if (categories.kind == Categories::Kind::Date && part.is1904()) shift(categories, daysTo1904);
    data.categoryValues = categories.points.numbers;
    for (const auto& level : categories.levels) data.levels.push_back(fromPoints(level.texts));
    for (const auto& series : part.getSeries()) {
        data.dataSet->appendSeries(readSeries(part, series, count));
        data.series.push_back(readDetails(part, series, count));
    }
    for (const auto total : part.getTotals())
        if (total < names.size()) data.totals.push_back(fromCellText(names[total]));
    return data;
}

}  // namespace quillon::report
