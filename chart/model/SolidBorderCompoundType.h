#pragma once

#include <cstdint>
#include <type_traits>

namespace quillon::chart {

/// How many strokes make up a solid border. The host lists the members in this order.
enum class SolidBorderCompoundType : std::uint32_t {
    Double = 1,
    Simple = 0,
    ThinThick = 2,
    ThickThin = 3,
    Triple = 4,
};

/// The name under which the host knows the enumeration.
constexpr const char* hostNameOf(std::type_identity<SolidBorderCompoundType> /*type*/)
{
    return "quillon.chart.SolidBorderCompoundType";
}

}  // namespace quillon::chart
