#include "report/fill/CellWrites.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace quillon::report {
namespace {

using Write = CellWrites::Write;

std::pair<std::uint32_t, std::uint32_t> getPlace(const Write& write)
{
    return {write.row, write.column};
}

}  // namespace

void CellWrites::arrange()
{
    std::ranges::stable_sort(writes_, {}, getPlace);
    for (std::size_t i = 1; i < writes_.size(); ++i)
        if (getPlace(writes_[i - 1]) == getPlace(writes_[i]) && writes_[i - 1].get() != writes_[i].get())
            throw std::runtime_error("cell " + formatCell(writes_[i].row, writes_[i].column) +
                                     " serves several series that now differ");
    const auto isRepeated = [](const Write& a, const Write& b) { return getPlace(a) == getPlace(b); };
    writes_.erase(std::unique(writes_.begin(), writes_.end(), isRepeated), writes_.end());
}

const Write* CellWrites::findWrite(std::uint32_t row, std::uint32_t column) const
{
    const auto at = std::ranges::lower_bound(writes_, std::pair(row, column), {}, getPlace);
    return at != writes_.end() && getPlace(*at) == std::pair(row, column) ? &*at : nullptr;
}

std::optional<CellValue> CellWrites::find(std::uint32_t row, std::uint32_t column) const
{
    const auto* write = findWrite(row, column);
    return write == nullptr ? std::nullopt : std::optional(write->get());
}

void CellWrites::rewrite(std::uint32_t row, std::uint32_t column, const std::string& text)
{
    const auto& line = rewritten_.emplace_back(text);
    const auto at = std::ranges::lower_bound(writes_, std::pair(row, column), {}, getPlace);
    if (at == writes_.end() || getPlace(*at) != std::pair(row, column)) {
        writes_.insert(at, {row, column, sheet_.getStyle(row, column), 0, &line});
    } else {
        at->line = &line;
        at->index = 0;
    }
}

bool CellWrites::leavesEmpty(std::uint32_t row, std::uint32_t column) const
{
    const auto* write = findWrite(row, column);
    return write != nullptr ? isNothing(write->get()) : sheet_.isEmpty(row, column);
}

bool CellWrites::changes(std::uint32_t row, std::uint32_t column) const
{
    const auto* cell = sheet_.find(row, column);
    const auto* write = findWrite(row, column);
    return write != nullptr && cell != nullptr && sheet_.read(*cell) != write->get();
}

bool CellWrites::isSame(const Write& write, const SheetCell& cell) const
{
    if (write.style != SheetMarkup::noStyle && write.style != cell.style) return false;
    const auto value = write.get();
    return isNothing(value) ? cell.isEmpty : sheet_.read(cell) == value;
}

bool CellWrites::areDone() const
{
    return std::ranges::all_of(writes_, [this](const Write& write) {
        const auto* cell = sheet_.find(write.row, write.column);
        return cell != nullptr ? isSame(write, *cell) : isNothing(write.get());
    });
}

std::optional<Area> CellWrites::getUsedArea() const
{
    std::optional<Area> used;
    const auto use = [&](std::uint32_t row, std::uint32_t column) {
        const Area cell{row, column, row, column};
        used = used.value_or(cell).join(cell);
    };
    for (const auto& cell : sheet_.getCells())
        if (!cell.isEmpty && findWrite(cell.row, cell.column) == nullptr) use(cell.row, cell.column);
    for (const auto& write : writes_)
        if (!isNothing(write.get())) use(write.row, write.column);
    return used;
}

void CellWrites::noteShared(std::vector<bool>& areHeld, std::vector<bool>& areLeft) const
{
    for (const auto& cell : sheet_.getCells()) {
        const auto position = sheet_.readShared(cell);
        if (!position) continue;
        const auto* write = findWrite(cell.row, cell.column);
        const bool isLeft = write != nullptr && !isSame(*write, cell);
        (isLeft ? areLeft : areHeld)[*position] = true;
    }
}

}  // namespace quillon::report
