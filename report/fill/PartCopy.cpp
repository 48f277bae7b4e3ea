#include "report/fill/PartCopy.h"

#include <algorithm>
#include <array>

#include "report/package/Edits.h"
#include "report/package/PartNames.h"

namespace quillon::report {
namespace {

/// What a chart has for itself; pictures are shared.
constexpr std::array<std::string_view, 4> ownKinds = {"package", "chartStyle", "chartColorStyle",
                                                      "chartUserShapes"};

/// The first free name in the folder of a part: "word/charts/chart3.xml" for "word/charts/chart1.xml".
std::string findCopyName(const Package& document, const std::string& part)
{
    const auto dot = part.rfind('.');
    auto stem = part.substr(0, dot);
    while (!stem.empty() && stem.back() >= '0' && stem.back() <= '9') stem.pop_back();
    return document.findFreeName(stem, dot == std::string::npos ? "" : part.substr(dot));
}

std::string copyPart(Package& document, const std::string& part)
{
    auto name = findCopyName(document, part);
    document.addPart(name, document.getPart(part), document.getContentType(part));
    const auto relationships = nameRelationships(part);
    // The copy lies in the same folder, so that its relationships lead to the same parts.
    if (document.hasPart(relationships))
        document.addPart(nameRelationships(name), document.getPart(relationships),
                         document.getContentType(relationships));
    return name;
}

}  // namespace

std::string copyChart(Package& document, const std::string& part)
{
    auto copy = copyPart(document, part);
    for (const auto& row : document.getRelationships(copy))
        if (std::find(ownKinds.begin(), ownKinds.end(), row.getKind()) != ownKinds.end() && !row.isExternal &&
            document.hasPart(row.target))
            document.retarget(copy, row.id, row.type, copyPart(document, row.target));
    return copy;
}

void showCopy(Package& document, const ChartDrawing& drawing, const std::string& part,
              const std::string& copy)
{
    const auto id = document.addRelationship(drawing.part, "chart", copy);
    const auto relationships = document.getRelationships(drawing.part);
    const XmlSpans xml(document.getPart(drawing.part), drawing.part);
    const auto ids = findChartIds(xml);
    Edits edits;
    for (std::size_t i = 0; i < drawing.positions.size(); ++i) {
        const auto row =
            std::find_if(relationships.begin(), relationships.end(),
                         [&](const Relationship& other) { return other.id == drawing.relationshipIds[i]; });
        if (row != relationships.end() && row->target == part)
            edits.replace(ids.at(drawing.positions[i]), id);
    }
    document.setPart(drawing.part, edits.apply(xml));
}

void copyWorkbook(Package& document, const std::string& part, const Relationship& workbook)
{
    document.retarget(part, workbook.id, workbook.type, copyPart(document, workbook.target));
}

}  // namespace quillon::report
