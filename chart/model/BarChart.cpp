#include "chart/model/BarChart.h"

#include "chart/writer/DOCXBarChartWriter.h"

namespace quillon::chart {

std::shared_ptr<Chart> BarChart::create()
{
    struct BarChartCreator final : Retracting<BarChart> {};
    return std::make_shared<BarChartCreator>();
}

std::shared_ptr<DOCXChartWriter> BarChart::getDOCXWriter() const
{
    return std::make_shared<DOCXBarChartWriter>(this);
}

std::shared_ptr<DataSeriesFormatOptions> BarChart::getDataSeriesFormatOptions() const
{
    return DataSeriesFormatOptions::create();
}

const char* BarChart::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<BarChart>());
}

}  // namespace quillon::chart
