#pragma once

#include <type_traits>

#include "chart/model/Color.h"
#include "chart/model/Object.h"

namespace quillon::chart {

/// What every text element has: a colour.
class QUILLON_EXPORT TextBase : public Object {
 public:
    /// Black.
    TextBase();
    explicit TextBase(const std::u16string& color);
    /// Shares the given colour; an empty handle means no colour.
    explicit TextBase(std::shared_ptr<Color> color) : color_(std::move(color)) {}
    /// Copies the colour into a new one.
    TextBase(const TextBase& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<TextBase> create(Args&&... args)
    {
        struct TextBaseCreator final : Retracting<TextBase> {
            using Retracting<TextBase>::Retracting;
        };
        return std::make_shared<TextBaseCreator>(std::forward<Args>(args)...);
    }

    /// Default: "black". Null means no colour.
    std::shared_ptr<Color> getColor() const { return color_; }
    void setColor(std::shared_ptr<Color> color) { color_ = std::move(color); }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<Color> color_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<TextBase> /*type*/)
{
    return "quillon.chart.TextBase";
}

}  // namespace quillon::chart
