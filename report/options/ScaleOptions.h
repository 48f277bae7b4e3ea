#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "report/options/ChartOptions.h"

namespace quillon::report {

/// Which of the axes that show numbers: the first value axis, the second, or the horizontal one of points.
enum class ScaleKind : std::uint8_t { Value, Second, X };

/// What the options of an axis that shows numbers are called, and the members that hold them. A null member
/// is one that the axis has not.
struct ScaleOptions {
    /// In front of the names of the options: "value-", "second-" or "x-".
    const char* prefix;
    const char* logName;
    std::optional<double> ChartOptions::*minimum;
    std::optional<double> ChartOptions::*maximum;
    std::optional<double> ChartOptions::*step;
    std::optional<double> ChartOptions::*log;
    std::string ChartOptions::*format;
    std::string ChartOptions::*title;
};

/// In the order of ScaleKind. The format of the first value axis is that of all values.
inline constexpr std::array<ScaleOptions, 3> scaleOptions = {{
    {"value-", "log", &ChartOptions::valueMin, &ChartOptions::valueMax, &ChartOptions::valueStep,
     &ChartOptions::log, nullptr, &ChartOptions::valueTitle},
    {"second-", "second-log", &ChartOptions::secondMin, &ChartOptions::secondMax, &ChartOptions::secondStep,
     &ChartOptions::secondLog, &ChartOptions::secondFormat, &ChartOptions::secondTitle},
    {"x-", "x-log", &ChartOptions::xMin, &ChartOptions::xMax, &ChartOptions::xStep, &ChartOptions::xLog,
     &ChartOptions::xFormat, &ChartOptions::xTitle},
}};

}  // namespace quillon::report
