#include "report/fill/SheetCells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>
#include <stdexcept>
#include <tuple>

#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

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
    return std::holds_alternative<Nothing>(value);
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

/// Reads rows and cells tag by tag; a sheet may hold very many.
class SheetCells::Reader {
 public:
    explicit Reader(SheetCells& sheet) : sheet_(sheet), scanner_(sheet.xml_.getText(), sheet.data_.getInner())
    {
    }

    void read()
    {
        while (const auto tag = scanner_.next()) {
            if (!tag->isEnd) open(*tag);
            if (tag->isEnd || tag->isEmpty) close(*tag);
        }
    }

 private:
    std::string_view getAttribute(const Tag& tag, std::string_view name) const
    {
        return sheet_.xml_.getText(scanner_.findAttribute(tag, name).value_or(Span()));
    }

    void open(const Tag& tag)
    {
        ++depth_;
        if (depth_ == 1 && tag.name == "row") openRow(tag);
        if (depth_ == 1) isRow_ = tag.name == "row";
        if (depth_ == 2) isCell_ = isRow_ && tag.name == "c";
        if (depth_ == 2 && isCell_) openCell(tag);
        if (depth_ != 3 || !isCell_) return;
        auto& cell = sheet_.cells_.back();
        cell.isEmpty = false;
        if (tag.name == "f") cell.hasFormula = true;
        if (tag.name == "v" || tag.name == "is") cell.value = {tag.span.end, tag.span.end};
    }

    void close(const Tag& tag)
    {
        --depth_;
        const auto end = tag.isEmpty ? tag.span.end : tag.span.begin;
        if (depth_ == 0 && isRow_) sheet_.rows_.back().inner.end = end;
        if (depth_ == 1 && isCell_) closeCell(tag);
        if (depth_ == 2 && isCell_ && (tag.name == "v" || tag.name == "is"))
            sheet_.cells_.back().value.end = end;
    }

    void openRow(const Tag& tag)
    {
        const auto number = parseCount(getAttribute(tag, "r"));
        if (!number || *number == 0 || (!sheet_.rows_.empty() && sheet_.rows_.back().number >= *number - 1))
            throw std::runtime_error("the rows of the sheet have no numbers in order");
        sheet_.rows_.push_back({*number - 1,
                                tag.span,
                                {tag.span.end, tag.span.end},
                                scanner_.findAttribute(tag, "spans").value_or(Span()),
                                scanner_.findAttribute(tag, "r").value_or(Span()),
                                tag.isEmpty});
        lastColumn_ = -1;
    }

    void openCell(const Tag& tag)
    {
        const auto place = parseArea(getAttribute(tag, "r"));
        const auto row = sheet_.rows_.back().number;
        if (!place || place->top != row || std::int64_t{place->left} <= lastColumn_)
            throw std::runtime_error("the cells of the sheet have no places in order");
        lastColumn_ = place->left;
        const auto style = parseCount(getAttribute(tag, "s"));
        sheet_.cells_.push_back({row,
                                 static_cast<std::uint16_t>(place->left),
                                 readKind(getAttribute(tag, "t")),
                                 false,
                                 true,
                                 style ? static_cast<std::int32_t>(*style) : noStyle,
                                 tag.span,
                                 {}});
    }

    void closeCell(const Tag& tag)
    {
        auto& cell = sheet_.cells_.back();
        cell.outer.end = tag.span.end;
        if (cell.value.getSize() == 0) cell.kind = Kind::Nothing;
    }

    static Kind readKind(std::string_view type)
    {
        if (type.empty() || type == "n") return Kind::Number;
        if (type == "s") return Kind::Shared;
        if (type == "str") return Kind::Text;
        return type == "inlineStr" ? Kind::Inline : Kind::Other;
    }

    SheetCells& sheet_;
    TagScanner scanner_;
    int depth_ = 0;
    bool isRow_ = false;
    bool isCell_ = false;
    std::int64_t lastColumn_ = -1;
};

