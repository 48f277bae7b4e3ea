#include <algorithm>
#include <cmath>
#include <map>

#include "report/options/NumberText.h"
#include "report/options/PlainNumber.h"
#include "report/table/DateText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/Sheet.h"

namespace quillon::report {
namespace {

using Attributes = std::vector<XmlAttribute>;

struct BuiltInFormat {
    int identifier;
    const char* code;
};
/// The formats that a workbook names by number alone.
constexpr BuiltInFormat builtInFormats[] = {
    {1, "0"},
    {2, "0.00"},
    {3, "#,##0"},
    {4, "#,##0.00"},
    {9, "0%"},
    {10, "0.00%"},
    {11, "0.00E+00"},
    {14, "yyyy-mm-dd"},
    {15, "d-mmm-yy"},
    {16, "d-mmm"},
    {17, "mmm-yy"},
    {18, "h:mm AM/PM"},
    {19, "h:mm:ss AM/PM"},
    {20, "h:mm"},
    {21, "h:mm:ss"},
    {22, "yyyy-mm-dd h:mm"},
    {37, "#,##0"},
    {38, "#,##0"},
    {39, "#,##0.00"},
    {40, "#,##0.00"},
    {45, "mm:ss"},
    {46, "[h]:mm:ss"},
    {47, "mm:ss.0"},
};

int readInteger(const std::string& text)
{
    return readPlainNumber<int>(text).value_or(0);
}

/// A listener that needs no text, or no ends.
class QuietListener : public XmlListener {
 public:
    void startElement(const std::string& /*name*/, const Attributes& /*attributes*/) override {}
    void endElement(const std::string& /*name*/) override {}
    void addText(std::string_view /*text*/) override {}
};

/// The targets of relationships, by identifier and by the last word of their type.
class Relationships : public QuietListener {
 public:
    /// Targets are relative to `folder`, or begin at the package's root with "/".
    explicit Relationships(std::string folder) : folder_(std::move(folder)) {}

    void startElement(const std::string& name, const Attributes& attributes) override
    {
        if (name != "Relationship") return;
        const auto target = getAttribute(attributes, "Target");
        const auto path = target.starts_with('/') ? target.substr(1) : folder_ + target;
        const auto type = getAttribute(attributes, "Type");
        byIdentifier[getAttribute(attributes, "Id")] = path;
        byType[type.substr(type.rfind('/') + 1)] = path;
    }

    std::map<std::string, std::string> byIdentifier;
    std::map<std::string, std::string> byType;

 private:
    std::string folder_;
};

struct SheetEntry {
    std::string name;
    std::string relationship;
    bool isHidden;
};

bool isTrue(const Attributes& attributes, const char* name)
{
    const auto value = getAttribute(attributes, name);
    return value == "1" || value == "true";
}

class WorkbookListener : public QuietListener {
 public:
    void startElement(const std::string& name, const Attributes& attributes) override
    {
        if (name == "workbookPr") startsIn1904 = isTrue(attributes, "date1904");
        if (name != "sheet") return;
        const auto state = getAttribute(attributes, "state");
        sheets.push_back({getAttribute(attributes, "name"), getAttribute(attributes, "id"),
                          state == "hidden" || state == "veryHidden"});
    }

    std::vector<SheetEntry> sheets;
    bool startsIn1904 = false;
};

/// The texts that cells share; how a text is pronounced is left out.
class SharedTextListener : public XmlListener {
 public:
    explicit SharedTextListener(Sheet& sheet) : sheet_(sheet) {}

    void startElement(const std::string& name, const Attributes& /*attributes*/) override
    {
        if (name == "rPh") isPronunciation_ = true;
        isText_ = name == "t" && !isPronunciation_;
    }
    void endElement(const std::string& name) override
    {
        isText_ = false;
        if (name == "rPh") isPronunciation_ = false;
        if (name == "si") sheet_.addText(std::exchange(text_, {}));
    }
    void addText(std::string_view text) override
    {
        if (isText_) text_ += text;
    }

