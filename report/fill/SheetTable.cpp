#include "report/fill/SheetTable.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "report/options/QuotedText.h"
#include "report/package/XmlSpans.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// A line end in the name of a column, as a table writes it.
constexpr std::string_view lineEnd = "_x000a_";

std::string decodeName(std::string name)
{
    for (std::size_t at = 0; (at = name.find(lineEnd, at)) != std::string::npos; ++at)
        name.replace(at, lineEnd.size(), "\n");
    return name;
}

std::string encodeName(std::string name)
{
    for (std::size_t at = 0; (at = name.find('\n', at)) != std::string::npos; at += lineEnd.size())
        name.replace(at, 1, lineEnd);
    return name;
}

std::string toText(const CellValue& value)
{
    if (const auto* text = std::get_if<std::string>(&value)) return toUtf8(fromCellText(*text));
    const auto* number = std::get_if<double>(&value);
    return number == nullptr ? "" : toUtf8(num2str(*number));
}

std::uint32_t readCount(const XmlElement& element, std::string_view name, std::uint32_t otherwise)
{
    const auto text = element.getAttribute(name).value_or("");
    std::from_chars(text.data(), text.data() + text.size(), otherwise);
    return otherwise;
}

/// The last row of those areas that stand in the columns of `table`; nothing when none does.
std::optional<std::uint32_t> findLastRow(const std::vector<Area>& areas, const Area& table)
{
    std::optional<std::uint32_t> last;
    for (const auto& area : areas)
        if (area.left <= table.right && table.left <= area.right && area.bottom >= table.top)
            last = std::max(last.value_or(0), area.bottom);
    return last;
}

}  // namespace

std::string foldName(const std::string& name)
{
    return toUtf8(toLowerString(toUtf16(name)));
}

SheetTable::SheetTable(const Package& workbook, std::string part) : part_(std::move(part))
{
    const XmlSpans xml(workbook.getPart(part_), part_);
    const auto root = xml.getRoot();
    name_ = root.getAttribute("displayName").value_or("");
    const auto area = parseArea(root.getAttribute("ref").value_or(""));
    if (!area) throw std::runtime_error("a table of the workbook has no area");
    area_ = *area;
    if (area_.countCells() > maximumCells) throw std::runtime_error("a table of the workbook is too large");
    headerRows_ = readCount(root, "headerRowCount", 1);
    totalsRows_ = readCount(root, "totalsRowCount", 0);
    for (const auto column : root.findChild("tableColumns").getChildren())
        columns_.push_back(decodeName(column.getAttribute("name").value_or("")));
    if (columns_.size() != area_.getWidth()) throw std::runtime_error("a table of the workbook is damaged");
}

std::optional<Area> SheetTable::findColumn(const std::string& name, bool isHeader) const
{
    for (std::uint32_t i = 0; i < columns_.size(); ++i) {
        if (foldName(columns_[i]) != foldName(name)) continue;
        const auto column = area_.left + i;
        if (isHeader) return Area{area_.top, column, area_.top, column};
        return Area{getFirstRow(), column, std::max(area_.bottom - totalsRows_, getFirstRow()), column};
    }
    return {};
}

void SheetTable::follow(SheetCells& sheet, const std::vector<Area>& before, const std::vector<Area>& now,
                        const std::vector<SheetTable>& others)
{
    const auto meets = [this](const Area& area) { return area.overlaps(area_); };
    if (std::ranges::none_of(before, meets) && std::ranges::none_of(now, meets)) return;
    const auto old = area_;
    followDown(sheet, before, now);
    followRight(sheet, now);
    if (totalsRows_ > 0 && area_.bottom != old.bottom)
        throw std::runtime_error("the table " + quoteText(name_) + " has a row of totals");
    for (const auto& other : others)
        if (other.part_ != part_ && other.area_.overlaps(area_))
            throw std::runtime_error("the table " + quoteText(name_) + " would grow into " +
                                     quoteText(other.name_));
    if (area_ != old) isChanged_ = true;
    nameColumns(sheet);
}

