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

void findTextSpots(const XmlElement& root, std::vector<Spot>& spots)
{
    for (const auto& element : findParagraphs(root)) {
        const auto paragraph = std::make_shared<const ParagraphText>(element);
        for (const auto& match : paragraph->findPlaceholders()) {
            const auto kind = getTextKind(*paragraph, match);
            const auto prefix = kind == PlaceholderKind::Table ? tablePrefix.size() : 0;
            spots.push_back({kind, match.name.substr(prefix), paragraph, match, {}});
        }
    }
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

void findPictureSpots(const XmlElement& element, std::vector<Spot>& spots)
{
    for (const auto child : element.getChildren()) {
        if (child.is(Ns::WordDrawing, "docPr")) {
            const auto name = readPicturePlaceholder(child);
            const auto graphic = child.getParent().findChild(Ns::Drawing, "graphic");
            if (!name.empty() && findInside(graphic, Ns::Picture, "pic"))
                spots.push_back({PlaceholderKind::Picture, name, {}, {}, child});
        }
        findPictureSpots(child, spots);
    }
}

}  // namespace

std::vector<Spot> findSpots(const XmlElement& root)
{
    std::vector<Spot> spots;
    findTextSpots(root, spots);
    findPictureSpots(root, spots);
    std::ranges::stable_sort(spots, {}, &Spot::getPosition);
    return spots;
}

}  // namespace quillon::report
