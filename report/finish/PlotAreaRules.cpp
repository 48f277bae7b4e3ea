#include <array>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/options/ChartError.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// One direction of a plot area: where it starts, and how far it goes.
struct Extent {
    const char* startName;
    std::u16string start;
    const char* sizeName;
    std::u16string size;
    /// Of the chart, in EMU.
    double chartSize;
};

[[noreturn]] void refuse(const char* name, const std::string& sentence)
{
    throw ChartError(std::string("plot area, ") + name, sentence);
}

/// The share of the chart's size that a length has; nothing for an empty text.
std::optional<double> readShare(const char* name, const std::u16string& text, double chartSize)
{
    if (text.empty()) return {};
    const auto utf8 = toUtf8(escapeCharacters(text));
    double emu = 0;
    try {
        emu = readLength(utf8);
    } catch (const std::runtime_error& error) {
        refuse(name, error.what());
    }
    if (!(emu >= 0 && emu <= chartSize))
        refuse(name, "expected 0in to " + writeLength(chartSize) + ", the size of the chart, got \"" + utf8 +
                         "\".");
    return emu / chartSize;
}

void addNumber(DOMElement* layout, const char16_t* name, const std::optional<double>& number)
{
    if (number) appendElement(layout, name, num2str(*number).c_str());
}

struct Shares {
    std::optional<double> start;
    std::optional<double> size;
};

Shares readShares(const Extent& extent)
{
    const Shares shares = {readShare(extent.startName, extent.start, extent.chartSize),
                           readShare(extent.sizeName, extent.size, extent.chartSize)};
    // Lengths in centimetres may round to a little more than the whole.
    constexpr double whole = 1 + 1e-9;
    if (shares.start && shares.size && *shares.start + *shares.size > whole)
        refuse(extent.sizeName, "\"" + toUtf8(extent.size) + "\" from \"" + toUtf8(extent.start) +
                                    "\" on ends outside the chart, which has " +
                                    writeLength(extent.chartSize) + ".");
    return shares;
}

/// The plot itself is placed, without the labels of its axes.
void placePlotArea(ChartPart& part, const chart::PlotArea& area)
{
    const auto& options = part.context.options;
    const auto across = readShares({"X", area.getX(), "Width", area.getWidth(), readLength(options.width)});
    const auto down = readShares({"Y", area.getY(), "Height", area.getHeight(), readLength(options.height)});
    if (!across.start && !across.size && !down.start && !down.size) return;
    auto* layout = appendElement(findChild(part.plotArea, u"c:layout"), u"c:manualLayout");
    appendElement(layout, u"c:layoutTarget", u"inner");
    if (across.start) appendElement(layout, u"c:xMode", u"edge");
    if (down.start) appendElement(layout, u"c:yMode", u"edge");
    addNumber(layout, u"c:x", across.start);
    addNumber(layout, u"c:y", down.start);
    addNumber(layout, u"c:w", across.size);
    addNumber(layout, u"c:h", down.size);
}

void shapePlotArea(ChartPart& part, const chart::PlotArea& area)
{
    auto settings = readShape(part, area.getFormat().get(), {.what = "plot area"});
    if (isOutlineHidden(settings)) settings.border = {};
    if (settings.fill.isSet() || settings.border.isSet())
        setShape(insertInOrder(part.plotArea, u"c:spPr"), settings);
}

void finishPlotArea(ChartPart& part)
{
    const auto& area = part.context.chart.getPlotArea();
    if (!area) return;
    placePlotArea(part, *area);
    shapePlotArea(part, *area);
}

constexpr std::array rules = {Rule{allKinds, finishPlotArea}};

}  // namespace

const std::span<const Rule> plotAreaRules = rules;

}  // namespace quillon::report
