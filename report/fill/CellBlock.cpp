#include "report/fill/CellBlock.h"

namespace quillon::report {

CellValue CellLine::get(std::size_t index) const
{
    if (isNumber(index)) return points_->numbers[index];
    if (index >= points_->texts.size() || points_->texts[index].empty()) return {};
    return points_->texts[index];
}

std::vector<CellBlock*> getBlocks(SeriesCells& series)
{
    std::vector<CellBlock*> blocks;
    for (auto* block : {&series.name, &series.categories, &series.values})
        blocks.push_back(*block ? &**block : nullptr);
    for (auto& block : series.more) blocks.push_back(&block);
    return blocks;
}

}  // namespace quillon::report
