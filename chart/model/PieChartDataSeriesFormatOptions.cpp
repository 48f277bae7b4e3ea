#include "chart/model/PieChartDataSeriesFormatOptions.h"

#include <stdexcept>

namespace quillon::chart {

PieChartDataSeriesFormatOptions::PieChartDataSeriesFormatOptions(std::uint32_t explosion,
                                                                 std::uint32_t firstSliceAngle)
{
    setPieExplosion(explosion);
    setFirstSliceAngle(firstSliceAngle);
}

void PieChartDataSeriesFormatOptions::setPieExplosion(std::uint32_t percent)
{
    if (percent > 100) throw std::runtime_error("Pie explosion percentage must be <= 100.");
    explosion_ = percent;
}

void PieChartDataSeriesFormatOptions::setFirstSliceAngle(std::uint32_t degrees)
{
    if (degrees > 360) throw std::runtime_error("First slice angle must be <= 360 degrees.");
    firstSliceAngle_ = degrees;
}

const char* PieChartDataSeriesFormatOptions::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<PieChartDataSeriesFormatOptions>());
}

}  // namespace quillon::chart
