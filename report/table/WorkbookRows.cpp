#include "report/table/WorkbookRows.h"

#include <zip.h>

#include <algorithm>
#include <cmath>
#include <orcus/orcus_ods.hpp>
#include <orcus/orcus_xlsx.hpp>

#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/TableScan.h"
#include "report/table/WorkbookSheets.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// A range of cells, 0-based, both ends in it.
struct CellRange {
    std::int32_t firstRow = 0;
    std::int32_t firstColumn = 0;
    std::int32_t lastRow = -1;
    std::int32_t lastColumn = -1;

    bool contains(const SheetCell& cell) const
    {
        return cell.row >= firstRow && cell.row <= lastRow && cell.column >= firstColumn &&
               cell.column <= lastColumn;
    }
    void include(const SheetCell& cell)
    {
        if (lastRow < 0) *this = {cell.row, cell.column, cell.row, cell.column};
        firstRow = std::min(firstRow, cell.row);
        lastRow = std::max(lastRow, cell.row);
        firstColumn = std::min(firstColumn, cell.column);
        lastColumn = std::max(lastColumn, cell.column);
    }
};

const unsigned char* toBytes(std::string_view text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// The bytes of all parts of the package once they are unpacked; what is no package has none.
std::uint64_t countUnpacked(std::string_view bytes)
{
    zip_error_t error;
    auto* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (source == nullptr) return 0;
    auto* archive = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive == nullptr) {
        zip_source_free(source);
        return 0;
    }
    std::uint64_t total = 0;
    zip_stat_t status;
    for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i)
        if (zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &status) == 0)
            total += std::min<std::uint64_t>(status.size, limits::wholeFile);
    zip_discard(archive);
    return total;
}

void load(std::string_view bytes, SheetCollector& sheets)
{
    if (orcus::orcus_xlsx::detect(toBytes(bytes), bytes.size()))
        orcus::orcus_xlsx(&sheets).read_stream(bytes);
    else
        orcus::orcus_ods(&sheets).read_stream(bytes);
}

/// Takes "B" or "b" off, as 1.
std::int32_t takeLetters(std::string_view& text)
{
    std::int32_t column = 0;
    while (!text.empty() && column < 100'000) {
        const char letter = static_cast<char>(text.front() & ~0x20);
        if (letter < 'A' || letter > 'Z') break;
        column = column * 26 + (letter - 'A' + 1);
        text.remove_prefix(1);
    }
    return column;
}

std::int32_t takeNumber(std::string_view& text)
{
    std::int32_t number = 0;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9' && number < 10'000'000) {
        number = number * 10 + (text.front() - '0');
        text.remove_prefix(1);
    }
    return number;
}

std::optional<CellRange> parseRange(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '$'), text.end());
    std::string_view rest = text;
    CellRange range;
    range.firstColumn = takeLetters(rest) - 1;
    range.firstRow = takeNumber(rest) - 1;
    if (!rest.starts_with(':')) return std::nullopt;
    rest.remove_prefix(1);
    range.lastColumn = takeLetters(rest) - 1;
    range.lastRow = takeNumber(rest) - 1;
    const bool isRange = rest.empty() && range.firstRow >= 0 && range.firstColumn >= 0 &&
                         range.lastRow >= range.firstRow && range.lastColumn >= range.firstColumn;
    return isRange ? std::optional(range) : std::nullopt;
}

CellRange findRange(const std::vector<SheetCell>& cells, const TableOptions& options)
{
    CellRange range;
    if (options.range.empty()) {
        for (const auto& cell : cells) range.include(cell);
        return range;
    }
    const auto parsed = parseRange(options.range);
    if (!parsed) fail("Range {}: expected two cells, as in B3:F20.", quoteText(options.range));
    return *parsed;
}

