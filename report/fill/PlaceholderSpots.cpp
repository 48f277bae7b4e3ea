#include "report/fill/PlaceholderSpots.h"

#include <algorithm>

#include "report/fill/BlockWidth.h"

namespace quillon::report {
namespace {

PlaceholderKind getTextKind(const ParagraphText& paragraph, const TextMatch& match)
{
    if (!paragraph.isAlone(match)) return PlaceholderKind::Text;
    return match.name.starts_with(tablePrefix) ? PlaceholderKind::Table : PlaceholderKind::Paragraph;
}

/// The placeholder that the alternative text or the title of a picture is.
std::string readPicturePlaceholder(const XmlElement& properties)
{
    for (const auto* name : {"descr", "title"}) {
        auto found = readPlaceholder(properties.getAttribute(name).value_or(""));
        if (!found.empty()) return found;
    }
    return {};
}

}  // namespace

void appendTextSpots(std::vector<Spot>& spots, const std::shared_ptr<const ParagraphText>& paragraph)
{
    for (const auto& match : paragraph->findPlaceholders()) {
        const auto kind = getTextKind(*paragraph, match);
        const auto prefix = kind == PlaceholderKind::Table ? tablePrefix.size() : 0;
        spots.push_back({kind, match.name.substr(prefix), paragraph, match, {}});
    }
}

void appendPictureSpots(std::vector<Spot>& spots, const XmlElement& element)
{
    for (const auto child : element.getChildren()) {
        if (child.is(Ns::WordDrawing, "docPr")) {
            const auto name = readPicturePlaceholder(child);
            const auto graphic = child.getParent().findChild(Ns::Drawing, "graphic");
            if (!name.empty() && findInside(graphic, Ns::Picture, "pic"))
                spots.push_back({PlaceholderKind::Picture, name, {}, {}, child});
        }
        appendPictureSpots(spots, child);
    }
}

std::vector<Spot> findSpots(const XmlElement& root)
{
    std::vector<Spot> spots;
    for (const auto& element : findParagraphs(root))
        appendTextSpots(spots, std::make_shared<const ParagraphText>(element));
    appendPictureSpots(spots, root);
    std::ranges::stable_sort(spots, {}, &Spot::getPosition);
    return spots;
}

}  // namespace quillon::report
