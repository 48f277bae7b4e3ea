#pragma once

#include <cstdint>
#include <type_traits>

#include "chart/model/DataSeriesFormatOptions.h"

namespace quillon::chart {

/// How far the slices of a pie are pulled out and where the first one starts.
class QUILLON_EXPORT PieChartDataSeriesFormatOptions : public DataSeriesFormatOptions {
 public:
    PieChartDataSeriesFormatOptions() = default;
    /// Throws: as setPieExplosion and setFirstSliceAngle, in this order.
    explicit PieChartDataSeriesFormatOptions(std::uint32_t explosion, std::uint32_t firstSliceAngle = 0);
    PieChartDataSeriesFormatOptions(const PieChartDataSeriesFormatOptions& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<PieChartDataSeriesFormatOptions> create(Args&&... args)
    {
        struct PieChartDataSeriesFormatOptionsCreator final : Retracting<PieChartDataSeriesFormatOptions> {
            using Retracting<PieChartDataSeriesFormatOptions>::Retracting;
        };
        return std::make_shared<PieChartDataSeriesFormatOptionsCreator>(std::forward<Args>(args)...);
    }

    /// Percent, 0 to 100. Default: 0.
    std::uint32_t getPieExplosion() const { return explosion_; }
    /// Throws: std::runtime_error "Pie explosion percentage must be <= 100."
    void setPieExplosion(std::uint32_t percent);

    /// Degrees, 0 to 360. Default: 0.
    std::uint32_t getFirstSliceAngle() const { return firstSliceAngle_; }
    /// Throws: std::runtime_error "First slice angle must be <= 360 degrees."
    void setFirstSliceAngle(std::uint32_t degrees);

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::uint32_t firstSliceAngle_ = 0;
    std::uint32_t explosion_ = 0;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<PieChartDataSeriesFormatOptions> /*type*/)
{
    return "quillon.chart.PieChartDataSeriesFormatOptions";
}

}  // namespace quillon::chart
