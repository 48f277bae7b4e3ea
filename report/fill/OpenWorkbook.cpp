#include "report/fill/OpenWorkbook.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "report/options/QuotedText.h"

namespace quillon::report {

void refuse(const std::string& reason)
{
    throw std::runtime_error(reason);
}

std::optional<Area> OpenSheet::findForeign(const Area& area) const
{
    for (auto row = area.top; row <= area.bottom; ++row)
        for (auto column = area.left; column <= area.right; ++column) {
            const auto isOwn = [&](const Area& old) { return old.contains(row, column); };
            if (!cells->isEmpty(row, column) && std::ranges::none_of(before, isOwn))
                return Area{row, column, row, column};
        }
    return {};
}

OpenWorkbook::OpenWorkbook(const std::string& bytes) : book_(bytes)
{
    main_ = std::make_unique<XmlSpans>(book_.getPart(book_.getMainPart()), book_.getMainPart());
    if (!main_->getRoot().is(Ns::Sheet, "workbook")) refuse("it is not an .xlsx or .xlsm file");
    strings_ = readSharedStrings(book_);
    readSheets();
    readNames();
}

void OpenWorkbook::readSheets()
{
    const auto relationships = book_.getRelationships(book_.getMainPart());
    for (const auto sheet : main_->getRoot().findChild("sheets").getChildren()) {
        const auto id = sheet.getAttribute(Ns::OfficeRelationships, "id");
        const auto row = std::ranges::find_if(relationships, [&](const auto& r) { return r.id == id; });
        sheets_.push_back({sheet.getAttribute("name").value_or(""),
                           row == relationships.end() || row->isExternal ? "" : row->target});
    }
}

void OpenWorkbook::readNames()
{
    for (const auto element : main_->getRoot().findChild("definedNames").getChildren()) {
        const auto sheet = element.getAttribute("localSheetId");
        names_.push_back({element.getAttribute("name").value_or(""), sheet ? std::atoi(sheet->c_str()) : -1,
                          element.getText(), element});
    }
}

OpenSheet& OpenWorkbook::openSheet(const std::string& name)
{
    const auto sheet =
        std::ranges::find_if(sheets_, [&](const OpenSheet& s) { return foldName(s.name) == foldName(name); });
    if (sheet == sheets_.end()) refuse("it has no sheet " + quoteText(name));
    if (!sheet->cells) load(*sheet);
    return *sheet;
}

void OpenWorkbook::load(OpenSheet& sheet)
{
    if (!book_.hasPart(sheet.part)) refuse("its sheet " + quoteText(sheet.name) + " is missing");
    sheet.cells = std::make_unique<SheetCells>(book_.getPart(sheet.part), sheet.part, strings_);
    for (const auto& relationship : book_.getRelationships(sheet.part))
        if (relationship.getKind() == "table" && book_.hasPart(relationship.target))
            sheet.tables.emplace_back(book_, relationship.target);
}

void OpenWorkbook::moveRows(OpenSheet& sheet, std::uint32_t row, std::uint32_t by)
{
    book_.setPart(sheet.part, sheet.cells->moveRows(row, by));
    sheet.cells = std::make_unique<SheetCells>(book_.getPart(sheet.part), sheet.part, strings_);
}

void OpenWorkbook::saveSheet(OpenSheet& sheet, Edits& behind)
{
    const bool hasFormulas = sheet.cells->hasFormulas() || book_.hasPart("xl/calcChain.xml");
    const auto left = sheet.cells->findLeftStrings();
    leftStrings_.insert(left.begin(), left.end());
    Edits head;
    auto changed = sheet.cells->apply(head, behind);
    needsCalculation_ = needsCalculation_ || (hasFormulas && changed != book_.getPart(sheet.part));
    sheet.cells.reset();
    book_.setPart(sheet.part, std::move(changed));
}

std::string OpenWorkbook::save()
{
    emptyLeftStrings();
    saveMain();
    return book_.toBytes();
}

/// Texts of the chart that no cell of the workbook holds any more are not left in the file. The others keep
/// their positions.
void OpenWorkbook::emptyLeftStrings()
{
    if (leftStrings_.empty()) return;
    try {
        forgetKeptStrings();
    } catch (const std::runtime_error&) {
        // A sheet that cannot be read may hold any of them.
        return;
    }
    for (const auto& relationship : book_.getRelationships(book_.getMainPart()))
        if (relationship.getKind() == "sharedStrings" && book_.hasPart(relationship.target))
            emptyStrings(relationship.target);
}

void OpenWorkbook::forgetKeptStrings()
{
    for (const auto& sheet : sheets_) {
        if (!book_.hasPart(sheet.part)) continue;
        const SheetCells cells(book_.getPart(sheet.part), sheet.part, strings_);
        for (const auto kept : cells.findKeptStrings()) leftStrings_.erase(kept);
    }
}

void OpenWorkbook::emptyStrings(const std::string& part)
{
    const XmlSpans xml(book_.getPart(part), part);
    Edits edits;
    std::uint32_t index = 0;
    for (const auto item : xml.getRoot().getChildren()) {
        if (item.getName() != "si" || !leftStrings_.contains(index++)) continue;
        edits.setInner(item, "<" + std::string(item.getPrefix()) + "t/>");
    }
    if (!edits.isEmpty()) book_.setPart(part, edits.apply(xml));
}

/// Writes the defined names; formulas elsewhere are computed anew when the workbook is opened.
void OpenWorkbook::saveMain()
{
    Edits edits;
    for (const auto& name : names_)
        if (name.newText) edits.setInner(name.element, escapeText(*name.newText));
    const auto calculation = main_->getRoot().findChild("calcPr");
    if (calculation && needsCalculation_) edits.setAttribute(calculation, "fullCalcOnLoad", "1");
    if (!edits.isEmpty()) book_.setPart(book_.getMainPart(), edits.apply(*main_));
}

}  // namespace quillon::report
