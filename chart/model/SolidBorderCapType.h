#pragma once

#include <cstdint>
#include <type_traits>

namespace quillon::chart {

/// How the ends of a solid border are drawn. The host lists the members in this order.
enum class SolidBorderCapType : std::uint32_t {
    Flat = 2,
    Round = 1,
    Square = 0,
};

/// The name under which the host knows the enumeration.
constexpr const char* hostNameOf(std::type_identity<SolidBorderCapType> /*type*/)
{
    return "quillon.chart.SolidBorderCapType";
}

}  // namespace quillon::chart
