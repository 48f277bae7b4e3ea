#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

#include "report/fill/BlockWidth.h"
#include "report/fill/PlaceholderSpots.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

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

/// Puts charts into one part of a document.
class ChartInserter {
 public:
    struct Chart {
        const chart::Chart& chart;
        const ChartOptions& options;
        const Listener& listener;
        const ChartData& data;
    };

    ChartInserter(Package& document, const XmlSpans& xml, const XmlSpans& main, const Chart& chart)
        : document_(document), xml_(xml), main_(main), chart_(chart), numbers_(xml.getRoot())
    {
    }

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
    Chart chart_;
    DrawingNumbers numbers_;
    /// Where the last chart stands in two copies, and its relationship, which the second copy shares.
    std::uint32_t lastCopies_ = 0;
    std::string lastRelationship_;
    std::string lastPart_;
};

}  // namespace quillon::report
