#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "report/fill/ChartMarkup.h"
#include "report/fill/Matching.h"
#include "report/package/Edits.h"

namespace quillon::report {

/// What a source of points holds from now on. The caller keeps what it names until all edits are made.
struct SourceContent {
    /// Number, Text or Levels.
    PointSource::Kind kind;
    /// The cells, as a formula.
    const std::string& formula;
    const Points& points;
    /// The outermost first.
    const std::vector<Points>& levels;
    /// Where the format of each point comes from.
    const Matches& matches;
    /// Replaces the number format of the cache; empty keeps it.
    std::string format = {};
};

/// Inserts markup as the child `name` of a c:ser element, at the place that its schema wants.
void insertIntoSeries(Edits& edits, const XmlElement& series, std::string_view name,
                      const std::string& markup);

/// Writes the content of c:cat, c:val and the like: in the caches where they hold that kind already, anew
/// otherwise. `name` is the element's where the series has none. The caller keeps the part and the source
/// until all edits are made.
void writeSource(Edits& edits, const ChartMarkup& part, const XmlElement& series, std::string_view name,
                 const PointSource& source, const SourceContent& content);

}  // namespace quillon::report
