#pragma once

#include <optional>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "report/finish/Shapes.h"
#include "report/options/ChartOptions.h"

namespace quillon::report {

/// What data labels say, where they stand and how they look.
struct LabelSettings {
    bool value = false;
    bool percent = false;
    bool category = false;
    bool series = false;
    bool legendKey = false;
    /// Between two of these. Default, null: chosen by the word processor.
    const char16_t* separator = nullptr;
    /// Lines from labels to the points from which they are far; of all labels of a series alone.
    bool leaderLines = false;
    ShapeSettings shape = {};
    /// Default: chosen by the word processor.
    std::optional<LabelPosition> position = {};
    /// As in a cell. Default, empty: as the value's.
    std::u16string numberFormat = {};
};

/// Gives the series labels for its points; where it has a c:dLbls already, that one is filled anew and keeps
/// the labels of single points.
xercesc::DOMElement* setLabels(const SeriesPart& series, const LabelSettings& settings);

/// Appends the label of the point at a 0-based position to a c:dLbls. Requires: ascending positions.
void addPointLabel(xercesc::DOMElement* labels, std::size_t point, const LabelSettings& settings);

}  // namespace quillon::report
