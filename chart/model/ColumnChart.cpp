#include "chart/model/ColumnChart.h"

#include "chart/writer/DOCXColumnChartWriter.h"

namespace quillon::chart {

std::shared_ptr<Chart> ColumnChart::create()
{
    struct ColumnChartCreator final : Retracting<ColumnChart> {};
    return std::make_shared<ColumnChartCreator>();
}

std::shared_ptr<DOCXChartWriter> ColumnChart::getDOCXWriter() const
{
    return std::make_shared<DOCXColumnChartWriter>(this);
}

std::shared_ptr<DataSeriesFormatOptions> ColumnChart::getDataSeriesFormatOptions() const
{
    return DataSeriesFormatOptions::create();
}

const char* ColumnChart::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<ColumnChart>());
}

}  // namespace quillon::chart