 private:
    Sheet& sheet_;
    std::string text_;
    bool isText_ = false;
    bool isPronunciation_ = false;
};

/// The number format of each cell style.
class StyleListener : public QuietListener {
 public:
    void startElement(const std::string& name, const Attributes& attributes) override
    {
        if (name == "numFmt")
            codes_[readInteger(getAttribute(attributes, "numFmtId"))] =
                getAttribute(attributes, "formatCode");
        if (name == "cellXfs") isInCells_ = true;
        if (name == "xf" && isInCells_) styles_.push_back(readInteger(getAttribute(attributes, "numFmtId")));
    }
    void endElement(const std::string& name) override
    {
        if (name == "cellXfs") isInCells_ = false;
    }

    std::vector<std::string> getFormats() const
    {
        std::vector<std::string> formats;
        for (const int style : styles_) formats.push_back(findFormat(style));
        return formats;
    }

 private:
    std::string findFormat(int identifier) const
    {
        const auto found = codes_.find(identifier);
        if (found != codes_.end()) return found->second == "General" ? "" : found->second;
        for (const auto& format : builtInFormats)
            if (format.identifier == identifier) return format.code;
        return {};
    }

    std::map<int, std::string> codes_;
    std::vector<int> styles_;
    bool isInCells_ = false;
};

class SheetListener : public XmlListener {
 public:
    SheetListener(Sheet& sheet, const std::vector<std::string>& styles, bool startsIn1904)
        : sheet_(sheet), sharedCount_(sheet.getTextCount()), firstDay_(startsIn1904 ? 1462 : 0)
    {
        for (const auto& style : styles) {
            formats_.push_back(sheet.addFormat(style));
            areDates_.push_back(isDateFormat(style));
        }
    }

    void startElement(const std::string& name, const Attributes& attributes) override
    {
        if (name == "row") startRow(attributes);
        if (name == "c") startCell(attributes);
        if (name == "col" && isTrue(attributes, "hidden"))
            sheet_.hideColumns(readInteger(getAttribute(attributes, "min")) - 1,
                               readInteger(getAttribute(attributes, "max")) - 1);
        if (name == "mergeCell")
            if (const auto range = readSheetRange(getAttribute(attributes, "ref"))) sheet_.addMerge(*range);
        if (name == "rPh") isPronunciation_ = true;
        if (name == "f") isFormula_ = true;
        isValue_ = name == "v" || (name == "t" && !isPronunciation_);
    }
    void endElement(const std::string& name) override
    {
        isValue_ = false;
        if (name == "rPh") isPronunciation_ = false;
        if (name == "c") endCell();
    }
    void addText(std::string_view text) override
    {
        if (isValue_) value_ += text;
    }

 private:
    void startRow(const Attributes& attributes)
    {
        const auto number = getAttribute(attributes, "r");
        // A number beyond the limits stays there, whatever stands behind it.
        cell_.row =
            number.empty() ? cell_.row + 1 : std::clamp(readInteger(number), 0, limits::sheetRows + 1) - 1;
        cell_.column = -1;
        if (isTrue(attributes, "hidden")) sheet_.hideRows(cell_.row, cell_.row);
    }

    void startCell(const Attributes& attributes)
    {
        const auto place = getAttribute(attributes, "r");
        std::string_view rest = place;
        const auto address = takeAddress(rest);
        cell_.column = address.column >= 0 ? address.column : cell_.column + 1;
        type_ = getAttribute(attributes, "t");
        style_ = static_cast<std::size_t>(std::max(0, readInteger(getAttribute(attributes, "s"))));
        value_.clear();
        isFormula_ = false;
    }

