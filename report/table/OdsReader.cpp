#include <algorithm>
#include <cmath>
#include <set>

#include "report/options/PlainNumber.h"
#include "report/table/DateText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/NumberText.h"
#include "report/table/Sheet.h"

namespace quillon::report {
namespace {

using Attributes = std::vector<XmlAttribute>;

/// An empty end of a sheet is written as one row, repeated as often as the sheet has rows.
std::int32_t readCount(const Attributes& attributes, const char* name)
{
    return std::clamp(readPlainNumber<std::int32_t>(getAttribute(attributes, name)).value_or(1), 1,
                      1'048'576);
}

/// The format of an amount of money as its cell shows it, "2,50 €"; of one that shows none, with the name of
/// its currency.
std::string makeMoneyFormat(std::string_view shown, double amount, const std::string& currency)
{
    const auto text = readNumberText(shown);
    if (!text || text->unit.symbol.empty()) return "#,##0.00 \"" + currency + "\"";
    for (const char decimal : {'.', ','})
        if (const auto digits = readDigits(text->digits, {decimal}))
            if (std::abs(digits->value - std::abs(amount)) < 1)
                return makeNumberFormat(text->unit, digits->decimals, true);
    return makeNumberFormat(text->unit, 2, true);
}

/// A place behind others; beyond the limits of sheets all places are one.
std::int32_t advance(std::int32_t place, std::int32_t count)
{
    return std::min(place + count, limits::sheetRows);
}

/// The names of all sheets, and the cells of one.
class SheetListener : public XmlListener {
 public:
    /// Nothing is kept of sheets other than the one at `wanted`.
    SheetListener(Sheet& sheet, std::size_t wanted) : sheet_(sheet), wanted_(wanted) {}

    void startElement(const std::string& name, const Attributes& attributes) override
    {
        if (name == "table" && depth_++ == 0) startTable(attributes);
        if (name == "style") style_ = getAttribute(attributes, "name");
        if (name == "table-properties" && getAttribute(attributes, "display") == "false")
            hiddenStyles_.insert(style_);
        if (!isWanted()) return;
        if (name == "annotation") ++remarks_;
        if (name == "table-column") addColumns(attributes);
        if (name == "table-row") startRow(attributes);
        if (name == "table-cell" || name == "covered-table-cell") startCell(attributes);
        if (name == "p") startParagraph();
        if (name == "s") addText(std::string(static_cast<std::size_t>(readCount(attributes, "c")), ' '));
        if (name == "tab") addText("\t");
    }

    void endElement(const std::string& name) override
    {
        if (isWanted()) {
            if (name == "annotation") --remarks_;
            if (name == "p") isInParagraph_ = false;
            if (name == "table-cell") endCell();
            // What is covered by a merged cell is not shown.
            if (name == "covered-table-cell") column_ = advance(column_, cellRepeats_);
            if (name == "table-row") endRow();
        }
        if (name == "table") --depth_;
    }

    void addText(std::string_view text) override
    {
        if (!isInParagraph_ || remarks_ > 0) return;
        // Blanks are written as their number, so that a small file can say a large text.
        if (text_.size() + text.size() > limits::wholeFile)
            fail("a text is larger than {} MB, the most", limits::wholeFile >> 20U);
        text_ += text;
    }

    std::vector<std::string> names;
    /// The first sheet that is not hidden.
    std::size_t firstShown = 0;

 private:
    bool isWanted() const { return depth_ == 1 && names.size() == wanted_ + 1; }

    void startTable(const Attributes& attributes)
    {
        const bool isHidden = hiddenStyles_.contains(getAttribute(attributes, "style-name"));
        if (firstShown == names.size() && isHidden) ++firstShown;
        names.push_back(getAttribute(attributes, "name"));
        row_ = 0;
        column_ = 0;
    }

    static bool isHidden(const Attributes& attributes)
    {
        const auto visibility = getAttribute(attributes, "visibility");
        return visibility == "collapse" || visibility == "filter";
    }

    void addColumns(const Attributes& attributes)
    {
        const auto first = column_;
        column_ = advance(column_, readCount(attributes, "number-columns-repeated"));
        if (isHidden(attributes)) sheet_.hideColumns(first, column_ - 1);
    }

