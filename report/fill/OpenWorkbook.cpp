#include "report/fill/OpenWorkbook.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "report/fill/SheetWriter.h"
#include "report/package/XmlText.h"

namespace quillon::report {

std::optional<Area> OpenSheet::findForeign(const Area& area) const
{
    for (auto row = area.top; row <= area.bottom; ++row)
        for (auto column = area.left; column <= area.right; ++column)
            if (!markup->isEmpty(row, column) && !before.contains(row, column))
                return Area{row, column, row, column};
    return {};
}

OpenWorkbook::OpenWorkbook(std::shared_ptr<const WorkbookMarkup> read)
    : read_(std::move(read)),
      package_(read_->getPackage()),
      styles_(read_->readStyles()),
      newNames_(read_->getNames().size()),
      heldStrings_(read_->getStrings().getSize()),
      leftStrings_(heldStrings_.size())
{
    for (std::size_t i = 0; i < read_->getSheetNames().size(); ++i) sheets_.push_back({.position = i});
}

OpenSheet& OpenWorkbook::openSheet(const std::string& name)
{
    return openSheet(read_->findSheet(name));
}

OpenSheet& OpenWorkbook::openSheet(std::size_t position)
{
    auto& sheet = sheets_[position];
    if (sheet.markup) return sheet;
    const auto read = read_->readSheet(position);
    sheet.markup = {read, &read->markup};
    sheet.writes = std::make_unique<CellWrites>(*sheet.markup);
    sheet.tables = read->tables;
    return sheet;
}

void OpenWorkbook::moveRows(OpenSheet& sheet, std::uint32_t row, std::uint32_t by)
{
    const auto& part = read_->getSheetPart(sheet.position);
    package_.setPart(part, sheet.markup->moveRows(row, by));
    sheet.markup = std::make_shared<const SheetMarkup>(package_.getPart(part), part, read_->getStrings());
    sheet.writes = std::make_unique<CellWrites>(*sheet.markup);
}

void OpenWorkbook::saveSheet(OpenSheet& sheet, Edits& behind)
{
    const auto& part = read_->getSheetPart(sheet.position);
    const bool hasFormulas = sheet.markup->hasFormulas() || package_.hasPart("xl/calcChain.xml");
    for (const auto& table : sheet.tables) table.save(package_);
    sheet.writes->noteShared(heldStrings_, leftStrings_);
    auto changed = packSheet(package_.getPart(part), *sheet.markup, *sheet.writes, behind);
    needsCalculation_ = needsCalculation_ || (hasFormulas && changed);
    if (changed) package_.setPart(part, std::move(*changed));
    sheet.writes.reset();
    sheet.markup.reset();
    sheet.isSaved = true;
}

std::string OpenWorkbook::save()
{
    styles_.save(package_);
    saveStrings();
    saveMain();
    return package_.toBytes();
}

/// Texts of the chart that no cell of the workbook holds any more are not left in the file.
void OpenWorkbook::saveStrings()
{
    const auto isLeft = [](bool left) { return left; };
    if (std::ranges::none_of(leftStrings_, isLeft)) return;
    try {
        for (const auto& sheet : sheets_)
            if (!sheet.isSaved && package_.hasPart(read_->getSheetPart(sheet.position)))
                CellWrites(read_->readSheet(sheet.position)->markup).noteShared(heldStrings_, leftStrings_);
    } catch (const std::runtime_error&) {
        // A sheet that cannot be read may hold any of them.
        return;
    }
    for (std::size_t i = 0; i < leftStrings_.size(); ++i)
        if (heldStrings_[i]) leftStrings_[i] = false;
    read_->getStrings().remove(package_, leftStrings_);
}

/// Writes the defined names; formulas elsewhere are computed anew when the workbook is opened.
void OpenWorkbook::saveMain()
{
    Edits edits;
    for (std::size_t i = 0; i < newNames_.size(); ++i)
        if (newNames_[i]) edits.setInner(read_->getNames()[i].element, escapeText(*newNames_[i]));
    const auto calculation = read_->getMain().getRoot().findChild("calcPr");
    if (calculation && needsCalculation_) edits.setAttribute(calculation, "fullCalcOnLoad", "1");
    if (!edits.isEmpty()) package_.setPart(package_.getMainPart(), edits.apply(read_->getMain()));
}

}  // namespace quillon::report
