#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// Soft edges; they have no settings.
class QUILLON_EXPORT SoftEdgesEffect : public Object {
 public:
    SoftEdgesEffect() = default;
    SoftEdgesEffect(const SoftEdgesEffect& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<SoftEdgesEffect> create(Args&&... args)
    {
        struct SoftEdgesEffectCreator final : Retracting<SoftEdgesEffect> {
            using Retracting<SoftEdgesEffect>::Retracting;
        };
        return std::make_shared<SoftEdgesEffectCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<SoftEdgesEffect> /*type*/)
{
    return "quillon.chart.SoftEdgesEffect";
}

}  // namespace quillon::chart
