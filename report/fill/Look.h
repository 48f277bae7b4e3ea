#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Edits.h"

namespace quillon::report {

/// The colours that automatic series and points take one after the other.
class Palette {
 public:
    struct Color {
        /// Of the theme, "accent1"; or its red, green and blue, "4472C4".
        std::string value;
        /// The elements that vary it, without prefix: {"lumMod", "60000"}.
        std::vector<std::pair<std::string, std::string>> variation;
        bool isOfTheme = true;
    };

    /// Six accents, then the same lighter and darker.
    Palette();
    /// The colours of a part of chart colours; as the other for a part that names none.
    explicit Palette(const XmlSpans& colors);

    /// For documents without a theme, where accents mean nothing: those of the usual one.
    static Palette makeUsual();

    Color getColor(std::size_t index) const;
    std::size_t getSize() const { return colors_.size(); }

 private:
    std::vector<std::string> colors_;
    bool areOfTheme_ = true;
    std::vector<std::vector<std::pair<std::string, std::string>>> variations_;
};

/// The colour element that a series or point is known by: that of its fill, line or markers; false where it
/// is automatic, or one of text and background.
XmlElement findOwnColor(const XmlElement& element);

/// Changes, in a copy of `element`, its own colour into `color` wherever it stands. A child of `without` is
/// not in the copy.
void recolor(Edits& edits, const XmlElement& element, const Palette::Color& color,
             const std::vector<XmlElement>& without = {});

/// Ids that are unique in a chart part.
class UniqueIds {
 public:
    explicit UniqueIds(const XmlElement& root);
    /// Gives the copy of an element, and what is left of its content, ids of its own. An element of
    /// `without` is not in the copy.
    void renew(Edits& edits, const XmlElement& element, const std::vector<XmlElement>& without = {});

 private:
    std::uint32_t next_ = 0;
};

}  // namespace quillon::report
