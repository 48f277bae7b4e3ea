#include "report/table/ColumnReader.h"

#include <algorithm>
#include <cmath>

#include "report/options/QuotedText.h"
#include "report/table/CellText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

/// Reads the cells of one column into the table.
class Reader {
 public:
    Reader(const TableScan& scan, const ColumnRequest& request, const TableOptions& options, const Note& note)
        : scan_(scan), request_(request), options_(options)
    {
        column.name = scan.getNames()[request.column];
        if (column.name.empty() && request.column > 0)
            column.name = fmt::format("Column {}", request.column + 1);
        if (request.role == ColumnRole::Value) {
            column.kind = ColumnKind::Number;
            reading_ = scan.chooseReading(request.column);
            column.numberFormat = scan.getProfile(request.column).makeFormat(reading_);
        } else if (const auto order = scan.chooseDateOrder(request.column, note)) {
            column.kind = ColumnKind::Date;
            dateOrder_ = *order;
            showsUtc_ = scan.getProfile(request.column).getOtherOffset().isSet();
            column.dateUnit = scan.getProfile(request.column).getDateUnit();
            column.numberFormat = getDateFormat(column.dateUnit);
        }
    }

    void add(const Row& row)
    {
        const auto& cell = row.cells[request_.column];
        if (request_.role == ColumnRole::Value) return column.numbers.push_back(readValue(cell, row.line));
        if (cell.kind == CellKind::Text)
            column.texts.add(cell.text);
        else
            column.texts.add(writeCell(cell));
        if (column.kind == ColumnKind::Date) column.numbers.push_back(readSerial(cell));
    }

    TableColumn column;

 private:
    double readSerial(const Cell& cell) const
    {
        if (cell.kind == CellKind::Date) return cell.number;
        const auto date = readDate(writeCell(cell), dateOrder_);
        if (!date) return none;
        constexpr double minutesOfDay = 24 * 60;
        return showsUtc_ ? date->serial - date->offset.value_or(0) / minutesOfDay : date->serial;
    }

    double readValue(const Cell& cell, std::size_t line) const
    {
        if (cell.kind == CellKind::Number && std::isfinite(cell.number)) return cell.number;
        if (cell.kind == CellKind::Text) {
            if (const auto number = readNumber(cell.text, reading_.style)) return *number;
            const bool isNone = cell.text.empty() || isMissing(cell.text, options_.missing);
            if (isNone && options_.gaps) return none;
        }
        refuse(cell, line);
    }

    [[noreturn]] void refuse(const Cell& cell, std::size_t line) const
    {
        const char* sample = reading_.style.decimal == ',' ? "-1,5" : "-1.5";
        const auto place = fmt::format("{}: column {}: expected a number, as in {}",
                                       scan_.getPlace().at(line), quoteText(column.name), sample);
        const auto text = writeCell(cell);
        if (text.empty()) fail("{}, got an empty cell; --gaps or --blank accepts such cells.", place);
        if (!options_.gaps && isMissing(text, options_.missing))
            fail("{}, got {}, which stands for no value; --gaps or --blank accepts such cells.", place,
                 quoteText(text));
        fail("{}{}, got {}{}", place, options_.gaps ? ", or an empty cell" : "", quoteText(text),
             findHint(text));
    }

    /// The option that may help with a cell that is no number.
    std::string findHint(const std::string& text) const
    {
        const char other = reading_.style.decimal == ',' ? '.' : ',';
        if (readNumber(text, {other}))
            return fmt::format("; the column has decimal {}s otherwise, which --decimal changes.",
                               other == '.' ? "comma" : "point");
        if (text.find_first_of("0123456789") == std::string::npos)
            return "; --missing names texts that stand for no value.";
        if (!findMagnitude(text).empty()) return describeMagnitude(text) + ".";
        return fmt::format("{}; --missing and --gaps make it a gap, and --columns chooses other columns.",
                           hasLetter(text) ? ", perhaps with a letter for a digit" : "");
    }

    /// Whether a letter stands where a digit is meant, as in "5o" and "l2".
    bool hasLetter(std::string text) const
    {
        for (auto& c : text) c = c == 'o' || c == 'O' ? '0' : c == 'l' || c == 'I' ? '1' : c;
        return readNumber(text, reading_.style).has_value();
    }

    const TableScan& scan_;
    ColumnRequest request_;
    const TableOptions& options_;
    ColumnProfile::Reading reading_;
    DateOrder dateOrder_ = DateOrder::DayMonthYear;
    bool showsUtc_ = false;
};

}  // namespace

Table readColumns(const TableScan& scan, const std::vector<ColumnRequest>& requests,
                  const TableOptions& options, const Note& note)
{
    std::deque<Reader> readers;
    for (const auto& request : requests) readers.emplace_back(scan, request, options, note);
    Table table{scan.getPlace()};
    scan.readRows([&](const Row& row) {
        table.lines.push_back(static_cast<std::uint32_t>(row.line));
        for (auto& reader : readers) reader.add(row);
        return true;
    });
    table.rowCount = table.lines.size();
    for (auto& reader : readers) table.columns.push_back(std::move(reader.column));
    return table;
}

}  // namespace quillon::report
