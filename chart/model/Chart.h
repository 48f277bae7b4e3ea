#pragma once

#include <type_traits>

#include "chart/model/DataSet.h"
#include "chart/model/Object.h"
#include "chart/model/PlotArea.h"
#include "chart/model/Title.h"

namespace quillon::chart {

class DOCXChartWriter;

/// The root of one chart: its data, its title and its plot area. A new chart has none of them.
class QUILLON_EXPORT Chart : public Object {
 public:
    /// The held data, shared and not copied. Default: empty.
    std::shared_ptr<DataSet> getDataSet() const { return dataSet_; }
    void setDataSet(std::shared_ptr<DataSet> dataSet) { dataSet_ = std::move(dataSet); }

    /// Default: empty.
    std::shared_ptr<PlotArea> getPlotArea() const { return plotArea_; }
    void setPlotArea(std::shared_ptr<PlotArea> plotArea) { plotArea_ = std::move(plotArea); }

    /// Default: empty, for a chart without a title.
    std::shared_ptr<Title> getTitle() const { return title_; }
    void setTitle(std::shared_ptr<Title> title) { title_ = std::move(title); }

    const char* getFullyQualifiedOrcaTypeName() const override;

    /// A new writer for this chart, which must outlive it.
    virtual std::shared_ptr<DOCXChartWriter> getDOCXWriter() const = 0;

    /// New default options of the kind that suits the chart type; nothing is stored in the chart.
    virtual std::shared_ptr<DataSeriesFormatOptions> getDataSeriesFormatOptions() const = 0;

 protected:
    Chart() = default;
    /// Copies data set, plot area and title into new ones; a copied data set has its categories and no
    /// series.
    Chart(const Chart& other);

 private:
    std::shared_ptr<DataSet> dataSet_;
    std::shared_ptr<PlotArea> plotArea_;
    std::shared_ptr<Title> title_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Chart> /*type*/)
{
    return "quillon.chart.Chart";
}

}  // namespace quillon::chart
