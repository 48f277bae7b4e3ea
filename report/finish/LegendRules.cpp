#include <array>

#include "report/finish/Rules.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

Legend choosePlace(const ChartPart& part)
{
    if (part.context.options.legend != Legend::Automatic) return part.context.options.legend;
    const bool wanted = part.series.size() > 1 || pieKinds.contains(part.context.kind);
    return wanted ? Legend::Bottom : Legend::None;
}

void addLegend(ChartPart& part)
{
    const auto place = choosePlace(part);
    if (place == Legend::None) return;
    auto* legend = appendElement(part.chart, u"c:legend");
    appendElement(legend, u"c:legendPos", findRow(legendRows, place).token);
    appendElement(legend, u"c:overlay", u"0");
}

constexpr std::array rules = {Rule{allKinds, addLegend}};

}  // namespace

const std::span<const Rule> legendRules = rules;

}  // namespace quillon::report