void SheetTable::followDown(const SheetCells& sheet, const std::vector<Area>& before,
                            const std::vector<Area>& now)
{
    const auto oldLast = findLastRow(before, area_);
    const auto newLast = findLastRow(now, area_);
    if (!oldLast || !newLast) return;
    if (*oldLast <= area_.bottom && *newLast > area_.bottom) area_.bottom = *newLast;
    if (*oldLast < area_.bottom) return;
    const auto isEmptyRow = [&](std::uint32_t row) {
        for (auto column = area_.left; column <= area_.right; ++column)
            if (!sheet.willBeEmpty(row, column)) return false;
        return true;
    };
    const auto last = std::max(*newLast, getFirstRow());
    while (area_.bottom > last && isEmptyRow(area_.bottom)) --area_.bottom;
}

void SheetTable::followRight(const SheetCells& sheet, const std::vector<Area>& now)
{
    const auto isTaken = [&](std::uint32_t column) {
        return std::ranges::any_of(now, [&](const Area& area) {
            return area.overlaps({area_.top, column, area_.bottom, column});
        });
    };
    while (isTaken(area_.right + 1)) ++area_.right;
    while (area_.right > area_.left && isEmptyColumn(sheet, area_.right)) --area_.right;
}

/// Whether a column that held something is to be empty.
bool SheetTable::isEmptyColumn(const SheetCells& sheet, std::uint32_t column) const
{
    bool wasTaken = false;
    for (auto row = area_.top; row <= area_.bottom; ++row) {
        if (!sheet.willBeEmpty(row, column)) return false;
        if (!sheet.isEmpty(row, column)) wasTaken = true;
    }
    return wasTaken;
}

/// The name of a column is the text in its header: neither empty nor that of another one.
std::string SheetTable::makeName(const SheetCells& sheet, std::uint32_t column, std::size_t index) const
{
    const auto written = sheet.findWritten(area_.top, column);
    std::string name = index < columns_.size() ? columns_[index] : "";
    if (written) name = toText(*written);
    if (name.empty()) name = "Column" + std::to_string(index + 1);
    return name;
}

void SheetTable::nameColumns(SheetCells& sheet)
{
    std::vector<std::string> names;
    std::vector<std::string> taken;
    for (std::size_t i = 0; i < area_.getWidth(); ++i) {
        const auto column = area_.left + static_cast<std::uint32_t>(i);
        const auto wanted = makeName(sheet, column, i);
        auto name = wanted;
        for (int number = 2; std::ranges::find(taken, foldName(name)) != taken.end(); ++number)
            name = wanted + std::to_string(number);
        taken.push_back(foldName(name));
        names.push_back(name);
        const auto written = sheet.findWritten(area_.top, column);
        const bool isHeld = written ? toText(*written) == name : !sheet.isEmpty(area_.top, column);
        if (headerRows_ > 0 && (!isHeld || (written && std::holds_alternative<double>(*written))))
            sheet.rewrite(area_.top, column, toCellText(toUtf16(name)));
    }
    if (headerRows_ == 0 && names.size() == columns_.size()) return;
    if (names != columns_) isChanged_ = true;
    columns_ = std::move(names);
}

namespace {

void saveColumns(const XmlElement& list, const std::vector<std::string>& names, Edits& edits)
{
    std::size_t index = 0;
    std::uint32_t lastId = 0;
    for (const auto column : list.getChildren()) {
        lastId = std::max(lastId, readCount(column, "id", 0));
        if (index < names.size())
            edits.setAttribute(column, "name", encodeName(names[index]));
        else
            edits.remove(column.getOuter());
        ++index;
    }
    for (; index < names.size(); ++index)
        edits.append(list, "<" + std::string(list.getPrefix()) + "tableColumn id=\"" +
                               std::to_string(++lastId) + "\" name=\"" +
                               escapeAttribute(encodeName(names[index])) + "\"/>");
    edits.setAttribute(list, "count", std::to_string(names.size()));
}

}  // namespace

void SheetTable::save(Package& workbook) const
{
    if (!isChanged_) return;
    const XmlSpans xml(workbook.getPart(part_), part_);
    const auto root = xml.getRoot();
    Edits edits;
    edits.setAttribute(root, "ref", formatArea(area_));
    auto filtered = area_;
    filtered.bottom -= totalsRows_;
    if (const auto filter = root.findChild("autoFilter"))
        edits.setAttribute(filter, "ref", formatArea(filtered));
    saveColumns(root.findChild("tableColumns"), columns_, edits);
    workbook.setPart(part_, edits.apply(xml));
}

}  // namespace quillon::report
