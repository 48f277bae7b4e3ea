#include "report/fill/ScaleWarnings.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "report/fill/SerialDate.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// A number that an axis is to show.
struct Reach {
    double number;
    std::size_t point;
    /// Null for several that are stacked.
    const SeriesPlan* series;
};

/// What the groups on an axis have it show.
class ShownNumbers {
 public:
    ShownNumbers(const FillPlan& plan, const XmlElement& axis);

    /// The number that is furthest below `limit`, or above it for a direction of 1; nothing when none is.
    std::optional<Reach> findBeyond(double limit, double direction) const;
    bool areX() const { return areX_; }

 private:
    void addGroup(const std::vector<const SeriesPlan*>& series, const GroupMarkup& group);
    void addNumbers(const SeriesPlan& series, const std::vector<double>& numbers);
    void addStacks(const std::vector<const SeriesPlan*>& series, bool areShares);
    std::vector<double> getX(const SeriesPlan& series) const;

    const FillPlan& plan_;
    bool areX_ = false;
    std::vector<Reach> numbers_;
};

const std::vector<double>& getValues(const SeriesPlan& series)
{
    return series.values.content->points.numbers;
}

std::string getId(const XmlElement& axis)
{
    return axis.findChild("axId").getAttribute("val").value_or("");
}

bool isOfDates(const XmlElement& axis)
{
    return axis.is(Ns::Chart, "dateAx");
}

ShownNumbers::ShownNumbers(const FillPlan& plan, const XmlElement& axis) : plan_(plan)
{
    const auto& groups = plan.getPart().getGroups();
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto place = std::ranges::find(groups[i].axes, getId(axis));
        std::vector<const SeriesPlan*> series;
        for (const auto& one : plan.getSeries())
            if (one.look->group == i) series.push_back(&one);
        if (place == groups[i].axes.end() || series.empty()) continue;
        areX_ = groups[i].kind->shape != GroupShape::Categories && place == groups[i].axes.begin();
        if (!isOfDates(axis))
            addGroup(series, groups[i]);
        else if (plan.getCategories().kind == Categories::Kind::Date)
            addNumbers(*series[0], plan.getCategories().points.numbers);
    }
}

void ShownNumbers::addGroup(const std::vector<const SeriesPlan*>& series, const GroupMarkup& group)
{
    const auto grouping = group.element.findChild("grouping").getAttribute("val").value_or("");
    if (grouping == "stacked" || grouping == "percentStacked")
        return addStacks(series, grouping == "percentStacked");
    for (const auto* one : series) addNumbers(*one, areX_ ? getX(*one) : getValues(*one));
}

void ShownNumbers::addNumbers(const SeriesPlan& series, const std::vector<double>& numbers)
{
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (!std::isnan(numbers[i])) numbers_.push_back({numbers[i], i, &series});
}

/// What is below 0 is stacked downwards.
void ShownNumbers::addStacks(const std::vector<const SeriesPlan*>& series, bool areShares)
{
    std::size_t count = 0;
    for (const auto* one : series) count = std::max(count, getValues(*one).size());
    for (std::size_t i = 0; i < count; ++i) {
        double up = 0;
        double down = 0;
        for (const auto* one : series) {
            const double number = i < getValues(*one).size() ? getValues(*one)[i] : 0;
            if (number > 0) up += number;
            if (number < 0) down += number;
        }
        const double whole = areShares ? up - down : 1;
        const auto* only = series.size() == 1 && !areShares ? series[0] : nullptr;
        if (up > 0) numbers_.push_back({up / whole, i, only});
        if (down < 0) numbers_.push_back({down / whole, i, only});
    }
}

std::vector<double> ShownNumbers::getX(const SeriesPlan& series) const
{
    if (series.categories.kind == PointSource::Kind::Number) return series.categories.content->points.numbers;
    return readXValues(plan_.getPart(), *series.look, getValues(series).size()).numbers;
}

std::optional<Reach> ShownNumbers::findBeyond(double limit, double direction) const
{
    const auto found =
        std::ranges::max_element(numbers_, {}, [&](const Reach& reach) { return reach.number * direction; });
    if (found == numbers_.end()) return {};
    // Sums of decimal fractions are not exact.
    const double room = std::max(std::abs(limit), std::abs(found->number)) * 1e-12;
    return (found->number - limit) * direction > room ? std::optional(*found) : std::nullopt;
}

std::string nameAxis(const FillPlan& plan, const XmlElement& axis, bool isX)
{
    if (isOfDates(axis)) return "the axis of dates";
    if (isX) return "the X axis";
    const auto& first = plan.getPart().getGroups()[0].axes;
    return std::ranges::find(first, getId(axis)) == first.end() ? "the second value axis" : "the value axis";
}

std::string print(const FillPlan& plan, const XmlElement& axis, double number)
{
    if (isOfDates(axis)) return writeDate(number + (plan.getPart().is1904() ? daysTo1904 : 0));
    return toUtf8(num2str(number));
}

std::string describe(const FillPlan& plan, const XmlElement& axis, const Reach& reach)
{
    auto number = print(plan, axis, reach.number);
    if (isOfDates(axis)) return number;
    auto point = "point " + std::to_string(reach.point + 1);
    const auto& categories = plan.getCategories();
    if (plan.getPart().findCategories() != nullptr && reach.point < categories.points.getSize())
        if (const auto name = getNames(categories, plan.getPart().is1904())[reach.point]; !name.empty())
            point = quoteText(name);
    return number + " (" +
           (reach.series == nullptr ? "the series together" : quoteText(reach.series->title)) + ", " + point +
           ")";
}

void listCutValues(std::vector<std::string>& sentences, const FillPlan& plan, const XmlElement& axis)
{
    const struct {
        const char* element;
        double direction;
        const char* ends;
        const char* name;
    } ends[] = {{"min", -1, " is fixed to start at ", "minimum"},
                {"max", 1, " is fixed to end at ", "maximum"}};
    std::optional<ShownNumbers> shown;
    const auto scaling = axis.findChild("scaling");
    for (const auto& end : ends) {
        const auto text = scaling.findChild(end.element).getAttribute("val");
        const double limit = text ? readCachedNumber(*text) : NAN;
        if (!std::isfinite(limit)) continue;
        if (!shown) shown.emplace(plan, axis);
        if (const auto beyond = shown->findBeyond(limit, end.direction))
            sentences.push_back(nameAxis(plan, axis, shown->areX()) + end.ends + print(plan, axis, limit) +
                                "; " + describe(plan, axis, *beyond) +
                                " lies outside and does not show in full; set the " + end.name +
                                " to automatic in the document.");
    }
    if (!scaling.findChild("logBase")) return;
    if (!shown) shown.emplace(plan, axis);
    if (const auto low = shown->findBeyond(std::numeric_limits<double>::min(), -1))
        sentences.push_back(nameAxis(plan, axis, shown->areX()) + " is logarithmic; " +
                            describe(plan, axis, *low) + " is not above 0 and does not show.");
}

}  // namespace

std::vector<std::string> listCutValues(const FillPlan& plan)
{
    std::vector<std::string> sentences;
    for (const auto axis : plan.getPart().getPlotArea().getChildren())
        if (axis.is(Ns::Chart, "valAx") || isOfDates(axis)) listCutValues(sentences, plan, axis);
    return sentences;
}

}  // namespace quillon::report
