#include "report/table/WorkbookSheets.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "report/table/Fail.h"
#include "report/table/Limits.h"

namespace quillon::report {
namespace {

/// Days since 30 December 1899; NaN for a day that does not exist.
double countDays(int year, int month, int day)
{
    using namespace std::chrono;
    constexpr sys_days first = year_month_day{std::chrono::year(1899), December, std::chrono::day(30)};
    const year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day))};
    return date.ok() ? static_cast<double>((sys_days(date) - first).count()) : std::nan("");
}

struct BuiltInFormat {
    std::size_t identifier;
    const char* code;
};
/// The formats that a workbook names by number alone.
constexpr BuiltInFormat builtInFormats[] = {{1, "0"},
                                            {2, "0.00"},
                                            {3, "#,##0"},
                                            {4, "#,##0.00"},
                                            {9, "0%"},
                                            {10, "0.00%"},
                                            {11, "0.00E+00"},
                                            {14, "yyyy-mm-dd"},
                                            {15, "d-mmm-yy"},
                                            {16, "d-mmm"},
                                            {17, "mmm-yy"},
                                            {18, "h:mm AM/PM"},
                                            {19, "h:mm:ss AM/PM"},
                                            {20, "h:mm"},
                                            {21, "h:mm:ss"},
                                            {22, "yyyy-mm-dd h:mm"},
                                            {37, "#,##0"},
                                            {38, "#,##0"},
                                            {39, "#,##0.00"},
                                            {40, "#,##0.00"},
                                            {45, "mm:ss"},
                                            {46, "[h]:mm:ss"},
                                            {47, "mm:ss.0"}};

}  // namespace

const std::string& SharedTexts::getText(std::size_t index) const
{
    static const std::string none;
    return index < texts_.size() ? texts_[index] : none;
}

std::size_t SharedTexts::append(std::string_view text)
{
    texts_.emplace_back(text);
    return texts_.size() - 1;
}

std::size_t SharedTexts::commit_segments()
{
    return append(std::exchange(segments_, {}));
}

void Sheet::requireRoom(std::size_t count) const
{
    if (cells_.size() + count > limits::storedCells)
        fail("The sheet has more than {} cells; CSV files may be larger.", limits::storedCells);
}

void Sheet::add(int row, int column, CellKind kind, double value)
{
    if (!isWanted_ || row < 0 || column < 0 || column >= static_cast<int>(limits::columns)) return;
    requireRoom(1);
    cells_.push_back({row, column, kind, value});
}

const std::vector<SheetCell>& Sheet::sortCells()
{
    const auto place = [](const SheetCell& cell) { return std::pair(cell.row, cell.column); };
    std::stable_sort(cells_.begin(), cells_.end(),
                     [&](const SheetCell& a, const SheetCell& b) { return place(a) < place(b); });
    cells_.erase(std::unique(cells_.begin(), cells_.end(),
                             [&](const SheetCell& a, const SheetCell& b) { return place(a) == place(b); }),
                 cells_.end());
    return cells_;
}

std::size_t Sheet::getFormat(std::int32_t row, std::int32_t column) const
{
    if (const auto found = formats_.find({row, column}); found != formats_.end()) return found->second;
    for (const auto& range : formatRanges_)
        if (row >= range.firstRow && row <= range.lastRow && column >= range.firstColumn &&
            column <= range.lastColumn)
            return range.format;
    return 0;
}

void Sheet::set_auto(int row, int column, std::string_view text)
{
    if (isWanted_) add(row, column, CellKind::Text, static_cast<double>(texts_.append(text)));
}

void Sheet::set_string(int row, int column, orcus_sheet::string_id_t index)
{
    add(row, column, CellKind::Text, static_cast<double>(index));
}

void Sheet::set_value(int row, int column, double value)
{
    add(row, column, CellKind::Number, value);
}

void Sheet::set_bool(int row, int column, bool value)
{
    set_auto(row, column, value ? "true" : "false");
}

