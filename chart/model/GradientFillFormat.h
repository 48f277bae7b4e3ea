#pragma once

#include <type_traits>

#include "chart/model/FillFormat.h"

namespace quillon::chart {

/// A gradient fill; the gradient itself has no settings.
class QUILLON_EXPORT GradientFillFormat : public FillFormat {
 public:
    GradientFillFormat() = default;
    explicit GradientFillFormat(const std::u16string& colorText) : FillFormat(colorText) {}
    GradientFillFormat(const GradientFillFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<GradientFillFormat> create(Args&&... args)
    {
        struct GradientFillFormatCreator final : Retracting<GradientFillFormat> {
            using Retracting<GradientFillFormat>::Retracting;
        };
        return std::make_shared<GradientFillFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<GradientFillFormat> /*type*/)
{
    return "quillon.chart.GradientFillFormat";
}

}  // namespace quillon::chart
