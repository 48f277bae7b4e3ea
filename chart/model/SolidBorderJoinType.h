#pragma once

#include <cstdint>
#include <type_traits>

namespace quillon::chart {

/// How the corners of a solid border are drawn. The host lists the members in this order.
enum class SolidBorderJoinType : std::uint32_t {
    Bevel = 1,
    Miter = 2,
    Rounded = 0,
};

/// The name under which the host knows the enumeration.
constexpr const char* hostNameOf(std::type_identity<SolidBorderJoinType> /*type*/)
{
    return "quillon.chart.SolidBorderJoinType";
}

}  // namespace quillon::chart
