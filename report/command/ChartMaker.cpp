#include "report/command/ChartMaker.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/options/Enumerations.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/ChartTable.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Note = std::function<void(const std::string&)>;

struct ChartType {
    ChartKind kind;
    std::shared_ptr<chart::Chart> (*create)();
};

constexpr std::array chartTypes = {
    ChartType{ChartKind::Column, chart::ColumnChart::create},
    ChartType{ChartKind::Bar, chart::BarChart::create},
    ChartType{ChartKind::Line, chart::LineChart::create},
    ChartType{ChartKind::Pie, chart::PieChart::create},
};

}  // namespace

ChartKind findKind(const std::string& typed)
{
    if (typed.empty()) return ChartKind::Column;
    auto name = typed;
    for (auto& c : name)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    if (const auto* row = findRowOf(kindRows, name)) return row->value;
    std::vector<const char*> names;
    for (const auto& row : kindRows) names.push_back(row.name);
    fail("Chart type {}: expected {}{}", quoteText(typed), joinNames(names),
         suggestName(typed, {names.begin(), names.end()}));
}

namespace {

const ChartType& findType(const std::string& name)
{
    const auto kind = findKind(name);
    return *std::find_if(chartTypes.begin(), chartTypes.end(),
                         [kind](const auto& type) { return type.kind == kind; });
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

ChartData readData(const ChartJob& job, const Listener& listener)
{
    TableOptions reading = job;
    reading.gaps = job.gaps || job.options.blank;
    return readChartData(job.table, reading, listener);
}

std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data, const Note& note)
{
    const auto& type = findType(job.type);
    const auto& dataSet = *data.dataSet;
    const bool isPie = type.kind == ChartKind::Pie;
    if (isPie && dataSet.getSeriesCount() > 1)
        fail("{}: a pie shows one series, the table gives {}; choose one with --columns.", job.table,
             dataSet.getSeriesCount());
    if (isPie) noteNegativeSlice(job.table, dataSet, note);
    auto chart = type.create();
    chart->setDataSet(data.dataSet);
    if (!job.title.empty()) chart->setTitle(chart::Title::create(quillon::toUtf16(job.title)));
    return chart;
}

}  // namespace quillon::report
