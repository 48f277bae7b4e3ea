#include "chart/model/PieChart.h"

#include "chart/model/PieChartDataSeriesFormatOptions.h"
#include "chart/writer/DOCXPieChartWriter.h"

namespace quillon::chart {

std::shared_ptr<PieChartSlice> PieChart::append(std::shared_ptr<PieChartSlice> slice)
{
    return slice;
}

std::shared_ptr<Chart> PieChart::create()
{
    struct PieChartCreator final : Retracting<PieChart> {};
    return std::make_shared<PieChartCreator>();
}

std::shared_ptr<DOCXChartWriter> PieChart::getDOCXWriter() const
{
    return std::make_shared<DOCXPieChartWriter>(this);
}

std::shared_ptr<DataSeriesFormatOptions> PieChart::getDataSeriesFormatOptions() const
{
    return PieChartDataSeriesFormatOptions::create();
}

const char* PieChart::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<PieChart>());
}

}  // namespace quillon::chart
