#include "report/fill/SheetCells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <tuple>

#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

const CellValue nothing;

std::optional<double> parseNumber(std::string_view text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) return {};
    return number;
}

std::optional<std::uint32_t> parseCount(std::string_view text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

/// The text of a string item without what is written above it.
std::string readItem(const XmlElement& item)
{
    std::string text;
    for (const auto child : item.getChildren()) {
        if (child.getName() == "t") text += child.getText();
        if (child.getName() == "r") text += child.findChild("t").getText();
    }
    return text;
}

bool isNothing(const CellValue& value)
{
    const auto* number = std::get_if<double>(&value);
    const auto* text = std::get_if<std::u16string>(&value);
    return (number == nullptr || !std::isfinite(*number)) && (text == nullptr || text->empty());
}

/// The text of a cell in the notation of a workbook, which has one for characters that XML cannot hold.
std::string escapeCellText(const std::u16string& text)
{
    return toUtf8(escapeCharacters(text));
}

std::string formatPlace(std::uint32_t row, std::uint32_t column)
{
    return formatArea({row, column, row, column});
}

}  // namespace

std::vector<std::string> readSharedStrings(const Package& workbook)
{
    std::vector<std::string> strings;
    for (const auto& relationship : workbook.getRelationships(workbook.getMainPart())) {
        if (relationship.getKind() != "sharedStrings" || !workbook.hasPart(relationship.target)) continue;
        const XmlSpans xml(workbook.getPart(relationship.target), relationship.target);
        for (const auto item : xml.getRoot().getChildren())
            if (item.getName() == "si") strings.push_back(readItem(item));
    }
    return strings;
}

SheetCells::SheetCells(std::string_view bytes, std::string part, const std::vector<std::string>& strings)
    : xml_(bytes, std::move(part)), data_(xml_.getRoot().findChild("sheetData")), strings_(strings)
{
    if (!xml_.getRoot().is(Ns::Sheet, "worksheet") || !data_)
        throw std::runtime_error("\"" + xml_.getPart() + "\" is no worksheet");
    readRows();
}

void SheetCells::readRows()
{
    for (const auto element : data_.getChildren()) {
        if (!element.is(Ns::Sheet, "row")) continue;
        const auto number = parseCount(element.getAttribute("r").value_or(""));
        if (!number || *number == 0 || (!rows_.empty() && rows_.back().number >= *number - 1))
            throw std::runtime_error("the rows of the sheet have no numbers in order");
        rows_.push_back({*number - 1, element});
        readCells(rows_.back());
    }
}

void SheetCells::readCells(const Row& row)
{
    for (const auto element : row.element.getChildren()) {
        if (!element.is(Ns::Sheet, "c")) continue;
        const auto place = parseArea(element.getAttribute("r").value_or(""));
        const bool isInOrder =
            cells_.empty() || cells_.back().row != row.number || !place || cells_.back().column < place->left;
        if (!place || place->top != row.number || !isInOrder)
            throw std::runtime_error("the cells of the sheet have no places in order");
        cells_.push_back({row.number, place->left, element});
    }
}

const SheetCells::Cell* SheetCells::find(std::uint32_t row, std::uint32_t column) const
{
    const auto at = std::ranges::lower_bound(cells_, std::pair(row, column), {}, [](const Cell& cell) {
        return std::pair(cell.row, cell.column);
    });
    return at != cells_.end() && at->row == row && at->column == column ? &*at : nullptr;
}

const SheetCells::Write* SheetCells::findWrite(std::uint32_t row, std::uint32_t column) const
{
    const auto at = std::ranges::lower_bound(writes_, std::pair(row, column), {}, [](const Write& write) {
        return std::pair(write.row, write.column);
    });
    return at != writes_.end() && at->row == row && at->column == column ? &*at : nullptr;
}

bool SheetCells::isEmpty(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell == nullptr || !cell->element.getFirstChild();
}

bool SheetCells::hasFormula(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell != nullptr && cell->element.findChild("f");
}

bool SheetCells::hasFormulas() const
{
    return std::ranges::any_of(cells_, [](const Cell& cell) { return bool(cell.element.findChild("f")); });
}

int SheetCells::getStyle(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    if (cell == nullptr) return noStyle;
    const auto style = parseCount(cell->element.getAttribute("s").value_or(""));
    return style ? static_cast<int>(*style) : noStyle;
}

CellValue SheetCells::read(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell == nullptr ? CellValue() : read(cell->element);
}

