#pragma once

#include <cstdint>
#include <type_traits>
#include <vector>

#include "chart/model/DataSeries.h"
#include "chart/model/Object.h"

namespace quillon::chart {

/// The data of a chart: category names, and series that run over them.
class QUILLON_EXPORT DataSet : public Object {
 public:
    DataSet() = default;
    explicit DataSet(const std::vector<std::u16string>& categories) : categories_(categories) {}
    /// Copies the category names alone: the copy has no series.
    DataSet(const DataSet& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataSet> create(Args&&... args)
    {
        struct DataSetCreator final : Retracting<DataSet> {
            using Retracting<DataSet>::Retracting;
        };
        return std::make_shared<DataSetCreator>(std::forward<Args>(args)...);
    }

    /// One name per point position; their number is not checked against the series. Default: empty.
    const std::vector<std::u16string>& getCategories() const { return categories_; }
    void setCategories(std::vector<std::u16string> categories) { categories_ = std::move(categories); }

    std::uint64_t getSeriesCount() const { return series_.size(); }
    /// The series at a 0-based position; an empty handle while the set has no series.
    /// Throws: std::out_of_range with the text of std::vector::at.
    std::shared_ptr<DataSeries> getSeries(std::uint64_t index) const;
    /// A new list of the series; the series themselves are shared.
    std::shared_ptr<std::vector<std::shared_ptr<DataSeries>>> getSeriesList() const;

    /// Appends the given series itself and returns it.
    /// Throws: std::runtime_error for an empty handle, and "New series size N differs from existing series
    /// size M" when its number of points is not that of the first series.
    std::shared_ptr<DataSeries> appendSeries(std::shared_ptr<DataSeries> series);
    /// Appends a new series with one point per value and returns it. Its size is compared with that of the
    /// second series, so a set that holds exactly one refuses every series. Throws: as the other form, and as
    /// getSeries.
    std::shared_ptr<DataSeries> appendSeries(const std::u16string& name, const std::vector<double>& values);

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::vector<std::shared_ptr<DataSeries>> series_;
    std::vector<std::u16string> categories_;
};

/// Makes a series with one point per value, appends it and returns it. Its size is compared with that of the
/// first series, so this builds a set of any number of series:
///     auto data = DataSet::create(std::vector<std::u16string>{u"Q1", u"Q2"});
///     appendSeries(*data, u"North", {1.5, 2.0});
///     appendSeries(*data, u"South", {2.5, 1.75});
/// Throws: std::runtime_error "New series size N differs from existing series size M"; the set stays as it
/// is.
QUILLON_EXPORT std::shared_ptr<DataSeries> appendSeries(DataSet& dataSet, const std::u16string& name,
                                                        const std::vector<double>& values);

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataSet> /*type*/)
{
    return "quillon.chart.DataSet";
}

}  // namespace quillon::chart
