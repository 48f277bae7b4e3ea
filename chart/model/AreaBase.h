#pragma once

#include <type_traits>

#include "chart/model/Object.h"
#include "chart/model/ShapeFormat.h"

namespace quillon::chart {

/// A rectangular region of a chart: its size as text, and a shape format.
class QUILLON_EXPORT AreaBase : public Object {
 public:
    AreaBase();
    /// The height comes first.
    AreaBase(const std::u16string& height, const std::u16string& width);
    /// Copies the format into a new one.
    AreaBase(const AreaBase& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<AreaBase> create(Args&&... args)
    {
        struct AreaBaseCreator final : Retracting<AreaBase> {
            using Retracting<AreaBase>::Retracting;
        };
        return std::make_shared<AreaBaseCreator>(std::forward<Args>(args)...);
    }

    /// Lengths as the author gave them, not parsed. Default: empty.
    std::u16string getHeight() const { return height_; }
    void setHeight(const std::u16string& height) { height_ = height; }
    std::u16string getWidth() const { return width_; }
    void setWidth(const std::u16string& width) { width_ = width; }

    /// Never null. Default: a default ShapeFormat.
    std::shared_ptr<ShapeFormat> getFormat() const { return format_; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::u16string height_;
    std::u16string width_;
    std::shared_ptr<ShapeFormat> format_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<AreaBase> /*type*/)
{
    return "quillon.chart.AreaBase";
}

}  // namespace quillon::chart
