#include "report/fill/SheetUpdater.h"

#include <algorithm>
#include <string>

#include "report/workbook/Workbook.h"

namespace quillon::report {
namespace {

/// What else stands in the sheet is never overwritten.
void requireRoom(const OpenSheet& sheet)
{
    for (const auto& area : sheet.now)
        if (const auto cell = sheet.findForeign(area))
            refuse("cell " + formatArea(*cell) + ", into which the data would grow, is taken");
}

/// Whether the data grow into rows below their old end, up to `lastUsed`, that hold something there.
bool isBelowTaken(const OpenSheet& sheet, std::uint32_t oldLast, std::uint32_t lastUsed)
{
    return std::ranges::any_of(sheet.now, [&](const Area& area) {
        for (auto row = oldLast + 1; row <= std::min(area.bottom, lastUsed); ++row)
            for (auto column = area.left; column <= area.right; ++column)
                if (!sheet.cells->isEmpty(row, column)) return true;
        return false;
    });
}

/// Empties the cells that the chart had and has no longer.
void clearRest(OpenSheet& sheet)
{
    for (const auto& area : sheet.before)
        for (auto row = area.top; row <= area.bottom; ++row)
            for (auto column = area.left; column <= area.right; ++column) {
                const auto isKept = [&](const Area& now) { return now.contains(row, column); };
                if (std::ranges::none_of(sheet.now, isKept))
                    sheet.cells->write(row, column, nullptr, 0, sheet.cells->getStyle(row, column));
            }
}

void requireNoFormulas(const OpenSheet& sheet)
{
    if (!sheet.cells->hasFormulas()) return;
    for (const auto* areas : {&sheet.before, &sheet.now})
        for (const auto& area : *areas)
            for (auto row = area.top; row <= area.bottom; ++row)
                for (auto column = area.left; column <= area.right; ++column)
                    if (sheet.cells->hasFormula(row, column) && sheet.cells->willChange(row, column))
                        refuse("cell " + formatArea({row, column, row, column}) + " holds a formula");
}

/// An area that ends where the data ended ends where they end now.
Area follow(const Area& area, const Area& before, const Area& now)
{
    auto followed = area;
    if (!before.contains(area)) return area;
    if (area.bottom == before.bottom && area.getHeight() > 1)
        followed.bottom = std::max(now.bottom, area.top);
    if (area.right == before.right && area.getWidth() > 1) followed.right = std::max(now.right, area.left);
    return followed;
}

Area join(const std::vector<Area>& areas)
{
    auto all = areas.at(0);
    for (const auto& area : areas) all = all.join(area);
    return all;
}

/// The areas of "A1:B7 D1:D7", each followed.
std::string followAreas(const std::string& text, const Area& before, const Area& now)
{
    std::string followed;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find(' ', at), text.size());
        const auto part = text.substr(at, end - at);
        const auto area = parseArea(part);
        const bool isSame = !area || follow(*area, before, now) == *area;
        followed += (followed.empty() ? "" : " ") + (isSame ? part : formatArea(follow(*area, before, now)));
        at = end + 1;
    }
    return followed;
}

}  // namespace

/// Moving rows is safe where nothing refers to them.
bool SheetUpdater::canMoveRows(const OpenSheet& sheet) const
{
    const auto& root = sheet.cells->getXml().getRoot();
    for (const auto* name :
         {"mergeCells", "conditionalFormatting", "dataValidations", "drawing", "hyperlinks", "legacyDrawing"})
        if (root.findChild(name)) return false;
    return sheet.tables.size() <= 1 && book_.getNames().empty() && book_.getSheets().size() == 1 &&
           !sheet.cells->hasFormulas();
}

void SheetUpdater::makeRoom()
{
    for (auto& sheet : book_.getSheets()) {
        std::uint32_t oldLast = 0;
        std::uint32_t newLast = 0;
        for (const auto& area : sheet.before) oldLast = std::max(oldLast, area.bottom);
        for (const auto& area : sheet.now) newLast = std::max(newLast, area.bottom);
        if (!sheet.cells || newLast <= oldLast) continue;
        const auto used = sheet.cells->getUsedArea().value_or(Area());
        const auto by = newLast - oldLast;
        if (!isBelowTaken(sheet, oldLast, used.bottom) || !canMoveRows(sheet) ||
            used.bottom + by > maximumRow)
            continue;
        book_.moveRows(sheet, oldLast, by);
    }
}

void SheetUpdater::update()
{
    for (auto& sheet : book_.getSheets())
        if (sheet.cells && !sheet.before.empty()) update(sheet);
}

void SheetUpdater::update(OpenSheet& sheet)
{
    requireRoom(sheet);
    clearRest(sheet);
    sheet.cells->arrangeWrites();
    // A sheet that announces other cells than it has, or a table of other ones, is not ours to mend.
    if (sheet.before == sheet.now && sheet.cells->willStay()) return;
    requireNoFormulas(sheet);
    const auto tables = sheet.tables;
    for (auto& table : sheet.tables) table.follow(*sheet.cells, sheet.before, sheet.now, tables);
    saveSheet(sheet);
}

void SheetUpdater::saveSheet(OpenSheet& sheet)
{
    Edits behind;
    const auto& xml = sheet.cells->getXml();
    const auto before = join(sheet.before);
    // What followed the data stays where the chart has left the sheet.
    const auto now = sheet.now.empty() ? before : join(sheet.now);
    for (const auto child : xml.getRoot().getChildren())
        for (const auto* name : {"ref", "sqref"})
            if (child.getName() == "autoFilter" || child.getName() == "conditionalFormatting")
                if (const auto text = child.getAttribute(name))
                    behind.setAttribute(child, name, followAreas(*text, before, now));
    for (const auto& table : sheet.tables) table.save(book_.getPackage());
    followNames(sheet, before, now);
    book_.saveSheet(sheet, behind);
}

void SheetUpdater::followNames(const OpenSheet& sheet, const Area& before, const Area& now)
{
    for (auto& name : book_.getNames()) {
        auto range = parseRange(name.text);
        if (!range || foldName(range->getSheet()) != foldName(sheet.name) || name.newText) continue;
        auto followed = *range;
        for (auto& area : followed.areas) area = follow(area, before, now);
        if (!(followed == *range)) name.newText = followed.format();
    }
}

}  // namespace quillon::report
