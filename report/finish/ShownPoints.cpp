#include "report/finish/ShownPoints.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "report/finish/CategoryValues.h"
#include "report/finish/ChartPart.h"
#include "report/finish/SeriesCopies.h"
#include "report/finish/SeriesNumbers.h"
#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

bool hasX(const chart::DataSeries& series)
{
    const auto& points = series.getPoints();
    return std::any_of(points.begin(), points.end(), [](const auto& point) { return point->getX() != 0; });
}

/// Takes the categories for numbers, or else for dates; false where they are neither.
bool readCategoriesAsX(ChartData& data)
{
    const auto& categories = data.dataSet->getCategories();
    data.categoryKind = CategoryKind::Number;
    data.categoryValues = readCategories(categories, readNumberText);
    if (!data.categoryValues.empty()) return true;
    data.categoryKind = CategoryKind::Date;
    data.categoryValues = readCategories(categories, readDateText);
    return !data.categoryValues.empty();
}

/// The categories as x values: numbers, or dates.
void findXOfCategories(const ChartContext& context, ChartData& data, std::size_t index)
{
    if (!data.categoryValues.empty() && data.categoryKind != CategoryKind::Text) {
        if (data.categoryKind == CategoryKind::Automatic) data.categoryKind = CategoryKind::Date;
        return;
    }
    const auto& series = *data.dataSet->getSeries(index);
    if (readCategoriesAsX(data) || series.getSize() == 0) return;
    throw ChartError(ChartPart::describe(index, series),
                     std::string("every X is 0, and the categories are not numbers; a ") +
                         findRow(kindRows, context.kind).name +
                         " chart needs points with X, or categories that are numbers or dates; "
                         "--x names the column of a table that holds them.");
}

std::shared_ptr<chart::DataSeries> moveToCategories(const chart::DataSeries& series,
                                                    const std::vector<double>& x)
{
    auto moved = copyHead(series);
    for (std::size_t i = 0; i < series.getSize(); ++i) {
        const auto& point = series.getPoints()[i];
        const auto made = moved->appendPoint(i < x.size() ? x[i] : missing, point->getValue());
        made->setFormat(point->getFormat());
        made->setLabelFormat(point->getLabelFormat());
    }
    return moved;
}

bool areEqual(const std::vector<double>& a, const std::vector<double>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); });
}

void shareX(const std::vector<std::shared_ptr<chart::DataSeries>>& series, ShownChart& shown)
{
    if (series.empty()) return;
    auto& data = shown.data;
    const auto x = listX(*series.front());
    const bool isShared =
        std::all_of(series.begin(), series.end(), [&x](const auto& one) { return areEqual(listX(*one), x); });
    if (isShared) {
        if (data.categoryKind != CategoryKind::Date) data.categoryKind = CategoryKind::Number;
        data.categoryValues = x;
        return;
    }
    data.categoryKind = CategoryKind::Text;
    for (const auto& one : series)
        shown.workbook.furtherColumns.push_back({u"X of " + one->getName(), listX(*one)});
}

}  // namespace

void preparePoints(const ChartContext& context, ShownChart& shown)
{
    auto& data = shown.data;
    data.dropLevels();
    std::vector<std::shared_ptr<chart::DataSeries>> series;
    const auto given = *data.dataSet->getSeriesList();
    for (std::size_t i = 0; i < given.size(); ++i) {
        const bool isOwn = hasX(*given[i]);
        if (!isOwn) findXOfCategories(context, data, i);
        series.push_back(isOwn ? given[i] : moveToCategories(*given[i], data.categoryValues));
    }
    shareX(series, shown);
    data.dataSet = makeDataSet(data.dataSet->getCategories(), series);
}

}  // namespace quillon::report
