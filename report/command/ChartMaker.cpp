#include "report/command/ChartMaker.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "chart/model/ColumnChart.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Note = std::function<void(const std::string&)>;

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

bool acceptsGaps(const ChartJob& job)
{
    return job.gaps || job.options.blank;
}

double readValue(const Table& table, const Table::Row& row, std::size_t column, bool gaps)
{
    const auto& cell = row.cells[column];
    if (cell.empty() && gaps) return gap;
    const auto number = Table::readNumber(cell);
    if (!number)
        table.refuseCell(row, column,
                         gaps ? "a number, as in -1.5, or an empty cell" : "a number, as in -1.5");
    return *number;
}

bool holdsNumber(const Table& table, std::size_t column)
{
    return std::any_of(table.rows.begin(), table.rows.end(), [column](const auto& row) {
        return Table::readNumber(row.cells[column]).has_value();
    });
}

std::vector<std::u16string> toUtf16(const std::vector<std::string>& texts)
{
    std::vector<std::u16string> result;
    result.reserve(texts.size());
    for (const auto& text : texts) result.push_back(quillon::toUtf16(text));
    return result;
}

/// Wide tables name each category once; a name that comes again is the mark of a long one.
void noteRepeatedCategory(const Table& table, std::size_t category, const Note& note)
{
    std::set<std::string> names;
    for (const auto& row : table.rows) {
        if (names.insert(row.cells[category]).second) continue;
        note(fmt::format(
            "{}:{}: \"{}\" comes twice in the category column \"{}\"; a table with one row for each "
            "value needs --series and --value.",
            table.path, row.line, row.cells[category], table.columns[category]));
        return;
    }
}

std::vector<std::size_t> chooseColumns(const ChartJob& job, const Table& table, std::size_t category,
                                       const Note& note)
{
    std::vector<std::size_t> chosen;
    for (const auto& name : job.columns) chosen.push_back(table.findColumn(name));
    if (!chosen.empty()) return chosen;
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
        if (column == category) continue;
        if (holdsNumber(table, column))
            chosen.push_back(column);
        else
            note(fmt::format("{}: column \"{}\" holds no numbers, as in -1.5, and is left out.", table.path,
                             table.columns[column]));
    }
    if (chosen.empty())
        fail("{}: no column beside \"{}\" holds numbers.", table.path, table.columns[category]);
    return chosen;
}

std::shared_ptr<chart::DataSet> readWide(const ChartJob& job, const Table& table, const Note& note)
{
    const auto category = job.category.empty() ? 0 : table.findColumn(job.category);
    noteRepeatedCategory(table, category, note);
    std::vector<std::string> names;
    for (const auto& row : table.rows) names.push_back(row.cells[category]);
    auto dataSet = chart::DataSet::create(toUtf16(names));
    for (const auto column : chooseColumns(job, table, category, note)) {
        auto series = chart::DataSeries::create(quillon::toUtf16(table.columns[column]));
        for (const auto& row : table.rows)
            series->appendPoint(readValue(table, row, column, acceptsGaps(job)));
        dataSet->appendSeries(series);
    }
    return dataSet;
}

/// Texts in the order in which they first appear, each with its position.
class Index {
 public:
    std::size_t add(const std::string& text)
    {
        const auto [found, isNew] = positions_.try_emplace(text, texts_.size());
        if (isNew) texts_.push_back(text);
        return found->second;
    }
    const std::vector<std::string>& getTexts() const { return texts_; }

 private:
    std::map<std::string, std::size_t> positions_;
    std::vector<std::string> texts_;
};

/// The values of a long table by series and category.
struct Pivot {
    Index categories;
    Index series;
    std::map<std::pair<std::size_t, std::size_t>, double> values;
};

Pivot pivot(const ChartJob& job, const Table& table)
{
    const auto category = job.category.empty() ? 0 : table.findColumn(job.category);
    const auto series = table.findColumn(job.series);
    const auto value = table.findColumn(job.value);
    Pivot result;
    for (const auto& row : table.rows) {
        const auto key =
            std::pair(result.series.add(row.cells[series]), result.categories.add(row.cells[category]));
        if (!result.values.try_emplace(key, readValue(table, row, value, acceptsGaps(job))).second)
            fail(R"({}:{}: a second value for {} "{}" and {} "{}"; a long table has one for each pair.)",
                 table.path, row.line, job.series, row.cells[series], table.columns[category],
                 row.cells[category]);
    }
    return result;
}

std::shared_ptr<chart::DataSet> readLong(const ChartJob& job, const Table& table)
{
    if (job.series.empty() || job.value.empty())
        fail(
            "A long table needs both --series, the column of series names, and --value, the column of "
            "values.");
    if (!job.columns.empty()) fail("--columns is for wide tables; a long table has --series and --value.");
    const auto cells = pivot(job, table);
    const auto& categories = cells.categories.getTexts();
    auto dataSet = chart::DataSet::create(toUtf16(categories));
    for (std::size_t i = 0; i < cells.series.getTexts().size(); ++i) {
        const auto& name = cells.series.getTexts()[i];
        auto series = chart::DataSeries::create(quillon::toUtf16(name));
        for (std::size_t k = 0; k < categories.size(); ++k) {
            const auto found = cells.values.find({i, k});
            if (found == cells.values.end() && !acceptsGaps(job))
                fail(R"({}: no value for {} "{}" and category "{}"; add the row, or ask for --gaps.)",
                     table.path, job.series, name, categories[k]);
            series->appendPoint(found == cells.values.end() ? gap : found->second);
        }
        dataSet->appendSeries(series);
    }
    return dataSet;
}

/// Word processors draw such a slice as if the value had no sign.
void noteNegativeSlice(const Table& table, const chart::DataSet& dataSet, const Note& note)
{
    const auto series = dataSet.getSeries(0);
    for (std::size_t i = 0; i < series->getSize(); ++i)
        if (series->getPoint(i)->getValue() < 0)
            return note(fmt::format("{}: the value of \"{}\" is negative; a pie shows only its size.",
                                    table.path, toUtf8(dataSet.getCategories().at(i))));
}

}  // namespace

std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const Table& table, const Note& note)
{
    const bool isPie = job.options.kind && sliceKinds.contains(*job.options.kind);
    const bool isLong = !job.series.empty() || !job.value.empty();
    const auto dataSet = isLong ? readLong(job, table) : readWide(job, table, note);
    if (isPie && dataSet->getSeriesCount() > 1)
        fail("{}: a pie shows one series, the table gives {}; choose one with --columns.", table.path,
             dataSet->getSeriesCount());
    if (isPie) noteNegativeSlice(table, *dataSet, note);
    // The type among the options says what it is drawn as.
    auto chart = chart::ColumnChart::create();
    chart->setDataSet(dataSet);
    if (!job.title.empty()) chart->setTitle(chart::Title::create(quillon::toUtf16(job.title)));
    return chart;
}

}  // namespace quillon::report
