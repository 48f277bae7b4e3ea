#include <array>

#include "report/finish/NumberCaches.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "report/workbook/CellNames.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

DOMElement* startErrorBars(const ChartPart& part, const SeriesPart& series, const char16_t* directions,
                           const char16_t* type)
{
    auto* bars = insertInOrder(series.element, u"c:errBars");
    if (pointKinds.contains(part.context.kind)) appendElement(bars, u"c:errDir", u"y");
    appendElement(bars, u"c:errBarType", directions);
    appendElement(bars, u"c:errValType", type);
    appendElement(bars, u"c:noEndCap", u"0");
    return bars;
}

void addComputedErrorBars(const ChartPart& part, const SeriesPart& series)
{
    constexpr double standardPercent = 5;
    const auto kind = *part.context.options.errorBars;
    auto* bars = startErrorBars(part, series, u"both", findRow(errorBarsRows, kind).token);
    const double standard = kind == ErrorAmount::Percent ? standardPercent : 1;
    if (kind != ErrorAmount::Error)
        appendElement(bars, u"c:val", num2str(part.context.options.errorValue.value_or(standard)).c_str());
    drawGreyLine(bars);
}

/// The columns of error bars stand behind all others, those of each series together.
std::size_t findErrorColumn(const ChartPart& part, std::size_t wanted)
{
    const auto& data = part.context.data;
    std::size_t column = part.context.workbook.furtherColumns.size();
    for (std::size_t i = data.dataSet->getSeriesCount(); i-- > wanted;) {
        const auto& details = data.getDetails(i);
        for (const auto* amounts : {&details.errorsPlus, &details.errorsMinus})
            if (!amounts->empty()) --column;
    }
    return column;
}

void addOwnErrorBars(const ChartPart& part, const SeriesPart& series)
{
    const auto& details = part.context.data.getDetails(series.index);
    const bool hasPlus = !details.errorsPlus.empty();
    const bool hasMinus = !details.errorsMinus.empty();
    if (!hasPlus && !hasMinus) return;
    const auto* directions = !hasMinus ? u"plus" : !hasPlus ? u"minus" : u"both";
    auto* bars = startErrorBars(part, series, directions, u"cust");
    auto column = findErrorColumn(part, series.index);
    const auto append = [&](const char16_t* name, const std::vector<double>& amounts) {
        if (amounts.empty()) return;
        const auto cells = getFurtherColumn(part.context.data, column++, part.context.workbook);
        appendNumbers(appendElement(bars, name), getCellRange(cells, amounts.size()), u"General", amounts);
    };
    append(u"c:plus", details.errorsPlus);
    append(u"c:minus", details.errorsMinus);
    drawGreyLine(bars);
}

void addErrorBars(ChartPart& part)
{
    for (const auto& series : part.series)
        if (part.context.options.errorBars)
            addComputedErrorBars(part, series);
        else
            addOwnErrorBars(part, series);
}

constexpr ChartKinds errorKinds{ChartKind::Bar,  ChartKind::Column,  ChartKind::Line,
                                ChartKind::Area, ChartKind::Scatter, ChartKind::Bubble};

constexpr std::array rules = {Rule{errorKinds, addErrorBars}};

}  // namespace

const std::span<const Rule> errorBarRules = rules;

}  // namespace quillon::report
