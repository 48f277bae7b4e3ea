#include "report/workbook/Workbook.h"

#include <algorithm>
#include <stdexcept>
#include <type_traits>
#include <variant>

#include "report/package/Zip.h"
#include "report/workbook/WorkbookParts.h"
#include "report/workbook/Worksheet.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// A column of the sheet: its name, its cells below, and the style of numbers.
struct Column {
    using Texts = const std::vector<std::u16string>*;
    using Numbers = const std::vector<double>*;
    using Points = const std::vector<std::shared_ptr<chart::DataPoint>>*;

    std::u16string_view name;
    std::variant<Texts, Numbers, Points> cells;
    std::size_t style = 0;
};

double readNumber(double number)
{
    return number;
}

double readNumber(const std::shared_ptr<chart::DataPoint>& point)
{
    return point->getValue();
}

/// The columns of a workbook, in their order.
class Columns {
 public:
    Columns(const ChartData& data, const WorkbookOptions& options, CellFormats& formats)
        : data_(data), options_(options), formats_(formats)
    {
        addCategories();
        for (unsigned long i = 0; i < data.dataSet->getSeriesCount(); ++i) addSeries(i);
        for (const auto& column : options.furtherColumns)
            columns_.push_back(
                {column.name, &column.values, formats.add(column.numberFormat, "Number format")});
    }

    const std::vector<Column>& get() const { return columns_; }

 private:
    void addCategories()
    {
        for (const auto& level : data_.levels)
            columns_.push_back({data_.getCategoryName(columns_.size()), &level});
        const auto& name = data_.getCategoryName(columns_.size());
        if (hasCategoryNumbers(data_))
            columns_.push_back({name, &data_.categoryValues,
                                formats_.add(getCategoryFormat(data_), "Number format of the categories")});
        else
            columns_.push_back({name, &data_.dataSet->getCategories()});
    }

    void addSeries(unsigned long index)
    {
        const auto& series = *data_.dataSet->getSeries(index);
        const auto& details = data_.getDetails(index);
        const auto style =
            formats_.add(details.numberFormat, "Number format of series " + std::to_string(index + 1));
        columns_.push_back({series.getName(), &series.getPoints(), style});
        if (options_.sizes) columns_.push_back({u"Size", &details.sizes});
    }

    const ChartData& data_;
    const WorkbookOptions& options_;
    CellFormats& formats_;
    std::vector<Column> columns_;
};

std::size_t countCells(const Column& column)
{
    return std::visit([](const auto* cells) { return cells->size(); }, column.cells);
}

std::size_t countRows(const std::vector<Column>& columns)
{
    std::size_t rows = 0;
    for (const auto& column : columns) rows = std::max(rows, countCells(column));
    return rows;
}

void requireRoom(std::size_t columns, std::size_t rows)
{
    if (columns > maximumColumn + 1)
        throw std::runtime_error(
            "The embedded workbook could not be made: a sheet takes 16384 columns, got " +
            std::to_string(columns) + ".");
    if (rows > maximumRow)
        throw std::runtime_error(
            "The embedded workbook could not be made: a sheet takes 1048575 rows of data, got " +
            std::to_string(rows) + ".");
}

std::vector<std::string> listLetters(std::size_t count)
{
    std::vector<std::string> letters;
    for (std::size_t i = 0; i < count; ++i) letters.push_back(toUtf8(getColumnLetters(i)));
    return letters;
}

/// Writes the cell of a row below the names; a column may end above it.
void writeCell(Worksheet& sheet, std::size_t number, const Column& column, std::size_t row)
{
    std::visit(
        [&](const auto* cells) {
            if (row >= cells->size()) return;
            if constexpr (std::is_same_v<decltype(cells), Column::Texts>)
                sheet.writeText(number, (*cells)[row]);
            else
                sheet.writeNumber(number, readNumber((*cells)[row]), column.style);
        },
        column.cells);
}

void writeRows(Worksheet& sheet, const std::vector<Column>& columns, std::size_t rows)
{
    sheet.beginRow();
    for (std::size_t i = 0; i < columns.size(); ++i) sheet.writeText(i, columns[i].name);
    sheet.endRow();
    for (std::size_t row = 0; row < rows; ++row) {
        sheet.beginRow();
        for (std::size_t i = 0; i < columns.size(); ++i) writeCell(sheet, i, columns[i], row);
        sheet.endRow();
    }
}

bool showsDates(const ChartData& data)
{
    return hasCategoryNumbers(data) && data.categoryKind != CategoryKind::Number;
}

}  // namespace

std::u16string getColumnLetters(unsigned long number)
{
    std::u16string letters;
    for (unsigned long rest = number + 1; rest > 0; rest = (rest - 1) / 26)
        letters.insert(letters.begin(), static_cast<char16_t>(u'A' + (rest - 1) % 26));
    return letters;
}

unsigned long getCategoryColumn(const ChartData& data)
{
    return data.levels.size();
}

unsigned long getValueColumn(const ChartData& data, std::size_t series, const WorkbookOptions& options)
{
    return getCategoryColumn(data) + 1 + series * (options.sizes ? 2 : 1);
}

unsigned long getFurtherColumn(const ChartData& data, std::size_t index, const WorkbookOptions& options)
{
    return getValueColumn(data, data.dataSet->getSeriesCount(), options) + index;
}

bool hasCategoryNumbers(const ChartData& data)
{
    return data.categoryKind != CategoryKind::Text && !data.categoryValues.empty();
}

std::string getCategoryFormat(const ChartData& data)
{
    if (!data.categoryFormat.empty()) return data.categoryFormat;
    return showsDates(data) ? "yyyy-mm-dd" : "General";
}

std::string makeWorkbook(const ChartData& data, const WorkbookOptions& options)
{
    CellFormats formats;
    const Columns columns(data, options, formats);
    const auto rows = countRows(columns.get());
    requireRoom(columns.get().size(), rows);
    SharedStrings strings;
    Worksheet sheet(listLetters(columns.get().size()), strings);
    writeRows(sheet, columns.get(), rows);
    const auto wideColumn = showsDates(data) ? getCategoryColumn(data) : Worksheet::noColumn;
    return zipParts({
        {"[Content_Types].xml", workbookparts::contentTypes, false},
        {"_rels/.rels", workbookparts::packageRelationships, false},
        {"xl/workbook.xml", workbookparts::workbook, false},
        {"xl/_rels/workbook.xml.rels", workbookparts::workbookRelationships, false},
        {"xl/worksheets/sheet1.xml", sheet.makePart(wideColumn)},
        {"xl/styles.xml", formats.makePart()},
        {"xl/sharedStrings.xml", strings.makePart()},
    });
}

}  // namespace quillon::report