    void endCell()
    {
        // A formula that gives an empty text has type "str".
        if (value_.empty() && isFormula_ && type_ != "str") sheet_.addEmptyFormula(cell_);
        if (value_.empty() || cell_.row < 0) return;
        auto cell = cell_;
        if (type_ == "s") {
            const auto index = static_cast<std::size_t>(readInteger(value_));
            if (index >= sharedCount_) fail("a cell names shared text {} of {}", index, sharedCount_);
            cell.text = static_cast<std::uint32_t>(index);
        } else if (type_ == "b") {
            cell.text = sheet_.addText(value_ == "1" ? "true" : "false");
        } else if (type_ == "d" ? !readDay(cell) : !readNumber(cell)) {
            cell.text = sheet_.addText(value_);
        }
        sheet_.add(cell);
    }

    bool readNumber(SourceCell& cell) const
    {
        if (!type_.empty() && type_ != "n") return false;
        const auto number = readPlainNumber<double>(value_);
        if (!number || !std::isfinite(*number)) return false;
        cell.number = *number;
        const bool isDate = style_ < areDates_.size() && areDates_[style_];
        cell.kind = isDate ? CellKind::Date : CellKind::Number;
        if (isDate) cell.number += firstDay_;
        if (!isDate && style_ < formats_.size()) cell.format = formats_[style_];
        return true;
    }

    /// As strict workbooks write it: 2024-03-31T00:00:00.
    bool readDay(SourceCell& cell) const
    {
        const auto date = readDate(value_, DateOrder::YearMonthDay);
        if (!date) return false;
        cell.kind = CellKind::Date;
        cell.number = date->serial;
        return true;
    }

    Sheet& sheet_;
    std::size_t sharedCount_;
    double firstDay_;
    std::vector<std::uint32_t> formats_;
    std::vector<bool> areDates_;
    SourceCell cell_{-1, -1};
    std::string type_;
    std::size_t style_ = 0;
    std::string value_;
    bool isValue_ = false;
    bool isPronunciation_ = false;
    bool isFormula_ = false;
};

class XlsxReader : public WorkbookReader {
 public:
    explicit XlsxReader(const PartReader& parts) : parts_(parts), relationships_("")
    {
        Relationships root("");
        read("_rels/.rels", root);
        const auto workbook = root.byType["officeDocument"];
        const auto slash = workbook.rfind('/') + 1;
        relationships_ = Relationships(workbook.substr(0, slash));
        read(workbook.substr(0, slash) + "_rels/" + workbook.substr(slash) + ".rels", relationships_);
        read(workbook, workbook_);
        for (const auto& sheet : workbook_.sheets) names_.push_back(sheet.name);
    }

    const std::vector<std::string>& getSheetNames() const override { return names_; }

    std::size_t getFirstSheet() const override
    {
        const auto& sheets = workbook_.sheets;
        const auto shown =
            std::find_if(sheets.begin(), sheets.end(), [](const auto& sheet) { return !sheet.isHidden; });
        return shown == sheets.end() ? 0 : static_cast<std::size_t>(shown - sheets.begin());
    }

    Sheet readSheet(std::size_t index) const override
    {
        Sheet sheet;
        SharedTextListener texts(sheet);
        readTarget(relationships_.byType, "sharedStrings", texts);
        StyleListener styles;
        readTarget(relationships_.byType, "styles", styles);
        SheetListener cells(sheet, styles.getFormats(), workbook_.startsIn1904);
        readTarget(relationships_.byIdentifier, workbook_.sheets.at(index).relationship, cells);
        return sheet;
    }

 private:
    void read(const std::string& part, XmlListener& listener) const
    {
        readXml(parts_.read(part, limits::wholeFile), listener);
    }

    /// Reads the part that a relationship points to, where there is one.
    void readTarget(const std::map<std::string, std::string>& targets, const std::string& key,
                    XmlListener& listener) const
    {
        const auto target = targets.find(key);
        if (target != targets.end()) read(target->second, listener);
    }

    const PartReader& parts_;
    Relationships relationships_;
    WorkbookListener workbook_;
    std::vector<std::string> names_;
};

}  // namespace

std::unique_ptr<WorkbookReader> openXlsx(const PartReader& parts)
{
    return std::make_unique<XlsxReader>(parts);
}

}  // namespace quillon::report
