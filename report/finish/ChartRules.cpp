#include <array>

#include "report/finish/Finishing.h"
#include "report/finish/Rules.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

void showGapsAndVisibleCellsOnly(ChartPart& part)
{
    appendElement(part.chart, u"c:plotVisOnly", u"1");
    appendElement(part.chart, u"c:dispBlanksAs", u"gap");
}

void linkWorkbook(ChartPart& part)
{
    if (!part.context.options.workbook) return;
    auto* external = appendElement(part.chartSpace, u"c:externalData");
    external->setAttribute(u"r:id", toUtf16(workbookRelationshipId).c_str());
    appendElement(external, u"c:autoUpdate", u"0");
}

constexpr std::array rules = {Rule{allKinds, showGapsAndVisibleCellsOnly}, Rule{allKinds, linkWorkbook}};

}  // namespace

const std::span<const Rule> chartRules = rules;

}  // namespace quillon::report
