#include "report/fill/Placeholders.h"

#include <algorithm>
#include <functional>
#include <set>
#include <stdexcept>
#include <utility>

#include "report/fill/ChartInserter.h"
#include "report/fill/DataTable.h"
#include "report/fill/PlaceholderSpots.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

/// What stands between the braces.
std::string getText(const Placeholder& placeholder)
{
    return (placeholder.kind == PlaceholderKind::Table ? std::string(tablePrefix) : "") + placeholder.name;
}

std::string showBraces(const std::string& text)
{
    return "{{" + showText(text) + "}}";
}

/// Says that a placeholder is missing, or stands where it cannot become what it should, with those there are.
[[noreturn]] void failMissing(const Package& document, const Placeholder& wanted, const std::string& reason)
{
    constexpr std::size_t named = 20;
    std::string list;
    std::vector<std::string> texts;
    for (const auto& placeholder : findPlaceholders(document)) {
        if (placeholder.name == wanted.name)
            throw std::runtime_error("Placeholder " + showBraces(wanted.name) + ": " + reason);
        const auto text = getText(placeholder);
        if (std::ranges::find(texts, text) != texts.end()) continue;
        texts.push_back(text);
        if (texts.size() <= named) list += (list.empty() ? "" : ", ") + showBraces(text);
    }
    if (texts.size() > named) list += " and " + std::to_string(texts.size() - named) + " more";
    const auto near = findNearName(getText(wanted), texts);
    throw MissingPlaceholder("There is no placeholder " + showBraces(getText(wanted)) +
                             (near.empty() ? "; the" : "; did you mean " + showBraces(near) + "? The") +
                             " document has " + (list.empty() ? "none" : list) + ".");
}

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

std::vector<Placeholder> findPlaceholders(const Package& document)
{
    std::vector<Placeholder> found;
    for (const auto& [part, place] : findTextParts(document)) {
        std::set<std::pair<std::string, PlaceholderKind>> known;
        const XmlSpans xml(document.getPart(part), part);
        for (const auto& spot : findSpots(xml.getRoot())) {
            if (isInFallback(spot.getElement()) || !known.emplace(spot.name, spot.kind).second) continue;
            found.push_back({spot.name, spot.kind, part});
        }
    }
    return found;
}

std::size_t replaceText(Package& document, const std::string& name, const std::string& text)
{
    static_cast<void>(readXmlText(text, "{{" + name + "}}"));
    std::size_t count = 0;
    auto changed = document;
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        for (const auto& paragraph : findParagraphs(xml.getRoot())) {
            const auto replaced = ParagraphText(paragraph).replace(name, text, edits);
            if (!isInFallback(paragraph)) count += replaced;
        }
    });
    if (count == 0)
        failMissing(document, {name}, "it is a picture or a table; expected one in running text.");
    document = std::move(changed);
    return count;
}

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
        failMissing(document, {name},
                    "a chart takes the place of a picture, or of a paragraph that holds nothing else.");
    document = std::move(changed);
}

void insertTable(Package& document, const std::string& name, const ChartData& data,
                 const TableFormats& formats)
{
    auto changed = document;
    const std::string mainBytes = document.getPart(document.getMainPart());
    const XmlSpans main(mainBytes, document.getMainPart());
    bool isFound = false;
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        const DataTable table(data, formats, findTableStyle(document, xml.getRoot()));
        for (const auto& spot : findSpots(xml.getRoot())) {
            if (spot.name != name || spot.kind != PlaceholderKind::Table) continue;
            table.insert(*spot.paragraph, spot.match, main.getRoot(), edits);
            isFound = true;
        }
    });
    if (!isFound)
        failMissing(
            document, {name, PlaceholderKind::Table},
            "a table takes the place of a paragraph that holds {{table:" + showText(name) + "}} alone.");
    document = std::move(changed);
}

}  // namespace quillon::report
