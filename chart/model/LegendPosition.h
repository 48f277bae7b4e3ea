#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// Where the legend of a chart stands; it has no settings yet. In documents, an option of the chart places
/// the legend.
class QUILLON_EXPORT LegendPosition : public Object {
 public:
    class Relative;

    LegendPosition();
    /// Copies the relative position into a new one.
    LegendPosition(const LegendPosition& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<LegendPosition> create(Args&&... args)
    {
        struct LegendPositionCreator final : Retracting<LegendPosition> {
            using Retracting<LegendPosition>::Retracting;
        };
        return std::make_shared<LegendPositionCreator>(std::forward<Args>(args)...);
    }

    /// Never null.
    std::shared_ptr<Relative> getRelative() const { return relative_; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<Relative> relative_;
};

/// A legend position relative to the chart; it has no settings yet.
class QUILLON_EXPORT LegendPosition::Relative : public Object {
 public:
    Relative() = default;
    Relative(const Relative& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<Relative> create(Args&&... args)
    {
        struct LegendPositionRelativeCreator final : Retracting<Relative> {
            using Retracting<Relative>::Retracting;
        };
        return std::make_shared<LegendPositionRelativeCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The names under which the host knows the two.
constexpr const char* hostNameOf(std::type_identity<LegendPosition> /*type*/)
{
    return "quillon.chart.LegendPosition";
}

constexpr const char* hostNameOf(std::type_identity<LegendPosition::Relative> /*type*/)
{
    return "quillon.chart.LegendPositionRelative";
}

}  // namespace quillon::chart