    void startRow(const Attributes& attributes)
    {
        column_ = 0;
        rowRepeats_ = readCount(attributes, "number-rows-repeated");
        rowCells_.clear();
        if (isHidden(attributes)) sheet_.hideRows(row_, advance(row_, rowRepeats_) - 1);
    }

    void startParagraph()
    {
        if (remarks_ > 0) return;
        if (!text_.empty()) text_ += '\n';
        isInParagraph_ = true;
    }

    void startCell(const Attributes& attributes)
    {
        text_.clear();
        cellRepeats_ = readCount(attributes, "number-columns-repeated");
        isFormula_ = !getAttribute(attributes, "formula").empty();
        type_ = getAttribute(attributes, "value-type");
        currency_ = getAttribute(attributes, "currency");
        value_ = getAttribute(attributes, type_ == "date" ? "date-value" : "value");
        const auto rows = readCount(attributes, "number-rows-spanned");
        const auto columns = readCount(attributes, "number-columns-spanned");
        if (rows > 1 || columns > 1)
            sheet_.addMerge({row_, column_, advance(row_, rows) - 1, advance(column_, columns) - 1});
    }

    void endCell()
    {
        SourceCell cell{row_, column_};
        column_ = advance(column_, cellRepeats_);
        if (value_.empty() && text_.empty()) {
            if (isFormula_ && type_ != "string") sheet_.addEmptyFormula(cell);
            return;
        }
        if (!readNumber(cell) && !readDay(cell)) cell.text = sheet_.addText(text_);
        for (std::int32_t i = 0; i < cellRepeats_; ++i, ++cell.column) {
            if (rowCells_.size() > limits::columns) fail("it has more than {} columns", limits::columns);
            rowCells_.push_back(cell);
        }
    }

    bool readNumber(SourceCell& cell)
    {
        if (type_ != "float" && type_ != "percentage" && type_ != "currency") return false;
        const auto number = readPlainNumber<double>(value_);
        if (!number || !std::isfinite(*number)) return false;
        cell.number = *number;
        cell.kind = CellKind::Number;
        if (type_ == "percentage") cell.format = sheet_.addFormat("0.0%");
        if (type_ == "currency" && !currency_.empty())
            cell.format = sheet_.addFormat(makeMoneyFormat(text_, cell.number, currency_));
        return true;
    }

    bool readDay(SourceCell& cell) const
    {
        const auto date = type_ == "date" ? readDate(value_, DateOrder::YearMonthDay) : std::nullopt;
        if (!date) return false;
        cell.kind = CellKind::Date;
        cell.number = date->serial;
        return true;
    }

    void endRow()
    {
        for (std::int32_t i = 0; i < rowRepeats_ && !rowCells_.empty(); ++i)
            for (auto& cell : rowCells_) {
                cell.row = row_ + i;
                sheet_.add(cell);
            }
        row_ = advance(row_, rowRepeats_);
    }

    Sheet& sheet_;
    std::size_t wanted_;
    std::string style_;
    std::set<std::string> hiddenStyles_;
    int depth_ = 0;
    int remarks_ = 0;
    std::int32_t row_ = 0;
    std::int32_t column_ = 0;
    std::int32_t rowRepeats_ = 1;
    std::int32_t cellRepeats_ = 1;
    std::vector<SourceCell> rowCells_;
    bool isFormula_ = false;
    std::string type_;
    std::string value_;
    std::string currency_;
    std::string text_;
    bool isInParagraph_ = false;
};

class OdsReader : public WorkbookReader {
 public:
    explicit OdsReader(const PartReader& parts) : content_(parts.read("content.xml", limits::wholeFile))
    {
        Sheet none;
        SheetListener listener(none, limits::storedCells);
        readXml(content_, listener);
        names_ = std::move(listener.names);
        firstShown_ = listener.firstShown < names_.size() ? listener.firstShown : 0;
    }

    const std::vector<std::string>& getSheetNames() const override { return names_; }
    std::size_t getFirstSheet() const override { return firstShown_; }

    Sheet readSheet(std::size_t index) const override
    {
        Sheet sheet;
        SheetListener listener(sheet, index);
        readXml(content_, listener);
        return sheet;
    }

 private:
    std::string content_;
    std::vector<std::string> names_;
    std::size_t firstShown_ = 0;
};

}  // namespace

std::unique_ptr<WorkbookReader> openOds(const PartReader& parts)
{
    return std::make_unique<OdsReader>(parts);
}

}  // namespace quillon::report
