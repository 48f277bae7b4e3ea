#include "report/fill/CategoryAxis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "report/finish/CategoryValues.h"
#include "report/options/NumberText.h"
#include "report/package/XmlText.h"

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

std::string getToken(DateUnit unit)
{
    return std::string(timeUnits.at(static_cast<std::size_t>(unit)));
}

/// How an axis shows the dates.
DateScale findScale(const Categories& categories, bool is1904)
{
    // Of those that a worksheet shows as dates.
    constexpr double end = 2'958'466;
    std::vector<double> known;
    for (const double date : categories.points.numbers)
        if (date >= 0 && date < end) known.push_back(date + (is1904 ? daysTo1904 : 0));
    std::sort(known.begin(), known.end());
    known.erase(std::unique(known.begin(), known.end()), known.end());
    return chooseDateScale(known);
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

bool isLinked(const XmlElement& format)
{
    const auto linked = format.getAttribute("sourceLinked").value_or("");
    return linked == "1" || linked == "true";
}

void insertFormat(Edits& edits, const XmlElement& axis, const std::string& format, const char* linked)
{
    for (const auto child : axis.getChildren()) {
        if (contains(beforeFormat, child.getName())) continue;
        return edits.insert(child.getOuter().begin, "<" + std::string(axis.getPrefix()) +
                                                        "numFmt formatCode=\"" + escapeAttribute(format) +
                                                        "\" sourceLinked=\"" + linked + "\"/>");
    }
}

/// Dates need a format that shows their units; one that was set for other categories may say General. An
/// empty one leaves the axis as it is.
void writeFormat(Edits& edits, const XmlElement& axis, const std::string& format, std::string_view units)
{
    if (format.empty()) return;
    const auto element = axis.findChild("numFmt");
    if (!element) return insertFormat(edits, axis, format, "1");
    if (!showsUnit(element.getAttribute("formatCode").value_or(""), units))
        edits.setAttribute(element, "formatCode", format);
}

/// The labels of a new axis, whatever the cells say, unless the axis has a format that tells them apart.
void writeScaleFormat(Edits& edits, const XmlElement& axis, const DateScale& scale)
{
    constexpr std::array<std::string_view, 3> letters = {"dD", "mM", "yY"};
    const auto element = axis.findChild("numFmt");
    if (!element) return insertFormat(edits, axis, scale.format, "0");
    const auto shown = element.getAttribute("formatCode").value_or("");
    if (!isLinked(element) && showsUnit(shown, letters.at(static_cast<std::size_t>(scale.unit)))) return;
    edits.setAttribute(element, "formatCode", scale.format);
    edits.setAttribute(element, "sourceLinked", "0");
}

std::string makeSteps(const XmlElement& axis, const DateScale& scale)
{
    const auto tag = "<" + std::string(axis.getPrefix());
    return tag + "majorUnit val=\"" + std::to_string(scale.step) + "\"/>" + tag + "majorTimeUnit val=\"" +
           getToken(scale.unit) + "\"/>";
}

/// Steps in the unit of the dates are left to the word processor; where labels show a larger unit, it would
/// write "2024" twelve times.
std::string makeUnits(const XmlElement& axis, const DateScale& scale)
{
    const auto base =
        "<" + std::string(axis.getPrefix()) + "baseTimeUnit val=\"" + getToken(scale.base) + "\"/>";
    return scale.unit == scale.base ? base : base + makeSteps(axis, scale);
}

void makeDateAxis(Edits& edits, const XmlElement& axis, const DateScale& scale)
{
    rename(edits, axis, "dateAx");
    // The unit stands behind the last of these that the axis has.
    XmlElement previous;
    for (const auto child : axis.getChildren()) {
        if (child.getName() == "crossAx" || child.getName() == "crosses" || child.getName() == "crossesAt" ||
            child.getName() == "auto" || child.getName() == "lblOffset")
            previous = child;
        if (contains(textOnly, child.getName())) edits.remove(child.getOuter());
    }
    if (previous) edits.insert(previous.getOuter().end, makeUnits(axis, scale));
}

/// Days need a format that tells them apart; one that does already stays.
void showDays(Edits& edits, const XmlElement& axis, const std::string& cellFormat, const char* format)
{
    const auto element = axis.findChild("numFmt");
    const auto shown = isLinked(element) ? cellFormat : element.getAttribute("formatCode").value_or("");
    if (!element || showsUnit(shown, "dD")) return;
    edits.setAttribute(element, "formatCode", format);
    edits.setAttribute(element, "sourceLinked", "0");
}

/// Dates that need a smaller unit than those before would fall together. The labels then stand as on a new
/// axis.
void refineUnit(Edits& edits, const XmlElement& axis, const DateScale& scale, const std::string& cellFormat)
{
    const auto element = axis.findChild("baseTimeUnit");
    const auto now =
        std::find(timeUnits.begin(), timeUnits.end(), element.getAttribute("val").value_or("days"));
    if (!element || now == timeUnits.end() || static_cast<DateUnit>(now - timeUnits.begin()) <= scale.base)
        return;
    edits.setAttribute(element, "val", getToken(scale.base));
    for (const auto child : axis.getChildren())
        if (contains(dateOnly, child.getName()) && !(child == element)) edits.remove(child.getOuter());
    edits.insert(element.getOuter().end, makeSteps(axis, scale));
    if (scale.unit == DateUnit::Days) showDays(edits, axis, cellFormat, scale.format);
}

/// Left automatic, the axis becomes what it was when dates come again; with times it would at once.
void setAutomatic(Edits& edits, const XmlElement& axis, bool isAutomatic)
{
    if (const auto element = axis.findChild("auto"))
        edits.setAttribute(element, "val", isAutomatic ? "1" : "0");
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

/// What the categories of a chart were and are, as its axes show them.
class AxisChange {
 public:
    explicit AxisChange(const FillPlan& plan);

    bool isOfDates() const
    {
        return before_.kind == Categories::Kind::Date || after_.kind == Categories::Kind::Date;
    }
    void writeTextAxis(Edits& edits, const XmlElement& axis) const;
    void writeDateAxis(Edits& edits, const XmlElement& axis) const;

 private:
    const Categories& before_;
    const Categories& after_;
    bool is1904_;
    bool hadTimes_;
    bool areNewTimes_;
    bool isFormatGiven_;
};

AxisChange::AxisChange(const FillPlan& plan)
    : before_(plan.getCategoriesBefore()),
      after_(plan.getCategories()),
      is1904_(plan.getPart().is1904()),
      hadTimes_(before_.haveTimes()),
      areNewTimes_(after_.haveTimes() && !hadTimes_),
      isFormatGiven_(plan.isCategoryFormatGiven())
{
}

void AxisChange::writeTextAxis(Edits& edits, const XmlElement& axis) const
{
    const auto automatic = axis.findChild("auto").getAttribute("val").value_or("1");
    const bool isAutomatic = automatic != "0" && automatic != "false";
    const bool wereDays = before_.kind == Categories::Kind::Date && !hadTimes_;
    const bool areDays = after_.kind == Categories::Kind::Date && !after_.haveTimes();
    if (areDays && !wereDays && (isAutomatic || hadTimes_)) {
        const auto scale = findScale(after_, is1904_);
        makeDateAxis(edits, axis, scale);
        if (isFormatGiven_)
            writeFormat(edits, axis, after_.format, "yYmMdDhHsS");
        else
            writeScaleFormat(edits, axis, scale);
        setAutomatic(edits, axis, true);
    } else if (areNewTimes_) {
        setAutomatic(edits, axis, false);
        writeFormat(edits, axis, after_.format, "hH");
    }
}

void AxisChange::writeDateAxis(Edits& edits, const XmlElement& axis) const
{
    if (after_.kind != Categories::Kind::Date || areNewTimes_) {
        makeTextAxis(edits, axis);
        setAutomatic(edits, axis, !areNewTimes_);
        if (areNewTimes_) writeFormat(edits, axis, after_.format, "hH");
    } else if (before_.kind == Categories::Kind::Date) {
        const auto scale = findScale(after_, is1904_);
        if (scale.base < findScale(before_, is1904_).base) refineUnit(edits, axis, scale, before_.format);
    }
}

}  // namespace

void writeCategoryAxes(Edits& edits, const FillPlan& plan)
{
    const AxisChange change(plan);
    if (!change.isOfDates()) return;
    for (const auto axis : plan.getPart().getPlotArea().getChildren()) {
        if (!takesDates(plan, axis)) continue;
        if (axis.is(Ns::Chart, "catAx")) change.writeTextAxis(edits, axis);
        if (axis.is(Ns::Chart, "dateAx")) change.writeDateAxis(edits, axis);
    }
}

}  // namespace quillon::report
