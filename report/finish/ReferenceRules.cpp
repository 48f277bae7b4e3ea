#include <array>
#include <cmath>

#include "report/finish/Rules.h"
#include "report/options/ChartError.h"
#include "report/package/Xml.h"
#include "report/workbook/CellNames.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// The writer knows the letters of columns A to Z alone, and no columns but values behind the categories. A
/// reference to no cell at all would end above its start; it stays on its first cell.
void nameCells(ChartPart& part)
{
    const auto categoryCount = part.context.chart.getDataSet()->getCategories().size();
    constexpr std::size_t lastLetter = 25;
    for (const auto& series : part.series) {
        auto* element = series.element;
        if (categoryCount == 0)
            findPath(element, {u"c:cat", u"c:strRef", u"c:f"})->setTextContent(getCellRange(0, 0).c_str());
        const auto column = part.getColumn(series);
        const auto count = series.series.getSize();
        if (column == series.index + 1 && column <= lastLetter && count > 0) continue;
        findPath(element, {u"c:tx", u"c:strRef", u"c:f"})->setTextContent(getNameCell(column).c_str());
        findPath(element, {u"c:val", u"c:numRef", u"c:f"})
            ->setTextContent(getCellRange(column, count).c_str());
    }
}

void requireNumber(double value, const char* what, const chart::DataSeries& series, std::size_t index,
                   std::size_t point)
{
    if (std::abs(value) > maximumNumber)
        throw ChartError(
            ChartPart::describe(index, series) + ", point " + std::to_string(point + 1),
            std::string(what) + " is " + toUtf8(num2str(value)) +
                "; a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN.");
}

/// Series that the chart does not show stand in its workbook all the same.
void requireNumbers(ChartPart& part)
{
    const auto& data = part.context.data;
    const bool hasX = pointKinds.contains(part.context.kind);
    for (std::size_t index = 0; index < data.dataSet->getSeriesCount(); ++index) {
        const auto& series = *data.dataSet->getSeries(index);
        const auto& points = series.getPoints();
        for (std::size_t point = 0; point < points.size(); ++point) {
            requireNumber(points[point]->getValue(), "the value", series, index, point);
            if (hasX) requireNumber(points[point]->getX(), "X", series, index, point);
        }
        const auto& details = data.getDetails(index);
        for (const auto* amounts : {&details.sizes, &details.errorsPlus, &details.errorsMinus})
            for (std::size_t point = 0; point < amounts->size(); ++point)
                requireNumber((*amounts)[point], "the size or error", series, index, point);
    }
}

/// The sums of a waterfall may be larger than its changes.
void requireSums(ChartPart& part)
{
    for (const auto& series : part.series)
        for (std::size_t point = 0; point < series.series.getSize(); ++point)
            requireNumber(series.series.getPoints()[point]->getValue(), "the sum", series.series,
                          series.index, point);
}

/// What is not a number is left out of its cache and shows as a gap; the count stays.
void leaveOutMissingValues(ChartPart& part)
{
    for (const auto& series : part.series) {
        auto* cache = findPath(series.element, {u"c:val", u"c:numRef", u"c:numCache"});
        auto* cached = findChild(cache, u"c:pt");
        for (const auto& point : series.series.getPoints()) {
            auto* next = cached->getNextElementSibling();
            if (std::isnan(point->getValue())) cache->removeChild(cached)->release();
            cached = next;
        }
    }
}

constexpr std::array rules = {Rule{allKinds, nameCells}, Rule{allKinds, requireNumbers},
                              Rule{ChartKinds(ChartKind::Waterfall), requireSums},
                              Rule{allKinds, leaveOutMissingValues}};

}  // namespace

const std::span<const Rule> referenceRules = rules;

}  // namespace quillon::report
