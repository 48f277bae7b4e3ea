#pragma once

#include <type_traits>

#include "chart/model/BorderFormat.h"

namespace quillon::chart {

/// An outline painted with a gradient; the gradient itself has no settings.
class QUILLON_EXPORT GradientBorderFormat : public BorderFormat {
 public:
    GradientBorderFormat() = default;
    explicit GradientBorderFormat(const std::u16string& colorText) : BorderFormat(colorText) {}
    GradientBorderFormat(const GradientBorderFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<GradientBorderFormat> create(Args&&... args)
    {
        struct GradientBorderFormatCreator final : Retracting<GradientBorderFormat> {
            using Retracting<GradientBorderFormat>::Retracting;
        };
        return std::make_shared<GradientBorderFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<GradientBorderFormat> /*type*/)
{
    return "quillon.chart.GradientBorderFormat";
}

}  // namespace quillon::chart
