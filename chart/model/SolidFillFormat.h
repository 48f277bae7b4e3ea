#pragma once

#include <type_traits>

#include "chart/model/FillFormat.h"

namespace quillon::chart {

/// A fill of one colour.
class QUILLON_EXPORT SolidFillFormat : public FillFormat {
 public:
    SolidFillFormat() = default;
    explicit SolidFillFormat(std::u16string colorText) : FillFormat(colorText) {}
    /// Keeps the text of the colour alone: the copy's transparency is 0 and its colour is not from a triplet.
    SolidFillFormat(const SolidFillFormat& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<SolidFillFormat> create(Args&&... args)
    {
        struct SolidFillFormatCreator final : Retracting<SolidFillFormat> {
            using Retracting<SolidFillFormat>::Retracting;
        };
        return std::make_shared<SolidFillFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<SolidFillFormat> /*type*/)
{
    return "quillon.chart.SolidFillFormat";
}

}  // namespace quillon::chart
