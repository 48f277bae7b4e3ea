#include "report/table/ChartTable.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <unordered_map>

#include "report/options/QuotedText.h"
#include "report/table/Accumulator.h"
#include "report/table/CellText.h"
#include "report/table/ChartColumns.h"
#include "report/table/ColumnNames.h"
#include "report/table/ColumnReader.h"
#include "report/table/Fail.h"
#include "report/table/Grid.h"
#include "report/table/Sources.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

using TableColumns = std::vector<const TableColumn*>;

/// The rows of each category, which is one text, or one of each level.
struct Categories {
    /// For each row, the position of its category.
    std::vector<std::uint32_t> ofRow;
    /// For each category, the first row that has it.
    std::vector<std::uint32_t> firstRow;
};

Categories groupRows(const TableColumns& columns, std::size_t rowCount)
{
    Categories categories;
    std::map<std::vector<std::uint32_t>, std::uint32_t> known;
    std::unordered_map<std::uint32_t, std::uint32_t> knownSingle;
    for (std::uint32_t row = 0; row < rowCount; ++row) {
        const auto next = static_cast<std::uint32_t>(categories.firstRow.size());
        std::uint32_t position = 0;
        if (columns.size() == 1) {
            position = knownSingle.try_emplace(columns.front()->texts.getIndex(row), next).first->second;
        } else {
            std::vector<std::uint32_t> key;
            for (const auto* column : columns) key.push_back(column->texts.getIndex(row));
            position = known.try_emplace(std::move(key), next).first->second;
        }
        if (position == next) categories.firstRow.push_back(row);
        categories.ofRow.push_back(position);
    }
    return categories;
}

/// Every row is a category of its own.
Categories keepRows(std::size_t rowCount)
{
    Categories categories;
    for (std::uint32_t row = 0; row < rowCount; ++row) {
        categories.ofRow.push_back(row);
        categories.firstRow.push_back(row);
    }
    return categories;
}

Columns listColumn(std::optional<std::size_t> column)
{
    return column ? Columns{*column} : Columns{};
}

/// Makes a grid of a table whose columns have been read for their roles.
class GridMaker {
 public:
    GridMaker(const TableScan& scan, const ChartColumns& roles, const TableOptions& options, bool mayRepeat,
              const Note& note)
        : roles_(roles), options_(options), mayRepeat_(mayRepeat), note_(note), table_(readRoles(scan))
    {
        grid_.name = table_.place.name;
    }

    Grid make()
    {
        const bool isGrouped = roles_.series || !options_.aggregate.empty();
        categories_ = isGrouped ? groupRows(categoryColumns_, table_.rowCount) : keepRows(table_.rowCount);
        if (!mayRepeat_ && !isGrouped && categoryColumns_.size() == 1 && xColumn_ == nullptr) noteRepeated();
        if (roles_.series)
            readLong();
        else
            readWide();
        readCategories();
        readPositions();
        return std::move(grid_);
    }

 private:
    /// The columns stand in the order in which they are asked for here.
    Table readRoles(const TableScan& scan)
    {
        const bool hasDates =
            roles_.x && (!scan.getProfile(*roles_.x).isNumeric() || scan.holdsCompactDates(*roles_.x));
        TableColumns series;
        TableColumns x;
        struct Part {
            Columns columns;
            ColumnRole role;
            TableColumns& read;
        };
        const Part parts[] = {
            {roles_.categories, ColumnRole::Label, categoryColumns_},
            {listColumn(roles_.series), ColumnRole::Label, series},
            {roles_.values, ColumnRole::Value, valueColumns_},
            {roles_.sizes, ColumnRole::Value, sizeColumns_},
            {roles_.errorsPlus, ColumnRole::Value, plusColumns_},
            {roles_.errorsMinus, ColumnRole::Value, minusColumns_},
            {roles_.ownX, ColumnRole::Value, ownXColumns_},
            {listColumn(roles_.x), hasDates ? ColumnRole::Label : ColumnRole::Value, x},
        };
        std::vector<ColumnRequest> requests;
        for (const auto& part : parts)
            for (const auto column : part.columns) requests.push_back({column, part.role});
        auto table = readColumns(scan, requests, options_, note_);
        auto next = table.columns.begin();
        for (const auto& part : parts)
            for (std::size_t i = 0; i < part.columns.size(); ++i) part.read.push_back(&*next++);
        seriesColumn_ = series.empty() ? nullptr : series.front();
        xColumn_ = x.empty() ? nullptr : x.front();
        if (xColumn_ != nullptr && xColumn_->kind == ColumnKind::Text) refuseX(scan);
        return table;
    }
    [[noreturn]] void refuseX(const TableScan& scan) const
    {
        const auto& place = scan.getPlace();
        const auto misfit = scan.getProfile(*roles_.x).getMisfit(DateOrder::DayMonthYear);
        fail("{}: column {}: expected numbers or dates for --x{}.",
             misfit.isSet() ? place.at(misfit.line) : place.name, quoteText(scan.getNames()[*roles_.x]),
             misfit.isSet() ? ", got " + quoteText(misfit.text) : "");
    }

