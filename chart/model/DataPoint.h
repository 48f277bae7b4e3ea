#pragma once

#include <type_traits>

#include "chart/model/DataLabelFormat.h"
#include "chart/model/DataPointShapeFormat.h"
#include "chart/model/Object.h"

namespace quillon::chart {

/// One value of a series, with formats of its own if it has any.
class QUILLON_EXPORT DataPoint : public Object {
 public:
    DataPoint() = default;
    explicit DataPoint(double value) : y_(value) {}
    DataPoint(double x, double y) : x_(x), y_(y) {}
    /// Copies the formats into new ones.
    /// Throws: as the copy constructor of ShapeFormat.
    DataPoint(const DataPoint& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataPoint> create(Args&&... args)
    {
        struct DataPointCreator final : Retracting<DataPoint> {
            using Retracting<DataPoint>::Retracting;
        };
        return std::make_shared<DataPointCreator>(std::forward<Args>(args)...);
    }

    /// Default: 0.
    double getX() const { return x_; }
    void setX(double x) { x_ = x; }

    /// The point's value. Default: 0.
    double getY() const { return y_; }
    void setY(double y) { y_ = y; }
    /// The same under the host's name for it.
    double getValue() const { return y_; }
    void setValue(double value) { y_ = value; }

    /// Default: empty.
    std::shared_ptr<DataPointShapeFormat> getFormat() const { return format_; }
    void setFormat(std::shared_ptr<DataPointShapeFormat> format) { format_ = std::move(format); }

    /// Default: empty.
    std::shared_ptr<DataLabelFormat> getLabelFormat() const { return labelFormat_; }
    void setLabelFormat(std::shared_ptr<DataLabelFormat> format) { labelFormat_ = std::move(format); }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    double x_ = 0;
    double y_ = 0;
    std::shared_ptr<DataPointShapeFormat> format_;
    std::shared_ptr<DataLabelFormat> labelFormat_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataPoint> /*type*/)
{
    return "quillon.chart.DataPoint";
}

}  // namespace quillon::chart
