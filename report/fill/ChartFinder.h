#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// A place where a document shows a chart.
struct ChartDrawing {
    /// The part that it stands in: "word/document.xml".
    std::string part;
    /// Of the chart part, in that one; and where in it the ids are written, by the positions among all. Two
    /// where alternate content holds two copies.
    std::vector<std::string> relationshipIds = {};
    std::vector<std::size_t> positions = {};
    /// Of each copy; one for copies that share theirs.
    std::vector<std::string> chartParts = {};
    std::string name = {};
    std::string description = {};
    /// Where it stands in the part; in each copy.
    std::vector<Span> descriptions = {};
    std::string title = {};
    /// Tags and titles of the content controls around it.
    std::vector<std::string> tags = {};
    /// Names of the bookmarks around it, no more than 100.
    std::vector<std::string> bookmarks = {};
    /// "body", "header, table", "body, text box" ...
    std::string place = {};
    /// Why it is nothing that can be filled; empty for a chart.
    std::string problem = {};
};

/// The charts of a document, in reading order: those of the body, then of headers, footers and notes.
std::vector<ChartDrawing> findCharts(const Package& document);

/// Gives a drawing another description, and the others of its part their new places.
void describeDrawing(Package& document, std::vector<ChartDrawing>& drawings, std::size_t index,
                     const std::string& description);

/// The attributes that lead to chart parts, in the order of the part, as ChartDrawing::positions count.
std::vector<Span> findChartIds(const XmlSpans& xml);

}  // namespace quillon::report