    /// Wide tables name each category once; a name that comes again is the mark of a long one.
    void noteRepeated() const
    {
        const auto& column = *categoryColumns_.front();
        const auto& texts = column.texts;
        if (texts.getTexts().size() == table_.rowCount) return;
        std::vector<bool> seen(texts.getTexts().size(), false);
        for (std::size_t row = 0; row < table_.rowCount; ++row) {
            if (!seen[texts.getIndex(row)]) {
                seen[texts.getIndex(row)] = true;
                continue;
            }
            return note_(fmt::format(
                "{}: {} comes twice in the category column {}; a table with one row for each value "
                "needs --series and --value, and --aggregate makes one value of several.",
                table_.place.at(table_.lines[row]), quoteText(texts[row]), quoteText(column.name)));
        }
    }

    std::vector<double> aggregate(const TableColumn* column) const
    {
        std::vector<Accumulator> sums(categories_.firstRow.size());
        for (std::size_t row = 0; row < table_.rowCount; ++row)
            sums[categories_.ofRow[row]].add(column == nullptr ? 1 : column->numbers[row]);
        std::vector<double> values;
        values.reserve(sums.size());
        for (const auto& sum : sums) values.push_back(sum.get(options_.aggregate));
        return values;
    }

    /// One column for each series, or one for all.
    const std::vector<double>& getExtra(const TableColumns& columns, std::size_t series,
                                        const char* option) const
    {
        static const std::vector<double> none;
        if (columns.empty()) return none;
        if (columns.size() != 1 && columns.size() != valueColumns_.size())
            fail("--{}: expected one column for each series ({}), or one for all, got {}.", option,
                 valueColumns_.size(), columns.size());
        return columns[columns.size() == 1 ? 0 : series]->numbers;
    }

    /// Empty for a series that takes those of the table.
    std::vector<double> getOwnX(const std::string& series) const
    {
        for (const auto* column : ownXColumns_)
            if (column->name == series + columnNames::ownX) return column->numbers;
        return {};
    }

    void readWide()
    {
        requireLimits(grid_.name, valueColumns_.size(),
                      options_.top > 0 || options_.transpose ? 0 : categories_.firstRow.size());
        if (valueColumns_.empty()) grid_.series.push_back({"Count", aggregate(nullptr)});
        for (std::size_t i = 0; i < valueColumns_.size(); ++i) {
            const auto& column = *valueColumns_[i];
            GridSeries series{column.name, options_.aggregate.empty() ? column.numbers : aggregate(&column),
                              getOwnX(column.name)};
            series.details = {options_.aggregate == "count" ? "" : column.numberFormat,
                              getExtra(sizeColumns_, i, "sizes"), getExtra(plusColumns_, i, "errors-plus"),
                              getExtra(minusColumns_, i, "errors-minus")};
            grid_.series.push_back(std::move(series));
        }
    }

    void readLong()
    {
        const auto& names = seriesColumn_->texts;
        std::unordered_map<std::uint64_t, Accumulator> cells;
        for (std::size_t row = 0; row < table_.rowCount; ++row) {
            const auto key = static_cast<std::uint64_t>(names.getIndex(row)) << 32U | categories_.ofRow[row];
            const auto [cell, isNew] = cells.try_emplace(key);
            if (!isNew && options_.aggregate.empty()) refuseSecond(row);
            cell->second.add(valueColumns_.empty() ? 1 : valueColumns_.front()->numbers[row]);
        }
        const auto categoryCount = categories_.firstRow.size();
        requireLimits(grid_.name, names.getTexts().size(), categoryCount);
        for (const auto& name : names.getTexts()) {
            const auto index = grid_.series.size();
            GridSeries series{name, std::vector<double>(categoryCount, gap)};
            for (std::size_t i = 0; i < categoryCount; ++i) {
                const auto cell = cells.find(static_cast<std::uint64_t>(index) << 32U | i);
                if (cell != cells.end())
                    series.values[i] = cell->second.get(options_.aggregate);
                else if (!options_.gaps)
                    refuseMissing(name, categories_.firstRow[i]);
            }
            if (!valueColumns_.empty() && options_.aggregate != "count")
                series.details.numberFormat = valueColumns_.front()->numberFormat;
            grid_.series.push_back(std::move(series));
        }
    }