CellValue SheetCells::read(const XmlElement& cell) const
{
    const auto type = cell.getAttribute("t").value_or("n");
    if (type == "inlineStr") return toUtf16(readItem(cell.findChild("is")));
    const auto value = cell.findChild("v");
    if (!value) return {};
    const auto text = value.getText();
    if (type == "str") return toUtf16(text);
    const auto index = parseCount(text);
    if (type == "s" && index && *index < strings_.size()) return toUtf16(strings_[*index]);
    const auto number = type == "n" ? parseNumber(text) : std::nullopt;
    return number ? CellValue(*number) : CellValue();
}

std::optional<Area> SheetCells::getUsedArea() const
{
    std::optional<Area> used;
    for (const auto& cell : cells_) {
        const Area area{cell.row, cell.column, cell.row, cell.column};
        used = used ? used->join(area) : area;
    }
    return used;
}

void SheetCells::write(std::uint32_t row, std::uint32_t column, const CellValue& value, int style)
{
    writes_.push_back({row, column, style, isNothing(value) ? &nothing : &value});
}

void SheetCells::arrangeWrites()
{
    const auto place = [](const Write& write) { return std::pair(write.row, write.column); };
    std::ranges::stable_sort(writes_, {}, place);
    for (std::size_t i = 1; i < writes_.size(); ++i)
        if (place(writes_[i - 1]) == place(writes_[i]) && *writes_[i - 1].value != *writes_[i].value)
            throw std::runtime_error("cell " + formatPlace(writes_[i].row, writes_[i].column) +
                                     " serves several series that now differ");
    const auto repeated = std::ranges::unique(writes_, {}, place);
    writes_.erase(repeated.begin(), repeated.end());
}

const CellValue* SheetCells::findWritten(std::uint32_t row, std::uint32_t column) const
{
    const auto* write = findWrite(row, column);
    return write == nullptr ? nullptr : write->value;
}

void SheetCells::rewrite(std::uint32_t row, std::uint32_t column, const std::u16string& text)
{
    const auto& value = rewritten_.emplace_back(text);
    if (const auto* write = findWrite(row, column)) {
        writes_[static_cast<std::size_t>(write - writes_.data())].value = &value;
        return;
    }
    write(row, column, value, getStyle(row, column));
    arrangeWrites();
}

bool SheetCells::willBeEmpty(std::uint32_t row, std::uint32_t column) const
{
    const auto* written = findWritten(row, column);
    return written != nullptr ? isNothing(*written) : isEmpty(row, column);
}

bool SheetCells::willChange(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    const auto* write = findWrite(row, column);
    return write != nullptr && cell != nullptr && read(cell->element) != *write->value;
}

/// Whether a cell may stay as it is written.
bool SheetCells::isSame(const Write& write, const Cell& cell) const
{
    const auto style = parseCount(cell.element.getAttribute("s").value_or(""));
    const bool hasStyle = write.style == noStyle || (style && static_cast<int>(*style) == write.style);
    if (!hasStyle) return false;
    if (std::holds_alternative<std::monostate>(*write.value)) return !cell.element.getFirstChild();
    if (const auto* text = std::get_if<std::u16string>(write.value)) {
        const auto held = read(cell.element);
        const auto* heldText = std::get_if<std::u16string>(&held);
        return heldText != nullptr && *heldText == escapeCharacters(*text);
    }
    return read(cell.element) == *write.value;
}

/// Makes the new rows: what stays is copied up to where something changes.
class SheetCells::Rewriter {
 public:
    explicit Rewriter(const SheetCells& sheet)
        : sheet_(sheet), prefix_(sheet.data_.getPrefix()), at_(sheet.data_.getInner().begin)
    {
        text_.reserve(sheet.data_.getInner().getSize() + 48 * sheet.writes_.size());
    }

    std::string make()
    {
        const auto& writes = sheet_.writes_;
        for (auto from = writes.begin(); from != writes.end();) {
            const auto to =
                std::find_if(from, writes.end(), [&](const Write& w) { return w.row != from->row; });
            writeRow({from, to});
            from = to;
        }
        copyTo(sheet_.data_.getInner().end);
        return std::move(text_);
    }

 private:
    using Writes = std::ranges::subrange<std::vector<Write>::const_iterator>;

    void copyTo(std::uint32_t position)
    {
        text_ += sheet_.xml_.getText({at_, position});
        at_ = position;
    }

