#pragma once

#include <type_traits>

#include "chart/model/FillFormat.h"

namespace quillon::chart {

/// A picture fill; it holds no picture.
class QUILLON_EXPORT PictureFillFormat : public FillFormat {
 public:
    PictureFillFormat() = default;
    explicit PictureFillFormat(const std::u16string& colorText) : FillFormat(colorText) {}
    PictureFillFormat(const PictureFillFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<PictureFillFormat> create(Args&&... args)
    {
        struct PictureFillFormatCreator final : Retracting<PictureFillFormat> {
            using Retracting<PictureFillFormat>::Retracting;
        };
        return std::make_shared<PictureFillFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<PictureFillFormat> /*type*/)
{
    return "quillon.chart.PictureFillFormat";
}

}  // namespace quillon::chart
