#include <array>

#include "report/finish/Finishing.h"
#include "report/finish/Rules.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

void showVisibleCellsOnly(ChartPart& part)
{
    appendElement(part.chart, u"c:plotVisOnly", u"1");
}

void drawMissingValues(ChartPart& part)
{
    const auto how = part.context.options.blank.value_or(Blank::Gap);
    appendElement(part.chart, u"c:dispBlanksAs", findRow(blankRows, how).token);
}

void linkWorkbook(ChartPart& part)
{
    if (!part.context.options.workbook) return;
    auto* external = appendElement(part.chartSpace, u"c:externalData");
    external->setAttribute(u"r:id", toUtf16(workbookRelationshipId).c_str());
    appendElement(external, u"c:autoUpdate", u"0");
}

constexpr std::array rules = {Rule{allKinds, showVisibleCellsOnly}, Rule{allKinds, drawMissingValues},
                              Rule{allKinds, linkWorkbook}};

}  // namespace

const std::span<const Rule> chartRules = rules;

}  // namespace quillon::report
