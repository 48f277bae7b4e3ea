#pragma once

#include <cstdint>

namespace quillon::chart {

/// How the corners of a solid border are drawn. The host lists the members in this order.
enum class SolidBorderJoinType : std::uint32_t {
    Bevel = 1,
    Miter = 2,
    Rounded = 0,
};

}  // namespace quillon::chart
