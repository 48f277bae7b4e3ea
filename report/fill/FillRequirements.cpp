#include "report/fill/FillRequirements.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

void requireFillable(const ChartMarkup& part, const ChartData& data)
{
    if (!part.getProblem().empty())
        throw std::runtime_error("The chart cannot be filled: " + part.getProblem() + ".");
    if (!data.dataSet || data.dataSet->getSeriesCount() == 0)
        throw std::runtime_error("The data has no series; a chart shows one at least.");
    const auto count = countLongest(*data.dataSet);
    if (count == 0) throw std::runtime_error("The data has no points; a chart shows one at least.");
    if (count > PointCache::maximumCount - 1)
        throw std::runtime_error(
            "The data has more points than a worksheet has rows, 1,048,575 below the names.");
    if (part.isWaterfall() && data.dataSet->getSeriesCount() != 1)
        throw std::runtime_error("A waterfall shows one series, of changes and totals; the data has " +
                                 std::to_string(data.dataSet->getSeriesCount()) + ".");
    for (const auto& group : part.getGroups()) {
        const auto before = part.getSeries().size();
        const auto after = data.dataSet->getSeriesCount();
        if (group.kind->element == "stockChart" && before != after)
            throw std::runtime_error("A stock chart shows as many series as it was made for, " +
                                     std::to_string(before) + "; the data has " + std::to_string(after) +
                                     ".");
    }
}

void requireNumbers(const chart::DataSet& dataSet)
{
    const auto series = dataSet.getSeriesList();
    for (std::size_t s = 0; s < series->size(); ++s)
        for (std::size_t i = 0; i < (*series)[s]->getSize(); ++i) {
            const auto& point = *(*series)[s]->getPoints()[i];
            for (const double number : {point.getX(), point.getY()})
                if (std::abs(number) > maximumNumber)
                    throw std::runtime_error(
                        "series " + std::to_string(s + 1) + " (" +
                        quoteText(toCellText((*series)[s]->getName())) + "), point " + std::to_string(i + 1) +
                        ": the value is " + toUtf8(num2str(number)) +
                        "; a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN.");
        }
}

void requireTexts(const ChartData& data, const FillOptions& options)
{
    readXmlText(options.title, "title");
    readXmlText(options.numberFormat, "number format");
    readXmlText(data.categoryFormat, "number format of the categories");
    for (std::size_t i = 0; i < data.series.size(); ++i)
        readXmlText(data.series[i].numberFormat, "number format of series " + std::to_string(i + 1));
}

std::size_t countLongest(const chart::DataSet& dataSet)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < dataSet.getSeriesCount(); ++i)
        count = std::max<std::size_t>(count, dataSet.getSeries(i)->getSize());
    return count;
}

}  // namespace quillon::report