void Sheet::set_date_time(int row, int column, int year, int month, int day, int hour, int minute,
                          double second)
{
    add(row, column, CellKind::Date,
        countDays(year, month, day) + (hour * 3600.0 + minute * 60.0 + second) / 86400.0);
}

void Sheet::set_format(int row, int column, std::size_t format)
{
    if (!isWanted_ || format == 0) return;
    if (formats_.size() >= limits::storedCells) requireRoom(limits::storedCells);
    formats_[{row, column}] = format;
}

void Sheet::set_format(int firstRow, int firstColumn, int lastRow, int lastColumn, std::size_t format)
{
    constexpr std::size_t mostRanges = 1000;
    if (isWanted_ && format != 0 && formatRanges_.size() < mostRanges)
        formatRanges_.push_back({firstRow, firstColumn, lastRow, lastColumn, format});
}

void Sheet::fill_down_cells(int row, int column, int count)
{
    const auto found = std::find_if(cells_.rbegin(), cells_.rend(), [&](const SheetCell& cell) {
        return cell.row == row && cell.column == column;
    });
    if (found == cells_.rend() || count <= 0) return;
    requireRoom(static_cast<std::size_t>(count));
    const auto source = *found;
    for (int i = 1; i <= count; ++i) add(row + i, column, source.kind, source.value);
}

void Sheet::set_position(int row, int column)
{
    formulaRow_ = row;
    formulaColumn_ = column;
}

void Sheet::set_result_string(std::string_view text)
{
    set_auto(formulaRow_, formulaColumn_, text);
}

void Sheet::set_result_value(double value)
{
    set_value(formulaRow_, formulaColumn_, value);
}

void Sheet::set_result_bool(bool value)
{
    set_bool(formulaRow_, formulaColumn_, value);
}

bool SheetCollector::isWanted(std::size_t index, std::string_view name) const
{
    if (wanted_.empty()) return index == 0;
    return name == wanted_ || wanted_ == "#" + std::to_string(index + 1);
}

Sheet* SheetCollector::findWanted()
{
    for (auto& sheet : sheets_)
        if (sheet.getName() == wanted_) return &sheet;
    for (std::size_t i = 0; i < sheets_.size(); ++i)
        if (isWanted(i, sheets_[i].getName())) return &sheets_[i];
    return nullptr;
}

std::string SheetCollector::getNumberFormat(std::size_t cellFormat) const
{
    const auto* format = styles_.get_cell_format(cellFormat);
    if (format == nullptr) return {};
    const auto identifier = format->number_format;
    for (std::size_t i = 0; i < styles_.get_number_format_count(); ++i)
        if (const auto* one = styles_.get_number_format(i); one != nullptr && one->identifier == identifier)
            if (!one->format_string.empty()) return std::string(one->format_string);
    for (const auto& one : builtInFormats)
        if (one.identifier == identifier) return one.code;
    return {};
}

orcus_sheet::iface::import_sheet* SheetCollector::append_sheet(int /*index*/, std::string_view name)
{
    const bool wanted = isWanted(sheets_.size(), name);
    return &sheets_.emplace_back(std::string(name), wanted, texts_);
}

orcus_sheet::iface::import_sheet* SheetCollector::get_sheet(std::string_view name)
{
    for (auto& sheet : sheets_)
        if (sheet.getName() == name) return &sheet;
    return nullptr;
}

orcus_sheet::iface::import_sheet* SheetCollector::get_sheet(int index)
{
    return index >= 0 && static_cast<std::size_t>(index) < sheets_.size()
               ? &sheets_[static_cast<std::size_t>(index)]
               : nullptr;
}

void SheetCollector::set_origin_date(int year, int month, int day)
{
    const auto days = countDays(year, month, day);
    // Day 1 of the ordinary calendar is 1 January 1900, a day after its nominal start.
    firstDay_ = std::isnan(days) || days < 3 ? 0 : static_cast<int>(days);
}

}  // namespace quillon::report
