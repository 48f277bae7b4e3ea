#pragma once

#include <cstdint>
#include <type_traits>
#include <vector>

#include "chart/model/DataLabelFormat.h"
#include "chart/model/DataPoint.h"
#include "chart/model/DataSeriesFormatOptions.h"
#include "chart/model/DataSeriesShapeFormat.h"
#include "chart/model/Object.h"

namespace quillon::chart {

/// A named list of points, in category order. It only grows.
class QUILLON_EXPORT DataSeries : public Object {
 public:
    DataSeries() = default;
    explicit DataSeries(const std::u16string& name) : name_(name) {}
    /// Copies points and formats into new ones; of the format options only the base part is kept.
    /// Throws: as the copy constructor of ShapeFormat.
    DataSeries(const DataSeries& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataSeries> create(Args&&... args)
    {
        struct DataSeriesCreator final : Retracting<DataSeries> {
            using Retracting<DataSeries>::Retracting;
        };
        return std::make_shared<DataSeriesCreator>(std::forward<Args>(args)...);
    }

    /// Default: empty.
    const std::u16string& getName() const { return name_; }
    void setName(const std::u16string& name) { name_ = name; }

    /// All points, in order.
    const std::vector<std::shared_ptr<DataPoint>>& getPoints() const { return points_; }
    /// The number of points.
    std::uint64_t getSize() const { return points_.size(); }
    /// The point at a 0-based position.
    /// Throws: std::runtime_error "Data point index out of range."
    std::shared_ptr<DataPoint> getPoint(std::uint64_t index) const;

    /// Appends the given point itself, which may stand in several series, and returns it.
    /// Throws: std::runtime_error for an empty handle.
    std::shared_ptr<DataPoint> appendPoint(std::shared_ptr<DataPoint> point);
    /// Appends a new point and returns it; x is 0 where it is not given.
    std::shared_ptr<DataPoint> appendPoint(double value);
    std::shared_ptr<DataPoint> appendPoint(double x, double y);

    /// Default: empty.
    std::shared_ptr<DataSeriesShapeFormat> getFormat() const { return format_; }
    void setFormat(std::shared_ptr<DataSeriesShapeFormat> format) { format_ = std::move(format); }

    /// Default: empty.
    std::shared_ptr<DataLabelFormat> getLabelFormat() const { return labelFormat_; }
    void setLabelFormat(std::shared_ptr<DataLabelFormat> format) { labelFormat_ = std::move(format); }

    /// Not visible to the host. Default: empty.
    std::shared_ptr<DataSeriesFormatOptions> getFormatOptions() const { return formatOptions_; }
    void setFormatOptions(std::shared_ptr<DataSeriesFormatOptions> options)
    {
        formatOptions_ = std::move(options);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::u16string name_;
    std::vector<std::shared_ptr<DataPoint>> points_;
    std::shared_ptr<DataSeriesShapeFormat> format_;
    std::shared_ptr<DataLabelFormat> labelFormat_;
    std::shared_ptr<DataSeriesFormatOptions> formatOptions_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataSeries> /*type*/)
{
    return "quillon.chart.DataSeries";
}

}  // namespace quillon::chart
