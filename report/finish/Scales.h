#pragma once

#include <optional>
#include <string>

#include "report/finish/ChartPart.h"
#include "report/options/ScaleOptions.h"

namespace quillon::report {

/// What the options say of an axis that shows numbers, and how they are called.
struct Scale {
    ScaleKind kind;
    /// In front of the names of the options: "value-", "second-" or "x-".
    const char* prefix;
    const char* logName;
    std::optional<double> minimum = {};
    std::optional<double> maximum = {};
    std::optional<double> step = {};
    std::optional<double> log = {};
    std::optional<Units> units = {};
    /// Whether the values are shares of the whole category.
    bool isShare = false;
    bool isStacked = false;
    /// Whether it has shapes whose size is their value: bars, unless they float, and areas.
    bool startsAtZero = false;
    /// The format that the author chose for this axis alone; empty for none.
    std::string format = {};
    std::string title = {};
};

Scale getScale(const ChartPart& part, ScaleKind kind);

/// The element of the axis; null where the chart has none.
xercesc::DOMElement* findAxis(const ChartPart& part, ScaleKind kind);

/// What a point of a series has on that axis: its value, or its X.
double getNumber(const chart::DataPoint& point, ScaleKind kind);

/// Throws: ChartError that names the first point at 0 or below; `reason` ends its sentence.
void requirePositiveNumbers(const SeriesPart& series, ScaleKind kind, const std::string& reason);

/// Whether the series stands on that axis.
bool standsOn(const ChartPart& part, const SeriesPart& series, ScaleKind kind);

}  // namespace quillon::report
