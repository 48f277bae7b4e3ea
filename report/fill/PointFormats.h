#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "report/fill/FillPlan.h"
#include "report/fill/Look.h"
#include "report/package/Edits.h"

namespace quillon::report {

/// Where old positions are from now on.
struct Places {
    /// `noMatch` for those that have gone.
    std::vector<std::size_t> after = {};
    /// Whether what lies past the old positions stays.
    bool isRestKept = false;

    std::size_t find(std::size_t index) const
    {
        return index < after.size() ? after[index] : isRestKept ? index : noMatch;
    }
};

/// A number format that takes the place of another.
struct FormatChange {
    std::string before;
    std::string after;
};

/// Moves the formats and labels of single points (c:dPt, c:dLbl) along with their points, drops those of
/// points that have gone, and continues formats that every point has. Labels of single points in the number
/// format of all follow its change.
void writePointFormats(Edits& edits, const ChartMarkup& part, const SeriesPlan& plan, const Palette& palette,
                       UniqueIds& ids, const FormatChange& labelFormat);

/// Moves elements to the places of the positions that they hold, each in the attribute "val" of what
/// `getHolder` finds; those without a place go.
void moveElements(Edits& edits, const XmlSpans& xml, const std::vector<XmlElement>& elements,
                  XmlElement (*getHolder)(const XmlElement&), const Places& places,
                  const FormatChange& format = {});

/// The children of that name in the namespace of charts.
std::vector<XmlElement> findAll(const XmlElement& parent, std::string_view name);
/// The child c:idx, which holds a position.
XmlElement getIndexChild(const XmlElement& element);

}  // namespace quillon::report
