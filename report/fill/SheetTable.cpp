#include "report/fill/SheetTable.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/package/Edits.h"
#include "report/package/XmlText.h"
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
    return readPlainNumber<std::uint32_t>(element.getAttribute(name).value_or("")).value_or(otherwise);
}

/// The last row of those areas that stand in the columns of `table`; nothing when none does.
std::optional<std::uint32_t> findLastRow(const AreaSet& areas, const Area& table)
{
    std::optional<std::uint32_t> last;
    for (const auto& area : areas.getAreas())
        if (area.left <= table.right && table.left <= area.right && area.bottom >= table.top)
            last = std::max(last.value_or(0), area.bottom);
    return last;
}

}  // namespace

SheetTable::SheetTable(const Package& workbook, const std::string& part)
    : xml_(std::make_shared<const XmlSpans>(workbook.getPart(part), part))
{
    const auto root = xml_->getRoot();
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
        if (toLower(columns_[i]) != toLower(name)) continue;
        const auto column = area_.left + i;
        if (isHeader) return Area{area_.top, column, area_.top, column};
        return Area{getFirstRow(), column, std::max(area_.bottom - totalsRows_, getFirstRow()), column};
    }
    return {};
}

void SheetTable::follow(const SheetMarkup& sheet, CellWrites& writes, const AreaSet& before,
                        const AreaSet& now, const std::vector<SheetTable>& others)
{
    if (!before.overlaps(area_) && !now.overlaps(area_)) return;
    const auto old = area_;
    followDown(writes, before, now);
    followRight(sheet, writes, now);
    if (totalsRows_ > 0 && area_.bottom != old.bottom)
        throw std::runtime_error("the table " + quoteText(name_) + " has a row of totals");
    for (const auto& other : others)
        if (other.xml_ != xml_ && other.area_.overlaps(area_))
            throw std::runtime_error("the table " + quoteText(name_) + " would grow into " +
                                     quoteText(other.name_));
    if (area_ != old) isChanged_ = true;
    nameColumns(sheet, writes);
}

void SheetTable::followDown(const CellWrites& writes, const AreaSet& before, const AreaSet& now)
{
    const auto oldLast = findLastRow(before, area_);
    const auto newLast = findLastRow(now, area_);
    if (!oldLast || !newLast) return;
    if (*oldLast <= area_.bottom && *newLast > area_.bottom) area_.bottom = *newLast;
    if (*oldLast < area_.bottom) return;
    const auto isEmptyRow = [&](std::uint32_t row) {
        for (auto column = area_.left; column <= area_.right; ++column)
            if (!writes.leavesEmpty(row, column)) return false;
        return true;
    };
    const auto last = std::max(*newLast, getFirstRow());
    while (area_.bottom > last && isEmptyRow(area_.bottom)) --area_.bottom;
}

void SheetTable::followRight(const SheetMarkup& sheet, const CellWrites& writes, const AreaSet& now)
{
    const auto isTaken = [&](std::uint32_t column) {
        return now.overlaps({area_.top, column, area_.bottom, column});
    };
    while (isTaken(area_.right + 1)) ++area_.right;
    while (area_.right > area_.left && losesColumn(sheet, writes, area_.right)) --area_.right;
}

/// Whether a column that held something is to be empty.
bool SheetTable::losesColumn(const SheetMarkup& sheet, const CellWrites& writes, std::uint32_t column) const
{
    bool wasTaken = false;
    for (auto row = area_.top; row <= area_.bottom; ++row) {
        if (!writes.leavesEmpty(row, column)) return false;
        if (!sheet.isEmpty(row, column)) wasTaken = true;
    }
    return wasTaken;
}

/// The name of a column is the text in its header: neither empty nor that of another one.
std::string SheetTable::makeName(const CellWrites& writes, std::uint32_t column, std::size_t index) const
{
    const auto written = writes.find(area_.top, column);
    std::string name = index < columns_.size() ? columns_[index] : "";
    if (written) name = toText(*written);
    if (name.empty()) name = "Column" + std::to_string(index + 1);
    return name;
}

void SheetTable::nameColumns(const SheetMarkup& sheet, CellWrites& writes)
{
    std::vector<std::string> names;
    std::unordered_set<std::string> taken;
    // How many columns a name has been looked for already.
    std::unordered_map<std::string, int> counts;
    for (std::size_t i = 0; i < area_.getWidth(); ++i) {
        const auto column = area_.left + static_cast<std::uint32_t>(i);
        const auto wanted = makeName(writes, column, i);
        auto name = wanted;
        for (auto& count = counts[toLower(wanted)]; !taken.insert(toLower(name)).second; ++count)
            name = wanted + std::to_string(count + 2);
        names.push_back(name);
        const auto written = writes.find(area_.top, column);
        const bool isHeld = written ? toText(*written) == name : !sheet.isEmpty(area_.top, column);
        if (headerRows_ > 0 && (!isHeld || (written && std::holds_alternative<double>(*written))))
            writes.rewrite(area_.top, column, toCellText(toUtf16(name)));
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
    const auto root = xml_->getRoot();
    Edits edits;
    edits.setAttribute(root, "ref", formatArea(area_));
    auto filtered = area_;
    filtered.bottom -= totalsRows_;
    if (const auto filter = root.findChild("autoFilter"))
        edits.setAttribute(filter, "ref", formatArea(filtered));
    saveColumns(root.findChild("tableColumns"), columns_, edits);
    workbook.setPart(xml_->getPart(), edits.apply(*xml_));
}

}  // namespace quillon::report
