#pragma once

#include <type_traits>

#include "chart/model/Format.h"

namespace quillon::chart {

/// The outline of a shape: a colour, a transparency and a width.
class QUILLON_EXPORT BorderFormat : public Format {
 public:
    BorderFormat() = default;
    explicit BorderFormat(const std::u16string& colorText) : Format(colorText) {}
    BorderFormat(const BorderFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<BorderFormat> create(Args&&... args)
    {
        struct BorderFormatCreator final : Retracting<BorderFormat> {
            using Retracting<BorderFormat>::Retracting;
        };
        return std::make_shared<BorderFormatCreator>(std::forward<Args>(args)...);
    }

    /// Points; stored as given, also when it is zero or negative. Default: 0.5.
    double getWidth() const { return width_; }
    void setWidth(double points) { width_ = points; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    double width_ = 0.5;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<BorderFormat> /*type*/)
{
    return "quillon.chart.BorderFormat";
}

}  // namespace quillon::chart
