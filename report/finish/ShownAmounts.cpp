#include "report/finish/ShownAmounts.h"

#include <algorithm>
#include <array>
#include <limits>

#include "report/finish/ChartPart.h"
#include "report/finish/SeriesCopies.h"
#include "report/finish/SeriesNames.h"
#include "report/finish/SeriesNumbers.h"
#include "report/options/ChartError.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

using SeriesList = std::vector<std::shared_ptr<chart::DataSeries>>;

struct AmountRow {
    const char* name;
    const std::vector<std::string>& series;
    std::vector<double> SeriesDetails::*amounts;
};

void leaveSeries(ChartData& data, const std::vector<bool>& isTaken)
{
    SeriesList left;
    std::vector<SeriesDetails> details;
    for (std::size_t i = 0; i < isTaken.size(); ++i) {
        if (isTaken[i]) continue;
        left.push_back(data.dataSet->getSeries(i));
        details.push_back(data.getDetails(i));
    }
    data.dataSet = makeDataSet(data.dataSet->getCategories(), left);
    data.series = std::move(details);
}

void giveAmounts(const AmountRow& row, const std::vector<std::size_t>& taken, const SeriesList& all,
                 std::vector<SeriesDetails>& others)
{
    const auto count = others.size();
    if (taken.size() != 1 && taken.size() != count)
        throw ChartError("", std::string(row.name) + ": " + std::to_string(taken.size()) +
                                 " series hold amounts for " + std::to_string(count) +
                                 " others; name one for each, or one for all.");
    for (std::size_t i = 0; i < count; ++i)
        others[i].*row.amounts = listValues(*all[taken.size() == 1 ? taken[0] : taken[i]]);
}

}  // namespace

void takeAmounts(const ChartOptions& options, ChartData& data)
{
    const std::array<AmountRow, 3> rows = {
        {{"size-series", options.sizes, &SeriesDetails::sizes},
         {"plus-series", options.errorPlus, &SeriesDetails::errorsPlus},
         {"minus-series", options.errorMinus, &SeriesDetails::errorsMinus}}};
    std::array<std::vector<std::size_t>, rows.size()> taken;
    std::vector<bool> isTaken(data.dataSet->getSeriesCount());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        taken[i] = findSeries(*data.dataSet, rows[i].series, rows[i].name);
        for (const auto position : taken[i]) isTaken[position] = true;
    }
    if (std::find(isTaken.begin(), isTaken.end(), true) == isTaken.end()) return;
    const auto all = *data.dataSet->getSeriesList();
    leaveSeries(data, isTaken);
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!taken[i].empty()) giveAmounts(rows[i], taken[i], all, data.series);
}

void requireSizes(ShownChart& shown)
{
    shown.workbook.sizes = true;
    const auto& set = *shown.data.dataSet;
    shown.data.series.resize(set.getSeriesCount());
    for (std::size_t i = 0; i < shown.data.series.size(); ++i) {
        auto& sizes = shown.data.series[i].sizes;
        const auto count = set.getSeries(i)->getSize();
        if (sizes.empty() && count > 0)
            throw ChartError(ChartPart::describe(i, *set.getSeries(i)),
                             "a bubble chart needs the sizes of its bubbles; name the series that hold them "
                             "(size-series).");
        sizes.resize(count, missing);
    }
}

void addErrorColumns(ShownChart& shown)
{
    const auto& set = *shown.data.dataSet;
    auto& columns = shown.workbook.furtherColumns;
    const auto count = std::min<std::size_t>(shown.data.series.size(), set.getSeriesCount());
    for (std::size_t i = 0; i < count; ++i) {
        const auto& series = *set.getSeries(i);
        auto& [format, sizes, plus, minus] = shown.data.series[i];
        for (auto* amounts : {&plus, &minus})
            if (!amounts->empty()) amounts->resize(series.getSize(), missing);
        if (!plus.empty()) columns.push_back({u"Error of " + series.getName() + u", up", plus});
        if (!minus.empty()) columns.push_back({u"Error of " + series.getName() + u", down", minus});
    }
}

}  // namespace quillon::report
