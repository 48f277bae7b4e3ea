#include <algorithm>
#include <stdexcept>

#include "chart/model/DataSet.h"
#include "report/fill/CellRange.h"
#include "report/fill/WorkbookFill.h"
#include "report/fill/WorkbookMarkup.h"
#include "report/options/QuotedText.h"
#include "report/package/PackageWriter.h"
#include "report/workbook/Workbook.h"

namespace quillon::report {
namespace {

/// Gives the blocks of a new workbook their first cells, column after column.
class Layout {
 public:
    void place(std::vector<SeriesCells>& series)
    {
        for (auto& one : series) {
            if (one.categories) placeCategories(*one.categories);
            if (one.name) one.name->reference = makeReference(0, 1);
            if (one.values) placeBelow(*one.values);
            for (auto& block : one.more) placeBelow(block);
        }
    }

 private:
    std::string makeReference(std::uint32_t row, std::size_t width) const
    {
        const auto last = column_ + static_cast<std::uint32_t>(std::max<std::size_t>(width, 1)) - 1;
        return CellRange{"Sheet1!", {{row, column_, row, last}}}.format();
    }

    void placeBelow(CellBlock& block)
    {
        block.reference = makeReference(1, block.lines.size());
        column_ += static_cast<std::uint32_t>(std::max<std::size_t>(block.lines.size(), 1));
    }

    /// Series of the same categories share them.
    void placeCategories(CellBlock& block)
    {
        if (shared_ != nullptr && shared_->lines == block.lines) {
            block.reference = shared_->reference;
            return;
        }
        placeBelow(block);
        shared_ = &block;
    }

    std::uint32_t column_ = 0;
    const CellBlock* shared_ = nullptr;
};

std::shared_ptr<const WorkbookMarkup> getEmptyWorkbook()
{
    static const auto empty = std::make_shared<const WorkbookMarkup>(makeWorkbook(chart::DataSet::create()));
    return empty;
}

/// Whether any part refers to `part`.
bool isReferred(const Package& document, const std::string& part)
{
    constexpr std::string_view folder = "_rels/";
    constexpr std::string_view extension = ".rels";
    for (const auto& name : document.getPartNames()) {
        if (!name.ends_with(extension)) continue;
        auto source = name.substr(0, name.size() - extension.size());
        source.erase(source.rfind(folder), folder.size());
        for (const auto& relationship : document.getRelationships(source))
            if (!relationship.isExternal && relationship.target == part) return true;
    }
    return false;
}

const Relationship* findRelationship(const std::vector<Relationship>& relationships, const std::string& id)
{
    const auto row = std::ranges::find(relationships, id, &Relationship::id);
    return id.empty() || row == relationships.end() ? nullptr : &*row;
}

/// Puts a new workbook into the document, in place of what the relationship leads to.
WorkbookChange addWorkbook(Package& document, const std::string& chartPart, const Relationship* old,
                           std::vector<SeriesCells> series)
{
    auto made = makeFilledWorkbook(std::move(series));
    if (made.bytes.empty())
        throw std::runtime_error("The chart's workbook cannot be made: " + made.reason + ".");
    const auto name = document.findFreeName("word/embeddings/data", ".xlsx");
    document.addPart(name, std::move(made.bytes), content_type::workbook);
    if (old == nullptr)
        return {WorkbookState::Made, std::move(made.series),
                document.addRelationship(chartPart, "package", name), ""};
    document.retarget(chartPart, old->id, "package", name);
    if (!old->isExternal && document.hasPart(old->target) && !isReferred(document, old->target))
        document.removePart(old->target);
    return {WorkbookState::Replaced, std::move(made.series), old->id, ""};
}

}  // namespace

FilledWorkbook makeFilledWorkbook(std::vector<SeriesCells> series)
{
    Layout().place(series);
    return fillWorkbook(getEmptyWorkbook, std::move(series));
}

WorkbookChange updateWorkbook(
    Package& document, const std::string& chartPart, const std::string& relationshipId,
    std::vector<SeriesCells> series, const std::vector<SeriesCells>& removed,
    const std::function<std::shared_ptr<const WorkbookMarkup>(const std::string&)>& read)
{
    const auto relationships = document.getRelationships(chartPart);
    const auto* old = findRelationship(relationships, relationshipId);
    if (old == nullptr) return addWorkbook(document, chartPart, nullptr, std::move(series));
    if (old->isExternal) {
        auto change = addWorkbook(document, chartPart, old, std::move(series));
        change.warning = "its workbook was a link to " + quoteText(old->target, 200) +
                         "; the document now carries a new one.";
        return change;
    }
    if (!document.hasPart(old->target)) {
        auto change = addWorkbook(document, chartPart, old, std::move(series));
        change.state = WorkbookState::Made;
        return change;
    }
    auto filled = fillWorkbook([&] { return read(old->target); }, std::move(series), removed);
    if (filled.bytes.empty()) {
        auto change = addWorkbook(document, chartPart, old, std::move(filled.series));
        change.warning =
            "its workbook could not be updated (" + filled.reason + "); a new one takes its place.";
        return change;
    }
    document.setPart(old->target, std::move(filled.bytes));
    return {WorkbookState::Updated, std::move(filled.series), relationshipId, ""};
}

}  // namespace quillon::report
