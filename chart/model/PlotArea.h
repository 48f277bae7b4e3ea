#pragma once

#include <type_traits>

#include "chart/model/AreaBase.h"

namespace quillon::chart {

/// The plot region of a chart: an area with a position.
class QUILLON_EXPORT PlotArea : public AreaBase {
 public:
    PlotArea() = default;
    /// The height comes before the width.
    PlotArea(const std::u16string& x, const std::u16string& y, const std::u16string& height,
             const std::u16string& width);
    PlotArea(const PlotArea& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<PlotArea> create(Args&&... args)
    {
        struct CreatePlotArea final : Retracting<PlotArea> {
            using Retracting<PlotArea>::Retracting;
        };
        return std::make_shared<CreatePlotArea>(std::forward<Args>(args)...);
    }

    /// Lengths as the author gave them, not parsed. Default: empty.
    std::u16string getX() const { return x_; }
    void setX(const std::u16string& x) { x_ = x; }
    std::u16string getY() const { return y_; }
    void setY(const std::u16string& y) { y_ = y; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::u16string x_;
    std::u16string y_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<PlotArea> /*type*/)
{
    return "quillon.chart.PlotArea";
}

}  // namespace quillon::chart
