#include "chart/model/DataSeries.h"

#include <stdexcept>

namespace quillon::chart {

DataSeries::DataSeries(const DataSeries& other)
    : Object(other),
      name_(other.name_),
      format_(copyOf(other.format_)),
      labelFormat_(copyOf(other.labelFormat_)),
      formatOptions_(copyOf(other.formatOptions_))
{
    points_.reserve(other.points_.size());
    for (const auto& point : other.points_) points_.push_back(copyOf(point));
}

std::shared_ptr<DataPoint> DataSeries::getPoint(std::uint64_t index) const
{
    if (index >= points_.size()) throw std::runtime_error("Data point index out of range.");
    return points_[index];
}

std::shared_ptr<DataPoint> DataSeries::appendPoint(std::shared_ptr<DataPoint> point)
{
    if (!point) throw std::runtime_error("appendPoint: expected a DataPoint, got an empty handle.");
    points_.push_back(std::move(point));
    return points_.back();
}

std::shared_ptr<DataPoint> DataSeries::appendPoint(double value)
{
    return appendPoint(DataPoint::create(value));
}

std::shared_ptr<DataPoint> DataSeries::appendPoint(double x, double y)
{
    return appendPoint(DataPoint::create(x, y));
}

const char* DataSeries::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataSeries>());
}

}  // namespace quillon::chart
