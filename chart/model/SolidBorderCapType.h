#pragma once

#include <cstdint>

namespace quillon::chart {

/// How the ends of a solid border are drawn. The host lists the members in this order.
enum class SolidBorderCapType : std::uint32_t {
    Flat = 2,
    Round = 1,
    Square = 0,
};

}  // namespace quillon::chart
