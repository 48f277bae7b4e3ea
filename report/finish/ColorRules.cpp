#include <array>

#include "chart/model/Color.h"
#include "report/finish/Rules.h"
#include "report/options/ColorText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

void setColorsBelow(DOMElement* element, const std::u16string& digits)
{
    if (std::u16string_view(element->getTagName()) == u"a:srgbClr")
        element->setAttribute(u"val", digits.c_str());
    for (auto* child = element->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        setColorsBelow(child, digits);
}

/// Gives the colours below `element`, which the writer took from `format`, six digits. What is no colour
/// becomes `standard`, with a warning; `place` says where, when it is asked.
template <typename Place>
void finishColors(ChartPart& part, DOMElement* element, const chart::Format* format,
                  const std::u16string& standard, const Place& place)
{
    if (element == nullptr || format == nullptr || !format->getColor()) return;
    const auto& text = format->getColor()->getText();
    const auto digits = findColorDigits(text);
    setColorsBelow(element, digits.value_or(standard));
    if (digits) return;
    part.warn(place(), "\"" + toUtf8(escapeCharacters(text)) +
                           "\" is no colour; expected a colour name, #rrggbb, or rgb(r,g,b) with numbers up "
                           "to 255. The default is used.");
}

/// A slice without a format of its own has that of its series. The default of a slice is its own, that of any
/// other point its series'.
void finishPointColors(ChartPart& part, const SeriesPart& series)
{
    const bool isPie = pieKinds.contains(part.context.kind);
    for (auto* point : findChildren(series.element, u"c:dPt")) {
        const auto index = str2uint(findChild(point, u"c:idx")->getAttribute(u"val"));
        const chart::ShapeFormat* own = series.series.getPoint(index)->getFormat().get();
        const chart::ShapeFormat* format = own != nullptr ? own : series.series.getFormat().get();
        if (format == nullptr) continue;
        const auto place = [&](const char* what) {
            const auto which = own != nullptr ? ", point " + std::to_string(index + 1) : std::string();
            return ChartPart::describe(series) + which + what;
        };
        const auto& standard = chart::getPaletteColor(isPie ? index : series.index);
        auto* properties = findChild(point, u"c:spPr");
        finishColors(part, findChild(properties, u"a:solidFill"), format->getFill().get(), standard,
                     [&] { return place(", fill"); });
        finishColors(part, findChild(properties, u"a:ln"), format->getBorder().get(), standard,
                     [&] { return place(", border"); });
    }
}

void makeColorsHexadecimal(ChartPart& part)
{
    for (const auto& series : part.series) {
        const auto& format = series.series.getFormat();
        finishColors(part, findChild(series.element, u"c:spPr"), format ? format->getFill().get() : nullptr,
                     chart::getPaletteColor(series.index),
                     [&] { return ChartPart::describe(series) + ", fill"; });
        finishPointColors(part, series);
    }
}

constexpr std::array rules = {Rule{allKinds, makeColorsHexadecimal}};

}  // namespace

const std::span<const Rule> colorRules = rules;

}  // namespace quillon::report