    void writeRow(const Writes& writes)
    {
        const auto number = writes.front().row;
        const auto row = std::ranges::lower_bound(sheet_.rows_, number, {}, &Row::number);
        if (row != sheet_.rows_.end() && row->number == number) return changeRow(*row, writes);
        const bool isEmpty = std::ranges::all_of(writes, [](const Write& w) { return isNothing(*w.value); });
        if (isEmpty) return;
        copyTo(row == sheet_.rows_.end() ? sheet_.data_.getInner().end : row->element.getOuter().begin);
        text_ += "<" + prefix_ + "row r=\"" + std::to_string(number + 1) + "\">";
        for (const auto& write : writes) writeCell(write);
        text_ += "</" + prefix_ + "row>";
    }

    void changeRow(const Row& row, const Writes& writes)
    {
        const bool hasNew = std::ranges::any_of(writes, [this](const Write& w) {
            return !isNothing(*w.value) && sheet_.find(w.row, w.column) == nullptr;
        });
        if (hasNew) openRow(row);
        auto next = row.element.getFirstChild();
        for (const auto& write : writes) {
            while (next && getColumn(next) < write.column) next = next.getNext();
            if (next && getColumn(next) == write.column) {
                changeCell(write, {write.row, write.column, next});
            } else if (!isNothing(*write.value)) {
                if (!row.element.isEmptyTag())
                    copyTo(next ? next.getOuter().begin : row.element.getInner().end);
                writeCell(write);
            }
        }
        if (hasNew && row.element.isEmptyTag()) text_ += "</" + prefix_ + "row>";
    }

    static std::uint32_t getColumn(const XmlElement& cell)
    {
        const auto place = parseArea(cell.getAttribute("r").value_or(""));
        return place ? place->left : 0;
    }

    /// The start tag of a row that gets cells: no longer empty, and without the columns that it announces.
    void openRow(const Row& row)
    {
        const auto tag = row.element.getStartTag();
        copyTo(tag.begin);
        if (const auto spans = row.element.findAttribute(Ns::None, "spans")) {
            constexpr std::uint32_t nameSize = 8;  // A blank, the name, "=" and a quote.
            copyTo(spans->begin - nameSize);
            at_ = spans->end + 1;
        }
        if (!row.element.isEmptyTag()) return copyTo(tag.end);
        copyTo(tag.end - 2);
        text_ += '>';
        at_ = tag.end;
    }

    void changeCell(const Write& write, const Cell& cell)
    {
        if (sheet_.isSame(write, cell)) return;
        copyTo(cell.element.getOuter().begin);
        writeCell(write);
        at_ = cell.element.getOuter().end;
    }

    void writeCell(const Write& write)
    {
        const auto start = "<" + prefix_;
        if (isNothing(*write.value) && write.style == noStyle) return;
        text_ += start + "c r=\"" + formatPlace(write.row, write.column) + "\"";
        if (write.style != noStyle) text_ += " s=\"" + std::to_string(write.style) + "\"";
        if (const auto* number = std::get_if<double>(write.value)) {
            text_ += ">" + start + "v>" + toUtf8(num2str(*number)) + "</" + prefix_ + "v>";
        } else if (const auto* text = std::get_if<std::u16string>(write.value)) {
            text_ += " t=\"inlineStr\">" + start + "is>" + start + "t xml:space=\"preserve\">" +
                     escapeText(escapeCellText(*text)) + "</" + prefix_ + "t></" + prefix_ + "is>";
        } else {
            text_ += "/>";
            return;
        }
        text_ += "</" + prefix_ + "c>";
    }

    const SheetCells& sheet_;
    std::string prefix_;
    std::string text_;
    std::uint32_t at_;
};

void SheetCells::apply(Edits& edits) const
{
    edits.setInner(data_, Rewriter(*this).make());
    const auto dimension = xml_.getRoot().findChild("dimension");
    if (!dimension) return;
    std::optional<Area> used;
    const auto use = [&](std::uint32_t row, std::uint32_t column) {
        if (willBeEmpty(row, column)) return;
        const Area area{row, column, row, column};
        used = used ? used->join(area) : area;
    };
    for (const auto& cell : cells_) use(cell.row, cell.column);
    for (const auto& write : writes_) use(write.row, write.column);
    edits.setAttribute(dimension, "ref", formatArea(used.value_or(Area())));
}

std::string SheetCells::moveRows(std::uint32_t row, std::uint32_t by) const
{
    Edits edits;
    for (const auto& moved : rows_)
        if (moved.number > row) edits.setAttribute(moved.element, "r", std::to_string(moved.number + by + 1));
    for (const auto& cell : cells_)
        if (cell.row > row) edits.setAttribute(cell.element, "r", formatPlace(cell.row + by, cell.column));
    return edits.apply(xml_);
}

}  // namespace quillon::report
