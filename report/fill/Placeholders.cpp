#include "report/fill/Placeholders.h"

#include <algorithm>
#include <functional>
#include <set>
#include <stdexcept>
#include <utility>

#include "report/fill/ChartInserter.h"
#include "report/fill/DataTable.h"
#include "report/fill/DocumentTexts.h"
#include "report/fill/PlaceholderSpots.h"
#include "report/options/QuotedText.h"
#include "report/package/Edits.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

/// Calls `change` with each part that holds text, and stores what it changed.
void changeTextParts(Package& document, const std::function<void(const XmlSpans&, Edits&)>& change)
{
    for (const auto& [part, place] : findTextParts(document)) {
        // Cheap to search, which most parts do not survive.
        if (document.getPart(part).find('{') == std::string::npos) continue;
        const XmlSpans xml(document.getPart(part), part);
        Edits edits;
        change(xml, edits);
        if (!edits.isEmpty()) document.setPart(part, edits.apply(xml));
    }
}

}  // namespace

void insertChart(Package& document, const std::string& name, const NewChart& chart)
{
    auto changed = document;
    const std::string mainBytes = document.getPart(document.getMainPart());
    const XmlSpans main(mainBytes, document.getMainPart());
    bool isFound = false;
    DrawingNames names(document, name);
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        ChartInserter inserter(changed, xml, main, chart, names);
        for (const auto& spot : findSpots(xml.getRoot())) {
            const bool isPlace =
                spot.kind == PlaceholderKind::Paragraph || spot.kind == PlaceholderKind::Picture;
            if (spot.name != name || !isPlace) continue;
            inserter.insert(spot, edits);
            isFound = true;
        }
    });
    if (!isFound)
        DocumentTexts().failMissing(
            document, {name},
            "a chart takes the place of a picture, or of a paragraph that holds nothing else.");
    document = std::move(changed);
}

void insertTable(Package& document, const std::string& name, const ChartData& data,
                 const ChartOptions& options)
{
    auto changed = document;
    const std::string mainBytes = document.getPart(document.getMainPart());
    const XmlSpans main(mainBytes, document.getMainPart());
    bool isFound = false;
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        for (const auto& spot : findSpots(xml.getRoot())) {
            if (spot.name != name || spot.kind != PlaceholderKind::Table) continue;
            const DataTable table(makeTable(data, {}, options), findTableStyle(document, xml.getRoot()),
                                  findLanguageAt(document, *spot.paragraph, spot.match));
            table.insert(*spot.paragraph, spot.match, main.getRoot(), edits);
            isFound = true;
        }
    });
    if (!isFound)
        DocumentTexts().failMissing(
            document, {name, PlaceholderKind::Table},
            "a table takes the place of a paragraph that holds {{table:" + showText(name) + "}} alone.");
    document = std::move(changed);
}

}  // namespace quillon::report
