#include "report/command/ChartMaker.h"

#include <fmt/format.h>

#include <array>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Note = std::function<void(const std::string&)>;

struct ChartType {
    const char* name;
    std::shared_ptr<chart::Chart> (*create)();
    bool isPie;
};

constexpr std::array chartTypes = {
    ChartType{"column", chart::ColumnChart::create, false},
    ChartType{"bar", chart::BarChart::create, false},
    ChartType{"line", chart::LineChart::create, false},
    ChartType{"pie", chart::PieChart::create, true},
};

const ChartType& findType(const std::string& name)
{
    if (name.empty()) return chartTypes.front();
    for (const auto& type : chartTypes)
        if (name == type.name) return type;
    fail("Chart type \"{}\": expected bar, column, line or pie.", name);
}

/// Word processors draw such a slice as if the value had no sign.
void noteNegativeSlice(const std::string& table, const chart::DataSet& dataSet, const Note& note)
{
    const auto series = dataSet.getSeries(0);
    for (std::size_t i = 0; i < series->getSize(); ++i)
        if (series->getPoint(i)->getValue() < 0)
            return note(fmt::format("{}: the value of {} is negative; a pie shows only its size.", table,
                                    quoteText(toUtf8(dataSet.getCategories().at(i)))));
}

}  // namespace

std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data, const Note& note)
{
    const auto& type = findType(job.type);
    const auto& dataSet = *data.dataSet;
    if (type.isPie && dataSet.getSeriesCount() > 1)
        fail("{}: a pie shows one series, the table gives {}; choose one with --columns.", job.table,
             dataSet.getSeriesCount());
    if (type.isPie) noteNegativeSlice(job.table, dataSet, note);
    auto chart = type.create();
    chart->setDataSet(data.dataSet);
    if (!job.title.empty()) chart->setTitle(chart::Title::create(quillon::toUtf16(job.title)));
    return chart;
}

}  // namespace quillon::report
