#include "report/table/Table.h"

namespace quillon::report {

void TextColumn::add(std::string_view text)
{
    const auto found = positions_.find(text);
    if (found != positions_.end()) return rows_.push_back(found->second);
    const auto position = static_cast<std::uint32_t>(texts_.size());
    positions_.emplace(texts_.emplace_back(text), position);
    rows_.push_back(position);
}

}  // namespace quillon::report
