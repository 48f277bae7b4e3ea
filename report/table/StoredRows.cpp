#include "report/table/StoredRows.h"

#include "report/table/Fail.h"
#include "report/table/Limits.h"

namespace quillon::report {

std::string_view StoredRows::keep(std::string_view text)
{
    if (text.empty()) return {};
    return texts_.emplace_back(text);
}

void StoredRows::add(std::size_t line, const std::vector<Cell>& cells)
{
    if (cells.size() > limits::columns)
        fail("{}: more than {} columns.", getPlace().at(line), limits::columns);
    if (cells_.size() + cells.size() > limits::storedCells)
        fail("{}: more than {} cells; CSV files may be larger.", getPlace().name, limits::storedCells);
    rows_.push_back({line, cells_.size(), cells.size()});
    for (const auto& cell : cells) {
        cells_.push_back(cell);
        cells_.back().text = keep(cell.text);
        cells_.back().format = *formats_.emplace(cell.format).first;
    }
}

void StoredRows::read(const Handler& handler)
{
    for (const auto& row : rows_) {
        if (row.line <= skip_ && skip_ > 0) continue;
        if (!handler({row.line, false, std::span(cells_).subspan(row.first, row.count)})) return;
    }
}

}  // namespace quillon::report
