#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "report/fill/Kept.h"
#include "report/fill/SheetMarkup.h"
#include "report/fill/SheetTable.h"
#include "report/fill/WorkbookStrings.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"
#include "support/Export.h"

namespace quillon::report {

/// A sheet of a workbook with its tables.
struct ReadSheet {
    ReadSheet(const Package& workbook, const std::string& part, const WorkbookStrings& strings);

    SheetMarkup markup;
    std::vector<SheetTable> tables = {};
};

/// A name that stands for cells or a formula.
struct DefinedName {
    std::string name;
    /// The sheet by 0-based position that the name is for; -1 for all.
    int sheet;
    std::string text;
    XmlElement element;
};

/// A workbook as it was read; fills change copies of its package. What it says is read once, and sheets when
/// they are first asked for. Threads may share it.
class QUILLON_EXPORT WorkbookMarkup {
 public:
    /// Throws: std::runtime_error when the file is no workbook.
    explicit WorkbookMarkup(const std::string& bytes);
    WorkbookMarkup(const WorkbookMarkup&) = delete;
    WorkbookMarkup& operator=(const WorkbookMarkup&) = delete;

    const Package& getPackage() const { return package_; }
    /// The part that names the sheets.
    const XmlSpans& getMain() const { return main_; }
    const WorkbookStrings& getStrings() const { return strings_; }

    /// The sheets by 0-based position.
    const std::vector<std::string>& getSheetNames() const { return sheetNames_; }
    /// Upper and lower case are the same. Throws: std::runtime_error when there is no such sheet.
    std::size_t findSheet(const std::string& name) const;
    /// Empty for a sheet that is missing.
    const std::string& getSheetPart(std::size_t sheet) const { return sheetParts_[sheet]; }
    /// Throws: std::runtime_error when the sheet is missing or unreadable.
    std::shared_ptr<const ReadSheet> readSheet(std::size_t sheet) const;

    const std::vector<DefinedName>& getNames() const { return names_; }
    /// That for a sheet, if there are several; null when there is none. Upper and lower case are the same.
    const DefinedName* findName(const std::string& name) const;

    /// The styles of its cells; null for a workbook without.
    std::shared_ptr<const XmlSpans> readStyles() const;

 private:
    void readSheets();
    void readNames();

    Package package_;
    XmlSpans main_;
    WorkbookStrings strings_;
    std::vector<std::string> sheetNames_;
    std::vector<std::string> sheetParts_;
    std::map<std::string, std::size_t> sheetsByName_;
    std::vector<DefinedName> names_;
    std::map<std::string, std::size_t> namesByName_;
    mutable KeptByName<ReadSheet> sheets_;
    mutable Kept<XmlSpans> styles_;
};

/// Says why a workbook cannot be updated. Throws: std::runtime_error, always.
[[noreturn]] void refuse(const std::string& reason);

}  // namespace quillon::report
