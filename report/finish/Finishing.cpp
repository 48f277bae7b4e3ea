#include "report/finish/Finishing.h"

#include "report/finish/ChartPart.h"
#include "report/finish/Rules.h"
#include "report/package/Xml.h"

namespace quillon::report {

void finishChartPart(xercesc::DOMDocument* doc, const ChartContext& context)
{
    ChartPart part(doc, context);
    for (const auto& rules :
         {seriesRules, groupRules, referenceRules, textRules, categoryRules, shapeRules, markerRules,
          labelRules, trendRules, errorBarRules, joiningRules, titleRules, plotAreaRules, pieRules, axisRules,
          numberRules, legendRules, chartRules, lookRules})
        for (const auto& rule : rules)
            if (rule.kinds.contains(context.kind)) rule.apply(part);
}

void finishDrawing(xercesc::DOMElement* run, const ChartContext& context)
{
    Drawing drawing{run, findChild(run, u"wp:inline"), context};
    for (const auto& rule : drawingRules) rule(drawing);
}

}  // namespace quillon::report
