#include "report/fill/ChartReader.h"
#include "report/options/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();
/// From 30 December 1899, where dates of a worksheet count from, to 1 January 1970, and to 1904.
constexpr std::int64_t daysTo1970 = 25'569;
constexpr double daysTo1904 = 1'462;
constexpr double secondsOfDay = 86'400;

std::int64_t toDays(std::int64_t year, unsigned month, unsigned day)
{
    year -= month <= 2 ? 1 : 0;
    const auto era = (year >= 0 ? year : year - 399) / 400;
    const auto yearOfEra = year - era * 400;
    const auto dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    return era * 146'097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719'468;
}

struct Date {
    std::int64_t year;
    unsigned month;
    unsigned day;
};

Date toDate(std::int64_t days)
{
    days += 719'468;
    const auto era = (days >= 0 ? days : days - 146'096) / 146'097;
    const auto dayOfEra = days - era * 146'097;
    const auto yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const auto dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const auto month = (5 * dayOfYear + 2) / 153;
    const auto realMonth = static_cast<unsigned>(month < 10 ? month + 3 : month - 9);
    return {yearOfEra + era * 400 + (realMonth <= 2 ? 1 : 0), realMonth,
            static_cast<unsigned>(dayOfYear - (153 * month + 2) / 5 + 1)};
}

/// A serial number as "2026-07-31", with the time where there is one.
std::string writeDate(double serial)
{
    // Far enough for every calendar, near enough for whole numbers.
    if (std::isnan(serial) || std::abs(serial) > 1e7) return writeCachedNumber(serial);
    const auto seconds =
        static_cast<std::int64_t>(std::llround((serial - std::floor(serial)) * secondsOfDay));
    const auto days = static_cast<std::int64_t>(std::floor(serial)) + (seconds == 86'400 ? 1 : 0);
    const auto date = toDate(days - daysTo1970);
    std::array<char, 64> text;
    std::snprintf(text.data(), text.size(), "%04lld-%02u-%02u", static_cast<long long>(date.year), date.month,
                  date.day);
    std::string written(text.data());
    if (seconds == 0 || seconds == 86'400) return written;
    std::snprintf(text.data(), text.size(), "T%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return written + text.data();
}

/// Reads "2026-07-31", "2026-07-31T12:00" or "2026-07-31T12:00:30"; NaN for anything else.
double readDate(const std::string& text)
{
    int year = 0;
    int length = 0;
    std::array<unsigned, 2> date{};
    std::array<unsigned, 3> time{};
    if (std::sscanf(text.c_str(), "%4d-%2u-%2u%n", &year, &date[0], &date[1], &length) != 3) return missing;
    if (length != 10 || date[0] < 1 || date[0] > 12 || date[1] < 1 || date[1] > 31) return missing;
    const auto days = static_cast<double>(toDays(year, date[0], date[1]) + daysTo1970);
    const auto rest = text.substr(10);
    if (rest.empty()) return days;
    int end = 0;
    const auto count =
        std::sscanf(rest.c_str(), "T%2u:%2u%n:%2u%n", &time[0], &time[1], &end, &time[2], &end);
    if (count < 2 || static_cast<std::size_t>(end) != rest.size() || time[0] > 23 || time[1] > 59 ||
        time[2] > 59)
        return missing;
    return days + (time[0] * 3600 + time[1] * 60 + time[2]) / secondsOfDay;
}

/// The series' category axis is one of dates.
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
        for (std::size_t i = 0; i < part.readCache(series.values).getCount(); ++i)
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
        count = std::max(count, part.readCache(series.values).getCount());
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
