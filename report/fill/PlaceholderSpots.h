#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/fill/DocumentText.h"
#include "report/fill/Placeholder.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// How the name of a placeholder for a table starts.
inline constexpr std::string_view tablePrefix = "table:";

/// A placeholder where it stands.
struct Spot {
    PlaceholderKind kind;
    std::string name;
    /// The text around it, which the placeholders of a paragraph share; null for a picture.
    std::shared_ptr<const ParagraphText> paragraph;
    TextMatch match;
    /// The properties of the picture.
    XmlElement picture;

    /// The paragraph, or the properties of the picture.
    XmlElement getElement() const { return paragraph ? paragraph->getParagraph() : picture; }
    std::uint32_t getPosition() const { return getElement().getOuter().begin; }
};

/// Appends the placeholders of a paragraph, and those that the pictures below an element have.
void appendTextSpots(std::vector<Spot>& spots, const std::shared_ptr<const ParagraphText>& paragraph);
void appendPictureSpots(std::vector<Spot>& spots, const XmlElement& element);
/// The placeholders below an element, in order.
std::vector<Spot> findSpots(const XmlElement& root);

}  // namespace quillon::report
