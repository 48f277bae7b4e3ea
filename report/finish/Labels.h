#pragma once

#include <optional>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "report/finish/Shapes.h"
#include "report/finish/TextBody.h"
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
    TextColor textColor = TextColor::Grey;

    bool isEmpty() const { return !value && !percent && !category && !series && !legendKey; }
};

/// Gives the series labels for its points; where it has a c:dLbls already, that one is filled anew and keeps
/// the labels of single points.
xercesc::DOMElement* setLabels(const SeriesPart& series, const LabelSettings& settings);

/// Gives the point at a 0-based position a label of its own in a c:dLbls, in place of one that it has.
xercesc::DOMElement* setPointLabel(xercesc::DOMElement* labels, std::size_t point,
                                   const LabelSettings& settings);

}  // namespace quillon::report
