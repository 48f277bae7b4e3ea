#pragma once

#include <span>
#include <xercesc/dom/DOM.hpp>

#include "report/finish/ChartPart.h"
#include "report/options/ChartKind.h"

/// The finishing rules: what a word processor wants beyond the writer's markup, a list for each subject.
namespace quillon::report {

inline constexpr ChartKinds allKinds = everyKind;
inline constexpr ChartKinds axisKinds{ChartKind::Bar,     ChartKind::Column, ChartKind::Line,
                                      ChartKind::Area,    ChartKind::Stock,  ChartKind::Waterfall,
                                      ChartKind::Scatter, ChartKind::Bubble, ChartKind::Radar};
/// Their categories run along an axis.
inline constexpr ChartKinds categoryKinds{ChartKind::Bar,  ChartKind::Column, ChartKind::Line,
                                          ChartKind::Area, ChartKind::Stock,  ChartKind::Waterfall};
/// Their series can be stacked.
inline constexpr ChartKinds stackKinds{ChartKind::Bar, ChartKind::Column, ChartKind::Line, ChartKind::Area,
                                       ChartKind::Waterfall};
/// Written as bars, as lines and as pies; what is neither starts as lines.
inline constexpr ChartKinds barKinds{ChartKind::Bar, ChartKind::Column, ChartKind::Waterfall};
inline constexpr ChartKinds lineKinds{ChartKind::Line,    ChartKind::Area,   ChartKind::Stock,
                                      ChartKind::Scatter, ChartKind::Bubble, ChartKind::Radar};

/// A rule, and the kinds of chart that it is for.
struct Rule {
    ChartKinds kinds;
    void (*apply)(ChartPart& part);
};

/// c:ser elements hold what their kind of chart has, in the order of the schema.
extern const std::span<const Rule> seriesRules;
/// The groups of series that the kind of chart asks for, each series in its own, and their axes.
extern const std::span<const Rule> groupRules;
/// References name real cells; caches hold what can stand in them.
extern const std::span<const Rule> referenceRules;
/// Categories that are dates, numbers or levels, and the places of points.
extern const std::span<const Rule> categoryRules;
/// Fills and borders of series and points; what sets no colour has an automatic one.
extern const std::span<const Rule> shapeRules;
/// What the labels of series and points say, and how they look.
extern const std::span<const Rule> labelRules;
extern const std::span<const Rule> trendRules;
extern const std::span<const Rule> errorBarRules;
/// Lines and bars that join points with the axis, or with each other.
extern const std::span<const Rule> joiningRules;
/// All runs of the title, with their colours.
extern const std::span<const Rule> titleRules;
/// Where the plot area stands, and how it looks.
extern const std::span<const Rule> plotAreaRules;
/// Markers of lines, in the colours of their series.
extern const std::span<const Rule> markerRules;
/// How far slices are pulled out, and where the first one starts.
extern const std::span<const Rule> pieRules;
/// Texts hold what XML can.
extern const std::span<const Rule> textRules;
/// Scale, gridlines, texts and titles of the axes.
extern const std::span<const Rule> axisRules;
/// How numbers look on axes and in caches.
extern const std::span<const Rule> numberRules;
extern const std::span<const Rule> legendRules;
/// The chart as a whole: gaps, and the workbook behind it.
extern const std::span<const Rule> chartRules;
/// Frame, data table and fonts. These come last: fonts are for all texts.
extern const std::span<const Rule> lookRules;

/// The w:r element with the drawing while it is finished.
struct Drawing {
    xercesc::DOMElement* run;
    /// wp:inline; wp:anchor once it floats.
    xercesc::DOMElement* inlineDrawing;
    const ChartContext& context;
};

using DrawingRule = void (*)(Drawing& drawing);
extern const std::span<const DrawingRule> drawingRules;

}  // namespace quillon::report
