#include "chart/model/LineChart.h"

#include "chart/writer/DOCXLineChartWriter.h"

namespace quillon::chart {

std::shared_ptr<Chart> LineChart::create()
{
    struct LineChartCreator final : Retracting<LineChart> {};
    return std::make_shared<LineChartCreator>();
}

std::shared_ptr<DOCXChartWriter> LineChart::getDOCXWriter() const
{
    return std::make_shared<DOCXLineChartWriter>(this);
}

std::shared_ptr<DataSeriesFormatOptions> LineChart::getDataSeriesFormatOptions() const
{
    return DataSeriesFormatOptions::create();
}

const char* LineChart::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<LineChart>());
}

}  // namespace quillon::chart