SheetCells::SheetCells(std::string_view bytes, std::string part, const std::vector<std::string>& strings)
    : xml_(bytes, std::move(part), [](Ns, std::string_view name) { return name == "sheetData"; }),
      data_(xml_.getRoot().findChild("sheetData")),
      strings_(strings)
{
    if (!xml_.getRoot().is(Ns::Sheet, "worksheet") || !data_)
        throw std::runtime_error(quoteText(xml_.getPart(), 200) + " is not a worksheet");
    reserveCells();
    Reader(*this).read();
}

/// Counts first, so that a large sheet is not held twice while its list grows.
void SheetCells::reserveCells()
{
    std::size_t rows = 0;
    std::size_t cells = 0;
    TagScanner scanner(xml_.getText(), data_.getInner());
    while (const auto tag = scanner.next()) {
        if (!tag->isEnd && tag->name == "row") ++rows;
        if (!tag->isEnd && tag->name == "c") ++cells;
    }
    rows_.reserve(rows);
    cells_.reserve(cells);
}

const SheetCells::Cell* SheetCells::find(std::uint32_t row, std::uint32_t column) const
{
    const auto at = std::ranges::lower_bound(cells_, std::pair(row, column), {}, [](const Cell& cell) {
        return std::pair<std::uint32_t, std::uint32_t>(cell.row, cell.column);
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
    return cell == nullptr || cell->isEmpty;
}

bool SheetCells::hasFormula(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell != nullptr && cell->hasFormula;
}

bool SheetCells::hasFormulas() const
{
    return std::ranges::any_of(cells_, &Cell::hasFormula);
}

int SheetCells::getStyle(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell == nullptr ? noStyle : cell->style;
}

CellValue SheetCells::read(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell == nullptr ? CellValue() : read(*cell);
}

CellValue SheetCells::read(const Cell& cell) const
{
    const auto text = xml_.getText(cell.value);
    if (cell.kind == Kind::Inline) return readInline(cell.value);
    if (cell.kind == Kind::Text) return unescapeText(text);
    const auto index = parseCount(text);
    if (cell.kind == Kind::Shared && index && *index < strings_.size()) return strings_[*index];
    const auto number = cell.kind == Kind::Number ? parseNumber(text) : std::nullopt;
    return number ? CellValue(*number) : CellValue();
}

/// The texts of a cell's own string without what is written above them.
std::string SheetCells::readInline(Span markup) const
{
    std::string text;
    TagScanner scanner(xml_.getText(), markup);
    bool isAbove = false;
    std::uint32_t start = 0;
    while (const auto tag = scanner.next()) {
        if (tag->name == "rPh") isAbove = !tag->isEnd && !tag->isEmpty;
        if (tag->name != "t" || isAbove || tag->isEmpty) continue;
        if (tag->isEnd)
            text += unescapeText(xml_.getText({start, tag->span.begin}));
        else
            start = tag->span.end;
    }
    return text;
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

void SheetCells::write(std::uint32_t row, std::uint32_t column, const CellLine* line, std::size_t index,
                       int style)
{
    writes_.push_back({row, column, style, static_cast<std::uint32_t>(index), line});
}

void SheetCells::arrangeWrites()
{
    const auto place = [](const Write& write) { return std::pair(write.row, write.column); };
    std::ranges::stable_sort(writes_, {}, place);
    for (std::size_t i = 1; i < writes_.size(); ++i)
        if (place(writes_[i - 1]) == place(writes_[i]) && writes_[i - 1].get() != writes_[i].get())
            throw std::runtime_error("cell " + formatPlace(writes_[i].row, writes_[i].column) +
                                     " serves several series that now differ");
    const auto isRepeated = [&](const Write& one, const Write& next) { return place(one) == place(next); };
    writes_.erase(std::unique(writes_.begin(), writes_.end(), isRepeated), writes_.end());
}

std::optional<CellValue> SheetCells::findWritten(std::uint32_t row, std::uint32_t column) const
{
    const auto* write = findWrite(row, column);
    return write == nullptr ? std::nullopt : std::optional(write->get());
}

void SheetCells::rewrite(std::uint32_t row, std::uint32_t column, const std::string& text)
{
    const auto& line = rewritten_.emplace_back(text);
    if (const auto* write = findWrite(row, column)) {
        auto& changed = writes_[static_cast<std::size_t>(write - writes_.data())];
        changed.line = &line;
        changed.index = 0;
        return;
    }
    write(row, column, &line, 0, getStyle(row, column));
    arrangeWrites();
}

bool SheetCells::willBeEmpty(std::uint32_t row, std::uint32_t column) const
{
    const auto* write = findWrite(row, column);
    return write != nullptr ? isNothing(write->get()) : isEmpty(row, column);
}

bool SheetCells::willChange(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    const auto* write = findWrite(row, column);
    return write != nullptr && cell != nullptr && read(*cell) != write->get();
}

/// Whether a cell may stay as it is written.
bool SheetCells::isSame(const Write& write, const Cell& cell) const
{
    if (write.style != noStyle && write.style != cell.style) return false;
    const auto value = write.get();
    return isNothing(value) ? cell.isEmpty : read(cell) == value;
}

std::vector<std::uint32_t> SheetCells::findStrings(bool areLeft) const
{
    std::vector<std::uint32_t> found;
    for (const auto& cell : cells_) {
        if (cell.kind != Kind::Shared) continue;
        const auto* write = findWrite(cell.row, cell.column);
        const bool isLeft = write != nullptr && !isSame(*write, cell);
        const auto index = parseCount(xml_.getText(cell.value));
        if (isLeft == areLeft && index) found.push_back(*index);
    }
    return found;
}

std::vector<std::uint32_t> SheetCells::findLeftStrings() const
{
    return findStrings(true);
}

std::vector<std::uint32_t> SheetCells::findKeptStrings() const
{
    return findStrings(false);
}

bool SheetCells::willStay() const
{
    return std::ranges::all_of(writes_, [this](const Write& write) {
        const auto* cell = find(write.row, write.column);
        return cell != nullptr ? isSame(write, *cell) : isNothing(write.get());
    });
}

/// Makes the new rows: what stays is copied up to where something changes.
class SheetCells::Rewriter {
 public:
    /// Appends to `text`.
    Rewriter(const SheetCells& sheet, std::string text)
        : sheet_(sheet),
          prefix_(sheet.data_.getPrefix()),
          text_(std::move(text)),
          at_(sheet.data_.getInner().begin)
    {
        text_.reserve(sheet.xml_.getText().size() + 16 * sheet.writes_.size());
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
    using Writes = std::span<const Write>;

    void copyTo(std::uint32_t position)
    {
        text_ += sheet_.xml_.getText({at_, position});
        at_ = position;
    }

    void writeRow(Writes writes)
    {
        const auto number = writes.front().row;
        const auto row = std::ranges::lower_bound(sheet_.rows_, number, {}, &Row::number);
        if (row != sheet_.rows_.end() && row->number == number) return changeRow(*row, writes);
        const bool isEmpty = std::ranges::all_of(writes, [](const Write& w) { return isNothing(w.get()); });
        if (isEmpty) return;
        copyTo(row == sheet_.rows_.end() ? sheet_.data_.getInner().end : row->startTag.begin);
        text_ += "<" + prefix_ + "row r=\"" + std::to_string(number + 1) + "\">";
        for (const auto& write : writes) writeCell(write);
        text_ += "</" + prefix_ + "row>";
    }

    void changeRow(const Row& row, Writes writes)
    {
        const bool hasNew = std::ranges::any_of(writes, [this](const Write& w) {
            return sheet_.find(w.row, w.column) == nullptr && !isNothing(w.get());
        });
        if (hasNew) openRow(row);
        auto next = std::ranges::lower_bound(sheet_.cells_, row.number, {}, &Cell::row);
        const auto isInRow = [&] { return next != sheet_.cells_.end() && next->row == row.number; };
        for (const auto& write : writes) {
            while (isInRow() && next->column < write.column) ++next;
            if (isInRow() && next->column == write.column) {
                changeCell(write, *next);
            } else if (!isNothing(write.get())) {
                if (!row.isEmptyTag) copyTo(isInRow() ? next->outer.begin : row.inner.end);
                writeCell(write);
            }
        }
        if (hasNew && row.isEmptyTag) text_ += "</" + prefix_ + "row>";
    }

    /// The start tag of a row that gets cells: no longer empty, and without the columns that it announces.
    void openRow(const Row& row)
    {
        const auto tag = row.startTag;
        copyTo(tag.begin);
        if (row.columns.end != 0) {
            constexpr std::uint32_t nameSize = 8;  // A blank, the name, "=" and a quote.
            copyTo(row.columns.begin - nameSize);
            at_ = row.columns.end + 1;
        }
        if (!row.isEmptyTag) return copyTo(tag.end);
        copyTo(tag.end - 2);
        text_ += '>';
        at_ = tag.end;
    }

    void changeCell(const Write& write, const Cell& cell)
    {
        if (sheet_.isSame(write, cell)) return;
        copyTo(cell.outer.begin);
        writeCell(write);
        at_ = cell.outer.end;
    }

    void writeCell(const Write& write)
    {
        const auto start = "<" + prefix_;
        const auto value = write.get();
        if (isNothing(value) && write.style == noStyle) return;
        text_ += start + "c r=\"" + formatPlace(write.row, write.column) + "\"";
        if (write.style != noStyle) text_ += " s=\"" + std::to_string(write.style) + "\"";
        if (const auto* number = std::get_if<double>(&value)) {
            text_ += ">" + start + "v>" + toUtf8(num2str(*number)) + "</" + prefix_ + "v>";
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            text_ += " t=\"inlineStr\">" + start + "is>" + start + "t xml:space=\"preserve\">" +
                     escapeText(*text) + "</" + prefix_ + "t></" + prefix_ + "is>";
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

std::string SheetCells::apply(Edits& before, Edits& behind)
{
    applyDimension(before);
    const auto text = xml_.getText();
    const auto rows = data_.getInner();
    const auto end = static_cast<std::uint32_t>(text.size());
    if (data_.isEmptyTag()) {
        before.setInner(data_, Rewriter(*this, "").make());
        return xml_.encode(before.apply(text, {0, rows.begin}) + behind.apply(text, {rows.end, end}));
    }
    // In one go: a second text of this size would be the largest thing in memory.
    auto changed = Rewriter(*this, before.apply(text, {0, rows.begin})).make();
    changed += behind.apply(text, {rows.end, end});
    return xml_.encode(std::move(changed));
}

void SheetCells::applyDimension(Edits& edits) const
{
    const auto dimension = xml_.getRoot().findChild("dimension");
    if (!dimension) return;
    std::optional<Area> used;
    const auto use = [&](std::uint32_t row, std::uint32_t column) {
        const Area area{row, column, row, column};
        used = used ? used->join(area) : area;
    };
    for (const auto& cell : cells_)
        if (!cell.isEmpty && findWrite(cell.row, cell.column) == nullptr) use(cell.row, cell.column);
    for (const auto& write : writes_)
        if (!isNothing(write.get())) use(write.row, write.column);
    edits.setAttribute(dimension, "ref", formatArea(used.value_or(Area())));
}

std::string SheetCells::moveRows(std::uint32_t row, std::uint32_t by) const
{
    Edits edits;
    for (const auto& moved : rows_)
        if (moved.number > row) edits.replace(moved.place, std::to_string(moved.number + by + 1));
    for (const auto& cell : cells_) {
        if (cell.row <= row) continue;
        TagScanner scanner(xml_.getText(), cell.outer);
        if (const auto tag = scanner.next())
            edits.replace(scanner.findAttribute(*tag, "r").value_or(Span()),
                          formatPlace(cell.row + by, cell.column));
    }
    return edits.apply(xml_);
}

}  // namespace quillon::report
