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

/// The writer knows the letters of columns A to Z alone. A reference to no cell at all would end above its
/// start; it stays on its first cell.
void nameCells(ChartPart& part)
{
    const auto categoryCount = part.context.chart.getDataSet()->getCategories().size();
    for (const auto& [element, index, series] : part.series) {
        if (categoryCount == 0)
            findPath(element, {u"c:cat", u"c:strRef", u"c:f"})->setTextContent(getCellRange(0, 0).c_str());
        if (index < 25 && series.getSize() > 0) continue;
        findPath(element, {u"c:tx", u"c:strRef", u"c:f"})->setTextContent(getNameCell(index + 1).c_str());
        findPath(element, {u"c:val", u"c:numRef", u"c:f"})
            ->setTextContent(getCellRange(index + 1, series.getSize()).c_str());
    }
}

void requireNumber(std::size_t index, const chart::DataSeries& series, std::size_t point)
{
    const double value = series.getPoint(point)->getValue();
    if (std::abs(value) > maximumNumber)
        throw ChartError(
            ChartPart::describe(index, series) + ", point " + std::to_string(point + 1),
            "the value is " + toUtf8(num2str(value)) +
                "; a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN.");
}

/// Series that the chart does not show stand in its workbook all the same.
void requireNumbers(ChartPart& part)
{
    const auto& dataSet = *part.context.chart.getDataSet();
    for (std::size_t index = 0; index < dataSet.getSeriesCount(); ++index) {
        const auto series = dataSet.getSeries(index);
        for (std::size_t point = 0; point < series->getSize(); ++point) requireNumber(index, *series, point);
    }
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
                              Rule{allKinds, leaveOutMissingValues}};

}  // namespace

const std::span<const Rule> referenceRules = rules;

}  // namespace quillon::report
