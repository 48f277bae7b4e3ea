#include "report/table/WorkbookRows.h"

#include <algorithm>

#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/Sheet.h"
#include "report/table/TableScan.h"

namespace quillon::report {
namespace {

/// A range of cells, 0-based, both ends in it.
struct CellRange {
    CellAddress first;
    CellAddress last;

    bool contains(const SheetCell& cell) const
    {
        return cell.row >= first.row && cell.row <= last.row && cell.column >= first.column &&
               cell.column <= last.column;
    }
    void include(const SheetCell& cell)
    {
        if (last.row < 0) first = last = {cell.row, cell.column};
        first = {std::min(first.row, cell.row), std::min(first.column, cell.column)};
        last = {std::max(last.row, cell.row), std::max(last.column, cell.column)};
    }
};

std::optional<CellRange> parseRange(std::string_view text)
{
    CellRange range;
    range.first = takeAddress(text);
    if (!text.starts_with(':')) return std::nullopt;
    text.remove_prefix(1);
    range.last = takeAddress(text);
    const auto& [first, last] = range;
    const bool isRange = text.empty() && first.row >= 0 && first.column >= 0 && last.row >= first.row &&
                         last.column >= first.column &&
                         last.column < static_cast<std::int32_t>(limits::columns);
    return isRange ? std::optional(range) : std::nullopt;
}

CellRange findRange(const Sheet& sheet, const TableOptions& options)
{
    CellRange range;
    if (options.range.empty()) {
        for (const auto& cell : sheet.getCells()) range.include(cell);
        return range;
    }
    const auto parsed = parseRange(options.range);
    if (!parsed) fail("Range {}: expected two cells, as in B3:F20.", quoteText(options.range));
    return *parsed;
}

Cell toCell(const Sheet& sheet, const SheetCell& cell)
{
    if (cell.kind == CellKind::Text) return {sheet.getText(cell)};
    return {{},
            cell.kind,
            cell.number,
            cell.kind == CellKind::Number ? sheet.getFormat(cell) : std::string_view()};
}

/// The cells of the sheet, which stand in order, as rows.
void addRows(const Sheet& sheet, const CellRange& range, StoredRows& rows)
{
    const auto width = static_cast<std::size_t>(range.last.column - range.first.column) + 1;
    std::vector<Cell> row;
    std::int32_t rowNumber = -1;
    const auto finishRow = [&] {
        if (rowNumber >= 0) rows.add(static_cast<std::size_t>(rowNumber) + 1, row);
    };
    for (const auto& cell : sheet.getCells()) {
        if (!range.contains(cell)) continue;
        if (cell.row != rowNumber) {
            finishRow();
            // An empty row parts the table from remarks below it.
            if (rowNumber >= 0 && cell.row != rowNumber + 1)
                rows.add(static_cast<std::size_t>(cell.row), {Cell{}});
            row.assign(width, {});
            rowNumber = cell.row;
        }
        row[static_cast<std::size_t>(cell.column - range.first.column)] = toCell(sheet, cell);
    }
    finishRow();
}

std::size_t findSheet(const std::vector<std::string>& names, const std::string& wanted,
                      const std::string& file)
{
    if (names.empty()) fail("{}: the workbook has no sheet.", file);
    if (wanted.empty()) return 0;
    const auto found = std::find(names.begin(), names.end(), wanted);
    if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
    for (std::size_t i = 0; i < names.size(); ++i)
        if (wanted == "#" + std::to_string(i + 1)) return i;
    fail("{}: there is no sheet {}; the sheets are {}{}", file, quoteText(wanted), listNames(names),
         suggestName(wanted, names));
}

/// What is wrong with the package itself, as a sentence.
template <typename Read>
auto readOrRefuse(const std::string& file, const Read& read)
{
    try {
        return read();
    } catch (const std::runtime_error& error) {
        const std::string reason = error.what();
        fail("{}: the workbook cannot be read: {}.", file,
             reason.substr(0, reason.find_last_not_of('.') + 1));
    }
}

std::unique_ptr<WorkbookReader> openWorkbook(const PartReader& parts)
{
    if (parts.hasPart("_rels/.rels") && parts.hasPart("[Content_Types].xml")) return openXlsx(parts);
    if (parts.hasPart("content.xml") && parts.hasPart("mimetype")) return openOds(parts);
    fail("it is compressed (zip), and no .xlsx or .ods; unpack it first");
}

}  // namespace

std::unique_ptr<RowSource> readWorkbookRows(InputFile& file, const TableOptions& options)
{
    const auto& name = file.getName();
    const auto bytes = file.readAll(limits::wholeFile);
    const auto parts = readOrRefuse(name, [&] { return std::make_unique<PartReader>(bytes); });
    const auto workbook = readOrRefuse(name, [&] { return openWorkbook(*parts); });
    const auto index = findSheet(workbook->getSheetNames(), options.sheet, name);
    const auto sheet = readOrRefuse(name, [&] { return workbook->readSheet(index); });
    auto rows = std::make_unique<StoredRows>(Place{name, false}, false, std::nullopt, options.skip);
    addRows(sheet, findRange(sheet, options), *rows);
    return rows;
}

}  // namespace quillon::report
