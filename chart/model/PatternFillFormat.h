#pragma once

#include <type_traits>

#include "chart/model/FillFormat.h"

namespace quillon::chart {

/// A pattern fill; the pattern itself has no settings.
class QUILLON_EXPORT PatternFillFormat : public FillFormat {
 public:
    PatternFillFormat() = default;
    explicit PatternFillFormat(const std::u16string& colorText) : FillFormat(colorText) {}
    PatternFillFormat(const PatternFillFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<PatternFillFormat> create(Args&&... args)
    {
        struct PatternFillFormatCreator final : Retracting<PatternFillFormat> {
            using Retracting<PatternFillFormat>::Retracting;
        };
        return std::make_shared<PatternFillFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<PatternFillFormat> /*type*/)
{
    return "quillon.chart.PatternFillFormat";
}

}  // namespace quillon::chart
