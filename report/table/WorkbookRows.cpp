#include "report/table/WorkbookRows.h"

#include <algorithm>
#include <limits>
#include <set>

#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/MergedCells.h"
#include "report/table/Sheet.h"
#include "report/table/TableScan.h"

namespace quillon::report {
namespace {

SheetRange readRange(const std::string& text)
{
    constexpr auto last = std::numeric_limits<std::int32_t>::max();
    if (text.empty()) return {0, 0, last, last};
    const auto range = readSheetRange(text);
    if (!range) fail("--range: expected two cells, as in B3:F20, got {}.", quoteText(text));
    return *range;
}

/// The part of a range that holds anything.
SheetRange findUsed(const Sheet& sheet, const SheetRange& range)
{
    SheetRange used;
    for (const auto& cell : sheet.getCells()) {
        if (!range.contains(cell)) continue;
        if (used.lastRow < 0) used = {cell.row, cell.column, cell.row, cell.column};
        used = {used.firstRow, std::min(used.firstColumn, cell.column), cell.row,
                std::max(used.lastColumn, cell.column)};
    }
    return used;
}

Cell toCell(const Sheet& sheet, const SourceCell& cell)
{
    if (cell.kind == CellKind::Text) return {sheet.getText(cell)};
    return {{},
            cell.kind,
            cell.number,
            cell.kind == CellKind::Number ? sheet.getFormat(cell) : std::string_view()};
}

/// The rows whose first cell stands over several columns: titles and remarks.
std::set<std::int32_t> findRemarks(const Sheet& sheet, const SheetRange& range)
{
    std::set<std::int32_t> rows;
    for (const auto& merge : sheet.getMerges())
        if (merge.firstColumn == range.firstColumn && merge.lastColumn > merge.firstColumn)
            rows.insert(merge.firstRow);
    return rows;
}

/// The cells of the sheet, which stand in order, as rows.
void addRows(const Sheet& sheet, const SheetRange& range, StoredRows& rows)
{
    const auto width = static_cast<std::size_t>(range.lastColumn - range.firstColumn) + 1;
    std::vector<Cell> row;
    const auto remarks = findRemarks(sheet, range);
    std::int32_t rowNumber = -1;
    const auto finishRow = [&] {
        if (rowNumber >= 0) rows.add(static_cast<std::size_t>(rowNumber) + 1, row);
    };
    for (const auto& cell : sheet.getCells()) {
        if (!range.contains(cell)) continue;
        if (cell.row != rowNumber) {
            finishRow();
            // An empty row parts the table from remarks below it.
            if (rowNumber >= 0 && (cell.row != rowNumber + 1 || remarks.contains(cell.row)))
                rows.add(static_cast<std::size_t>(cell.row), {Cell{}});
            row.assign(width, {});
            rowNumber = cell.row;
        }
        row[static_cast<std::size_t>(cell.column - range.firstColumn)] = toCell(sheet, cell);
    }
    finishRow();
}

std::size_t findSheet(const WorkbookReader& workbook, const std::string& wanted, const std::string& file)
{
    const auto& names = workbook.getSheetNames();
    if (names.empty()) fail("{}: the workbook has no sheet.", file);
    if (wanted.empty()) return workbook.getFirstSheet();
    const auto found = std::find(names.begin(), names.end(), wanted);
    if (found != names.end()) return static_cast<std::size_t>(found - names.begin());
    for (std::size_t i = 0; i < names.size(); ++i)
        if (wanted == "#" + std::to_string(i + 1)) return i;
    fail("{}: --sheet: there is no sheet {}; the sheets are {}{}", file, quoteText(wanted), listNames(names),
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
    if (parts.hasPart("word/document.xml"))
        fail("it is a Word document; expected a table, as `quillon-report extract` writes it");
    if (parts.hasPart("_rels/.rels") && parts.hasPart("[Content_Types].xml")) return openXlsx(parts);
    if (parts.hasPart("content.xml") && parts.hasPart("mimetype")) return openOds(parts);
    fail("it is compressed (zip), and no .xlsx or .ods; unpack it first");
}

/// "2 rows", "1 column"; empty for none.
std::string describeCount(std::size_t count, const char* what)
{
    return count == 0 ? "" : fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

void removeHidden(Sheet& sheet, const std::string& file, const Note& note)
{
    const auto [rows, columns] = sheet.removeHidden();
    if (rows + columns == 0) return;
    note(fmt::format("{}: {}{}{} hidden and left out; --hidden-cells reads them too.", file,
                     describeCount(rows, "row"), rows > 0 && columns > 0 ? " and " : "",
                     describeCount(columns, "column") + (rows + columns == 1 ? " is" : " are")));
}

void noteEmptyFormulas(const Sheet& sheet, const SheetRange& range, const std::string& file, const Note& note)
{
    const auto count = sheet.countEmptyFormulas(range);
    if (count > 0)
        note(fmt::format(
            "{}: the file keeps no result of {}; save it in a spreadsheet program, which calculates.", file,
            describeCount(count, "formula")));
}

std::string hintAtSheets(const std::vector<std::string>& names, std::size_t read)
{
    if (names.size() < 2) return {};
    return fmt::format("; this is sheet {} of {}, and --sheet names another", quoteText(names[read]),
                       listNames(names));
}

}  // namespace

std::unique_ptr<RowSource> readWorkbookRows(InputFile& file, const TableOptions& options, const Note& note)
{
    const auto& name = file.getName();
    const auto bytes = file.readAll(limits::wholeFile);
    const auto parts = readOrRefuse(name, [&] { return std::make_unique<PartReader>(bytes); });
    const auto workbook = readOrRefuse(name, [&] { return openWorkbook(*parts); });
    const auto index = findSheet(*workbook, options.sheet, name);
    auto sheet = readOrRefuse(name, [&] { return workbook->readSheet(index); });
    if (!options.hiddenCells) removeHidden(sheet, name, note);
    noteEmptyFormulas(sheet, readRange(options.range), name, note);
    const auto range = findUsed(sheet, readRange(options.range));
    readOrRefuse(name, [&] { resolveMerges(sheet, range); });
    const SourcePlace place{name, false, hintAtSheets(workbook->getSheetNames(), index)};
    auto rows = std::make_unique<StoredRows>(place, false, std::nullopt, options.skip);
    addRows(sheet, range, *rows);
    return rows;
}

}  // namespace quillon::report
