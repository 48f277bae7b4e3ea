#include "report/fill/CategoryAxis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "report/finish/CategoryValues.h"
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

/// The units of axes, the smallest first, as DateUnit counts them.
constexpr std::array<std::string_view, 3> timeUnits = {"days", "months", "years"};

/// The largest unit that keeps the dates apart.
std::size_t findTimeUnit(std::vector<double> dates, bool is1904)
{
    // Of those that a worksheet shows as dates.
    constexpr double end = 2'958'466;
    std::vector<double> known;
    for (const double date : dates)
        if (date >= 0 && date < end) known.push_back(date + (is1904 ? daysTo1904 : 0));
    std::sort(known.begin(), known.end());
    known.erase(std::unique(known.begin(), known.end()), known.end());
    return static_cast<std::size_t>(chooseDateScale(known).base);
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

void makeDateAxis(Edits& edits, const XmlElement& axis, const Categories& dates, bool is1904)
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
    const std::string unit(timeUnits.at(findTimeUnit(dates.points.numbers, is1904)));
    edits.insert(previous.getOuter().end,
                 "<" + std::string(axis.getPrefix()) + "baseTimeUnit val=\"" + unit + "\"/>");
}

/// Dates that need a smaller unit than those before would fall together.
void refineUnit(Edits& edits, const XmlElement& axis, std::size_t needed)
{
    const auto element = axis.findChild("baseTimeUnit");
    const auto now =
        std::find(timeUnits.begin(), timeUnits.end(), element.getAttribute("val").value_or("days"));
    if (element && now != timeUnits.end() && needed < static_cast<std::size_t>(now - timeUnits.begin()))
        edits.setAttribute(element, "val", timeUnits.at(needed));
}

void makeTextAxis(Edits& edits, const XmlElement& axis)
{
    rename(edits, axis, "catAx");
    // So that dates make it what it was.
    if (const auto automatic = axis.findChild("auto")) edits.setAttribute(automatic, "val", "1");
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
    if (!wereDates && !areDates) return;
    const bool is1904 = plan.getPart().is1904();
    const auto needed = findTimeUnit(plan.getCategories().points.numbers, is1904);
    const bool needsMore = needed < findTimeUnit(plan.getCategoriesBefore().points.numbers, is1904);
    for (const auto axis : plan.getPart().getPlotArea().getChildren()) {
        if (!takesDates(plan, axis)) continue;
        const auto automatic = axis.findChild("auto").getAttribute("val").value_or("1");
        if (areDates && !wereDates && axis.is(Ns::Chart, "catAx") && automatic != "0" && automatic != "false")
            makeDateAxis(edits, axis, plan.getCategories(), is1904);
        if (!axis.is(Ns::Chart, "dateAx")) continue;
        if (!areDates)
            makeTextAxis(edits, axis);
        else if (wereDates && needsMore)
            refineUnit(edits, axis, needed);
    }
}

}  // namespace quillon::report
