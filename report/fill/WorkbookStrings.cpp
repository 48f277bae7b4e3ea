#include "report/fill/WorkbookStrings.h"

#include <cstdint>

#include "report/package/Edits.h"
#include "report/package/TagScanner.h"
#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

bool isTable(Ns ns, std::string_view name)
{
    return ns == Ns::Sheet && name == "sst";
}

}  // namespace

std::string readStringItem(std::string_view text, Span markup)
{
    std::string item;
    TagScanner scanner(text, markup);
    bool isAbove = false;
    std::uint32_t start = 0;
    while (const auto tag = scanner.next()) {
        if (tag->name == "rPh") isAbove = !tag->isEnd && !tag->isEmpty;
        if (tag->name != "t" || isAbove || tag->isEmpty) continue;
        if (tag->isEnd)
            item += unescapeText(text.substr(start, tag->span.begin - start));
        else
            start = tag->span.end;
    }
    return item;
}

WorkbookStrings::WorkbookStrings(const Package& workbook)
{
    for (const auto& relationship : workbook.getRelationships(workbook.getMainPart())) {
        if (relationship.getKind() != "sharedStrings" || !workbook.hasPart(relationship.target)) continue;
        const auto& part = relationship.target;
        xml_ = std::make_unique<const XmlSpans>(workbook.getPart(part), part, isTable);
        readItems();
        return;
    }
}

/// Tag by tag; there may be very many.
void WorkbookStrings::readItems()
{
    TagScanner scanner(xml_->getText(), xml_->getRoot().getInner());
    int depth = 0;
    bool isItem = false;
    while (const auto tag = scanner.next()) {
        if (tag->isEnd) {
            if (--depth == 0 && isItem) items_.back().end = tag->span.begin;
            continue;
        }
        if (depth == 0) isItem = tag->name == "si";
        if (depth == 0 && isItem) items_.push_back({tag->span.end, tag->span.end});
        if (!tag->isEmpty) ++depth;
    }
}

std::string WorkbookStrings::getText(std::size_t position) const
{
    return readStringItem(xml_->getText(), items_[position]);
}

void WorkbookStrings::remove(Package& workbook, const std::vector<bool>& isLeft) const
{
    Edits edits;
    for (std::size_t i = 0; i < items_.size(); ++i)
        if (isLeft[i] && items_[i].getSize() != 0)
            edits.replace(items_[i], "<" + std::string(xml_->getRoot().getPrefix()) + "t/>");
    if (!edits.isEmpty()) workbook.setPart(xml_->getPart(), edits.apply(*xml_));
}

}  // namespace quillon::report
