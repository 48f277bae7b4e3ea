#include "chart/host/Namespace.h"

#include "chart/host/AreaClasses.h"
#include "chart/host/ChartClasses.h"
#include "chart/host/DataClasses.h"
#include "chart/host/FormatClasses.h"
#include "chart/host/LabelClasses.h"
#include "chart/host/TextClasses.h"
#include "orca/ClassRegistry.h"

namespace quillon::chart {
namespace {

template <typename... Infos>
void addClasses(orca::COSNamespace& chartNamespace)
{
    (chartNamespace.addClass<Infos>(), ...);
}

}  // namespace

/// The order is that of the host's catalogue: neither by name nor bases first.
void populateNamespace(orca::COSNamespace* chartNamespace)
{
    using namespace mi;
    addClasses<
        // clang-format off
        CosObject,
        CosChart,
        CosBarChart,
        CosColumnChart,
        CosLineChart,
        CosPieChart,
        CosPieChartSlice,
        CosDataPoint,
        CosDataSeries,
        CosDataSet,
        CosBorderFormat,
        CosSolidBorderFormat,
        CosGradientBorderFormat,
        CosSolidBorderDashType,
        CosSolidBorderCapType,
        CosSolidBorderCompoundType,
        CosSolidBorderJoinType,
        CosFillFormat,
        CosSolidFillFormat,
        CosGradientFillFormat,
        CosPatternFillFormat,
        CosPictureFillFormat,
        CosColor,
        CosFormat,
        CosShapeFormat,
        CosDataPointShapeFormat,
        CosDataSeriesShapeFormat,
        CosDataLabelFormat,
        CosDataLabelOptions,
        CosDataLabelContentOptions,
        CosDataLabelContentSeparator,
        CosDataSeriesFormatOptions,
        CosPieChartDataSeriesFormatOptions,
        CosEffects,
        CosShadowEffect,
        CosGlowEffect,
        CosSoftEdgesEffect,
        CosThreeDEffect,
        CosText,
        CosParagraph,
        CosTitle,
        CosTextBase,
        CosLegendPosition,
        CosLegendPositionRelative,
        CosAreaBase,
        CosPlotArea,
        CosElementArea
        // clang-format on
        >(*chartNamespace);
}

}  // namespace quillon::chart
