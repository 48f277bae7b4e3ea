#include "report/fill/ContentPlanner.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

#include "report/options/QuotedText.h"
#include "report/workbook/Workbook.h"

namespace quillon::report {
namespace {

using Kind = PointSource::Kind;

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

std::vector<double> getNumbers(const chart::DataSeries& series, double (chart::DataPoint::*get)() const)
{
    std::vector<double> numbers;
    numbers.reserve(series.getPoints().size());
    for (const auto& point : series.getPoints()) numbers.push_back(((*point).*get)());
    return numbers;
}

/// The number of numbers up to the last that is there.
std::size_t countUsed(const std::vector<double>& numbers)
{
    const auto last =
        std::find_if(numbers.rbegin(), numbers.rend(), [](double number) { return !std::isnan(number); });
    return static_cast<std::size_t>(numbers.rend() - last);
}

bool isCounting(const std::vector<double>& numbers)
{
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (!std::isnan(numbers[i]) && numbers[i] != static_cast<double>(i + 1)) return false;
    return true;
}

std::shared_ptr<const Categories> share(Points points)
{
    auto content = std::make_shared<Categories>();
    content->points = std::move(points);
    return content;
}

Kind getKind(const Categories& categories)
{
    if (categories.kind == Categories::Kind::Levels) return Kind::Levels;
    return categories.kind == Categories::Kind::Text ? Kind::Text : Kind::Number;
}

}  // namespace

void ContentPlanner::plan(SeriesPlan& plan, const std::vector<SeriesPlan>& all,
                          const chart::DataSeries& series, const SeriesDetails& details)
{
    planName(plan);
    if (part_.getShape(*plan.look) == GroupShape::Categories) {
        plan.points = categories_.matches;
        planNames(plan, all);
    }
    planPoints(plan, series, details);
}

void ContentPlanner::planName(SeriesPlan& plan) const
{
    const auto& name = plan.title;
    const auto& source = plan.look->nameSource;
    if (name.empty() && source.kind == Kind::None) return;
    Points points{.areText = true, .texts = {name}};
    if (source.kind != Kind::None && !plan.isAdded) {
        const auto before = part_.readPoints(source);
        if (name == plan.look->name && before.getSize() > 0)
            points = before;
        else
            points.resize(std::max<std::size_t>(before.getSize(), 1));
    }
    // Where the old series have no cells for their names, the chart itself holds the new ones.
    const bool isLiteral = source.kind == Kind::None && !part_.getWorkbookId().empty();
    plan.name = {.kind = Kind::Text,
                 .content = share(std::move(points)),
                 .formula = plan.isAdded ? "" : source.formula,
                 .hasCells = !isLiteral && hasCells(source)};
}

void ContentPlanner::planNames(SeriesPlan& plan, const std::vector<SeriesPlan>& all) const
{
    const auto& source = plan.look->categories;
    if (source.kind == Kind::None && !categories_.areMissing) {
        // Some other series names the categories, unless it has gone.
        const bool isNamed = std::any_of(all.begin(), all.end(), [](const SeriesPlan& other) {
            return other.look->categories.kind != Kind::None;
        });
        if (isNamed || categories_.after->kind == Categories::Kind::None) return;
    }
    auto content = categories_.after;
    if (!categories_.areNew && source.cache) {
        // Some series name other categories than those that the chart shows.
        auto own = readCategories(part_, *plan.look);
        if (!(own == *categories_.after)) content = std::make_shared<Categories>(std::move(own));
    }
    plan.categories = {.kind = getKind(*content),
                       .content = content,
                       .format = categories_.areNew ? categories_.after->format : "",
                       .formula = source.formula,
                       .hasCells = hasCells(source)};
}

std::size_t ContentPlanner::countPoints(const SeriesPlan& plan, const std::vector<double>& numbers) const
{
    const auto before = plan.isAdded ? categories_.pointsBefore : part_.countPoints(plan.look->values);
    const bool hasOwnCount =
        before != categories_.pointsBefore || part_.getShape(*plan.look) != GroupShape::Categories;
    return hasOwnCount ? std::max(countUsed(numbers), std::min(before, numbers.size())) : numbers.size();
}

void ContentPlanner::planPoints(SeriesPlan& plan, const chart::DataSeries& series,
                                const SeriesDetails& details)
{
    auto values = getNumbers(series, &chart::DataPoint::getY);
    auto count = countPoints(plan, values);
    if (part_.getShape(*plan.look) != GroupShape::Categories) {
        // A place without a value is one that the data names.
        count = std::max(count, countUsed(getNumbers(series, &chart::DataPoint::getX)));
        plan.points = std::make_shared<Matches>(matchPositions(part_.countPoints(plan.look->values), count));
        planX(plan, series, count);
    } else if (count < plan.points->size()) {
        plan.points = std::make_shared<Matches>(plan.points->begin(),
                                                plan.points->begin() + static_cast<std::ptrdiff_t>(count));
    }
    values.resize(count);
    plan.values = planNumbers(plan, plan.look->values, std::move(values));
    plan.values.format = options_.numberFormat;
    planDetails(plan, details, count);
}

void ContentPlanner::planX(SeriesPlan& plan, const chart::DataSeries& series, std::size_t count)
{
    const auto& source = plan.look->categories;
    auto numbers = readX(plan, series);
    numbers.resize(count, missing);
    const bool isNumber = source.kind == Kind::Number || source.kind == Kind::NumberLiteral;
    if (!isNumber && isCounting(numbers)) return;
    plan.categories = planNumbers(plan, source, std::move(numbers));
    plan.categories.formula = source.formula;
}

/// Whether any series has x values; a data set says 0 for none.
bool ContentPlanner::hasX() const
{
    const auto series = data_.dataSet->getSeriesList();
    return std::any_of(series->begin(), series->end(), [](const auto& one) {
        return std::ranges::any_of(one->getPoints(), [](const auto& point) { return point->getX() != 0; });
    });
}

/// Data without x values leaves the chart its own.
std::vector<double> ContentPlanner::keepX(const SeriesPlan& plan, std::size_t count)
{
    if (count > part_.countPoints(plan.look->values))
        warn(plan, "the data has no x values; points behind those of the chart have none, and do not show.");
    return readXValues(part_, *plan.look, count).numbers;
}

/// The x values of the data. A table of categories has them there: numbers or dates, also as texts; other
/// names stand at 1, 2, 3.
std::vector<double> ContentPlanner::readX(const SeriesPlan& plan, const chart::DataSeries& series)
{
    auto numbers = getNumbers(series, &chart::DataPoint::getX);
    const bool isSet = std::any_of(numbers.begin(), numbers.end(), [](double number) { return number != 0; });
    if (isSet) return numbers;
    if (data_.dataSet->getCategories().empty()) return hasX() ? numbers : keepX(plan, numbers.size());
    ChartData names(data_.dataSet);
    if (data_.categoryKind != CategoryKind::Text) {
        names.categoryKind = data_.categoryKind;
        names.categoryValues = data_.categoryValues;
    }
    for (const auto kind : {Categories::Kind::Number, Categories::Kind::Date}) {
        auto categories = makeCategories(names, {.kind = kind}, part_.is1904()).points.numbers;
        if (!categories.empty()) return categories;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = static_cast<double>(i + 1);
    const auto& source = plan.look->categories;
    if (source.kind == Kind::Number || source.kind == Kind::NumberLiteral)
        warn(plan, "its categories are not numbers; the points stand at 1, 2, 3.");
    return numbers;
}

SourcePlan ContentPlanner::planNumbers(const SeriesPlan& plan, const PointSource& source,
                                       std::vector<double> numbers) const
{
    return {.kind = Kind::Number,
            .content = share({.numbers = std::move(numbers)}),
            .formula = plan.isAdded ? "" : source.formula,
            .hasCells = hasCells(source)};
}

SourcePlan ContentPlanner::keepNumbers(const SeriesPlan& plan, const PointSource& source,
                                       std::size_t count) const
{
    if (source.kind == Kind::None) return {};
    auto points = part_.readCache(source).read(false);
    if (!isForAll(source, points)) points.resize(count);
    auto kept = planNumbers(plan, source, std::move(points.numbers));
    if (source.isLiteral()) kept.hasCells = false;
    return kept;
}

void ContentPlanner::planDetails(SeriesPlan& plan, const SeriesDetails& details, std::size_t count)
{
    const auto choose = [&](const PointSource& source, std::vector<double> numbers) {
        const auto before = part_.readCache(source).read(false);
        const bool isSame = isForAll(source, before) && std::count(numbers.begin(), numbers.end(),
                                                                   before.numbers[0]) == std::ssize(numbers);
        if (numbers.empty() || isSame) return keepNumbers(plan, source, count);
        numbers.resize(count, missing);
        return planNumbers(plan, source, std::move(numbers));
    };
    if (part_.getShape(*plan.look) == GroupShape::Bubbles) {
        const bool takesNone = plan.isAdded && details.sizes.empty();
        plan.sizes = choose(plan.look->sizes, takesNone ? std::vector(count, missing) : details.sizes);
        if (details.sizes.empty() && (plan.isAdded || count > part_.countPoints(plan.look->sizes)))
            warn(plan, "the data has no sizes; new points have none, and do not show.");
    }
    const auto& bars = plan.look->errors;
    const bool hasErrors = !details.errorsPlus.empty() || !details.errorsMinus.empty();
    plan.leavesErrorBars = plan.isAdded && !hasErrors;
    if (plan.leavesErrorBars) return;
    if (bars.plus.kind != Kind::None) plan.errorsPlus = choose(bars.plus, details.errorsPlus);
    if (bars.minus.kind != Kind::None) plan.errorsMinus = choose(bars.minus, details.errorsMinus);
    if (hasErrors && bars.plus.kind == Kind::None && bars.minus.kind == Kind::None)
        warn(plan, "the chart has no error bars of custom amounts; those of the data are left out.");
}

bool ContentPlanner::hasCells(const PointSource& source) const
{
    // Where there is no workbook one is made, and literals become its cells.
    return !source.isLiteral() || part_.getWorkbookId().empty();
}

void ContentPlanner::warn(const SeriesPlan& plan, const std::string& sentence)
{
    report_.warnings.push_back("series " + quoteText(plan.title) + ": " + sentence);
}

}  // namespace quillon::report
