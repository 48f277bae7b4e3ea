#include "report/fill/CellPlace.h"

namespace quillon::report {

std::vector<CellBlock*> getBlocks(SeriesCells& series)
{
    std::vector<CellBlock*> blocks;
    for (auto* block : {&series.name, &series.categories, &series.values})
        blocks.push_back(*block ? &**block : nullptr);
    for (auto& block : series.more) blocks.push_back(&block);
    return blocks;
}

}  // namespace quillon::report
