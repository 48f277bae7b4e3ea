#pragma once

#include <cstdint>
#include <type_traits>

namespace quillon::chart {

/// How a solid border is dashed. The host lists the members in this order.
enum class SolidBorderDashType : std::uint32_t {
    Dash = 3,
    RoundDot = 1,
    SquareDot = 2,
    DashDot = 4,
    LongDash = 5,
    LongDashDot = 6,
    LongDashDotDot = 7,
    Solid = 0,
};

/// The name under which the host knows the enumeration.
constexpr const char* hostNameOf(std::type_identity<SolidBorderDashType> /*type*/)
{
    return "quillon.chart.SolidBorderDashType";
}

}  // namespace quillon::chart
