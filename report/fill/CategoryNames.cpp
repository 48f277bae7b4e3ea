#include "report/fill/CategoryNames.h"

#include <algorithm>

#include "report/fill/CellRange.h"

namespace quillon::report {
namespace {

std::u16string readText(const SheetMarkup& sheet, std::uint32_t row, std::uint32_t column)
{
    const auto* cell = sheet.find(row, column);
    if (cell == nullptr) return {};
    const auto value = sheet.read(*cell);
    const auto* text = std::get_if<std::string>(&value);
    return text == nullptr ? std::u16string() : fromCellText(*text);
}

}  // namespace

std::vector<std::u16string> readCategoryNames(const ChartMarkup& chart, const WorkbookMarkup& workbook)
{
    const auto* series = chart.findCategories();
    const auto range = series == nullptr ? std::nullopt : parseRange(series->categories.formula);
    if (!range || range->isRow || range->areas.size() != 1 || range->areas[0].top == 0) return {};
    const auto sheet = workbook.readSheet(workbook.findSheet(range->getSheet()));
    const auto& area = range->areas[0];
    std::vector<std::u16string> names;
    for (auto column = area.left; column <= area.right; ++column)
        names.push_back(readText(sheet->markup, area.top - 1, column));
    const bool hasNames = std::ranges::any_of(names, [](const auto& name) { return !name.empty(); });
    return hasNames ? names : std::vector<std::u16string>();
}

}  // namespace quillon::report
