#include "report/fill/SheetMarkup.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/package/Edits.h"
#include "report/package/TagScanner.h"
#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

using Kind = SheetCell::Kind;

Kind readKind(std::string_view type)
{
    if (type.empty() || type == "n") return Kind::Number;
    if (type == "s") return Kind::Shared;
    if (type == "str") return Kind::Text;
    return type == "inlineStr" ? Kind::Inline : Kind::Other;
}

bool isData(Ns /*ns*/, std::string_view name)
{
    return name == "sheetData";
}

}  // namespace

/// Reads rows and cells tag by tag; a sheet may hold very many.
class SheetMarkup::Reader {
 public:
    explicit Reader(SheetMarkup& sheet)
        : sheet_(sheet), scanner_(sheet.xml_.getText(), sheet.data_.getInner())
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
        if (tag.name == "f") cell.hasFormula = sheet_.hasFormulas_ = true;
        if (tag.name == "v" || tag.name == "is") cell.value = {tag.span.end, tag.span.end};
    }

    void close(const Tag& tag)
    {
        --depth_;
        const auto end = tag.isEmpty ? tag.span.end : tag.span.begin;
        if (depth_ == 0 && isRow_) sheet_.rows_.back().end = end;
        if (depth_ == 1 && isCell_) closeCell(tag);
        if (depth_ == 2 && isCell_ && (tag.name == "v" || tag.name == "is"))
            sheet_.cells_.back().value.end = end;
    }

    void openRow(const Tag& tag)
    {
        const auto number = readPlainNumber<std::uint32_t>(getAttribute(tag, "r"));
        if (!number || *number == 0 || (!sheet_.rows_.empty() && sheet_.rows_.back().number >= *number - 1))
            throw std::runtime_error("the rows of the sheet have no numbers in order");
        sheet_.rows_.push_back({*number - 1, tag.span, tag.span.end, tag.isEmpty});
        lastColumn_ = -1;
    }

    void openCell(const Tag& tag)
    {
        const auto place = parseArea(getAttribute(tag, "r"));
        const auto row = sheet_.rows_.back().number;
        if (!place || place->top != row || std::int64_t{place->left} <= lastColumn_)
            throw std::runtime_error("the cells of the sheet have no places in order");
        lastColumn_ = place->left;
        const Area cell{row, place->left, row, place->left};
        sheet_.usedArea_ = sheet_.usedArea_.value_or(cell).join(cell);
        const auto style = readPlainNumber<std::uint32_t>(getAttribute(tag, "s"));
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

    SheetMarkup& sheet_;
    TagScanner scanner_;
    int depth_ = 0;
    bool isRow_ = false;
    bool isCell_ = false;
    std::int64_t lastColumn_ = -1;
};

SheetMarkup::SheetMarkup(std::string_view bytes, std::string part, const WorkbookStrings& strings)
    : xml_(bytes, std::move(part), isData), data_(xml_.getRoot().findChild("sheetData")), strings_(strings)
{
    if (!xml_.getRoot().is(Ns::Sheet, "worksheet") || !data_)
        throw std::runtime_error(quoteText(xml_.getPart(), 200) + " is not a worksheet");
    reserveCells();
    Reader(*this).read();
}

/// Counts first, so that a large sheet is not held twice while its list grows.
void SheetMarkup::reserveCells()
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

const SheetCell* SheetMarkup::find(std::uint32_t row, std::uint32_t column) const
{
    const auto at = std::ranges::lower_bound(cells_, std::pair(row, column), {}, [](const SheetCell& cell) {
        return std::pair<std::uint32_t, std::uint32_t>(cell.row, cell.column);
    });
    return at != cells_.end() && at->row == row && at->column == column ? &*at : nullptr;
}

bool SheetMarkup::isEmpty(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell == nullptr || cell->isEmpty;
}

bool SheetMarkup::hasFormula(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell != nullptr && cell->hasFormula;
}

int SheetMarkup::getStyle(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = find(row, column);
    return cell == nullptr ? noStyle : cell->style;
}

std::optional<std::uint32_t> SheetMarkup::readShared(const SheetCell& cell) const
{
    const auto position =
        cell.kind == Kind::Shared ? readPlainNumber<std::uint32_t>(xml_.getText(cell.value)) : std::nullopt;
    return position && *position < strings_.getSize() ? position : std::nullopt;
}

CellValue SheetMarkup::read(const SheetCell& cell) const
{
    if (cell.kind == Kind::Inline) return readStringItem(xml_.getText(), cell.value);
    const auto text = xml_.getText(cell.value);
    if (cell.kind == Kind::Text) return unescapeText(text);
    if (const auto position = readShared(cell)) return strings_.getText(*position);
    const auto number = cell.kind == Kind::Number ? readPlainNumber<double>(text) : std::nullopt;
    return number ? CellValue(*number) : CellValue();
}

Span SheetMarkup::findAttribute(Span startTag, std::string_view name) const
{
    TagScanner scanner(xml_.getText(), startTag);
    const auto tag = scanner.next();
    return tag ? scanner.findAttribute(*tag, name).value_or(Span()) : Span();
}

std::string SheetMarkup::moveRows(std::uint32_t row, std::uint32_t by) const
{
    Edits edits;
    for (const auto& moved : rows_)
        if (moved.number > row)
            edits.replace(findAttribute(moved.startTag, "r"), std::to_string(moved.number + by + 1));
    for (const auto& cell : cells_)
        if (cell.row > row)
            edits.replace(findAttribute(cell.outer, "r"), formatCell(cell.row + by, cell.column));
    return edits.apply(xml_);
}

}  // namespace quillon::report
