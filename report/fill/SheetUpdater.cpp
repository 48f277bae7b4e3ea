#include "report/fill/SheetUpdater.h"

#include <algorithm>
#include <string>

#include "report/package/Edits.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// What else stands in the sheet is never overwritten.
void requireRoom(const OpenSheet& sheet)
{
    for (const auto& area : sheet.now.getAreas())
        if (const auto cell = sheet.findForeign(area))
            refuse("cell " + formatCell(cell->top, cell->left) +
                   ", into which the data would grow, is taken");
}

/// Whether the data grow into rows below their old end, up to `lastUsed`, that hold something there.
bool isBelowTaken(const OpenSheet& sheet, std::uint32_t oldLast, std::uint32_t lastUsed)
{
    return std::ranges::any_of(sheet.now.getAreas(), [&](const Area& area) {
        for (auto row = oldLast + 1; row <= std::min(area.bottom, lastUsed); ++row)
            for (auto column = area.left; column <= area.right; ++column)
                if (!sheet.markup->isEmpty(row, column)) return true;
        return false;
    });
}

/// Calls with row and column of each cell of the areas.
template <typename Call>
void visitCells(const AreaSet& areas, const Call& call)
{
    for (const auto& area : areas.getAreas())
        for (auto row = area.top; row <= area.bottom; ++row)
            for (auto column = area.left; column <= area.right; ++column) call(row, column);
}

/// Empties the cells that the chart had and has no longer.
void clearRest(OpenSheet& sheet)
{
    visitCells(sheet.before, [&](std::uint32_t row, std::uint32_t column) {
        if (!sheet.now.contains(row, column))
            sheet.writes->write(row, column, nullptr, 0, sheet.markup->getStyle(row, column));
    });
}

void requireNoFormulas(const OpenSheet& sheet)
{
    if (!sheet.markup->hasFormulas()) return;
    for (const auto* areas : {&sheet.before, &sheet.now})
        visitCells(*areas, [&](std::uint32_t row, std::uint32_t column) {
            if (sheet.markup->hasFormula(row, column) && sheet.writes->changes(row, column))
                refuse("cell " + formatCell(row, column) + " holds a formula");
        });
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
    const auto root = sheet.markup->getXml().getRoot();
    for (const auto* name :
         {"mergeCells", "conditionalFormatting", "dataValidations", "drawing", "hyperlinks", "legacyDrawing"})
        if (root.findChild(name)) return false;
    return sheet.tables.size() <= 1 && book_.getRead().getNames().empty() && book_.getSheets().size() == 1 &&
           !sheet.markup->hasFormulas();
}

void SheetUpdater::makeRoom()
{
    for (auto& sheet : book_.getSheets()) {
        std::uint32_t oldLast = 0;
        std::uint32_t newLast = 0;
        for (const auto& area : sheet.before.getAreas()) oldLast = std::max(oldLast, area.bottom);
        for (const auto& area : sheet.now.getAreas()) newLast = std::max(newLast, area.bottom);
        if (!sheet.markup || newLast <= oldLast) continue;
        const auto used = sheet.markup->getUsedArea().value_or(Area());
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
        if (sheet.markup && !sheet.before.isEmpty()) update(sheet);
}

void SheetUpdater::update(OpenSheet& sheet)
{
    requireRoom(sheet);
    clearRest(sheet);
    sheet.writes->arrange();
    // A sheet that announces other cells than it has, or a table of other ones, is not ours to mend.
    if (sheet.before.getAreas() == sheet.now.getAreas() && sheet.writes->areDone()) return;
    requireNoFormulas(sheet);
    const auto tables = sheet.tables;
    for (auto& table : sheet.tables)
        table.follow(*sheet.markup, *sheet.writes, sheet.before, sheet.now, tables);
    saveSheet(sheet);
}

void SheetUpdater::saveSheet(OpenSheet& sheet)
{
    Edits behind;
    const auto before = sheet.before.getAll();
    // What followed the data stays where the chart has left the sheet.
    const auto now = sheet.now.isEmpty() ? before : sheet.now.getAll();
    for (const auto child : sheet.markup->getXml().getRoot().getChildren())
        for (const auto* name : {"ref", "sqref"})
            if (child.getName() == "autoFilter" || child.getName() == "conditionalFormatting")
                if (const auto text = child.getAttribute(name))
                    behind.setAttribute(child, name, followAreas(*text, before, now));
    followNames(sheet, before, now);
    book_.saveSheet(sheet, behind);
}

void SheetUpdater::followNames(const OpenSheet& sheet, const Area& before, const Area& now)
{
    const auto& names = book_.getRead().getNames();
    const auto sheetName = toLower(book_.getRead().getSheetNames()[sheet.position]);
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto range = parseRange(names[i].text);
        if (!range || toLower(range->getSheet()) != sheetName || book_.isNameSet(i)) continue;
        auto followed = *range;
        for (auto& area : followed.areas) area = follow(area, before, now);
        if (!(followed == *range)) book_.setName(i, followed.format());
    }
}

}  // namespace quillon::report
