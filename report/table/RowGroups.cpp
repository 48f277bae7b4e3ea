#include "report/table/RowGroups.h"

#include <optional>
#include <unordered_map>

#include "report/options/QuotedText.h"
#include "report/table/CellText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/Sources.h"
#include "report/table/StoredRows.h"
#include "report/table/TableScan.h"

namespace quillon::report {
namespace {

/// Parts rows as they come.
class Parter {
 public:
    Parter(const TableScan& scan, const std::string& by)
        : scan_(scan),
          by_(by),
          column_(scan.findColumn(by, "\"by\"")),
          isHeld_(scan.getRowCount() * scan.getNames().size() <= limits::storedCells)
    {
    }

    void add(const Row& row)
    {
        const auto name = writeCell(row.cells[column_]);
        if (name.empty())
            fail("{}: column {}: expected a text, the name of a group, got an empty cell.",
                 scan_.getPlace().at(row.line), quoteText(by_));
        const auto [place, isNew] = places_.try_emplace(name, groups_.size());
        if (isNew) begin(name, row);
        auto& group = groups_[place->second];
        for (std::size_t i = 0; i < group.texts.size(); ++i)
            if (group.texts[i] && *group.texts[i] != writeCell(row.cells[i])) group.texts[i].reset();
        if (group.rows) group.rows->add(row.line, {row.cells.begin(), row.cells.end()});
    }

    std::vector<RowGroup> finish()
    {
        std::vector<RowGroup> finished;
        for (auto& group : groups_) {
            auto& made = finished.emplace_back(RowGroup{std::move(group.name), {}, std::move(group.rows)});
            for (std::size_t i = 0; i < group.texts.size(); ++i)
                if (group.texts[i]) made.texts.emplace_back(scan_.getNames()[i], *group.texts[i]);
        }
        return finished;
    }

 private:
    struct Part {
        std::string name;
        /// For each column the text that all rows so far have in it.
        std::vector<std::optional<std::string>> texts = {};
        std::shared_ptr<StoredRows> rows = nullptr;
    };

    void begin(const std::string& name, const Row& row)
    {
        auto& group = groups_.emplace_back(Part{name});
        for (const auto& cell : row.cells) group.texts.emplace_back(writeCell(cell));
        if (!isHeld_) return;
        group.rows = scan_.makeEmptyRows();
        group.rows->addNames(scan_.getNames());
    }

    const TableScan& scan_;
    const std::string& by_;
    std::size_t column_;
    bool isHeld_;
    std::vector<Part> groups_;
    std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

std::vector<RowGroup> readRowGroups(const std::string& path, const TableOptions& options,
                                    const std::string& by, const Note& note)
{
    const TableScan scan(openSource(path, options, note, nullptr), options, note);
    Parter parter(scan, by);
    scan.readRows([&parter](const Row& row) {
        parter.add(row);
        return true;
    });
    return parter.finish();
}

}  // namespace quillon::report
