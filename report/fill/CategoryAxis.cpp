#include "report/fill/CategoryAxis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "report/options/NumberText.h"

namespace quillon::report {
namespace {

/// What one kind of axis has and the other cannot.
constexpr std::array<std::string_view, 4> textOnly = {"lblAlgn", "tickLblSkip", "tickMarkSkip",
                                                      "noMultiLvlLbl"};
constexpr std::array<std::string_view, 5> dateOnly = {"baseTimeUnit", "majorUnit", "majorTimeUnit",
                                                      "minorUnit", "minorTimeUnit"};
/// What stands before the number format of an axis.
constexpr std::array<std::string_view, 7> beforeFormat = {
    "axId", "scaling", "delete", "axPos", "majorGridlines", "minorGridlines", "title"};

template <typename Names>
bool contains(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The unit that the distance between neighbouring dates suggests.
const char* findTimeUnit(std::vector<double> dates)
{
    dates.erase(std::remove_if(dates.begin(), dates.end(), [](double date) { return std::isnan(date); }),
                dates.end());
    std::sort(dates.begin(), dates.end());
    double least = dates.size() < 2 ? 1 : 1e9;
    for (std::size_t i = 1; i < dates.size(); ++i)
        if (dates[i] > dates[i - 1]) least = std::min(least, dates[i] - dates[i - 1]);
    if (least >= 365) return "years";
    return least >= 28 ? "months" : "days";
}

void rename(Edits& edits, const XmlElement& axis, const std::string& name)
{
    const auto outer = axis.getOuter();
    const auto tag = static_cast<std::uint32_t>(axis.getPrefix().size() + axis.getName().size());
    const auto newTag = std::string(axis.getPrefix()) + name;
    edits.replace({outer.begin + 1, outer.begin + 1 + tag}, newTag);
    const auto end = axis.getInner().end + 2;
    edits.replace({end, end + tag}, newTag);
}

/// Dates need a format; one that was set for other categories says General.
void writeFormat(Edits& edits, const XmlElement& axis, const std::string& format)
{
    const auto code = escapeAttribute(format);
    if (const auto element = axis.findChild("numFmt")) {
        if (!isDateFormat(element.getAttribute("formatCode").value_or("")))
            edits.setAttribute(element, "formatCode", format);
        return;
    }
    for (const auto child : axis.getChildren()) {
        if (contains(beforeFormat, child.getName())) continue;
        return edits.insert(
            child.getOuter().begin,
            "<" + std::string(axis.getPrefix()) + "numFmt formatCode=\"" + code + "\" sourceLinked=\"1\"/>");
    }
}

void makeDateAxis(Edits& edits, const XmlElement& axis, const Categories& dates)
{
    rename(edits, axis, "dateAx");
    writeFormat(edits, axis, dates.format);
    // The unit stands behind the last of these that the axis has.
    XmlElement previous;
    for (const auto child : axis.getChildren()) {
        if (child.getName() == "crossAx" || child.getName() == "crosses" || child.getName() == "crossesAt" ||
            child.getName() == "auto" || child.getName() == "lblOffset")
            previous = child;
        if (contains(textOnly, child.getName())) edits.remove(child.getOuter());
    }
    if (!previous) return;
    edits.insert(previous.getOuter().end, "<" + std::string(axis.getPrefix()) + "baseTimeUnit val=\"" +
                                              findTimeUnit(dates.points.numbers) + "\"/>");
}

void makeTextAxis(Edits& edits, const XmlElement& axis)
{
    rename(edits, axis, "catAx");
    for (const auto child : axis.getChildren())
        if (contains(dateOnly, child.getName())) edits.remove(child.getOuter());
}

/// Whether a group that can have dates stands on the axis, and stays.
bool takesDates(const FillPlan& plan, const XmlElement& axis)
{
    const auto id = axis.findChild("axId").getAttribute("val").value_or("");
    const auto& groups = plan.getPart().getGroups();
    for (std::size_t i = 0; i < groups.size(); ++i)
        if (groups[i].kind->shape == GroupShape::Categories && groups[i].kind->element != "radarChart" &&
            contains(groups[i].axes, id) && !plan.isEmptied(i))
            return true;
    return false;
}

}  // namespace

void writeCategoryAxes(Edits& edits, const FillPlan& plan)
{
    const bool wereDates = plan.getCategoriesBefore().kind == Categories::Kind::Date;
    const bool areDates = plan.getCategories().kind == Categories::Kind::Date;
    if (wereDates == areDates) return;
    for (const auto axis : plan.getPart().getPlotArea().getChildren()) {
        if (!takesDates(plan, axis)) continue;
        const auto automatic = axis.findChild("auto").getAttribute("val").value_or("1");
        if (areDates && axis.is(Ns::Chart, "catAx") && automatic != "0" && automatic != "false")
            makeDateAxis(edits, axis, plan.getCategories());
        if (!areDates && axis.is(Ns::Chart, "dateAx")) makeTextAxis(edits, axis);
    }
}

}  // namespace quillon::report
