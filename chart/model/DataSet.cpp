#include "chart/model/DataSet.h"

#include <stdexcept>

namespace quillon::chart {
namespace {

void requireSize(std::uint64_t size, std::uint64_t existing)
{
    if (size == existing) return;
    throw std::runtime_error("New series size " + std::to_string(size) +
                             " differs from existing series size " + std::to_string(existing));
}

std::shared_ptr<DataSeries> makeSeries(const std::u16string& name, const std::vector<double>& values)
{
    auto series = DataSeries::create(name);
    for (const double value : values) series->appendPoint(value);
    return series;
}

}  // namespace

DataSet::DataSet(const DataSet& other) : Object(other), categories_(other.categories_) {}

std::shared_ptr<DataSeries> DataSet::getSeries(std::uint64_t index) const
{
    if (series_.empty()) return nullptr;
    return series_.at(index);
}

std::shared_ptr<std::vector<std::shared_ptr<DataSeries>>> DataSet::getSeriesList() const
{
    return std::make_shared<std::vector<std::shared_ptr<DataSeries>>>(series_);
}

std::shared_ptr<DataSeries> DataSet::appendSeries(std::shared_ptr<DataSeries> series)
{
    if (!series) throw std::runtime_error("appendSeries: expected a DataSeries, got an empty handle.");
    if (!series_.empty()) requireSize(series->getSize(), series_.front()->getSize());
    series_.push_back(std::move(series));
    return series_.back();
}

std::shared_ptr<DataSeries> DataSet::appendSeries(const std::u16string& name,
                                                  const std::vector<double>& values)
{
    if (!series_.empty()) requireSize(values.size(), getSeries(1)->getSize());
    series_.push_back(makeSeries(name, values));
    return series_.back();
}

std::shared_ptr<DataSeries> appendSeries(DataSet& dataSet, const std::u16string& name,
                                         const std::vector<double>& values)
{
    return dataSet.appendSeries(makeSeries(name, values));
}

const char* DataSet::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataSet>());
}

}  // namespace quillon::chart