/// Whether a number format shows a date: a letter of a date outside of quotes, brackets and escapes.
bool showsDate(std::string_view format)
{
    char end = '\0';
    for (std::size_t i = 0; i < format.size(); ++i) {
        const char c = format[i];
        if (end != '\0') {
            if (c == end) end = '\0';
        } else if (c == '"') {
            end = '"';
        } else if (c == '[') {
            end = ']';
        } else if (c == '\\' || c == '_' || c == '*') {
            ++i;
        } else if (std::string_view("yYdDmMhH").find(c) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

/// The cells of the sheet as rows of a table.
class SheetReader {
 public:
    SheetReader(const Place& place, Sheet& sheet, const SheetCollector& sheets)
        : place_(place), sheet_(sheet), sheets_(sheets)
    {
    }

    void read(const TableOptions& options, StoredRows& rows)
    {
        const auto& cells = sheet_.sortCells();
        const auto range = findRange(cells, options);
        std::vector<Cell> row;
        std::int32_t rowNumber = -1;
        const auto finishRow = [&] {
            if (rowNumber >= 0) rows.add(static_cast<std::size_t>(rowNumber) + 1, row);
        };
        for (const auto& cell : cells) {
            if (!range.contains(cell)) continue;
            if (cell.row != rowNumber) {
                finishRow();
                // A row without cells parts the table from remarks below it.
                if (rowNumber >= 0 && cell.row > rowNumber + 1)
                    rows.add(static_cast<std::size_t>(cell.row), {Cell{}});
                row.assign(static_cast<std::size_t>(range.lastColumn - range.firstColumn) + 1, {});
                rowNumber = cell.row;
            }
            row[static_cast<std::size_t>(cell.column - range.firstColumn)] = readCell(cell);
        }
        finishRow();
    }

 private:
    Cell readCell(const SheetCell& cell)
    {
        if (cell.kind == CellKind::Text)
            return {requireText(sheets_.getTexts().getText(static_cast<std::size_t>(cell.value)), cell)};
        const auto format = sheet_.getFormat(cell.row, cell.column);
        const auto [known, isNew] = formats_.try_emplace(format);
        if (isNew) {
            known->second = sheets_.getNumberFormat(format);
            if (known->second == "General") known->second.clear();
        }
        if (cell.kind == CellKind::Date) return {{}, CellKind::Date, cell.value, {}};
        if (showsDate(known->second)) return {{}, CellKind::Date, cell.value + sheets_.getFirstDay(), {}};
        return {{}, CellKind::Number, cell.value, known->second};
    }

    std::string_view requireText(const std::string& text, const SheetCell& cell) const
    {
        try {
            toUtf16(text);
        } catch (const std::runtime_error&) {
            fail("{}: field {} is not in UTF-8.", place_.at(static_cast<std::size_t>(cell.row) + 1),
                 cell.column + 1);
        }
        return std::string_view(text).substr(0, text.find('\0'));
    }

    const Place& place_;
    Sheet& sheet_;
    const SheetCollector& sheets_;
    std::map<std::size_t, std::string> formats_;
};

std::vector<std::string> listSheets(const SheetCollector& sheets)
{
    std::vector<std::string> names;
    for (const auto& sheet : sheets.getSheets()) names.push_back(sheet.getName());
    return names;
}

}  // namespace

bool isWorkbook(std::string_view bytes)
{
    try {
        return orcus::orcus_xlsx::detect(toBytes(bytes), bytes.size()) ||
               orcus::orcus_ods::detect(toBytes(bytes), bytes.size());
    } catch (const std::exception&) {
        return false;
    }
}

std::unique_ptr<RowSource> readWorkbookRows(InputFile& file, const TableOptions& options)
{
    const auto bytes = file.readAll(limits::wholeFile);
    const auto& name = file.getName();
    if (countUnpacked(bytes) > limits::wholeFile)
        fail("{}: the workbook unpacks to more than {} MB; CSV files may be larger.", name,
             limits::wholeFile >> 20U);
    SheetCollector sheets(options.sheet);
    try {
        load(bytes, sheets);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        fail("{}: the workbook cannot be read: {}.", name, quoteText(error.what(), 200));
    }
    auto* sheet = sheets.findWanted();
    const auto names = listSheets(sheets);
    if (sheet == nullptr)
        fail("{}: there is no sheet {}; the sheets are {}{}", name, quoteText(options.sheet),
             listNames(names), suggestName(options.sheet, names));
    const Place place{name, false};
    auto rows = std::make_unique<StoredRows>(place, false, std::nullopt, options.skip);
    SheetReader(place, *sheet, sheets).read(options, *rows);
    return rows;
}

}  // namespace quillon::report
