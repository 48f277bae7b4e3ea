#include "report/fill/WorkbookMarkup.h"

#include <algorithm>
#include <stdexcept>

#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {

void refuse(const std::string& reason)
{
    throw std::runtime_error(reason);
}

ReadSheet::ReadSheet(const Package& workbook, const std::string& part, const WorkbookStrings& strings)
    : markup(workbook.getPart(part), part, strings)
{
    for (const auto& relationship : workbook.getRelationships(part))
        if (relationship.getKind() == "table" && workbook.hasPart(relationship.target))
            tables.emplace_back(workbook, relationship.target);
}

WorkbookMarkup::WorkbookMarkup(const std::string& bytes)
    : package_(bytes),
      main_(package_.getPart(package_.getMainPart()), package_.getMainPart()),
      strings_(package_)
{
    if (!main_.getRoot().is(Ns::Sheet, "workbook")) refuse("it is not an .xlsx or .xlsm file");
    readSheets();
    readNames();
}

void WorkbookMarkup::readSheets()
{
    const auto relationships = package_.getRelationships(package_.getMainPart());
    for (const auto sheet : main_.getRoot().findChild("sheets").getChildren()) {
        const auto id = sheet.getAttribute(Ns::OfficeRelationships, "id");
        const auto row = std::ranges::find_if(relationships, [&](const auto& r) { return r.id == id; });
        const auto& name = sheetNames_.emplace_back(sheet.getAttribute("name").value_or(""));
        sheetParts_.push_back(row == relationships.end() || row->isExternal ? "" : row->target);
        sheetsByName_.emplace(toLower(name), sheetNames_.size() - 1);
    }
}

void WorkbookMarkup::readNames()
{
    for (const auto element : main_.getRoot().findChild("definedNames").getChildren()) {
        const int sheet =
            readPlainNumber<int>(element.getAttribute("localSheetId").value_or("")).value_or(-1);
        names_.push_back({element.getAttribute("name").value_or(""), sheet, element.getText(), element});
        const auto [known, isNew] = namesByName_.emplace(toLower(names_.back().name), names_.size() - 1);
        if (!isNew && names_.back().sheet >= 0) known->second = names_.size() - 1;
    }
}

std::size_t WorkbookMarkup::findSheet(const std::string& name) const
{
    const auto found = sheetsByName_.find(toLower(name));
    if (found == sheetsByName_.end()) refuse("it has no sheet " + quoteText(name));
    return found->second;
}

std::shared_ptr<const ReadSheet> WorkbookMarkup::readSheet(std::size_t sheet) const
{
    const auto& part = sheetParts_[sheet];
    if (!package_.hasPart(part)) refuse("its sheet " + quoteText(sheetNames_[sheet]) + " is missing");
    return sheets_.get(part, [&] { return std::make_shared<const ReadSheet>(package_, part, strings_); });
}

const DefinedName* WorkbookMarkup::findName(const std::string& name) const
{
    const auto found = namesByName_.find(toLower(name));
    return found == namesByName_.end() ? nullptr : &names_[found->second];
}

std::shared_ptr<const XmlSpans> WorkbookMarkup::readStyles() const
{
    for (const auto& relationship : package_.getRelationships(package_.getMainPart()))
        if (relationship.getKind() == "styles" && package_.hasPart(relationship.target))
            return styles_.get([&] {
                return std::make_shared<const XmlSpans>(package_.getPart(relationship.target),
                                                        relationship.target);
            });
    return nullptr;
}

}  // namespace quillon::report
