#include "report/table/TableScan.h"

#include <algorithm>

#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/table/CellText.h"
#include "report/table/DateChoice.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

constexpr std::size_t listedNames = 10;

/// The cells up to the last one that is filled.
std::size_t countCells(const Row& row)
{
    auto count = row.cells.size();
    while (count > 0 && row.cells[count - 1].isEmpty()) --count;
    return count;
}

/// Whether a name with a comma, typed without quotes, gives this item of a list.
bool isPart(const std::string& item, const std::string& name)
{
    return name.starts_with(item + ",") || (name.find(',') != std::string::npos && name.ends_with(item));
}

bool holdsWords(std::string_view text)
{
    return text.find(' ') != std::string_view::npos || text.starts_with('*');
}

}  // namespace

std::string listNames(const std::vector<std::string>& names)
{
    std::string list;
    for (std::size_t i = 0; i < names.size() && i < listedNames; ++i)
        list += (list.empty() ? "" : ", ") + quoteText(names[i]);
    if (names.size() > listedNames) list += fmt::format(" and {} more", names.size() - listedNames);
    return list;
}

TableScan::TableScan(std::shared_ptr<RowSource> source, const TableOptions& options, const Note& note)
    : source_(std::move(source)), options_(options), layout_(findLayout(*source_, options, note))
{
    const ColumnProfile empty(listStyles(options), options.missing);
    profiles_.assign(layout_.names.size(), empty);
    filter_ = std::make_unique<RowFilter>(makeFilter());
    profileRows(note);
    requireNames();
    if (rowCount_ == 0)
        fail("{}: the table has a header row and no rows of data{}{}.", getPlace().name,
             describeSkip(options), getPlace().hint);
    filter_->noteUnknown(getPlace(), note);
    if (keptCount_ == 0) filter_->refuseAll(getPlace(), layout_.names);
}

std::shared_ptr<StoredRows> TableScan::makeEmptyRows() const
{
    auto rows = std::make_shared<StoredRows>(getPlace(), true, source_->getLikelyDecimal(), 0);
    rows->setNumbersRows(hasRowNumbers());
    return rows;
}

bool TableScan::hasUnnamedFirst() const
{
    const auto& name = layout_.names.front();
    return layout_.names.size() > 2 && (name.empty() || name == "index" || name == "Unnamed: 0");
}

RowFilter TableScan::makeFilter() const
{
    std::vector<RowFilter::Condition> conditions;
    for (const auto& condition : options_.where) {
        const auto [name, text] = splitCondition(condition);
        conditions.push_back({findColumn(name, "--where"), {text}});
    }
    std::vector<std::size_t> dropColumns;
    for (const auto& name : options_.category) dropColumns.push_back(findColumn(name, "--category"));
    // Without a category column it is the first, or the second where that numbers the rows.
    if (dropColumns.empty()) dropColumns.push_back(0);
    if (options_.category.empty() && hasUnnamedFirst()) dropColumns.push_back(1);
    return {std::move(conditions), options_.drop, std::move(dropColumns)};
}

void TableScan::profileRows(const Note& note)
{
    std::size_t position = 0;
    bool afterBlank = false;
    source_->read([&](const Row& row) {
        const bool isBlank = isEmptyRow(row);
        if (!isBlank && position++ >= layout_.firstRow && !holdBack(row, afterBlank || row.afterBlank)) {
            releaseHeld();
            addRow(row);
        }
        afterBlank = isBlank;
        return true;
    });
    if (!held_.empty()) noteLeftOut(getPlace(), held_.front().line, held_.back().line, "below", note);
}

bool TableScan::holdBack(const Row& row, bool afterBlank)
{
    if (layout_.names.size() < 2 || countCells(row) != 1 || row.cells.front().kind != CellKind::Text)
        return false;
    const bool isShort = row.cells.size() < layout_.names.size();
    const auto text = row.cells.front().text;
    if (!afterBlank && held_.empty() && !(isShort && holdsWords(text))) return false;
    held_.push_back({row.line, std::string(text), isShort});
    return true;
}

void TableScan::releaseHeld()
{
    const auto held = std::exchange(held_, {});
    std::vector<Cell> cells(layout_.names.size());
    for (const auto& row : held) {
        cells.front().text = row.text;
        addRow({row.line, false, row.isShort ? std::span(cells).first(1) : std::span(cells)});
    }
}

void TableScan::addRow(const Row& row)
{
    requireWidth(row);
    isCounting_ = isCounting_ && countsRow(row.cells.front());
    ++rowCount_;
    if (!filter_->keeps(row)) return;
    ++keptCount_;
    for (std::size_t i = 0; i < profiles_.size(); ++i) profiles_[i].add(row.cells[i], row.line);
}

bool TableScan::countsRow(const Cell& first) const
{
    const auto number =
        first.kind == CellKind::Number ? std::optional(first.number) : readNumber(first.text, {'.', ""});
    const auto row = static_cast<double>(rowCount_);
    return number && (*number == row || *number == row + 1);
}

