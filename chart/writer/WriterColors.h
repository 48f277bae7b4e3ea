#pragma once

#include <string>

#include "chart/model/DataSeries.h"
#include "chart/model/Format.h"

namespace quillon::chart {

/// The colour of a border or fill for the markup; `standard` where there is none.
inline std::u16string getColor(const Format* format, const std::u16string& standard)
{
    return format != nullptr && format->getColor() ? format->getColor()->toHexString() : standard;
}

/// The fill colour of the series, or the palette's colour for its position.
inline std::u16string getSeriesColor(const DataSeries& series, unsigned long seriesIndex)
{
    const auto format = series.getFormat();
    return getColor(format ? format->getFill().get() : nullptr, getPaletteColor(seriesIndex));
}

}  // namespace quillon::chart
