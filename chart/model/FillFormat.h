#pragma once

#include <type_traits>

#include "chart/model/Format.h"

namespace quillon::chart {

/// How the inside of a shape is painted; the subclass tells the kind of fill.
class QUILLON_EXPORT FillFormat : public Format {
 public:
    FillFormat() = default;
    explicit FillFormat(const std::u16string& colorText) : Format(colorText) {}
    FillFormat(const FillFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<FillFormat> create(Args&&... args)
    {
        struct FillFormatCreator final : Retracting<FillFormat> {
            using Retracting<FillFormat>::Retracting;
        };
        return std::make_shared<FillFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<FillFormat> /*type*/)
{
    return "quillon.chart.FillFormat";
}

}  // namespace quillon::chart