void TableScan::requireWidth(const Row& row) const
{
    const auto width = layout_.names.size();
    if (row.cells.size() == width || (row.cells.size() > width && countCells(row) <= width)) return;
    const auto got = row.cells.size() > width ? countCells(row) : row.cells.size();
    fail(
        "{}: expected {} {}{}, got {}; a field that holds the delimiter stands in quotes, --delimiter names "
        "another, and --skip leaves out lines above the header.",
        getPlace().at(row.line), width, width == 1 ? "field" : "fields",
        layout_.headerLine > 0 ? ", as in the header row" : ", as in the rows above", got);
}

void TableScan::requireNames() const
{
    const bool isChosen = !options_.columns.empty() || !options_.value.empty();
    for (std::size_t i = 1; i < profiles_.size() && !isChosen; ++i)
        if (layout_.names[i].empty() && (profiles_[i].getFilled() > 0 || rowCount_ == 0))
            fail(
                "{}: column {} has no name; name it, choose others by --columns, or leave out lines above "
                "the header by --skip{}.",
                getPlace().at(layout_.headerLine), i + 1,
                getPlace().countsLines ? "" : "; --range names the cells of the table");
}

std::size_t TableScan::findColumn(const std::string& name, const char* option) const
{
    const auto& names = layout_.names;
    const auto found = std::find(names.begin(), names.end(), name);
    if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
    const auto position =
        name.starts_with('#') ? readPlainNumber<std::size_t>(name.substr(1)).value_or(0) : 0;
    if (position >= 1 && position <= names.size()) return position - 1;
    const auto whole = std::ranges::find_if(names, [&](const auto& one) { return isPart(name, one); });
    fail("{}: {}: there is no column {}; the columns are {}{}", getPlace().name, option, quoteText(name),
         listNames(names),
         whole == names.end() ? suggestName(name, names)
                              : fmt::format("; a name with a comma stands in double quotes, as in '{}'.",
                                            putInQuotes(*whole)));
}

bool TableScan::decides(const ColumnProfile& profile, char decimal) const
{
    bool fits = false;
    bool fitsOther = false;
    for (const auto& reading : profile.getReadings())
        (reading.style.decimal == decimal ? fits : fitsOther) = profile.fits(reading);
    return fits && !fitsOther && profile.getReadings().size() > 1;
}

std::optional<char> TableScan::findDecimal() const
{
    const auto speaksFor = [this](char decimal) {
        return std::any_of(profiles_.begin(), profiles_.end(),
                           [&](const ColumnProfile& profile) { return decides(profile, decimal); });
    };
    const bool point = speaksFor('.');
    const bool comma = speaksFor(',');
    if (point != comma) return point ? '.' : ',';
    return point ? std::nullopt : source_->getLikelyDecimal();
}

const ColumnProfile::Reading& TableScan::chooseReading(std::size_t column) const
{
    const auto& profile = profiles_[column];
    if (const auto conflict = profile.findUnitConflict()) {
        const auto& [usual, other] = *conflict;
        fail(
            "{}: column {}: {} stands among values {}; the values of a column have one unit; --columns "
            "chooses others.",
            getPlace().at(other.first.line), quoteText(layout_.names[column]), quoteText(other.first.text),
            usual.symbol.empty() ? "without a unit" : "in " + usual.symbol);
    }
    const auto& readings = profile.getReadings();
    if (readings.size() == 1) return readings.front();
    const auto& point = readings[0];
    const auto& comma = readings[1];
    if (point.count != comma.count) return point.count > comma.count ? point : comma;
    if (!decimal_) decimal_ = findDecimal();
    const auto decimal = *decimal_;
    if (!decimal && profile.getDiffering().isSet()) refuseAmbiguous(column);
    return decimal == ',' ? comma : point;
}

void TableScan::refuseAmbiguous(std::size_t column) const
{
    const auto& sample = profiles_[column].getDiffering();
    const auto digits = readNumberText(sample.text)->digits;
    const auto& readings = profiles_[column].getReadings();
    fail(
        "{}: column {}: {} can be {} (decimal point) or {} (decimal comma); --decimal point or --decimal "
        "comma settles it.",
        getPlace().at(sample.line), quoteText(layout_.names[column]), quoteText(sample.text),
        writeNumber(readDigits(digits, readings[0].style)->value),
        writeNumber(readDigits(digits, readings[1].style)->value));
}

std::optional<DateOrder> TableScan::chooseDateOrder(std::size_t column, const Note& note) const
{
    return report::chooseDateOrder({profiles_[column], getPlace(), layout_.names[column], options_.dates},
                                   note);
}

void TableScan::readRows(const RowSource::Handler& handler) const
{
    std::size_t position = 0;
    std::size_t handed = 0;
    std::vector<Cell> cells(layout_.names.size());
    source_->read([&](const Row& row) {
        if (isEmptyRow(row) || position++ < layout_.firstRow) return true;
        if (handed++ == rowCount_) return false;
        if (row.cells.size() < cells.size())
            fail("{}: the file changed while it was read.", getPlace().at(row.line));
        std::copy_n(row.cells.begin(), cells.size(), cells.begin());
        const Row kept{row.line, row.afterBlank, cells};
        return !filter_->keeps(kept) || handler(kept);
    });
}

}  // namespace quillon::report
