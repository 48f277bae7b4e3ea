#include "report/table/StoredRows.h"

#include <algorithm>

#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "support/Text.h"

namespace quillon::report {

std::string_view StoredRows::keepText(std::string_view text, std::size_t line, std::size_t column)
{
    if (text.empty()) return {};
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\0'; };
    if (!std::all_of(text.begin(), text.end(), isPlain)) requireText(text, line, column);
    const auto kept = texts_.find(text);
    return kept != texts_.end() ? *kept : *texts_.emplace(text).first;
}

void StoredRows::requireText(std::string_view text, std::size_t line, std::size_t column) const
{
    if (text.find('\0') != std::string_view::npos)
        fail("{}: field {} holds a null character.", getPlace().at(line), column + 1);
    try {
        toUtf16(text);
    } catch (const std::runtime_error&) {
        fail("{}: field {} is not in UTF-8.", getPlace().at(line), column + 1);
    }
}

void StoredRows::add(std::size_t line, const std::vector<Cell>& cells)
{
    if (cells.size() > limits::columns)
        fail("{}: more than {} columns.", getPlace().at(line), limits::columns);
    if (cells_.size() + cells.size() > limits::storedCells)
        fail("{}: more than {} cells; CSV files may be larger.", getPlace().name, limits::storedCells);
    rows_.push_back({line, cells_.size(), cells.size()});
    for (std::size_t i = 0; i < cells.size(); ++i) {
        auto cell = cells[i];
        cell.text = keepText(cell.text, line, i);
        cell.format = *formats_.emplace(cell.format).first;
        cells_.push_back(cell);
    }
}

void StoredRows::addNames(const std::vector<std::string>& names)
{
    std::vector<Cell> cells;
    cells.reserve(names.size());
    for (const auto& name : names) cells.push_back({name});
    add(0, cells);
}

void StoredRows::read(const Handler& handler)
{
    for (const auto& row : rows_) {
        if (row.line <= skip_ && skip_ > 0) continue;
        if (!handler({row.line, false, std::span(cells_).subspan(row.first, row.count)})) return;
    }
}

}  // namespace quillon::report
