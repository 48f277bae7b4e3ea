#pragma once

#include <cstdint>
#include <type_traits>

#include "chart/model/BorderFormat.h"
#include "chart/model/Effects.h"
#include "chart/model/FillFormat.h"
#include "chart/model/Object.h"

namespace quillon::chart {

/// What a drawn shape needs: a fill, a border and effects.
class QUILLON_EXPORT ShapeFormat : public Object {
 public:
    /// A solid fill and a solid border, both white, and default effects.
    ShapeFormat();
    /// A solid fill and a solid border of one colour.
    explicit ShapeFormat(const std::u16string& colorText);
    ShapeFormat(const std::u16string& fillColorText, const std::u16string& borderColorText);
    /// Copies fill, border and effects into new objects. Borders may be solid or gradient, fills only solid.
    /// Throws: std::runtime_error "Unknown border format type: " or "Unsupported fill format type: " and the
    /// class of the format that cannot be copied; std::bad_typeid for a null border or fill.
    ShapeFormat(const ShapeFormat& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<ShapeFormat> create(Args&&... args)
    {
        struct ShapeFormatCreator final : Retracting<ShapeFormat> {
            using Retracting<ShapeFormat>::Retracting;
        };
        return std::make_shared<ShapeFormatCreator>(std::forward<Args>(args)...);
    }

    std::shared_ptr<BorderFormat> getBorder() const { return border_; }
    std::shared_ptr<FillFormat> getFill() const { return fill_; }
    std::shared_ptr<Effects> getEffects() const { return effects_; }

    /// For callers in C++, who may put another kind of border or fill in place; scripts of the host have no
    /// such setters. A format with a kind that its copy constructor does not know, or with none, cannot be
    /// copied any more: the copy throws.
    void setBorder(std::shared_ptr<BorderFormat> border) { border_ = std::move(border); }
    void setFill(std::shared_ptr<FillFormat> fill) { fill_ = std::move(fill); }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<FillFormat> fill_;
    std::shared_ptr<BorderFormat> border_;
    /// Always 1; part of the layout, with no accessor.
    [[maybe_unused]] std::uint32_t version_ = 1;
    std::shared_ptr<Effects> effects_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<ShapeFormat> /*type*/)
{
    return "quillon.chart.ShapeFormat";
}

}  // namespace quillon::chart
