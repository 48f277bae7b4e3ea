#include "report/fill/SheetWriter.h"

#include <algorithm>
#include <span>
#include <utility>

#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

using Write = CellWrites::Write;
using Writes = std::span<const Write>;

/// Of the text that is packed at once.
constexpr std::size_t pieceSize = 0x10000;

/// Packs a part piece by piece, and compares it with what it was.
class PartPacker {
 public:
    PartPacker(const XmlSpans& xml, std::string_view before) : xml_(xml), before_(before) {}

    /// Piece: whole characters.
    void append(std::string piece)
    {
        const auto bytes = xml_.encode(std::move(piece), size_ == 0);
        isSame_ = isSame_ && before_.substr(size_, bytes.size()) == bytes;
        size_ += bytes.size();
        packer_.append(bytes);
    }

    std::optional<PackedBytes> finish()
    {
        if (isSame_ && size_ == before_.size()) return {};
        return packer_.finish();
    }

 private:
    const XmlSpans& xml_;
    std::string_view before_;
    Packer packer_;
    std::size_t size_ = 0;
    bool isSame_ = true;
};

/// Makes the new rows.
class RowWriter {
 public:
    RowWriter(const SheetMarkup& sheet, const CellWrites& writes, PartPacker& packer)
        : sheet_(sheet),
          writes_(writes),
          packer_(packer),
          prefix_(sheet.getData().getPrefix()),
          at_(sheet.getData().getInner().begin)
    {
    }

    void write()
    {
        const Writes writes = writes_.getWrites();
        for (auto from = writes.begin(); from != writes.end();) {
            const auto to =
                std::find_if(from, writes.end(), [&](const Write& w) { return w.row != from->row; });
            writeRow({from, to});
            from = to;
            if (text_.size() >= pieceSize) packer_.append(std::exchange(text_, {}));
        }
        copyTo(sheet_.getData().getInner().end);
        packer_.append(std::move(text_));
    }

 private:
    void copyTo(std::uint32_t position)
    {
        text_ += sheet_.getXml().getText({at_, position});
        at_ = position;
    }

    void writeRow(Writes writes)
    {
        const auto& rows = sheet_.getRows();
        const auto number = writes.front().row;
        const auto row = std::ranges::lower_bound(rows, number, {}, &SheetRow::number);
        if (row != rows.end() && row->number == number) return changeRow(*row, writes);
        const bool isEmpty = std::ranges::all_of(writes, [](const Write& w) { return isNothing(w.get()); });
        if (isEmpty) return;
        copyTo(row == rows.end() ? sheet_.getData().getInner().end : row->startTag.begin);
        text_ += "<" + prefix_ + "row r=\"" + std::to_string(number + 1) + "\">";
        for (const auto& write : writes) writeCell(write);
        text_ += "</" + prefix_ + "row>";
    }

    void changeRow(const SheetRow& row, Writes writes)
    {
        const bool hasNew = std::ranges::any_of(writes, [this](const Write& w) {
            return sheet_.find(w.row, w.column) == nullptr && !isNothing(w.get());
        });
        if (hasNew) openRow(row);
        const auto& cells = sheet_.getCells();
        auto next = std::ranges::lower_bound(cells, row.number, {}, &SheetCell::row);
        const auto isInRow = [&] { return next != cells.end() && next->row == row.number; };
        for (const auto& write : writes) {
            while (isInRow() && next->column < write.column) ++next;
            if (isInRow() && next->column == write.column) {
                changeCell(write, *next);
            } else if (!isNothing(write.get())) {
                if (!row.isEmptyTag) copyTo(isInRow() ? next->outer.begin : row.end);
                writeCell(write);
            }
        }
        if (hasNew && row.isEmptyTag) text_ += "</" + prefix_ + "row>";
    }

    /// The start tag of a row that gets cells: no longer empty, and without the columns that it announces.
    void openRow(const SheetRow& row)
    {
        const auto tag = row.startTag;
        copyTo(tag.begin);
        if (const auto columns = sheet_.findAttribute(tag, "spans"); columns.end != 0) {
            constexpr std::uint32_t nameSize = 8;  // A blank, the name, "=" and a quote.
            copyTo(columns.begin - nameSize);
            at_ = columns.end + 1;
        }
        if (!row.isEmptyTag) return copyTo(tag.end);
        copyTo(tag.end - 2);
        text_ += '>';
        at_ = tag.end;
    }

    void changeCell(const Write& write, const SheetCell& cell)
    {
        if (writes_.isSame(write, cell)) return;
        copyTo(cell.outer.begin);
        writeCell(write);
        at_ = cell.outer.end;
    }

    void writeCell(const Write& write)
    {
        const auto value = write.get();
        if (isNothing(value) && write.style == SheetMarkup::noStyle) return;
        text_ += "<" + prefix_ + "c r=\"" + formatCell(write.row, write.column) + "\"";
        if (write.style != SheetMarkup::noStyle) text_ += " s=\"" + std::to_string(write.style) + "\"";
        if (const auto* number = std::get_if<double>(&value))
            writeNumber(*number);
        else if (const auto* text = std::get_if<std::string>(&value))
            writeText(*text);
        else
            text_ += "/>";
    }

    void writeNumber(double number)
    {
        text_ += "><" + prefix_ + "v>" + writeCachedNumber(number) + "</" + prefix_ + "v></" + prefix_ + "c>";
    }

    void writeText(const std::string& text)
    {
        text_ += " t=\"inlineStr\"><" + prefix_ + "is><" + prefix_ + "t xml:space=\"preserve\">" +
                 escapeText(text) + "</" + prefix_ + "t></" + prefix_ + "is></" + prefix_ + "c>";
    }

    const SheetMarkup& sheet_;
    const CellWrites& writes_;
    PartPacker& packer_;
    std::string prefix_;
    std::string text_;
    std::uint32_t at_;
};

/// The start tag of rows that there were none of changes as well.
std::string makeStart(const SheetMarkup& sheet, const CellWrites& writes)
{
    Edits edits;
    if (const auto dimension = sheet.getXml().getRoot().findChild("dimension"))
        edits.setAttribute(dimension, "ref", formatArea(writes.getUsedArea().value_or(Area())));
    const auto data = sheet.getData();
    const auto start = data.getStartTag();
    if (data.isEmptyTag()) edits.replace({start.end - 2, start.end}, ">");
    return edits.apply(sheet.getXml().getText(), {0, start.end});
}

}  // namespace

std::optional<PackedBytes> packSheet(const std::string& bytes, const SheetMarkup& sheet,
                                     const CellWrites& writes, Edits& behind)
{
    const auto text = sheet.getXml().getText();
    const auto data = sheet.getData();
    PartPacker packer(sheet.getXml(), bytes);
    packer.append(makeStart(sheet, writes));
    RowWriter(sheet, writes, packer).write();
    if (data.isEmptyTag()) packer.append("</" + std::string(data.getPrefix()) + "sheetData>");
    packer.append(behind.apply(text, {data.getInner().end, static_cast<std::uint32_t>(text.size())}));
    return packer.finish();
}

}  // namespace quillon::report
