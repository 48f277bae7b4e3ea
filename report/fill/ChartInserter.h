#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "report/fill/BlockWidth.h"
#include "report/fill/PlaceholderSpots.h"
#include "report/fill/Placeholders.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/Edits.h"
#include "report/package/Package.h"
#include "report/package/ThemeColors.h"

namespace quillon::report {

/// The numbers of the drawings of a part.
class DrawingNumbers {
 public:
    explicit DrawingNumbers(const XmlElement& root) { collect(root); }
    std::size_t take()
    {
        while (!taken_.insert(next_).second) ++next_;
        return next_;
    }

 private:
    void collect(const XmlElement& element)
    {
        if (element.is(Ns::WordDrawing, "docPr"))
            taken_.insert(static_cast<std::size_t>(readInteger(element, Ns::None, "id", 0)));
        for (const auto child : element.getChildren()) collect(child);
    }

    std::set<std::size_t> taken_;
    std::size_t next_ = 1;
};

/// The names that new charts get, by which each of them is found: "margin", "margin 2" ... without those that
/// charts of the document have.
class DrawingNames {
 public:
    DrawingNames(const Package& document, std::string first);
    std::string take();

 private:
    std::string first_;
    std::set<std::string> taken_;
};

/// Puts charts into one part of a document.
class ChartInserter {
 public:
    ChartInserter(Package& document, const XmlSpans& xml, const XmlSpans& main, const NewChart& chart,
                  DrawingNames& names);

    void insert(const Spot& spot, Edits& edits)
    {
        if (spot.paragraph)
            insertInParagraph(spot, edits);
        else
            replacePicture(spot, edits);
    }

 private:
    std::string addChart(const ChartOptions& options, const Spot& spot);
    ChartOptions fitWidth(const XmlElement& paragraph) const;
    void insertInParagraph(const Spot& spot, Edits& edits);
    void replacePicture(const Spot& spot, Edits& edits);

    Package& document_;
    const XmlSpans& xml_;
    const XmlSpans& main_;
    NewChart chart_;
    DrawingNames& names_;
    DrawingNumbers numbers_;
    ThemeColors theme_;
    /// Where the last chart stands in two copies, and what the second copy shares: its name, its part and the
    /// relationship to it.
    std::uint32_t lastCopies_ = 0;
    std::string lastName_;
    std::string lastPart_;
    std::string lastRelationship_;
};

}  // namespace quillon::report
