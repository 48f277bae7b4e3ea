#include "report/table/Table.h"

#include "report/table/ColumnReader.h"
#include "report/table/Sources.h"

namespace quillon::report {

void TextColumn::add(std::string_view text)
{
    const auto found = positions_.find(text);
    if (found != positions_.end()) return rows_.push_back(found->second);
    const auto position = static_cast<std::uint32_t>(texts_.size());
    positions_.emplace(texts_.emplace_back(text), position);
    rows_.push_back(position);
}

Table readTable(const std::string& path, const TableOptions& options, const Listener& listener)
{
    checkTableOptions(options);
    const Note note = [&listener](const std::string& sentence) {
        if (listener.warning) listener.warning(sentence);
    };
    const TableScan scan(openSource(path, options, note, listener.progress), options, note);
    std::vector<ColumnRequest> requests;
    const auto request = [&](std::size_t column) {
        const bool holdsNumbers = scan.getProfile(column).isNumeric();
        requests.push_back({column, holdsNumbers ? ColumnRole::Value : ColumnRole::Label});
    };
    if (options.columns.empty())
        for (std::size_t column = 0; column < scan.getNames().size(); ++column) request(column);
    for (const auto& name : options.columns) request(scan.findColumn(name, "--columns"));
    return readColumns(scan, requests, options, note);
}

}  // namespace quillon::report