    [[noreturn]] void refuseSecond(std::size_t row) const
    {
        const auto& category = *categoryColumns_.back();
        fail(
            "{}: a second value for {} {} and {} {}; a long table has one for each pair, and --aggregate "
            "makes one of several.",
            table_.place.at(table_.lines[row]), seriesColumn_->name, quoteText(seriesColumn_->texts[row]),
            category.name, quoteText(category.texts[row]));
    }

    [[noreturn]] void refuseMissing(const std::string& series, std::size_t row) const
    {
        fail("{}: no value for {} {} and category {}; add the row, or ask for --gaps.", table_.place.name,
             seriesColumn_->name, quoteText(series), quoteText(categoryColumns_.back()->texts[row]));
    }

    void readCategories()
    {
        const auto read = [&](const TableColumn& column) {
            std::vector<std::string> texts;
            texts.reserve(categories_.firstRow.size());
            for (const auto row : categories_.firstRow) texts.push_back(column.texts[row]);
            return texts;
        };
        for (const auto* column : categoryColumns_) grid_.categoryNames.push_back(column->name);
        for (std::size_t i = 0; i + 1 < categoryColumns_.size(); ++i)
            grid_.levels.push_back(read(*categoryColumns_[i]));
        grid_.categories = read(*categoryColumns_.back());
    }

    void readPositions()
    {
        const auto& column = xColumn_ != nullptr ? *xColumn_ : *categoryColumns_.back();
        if (column.kind == ColumnKind::Text || (categoryColumns_.size() > 1 && xColumn_ == nullptr)) return;
        for (const auto row : categories_.firstRow) grid_.positions.push_back(column.numbers[row]);
        const bool isDate = column.kind == ColumnKind::Date;
        // Days that are all first of a month, or of a year, are shown as such.
        if (!isDate || column.dateUnit != DateStep::Day) grid_.positionFormat = column.numberFormat;
        if (!isDate)
            grid_.kind = CategoryKind::Number;
        else if (column.dateUnit != DateStep::Quarter || xColumn_ != nullptr)
            grid_.kind = CategoryKind::Date;
    }

    const ChartColumns& roles_;
    const TableOptions& options_;
    bool mayRepeat_;
    const Note& note_;
    TableColumns categoryColumns_;
    const TableColumn* seriesColumn_ = nullptr;
    TableColumns valueColumns_;
    TableColumns sizeColumns_;
    TableColumns plusColumns_;
    TableColumns minusColumns_;
    TableColumns ownXColumns_;
    const TableColumn* xColumn_ = nullptr;
    Table table_;
    Categories categories_;
    Grid grid_;
};

/// A row that adds up the others dwarfs them in a chart.
std::vector<std::u16string> noteTotals(const Grid& grid, const Note& note)
{
    std::vector<std::u16string> totals;
    for (const auto& category : grid.categories) {
        if (!namesTotal(category)) continue;
        note(fmt::format("{}: the row {} looks like a total of others; --drop {} leaves it out.", grid.name,
                         quoteText(category), quoteText(category)));
        totals.push_back(toUtf16(category));
    }
    return totals;
}

/// A column that is read for two ends has one sentence.
Note hearOnce(const Listener& listener)
{
    return [&listener, heard = std::set<std::string>()](const std::string& sentence) mutable {
        if (listener.warning && heard.insert(sentence).second) listener.warning(sentence);
    };
}

ChartData readFrom(std::shared_ptr<RowSource> source, TableOptions options, const Note& note,
                   const TableTarget& target)
{
    const TableScan scan(std::move(source), options, note);
    const auto roles = findChartColumns(scan, options, target, note);
    // Series with X values of their own may differ in length.
    options.gaps = options.gaps || target.hasGaps || !roles.ownX.empty();
    requireRows(scan, roles, options);
    auto grid = GridMaker(scan, roles, options, target.hasRepeated, note).make();
    auto totals = target.hasTotals ? std::vector<std::u16string>() : noteTotals(grid, note);
    shapeGrid(grid, options);
    auto data = makeChartData(grid);
    if (!options.transpose) data.totals = std::move(totals);
    return data;
}

}  // namespace

ChartData readChartData(const std::string& path, const TableOptions& options, const Listener& listener,
                        const TableTarget& target)
{
    checkTableOptions(options);
    const auto note = hearOnce(listener);
    return readFrom(openSource(path, options, note, listener.progress), options, note, target);
}

ChartData readChartData(const std::shared_ptr<RowSource>& rows, const TableOptions& options,
                        const Listener& listener, const TableTarget& target)
{
    checkTableOptions(options);
    auto shaping = options;
    shaping.skip = 0;
    shaping.noHeader = false;
    return readFrom(rows, shaping, hearOnce(listener), target);
}

}  // namespace quillon::report
