#include "report/fill/FillPlan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <stdexcept>

#include "report/fill/WaterfallPlan.h"
#include "report/finish/Waterfall.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Kind = PointSource::Kind;

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

/// What a series has cells for beyond name, categories and values, in the order of SeriesCells::more.
constexpr std::array moreSources = {&SeriesPlan::sizes, &SeriesPlan::errorsPlus, &SeriesPlan::errorsMinus};

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

/// Of the longest series.
std::size_t countLongest(const chart::DataSet& dataSet)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < dataSet.getSeriesCount(); ++i)
        count = std::max<std::size_t>(count, dataSet.getSeries(i)->getSize());
    return count;
}

bool isCounting(const std::vector<double>& numbers)
{
    for (std::size_t i = 0; i < numbers.size(); ++i)
        if (!std::isnan(numbers[i]) && numbers[i] != static_cast<double>(i + 1)) return false;
    return true;
}

bool isCounting(const std::vector<std::string>& texts)
{
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (texts[i] != std::to_string(i + 1)) return false;
    return true;
}

bool contains(const Matches& matches, std::size_t old)
{
    return std::find(matches.begin(), matches.end(), old) != matches.end();
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

CellBlock makeBlock(const SourcePlan& plan)
{
    CellBlock block{.reference = plan.formula, .lines = {}, .numberFormat = plan.format};
    const auto add = [&](const Points& points) {
        block.lines.emplace_back(std::shared_ptr<const Points>(plan.content, &points));
    };
    for (const auto& level : plan.content->levels) add(level);
    add(plan.content->points);
    return block;
}

std::optional<CellBlock> makeCellsOf(const SourcePlan& plan)
{
    if (plan.kind == Kind::None || !plan.hasCells) return {};
    return makeBlock(plan);
}

std::optional<CellBlock> makeRemoved(const PointSource& source)
{
    if (source.formula.empty()) return {};
    return CellBlock{.reference = source.formula};
}

}  // namespace

FillPlan::FillPlan(const ChartMarkup& part, const ChartData& data, const FillOptions& options)
    : part_(part), data_(data), options_(options)
{
    requireFillable();
    requireNumbers(*data_.dataSet);
    requireTexts();
    planCategories();
    planSeries();
    warnOfHiddenSlices();
    planOrder();
    for (std::size_t i = 0; i < series_.size(); ++i)
        planContent(series_[i], *data_.dataSet->getSeries(i), data_.getDetails(i));
    drawnCount_ = series_.size();
    if (part_.isWaterfall())
        planWaterfall();
    else if (!data_.totals.empty())
        report_.warnings.push_back("totals are for waterfalls; the chart is none.");
    shareCategories();
}

void FillPlan::requireFillable() const
{
    if (!part_.getProblem().empty())
        throw std::runtime_error("The chart cannot be filled: " + part_.getProblem() + ".");
    if (!data_.dataSet || data_.dataSet->getSeriesCount() == 0)
        throw std::runtime_error("The data has no series; a chart shows one at least.");
    const auto count = countLongest(*data_.dataSet);
    if (count == 0) throw std::runtime_error("The data has no points; a chart shows one at least.");
    if (count > PointCache::maximumCount - 1)
        throw std::runtime_error(
            "The data has more points than a worksheet has rows, 1,048,575 below the names.");
    if (part_.isWaterfall() && data_.dataSet->getSeriesCount() != 1)
        throw std::runtime_error("A waterfall shows one series, of changes and totals; the data has " +
                                 std::to_string(data_.dataSet->getSeriesCount()) + ".");
    for (const auto& group : part_.getGroups()) {
        const auto before = part_.getSeries().size();
        const auto after = data_.dataSet->getSeriesCount();
        if (group.kind->element == "stockChart" && before != after)
            throw std::runtime_error("A stock chart shows as many series as it was made for, " +
                                     std::to_string(before) + "; the data has " + std::to_string(after) +
                                     ".");
    }
}

void FillPlan::requireNumbers(const chart::DataSet& dataSet) const
{
    const auto series = dataSet.getSeriesList();
    for (std::size_t s = 0; s < series->size(); ++s)
        for (std::size_t i = 0; i < (*series)[s]->getSize(); ++i) {
            const auto& point = *(*series)[s]->getPoints()[i];
            for (const double number : {point.getX(), point.getY()})
                if (std::abs(number) > maximumNumber)
                    throw std::runtime_error(
                        "series " + std::to_string(s + 1) + " (" +
                        quoteText(toCellText((*series)[s]->getName())) + "), point " + std::to_string(i + 1) +
                        ": the value is " + toUtf8(num2str(number)) +
                        "; a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN.");
        }
}

/// What stands in the part as it is. Names and categories have a notation for every character.
void FillPlan::requireTexts() const
{
    readXmlText(options_.title, "title");
    readXmlText(options_.numberFormat, "number format");
    readXmlText(data_.categoryFormat, "number format of the categories");
    for (std::size_t i = 0; i < data_.series.size(); ++i)
        readXmlText(data_.series[i].numberFormat, "number format of series " + std::to_string(i + 1));
}

void FillPlan::planCategories()
{
    bool hasCategoryGroups = false;
    for (const auto& series : part_.getSeries()) {
        pointsBefore_ = std::max(pointsBefore_, part_.countPoints(series.values));
        hasCategoryGroups = hasCategoryGroups || part_.getShape(series) == GroupShape::Categories;
    }
    const auto* named = part_.findCategories();
    if (named != nullptr) categoriesBefore_ = readCategories(part_, *named);
    const auto count = countLongest(*data_.dataSet);
    auto after = makeCategories(data_, categoriesBefore_, part_.is1904());
    if (named == nullptr && isCounting(getNames(after, part_.is1904()))) after = {};
    areCategoriesMissing_ = named == nullptr && after.kind != Categories::Kind::None;
    if (after.kind == Categories::Kind::None) {
        // Data without categories leaves those of the chart as they are, for as many points.
        after = categoriesBefore_;
        after.points.resize(count);
        for (auto& level : after.levels) level.resize(count);
    }
    // Dates and numbers that read as the old texts are those texts.
    if (categoriesBefore_.kind == Categories::Kind::Text && data_.categoryFormat.empty() &&
        getNames(after, part_.is1904()) == categoriesBefore_.points.texts)
        after = categoriesBefore_;
    areCategoriesNew_ = !(after == categoriesBefore_) && hasCategoryGroups;
    if (after.kind != categoriesBefore_.kind && after.format.empty())
        after.format = after.kind == Categories::Kind::Date ? "yyyy\\-mm\\-dd" : "General";
    else if (after.kind == categoriesBefore_.kind)
        after.format.clear();
    matchCategories(after, count);
    categories_ = std::make_shared<Categories>(std::move(after));
    report_.pointsBefore = pointsBefore_;
    report_.pointsAfter = count;
}

void FillPlan::matchCategories(const Categories& after, std::size_t count)
{
    auto matches = matchPositions(pointsBefore_, count);
    if (options_.match == Match::Name && categoriesBefore_.kind != Categories::Kind::None) {
        const auto before = getNames(categoriesBefore_, part_.is1904());
        auto byName = matchNames(before, getNames(after, part_.is1904()));
        // Points past the names stand where they stood.
        for (auto i = byName.size(); i < count; ++i)
            byName.push_back(i >= before.size() && i < pointsBefore_ ? i : noMatch);
        matches = std::move(byName);
    }
    categoryMatches_ = std::make_shared<Matches>(std::move(matches));
}

void FillPlan::planSeries()
{
    const auto& before = part_.getSeries();
    const auto series = data_.dataSet->getSeriesList();
    std::vector<std::string> namesBefore;
    std::vector<std::string> names;
    for (const auto& old : before) namesBefore.push_back(old.name);
    for (const auto& one : *series) names.push_back(toCellText(one->getName()));
    const auto matches = options_.match == Match::Name ? matchNames(namesBefore, names)
                                                       : matchPositions(before.size(), names.size());
    // What comes before all that was matched looks like the first of them.
    auto look = *std::find_if(matches.begin(), matches.end(), [](auto match) { return match != noMatch; });
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool isAdded = matches[i] == noMatch;
        if (!isAdded) look = matches[i];
        const auto& old = before[look];
        series_.push_back({.look = &old, .isAdded = isAdded, .index = old.index, .order = old.order});
        const auto change = isAdded                ? FillReport::Change::Added
                            : old.name != names[i] ? FillReport::Change::Renamed
                                                   : FillReport::Change::Matched;
        report_.series.push_back({change, names[i], change == FillReport::Change::Matched ? "" : old.name});
    }
    const auto after = invert(matches, before.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (after[i] != noMatch) continue;
        removed_.push_back(&before[i]);
        report_.series.push_back({FillReport::Change::Removed, before[i].name, ""});
    }
}

/// Word processors draw the first series of a pie alone.
void FillPlan::warnOfHiddenSlices()
{
    const auto isAdded = [](const SeriesPlan& plan) { return plan.isAdded; };
    const auto element = part_.getGroups()[series_[0].look->group].kind->element;
    const bool isPie = element.starts_with("pie") || element.starts_with("ofPie");
    if (isPie && std::any_of(series_.begin(), series_.end(), isAdded))
        report_.warnings.push_back("a pie shows one series, " + quoteText(report_.series[0].name) +
                                   "; the others do not show.");
}

void FillPlan::planOrder()
{
    std::uint32_t nextIndex = 0;
    for (const auto& series : part_.getSeries()) nextIndex = std::max(nextIndex, series.index + 1);
    for (auto& plan : series_)
        if (plan.isAdded) plan.index = nextIndex++;
    // What a series of a stock chart means lies in its place: high, low, close.
    const bool isStock = std::any_of(part_.getGroups().begin(), part_.getGroups().end(),
                                     [](const auto& group) { return group.kind->element == "stockChart"; });
    if (isStock && report_.count(FillReport::Change::Matched) == series_.size()) return;
    // Series lie in the order they are shown in, so that their places tell it.
    bool isKept = true;
    for (std::size_t i = 1; i < series_.size(); ++i) {
        if (series_[i].isAdded)
            series_[i].order = series_[i - 1].order + 1;
        else if (series_[i - 1].isAdded ? series_[i].order <= series_[i - 1].order
                                        : series_[i].look < series_[i - 1].look)
            isKept = false;
    }
    if (isKept && !series_[0].isAdded) return;
    for (std::size_t i = 0; i < series_.size(); ++i) series_[i].order = static_cast<std::uint32_t>(i);
}

bool FillPlan::hasCells(const PointSource& source) const
{
    // Where there is no workbook one is made, and literals become its cells.
    return !source.isLiteral() || part_.getWorkbookId().empty();
}

void FillPlan::planContent(SeriesPlan& plan, const chart::DataSeries& series, const SeriesDetails& details)
{
    planName(plan, toCellText(series.getName()));
    if (part_.getShape(*plan.look) == GroupShape::Categories) {
        plan.points = categoryMatches_;
        planNames(plan);
    }
    planPoints(plan, series, details);
}

void FillPlan::planName(SeriesPlan& plan, const std::string& name) const
{
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

void FillPlan::planNames(SeriesPlan& plan)
{
    const auto& source = plan.look->categories;
    if (source.kind == Kind::None && !areCategoriesMissing_) {
        // Some other series names the categories, unless it has gone.
        const bool isNamed = std::any_of(series_.begin(), series_.end(), [](const SeriesPlan& other) {
            return other.look->categories.kind != Kind::None;
        });
        if (isNamed || categories_->kind == Categories::Kind::None) return;
    }
    auto content = categories_;
    if (!areCategoriesNew_ && source.cache) {
        // Some series name other categories than those that the chart shows.
        auto own = readCategories(part_, *plan.look);
        if (!(own == *categories_)) content = std::make_shared<Categories>(std::move(own));
    }
    plan.categories = {.kind = getKind(*content),
                       .content = content,
                       .format = areCategoriesNew_ ? categories_->format : "",
                       .formula = source.formula,
                       .hasCells = hasCells(source)};
}

std::size_t FillPlan::countPoints(const SeriesPlan& plan, const std::vector<double>& numbers) const
{
    const auto before = plan.isAdded ? pointsBefore_ : part_.countPoints(plan.look->values);
    const bool hasOwnCount = before != pointsBefore_ || part_.getShape(*plan.look) != GroupShape::Categories;
    return hasOwnCount ? std::max(countUsed(numbers), std::min(before, numbers.size())) : numbers.size();
}

void FillPlan::planPoints(SeriesPlan& plan, const chart::DataSeries& series, const SeriesDetails& details)
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

void FillPlan::planX(SeriesPlan& plan, const chart::DataSeries& series, std::size_t count)
{
    const auto& source = plan.look->categories;
    auto numbers = readX(plan, series);
    numbers.resize(count, missing);
    const bool isNumber = source.kind == Kind::Number || source.kind == Kind::NumberLiteral;
    if (!isNumber && isCounting(numbers)) return;
    plan.categories = planNumbers(plan, source, std::move(numbers));
    plan.categories.formula = source.formula;
}

/// The x values of the data. A table of categories has them there: numbers or dates, also as texts; other
/// names stand at 1, 2, 3.
std::vector<double> FillPlan::readX(const SeriesPlan& plan, const chart::DataSeries& series)
{
    auto numbers = getNumbers(series, &chart::DataPoint::getX);
    const bool isSet = std::any_of(numbers.begin(), numbers.end(), [](double number) { return number != 0; });
    if (isSet || data_.dataSet->getCategories().empty()) return numbers;
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
        warn(plan, "its categories are no numbers; the points stand at 1, 2, 3.");
    return numbers;
}

SourcePlan FillPlan::planNumbers(const SeriesPlan& plan, const PointSource& source,
                                 std::vector<double> numbers) const
{
    return {.kind = Kind::Number,
            .content = share({.numbers = std::move(numbers)}),
            .formula = plan.isAdded ? "" : source.formula,
            .hasCells = hasCells(source)};
}

SourcePlan FillPlan::keepNumbers(const SeriesPlan& plan, const PointSource& source, std::size_t count) const
{
    if (source.kind == Kind::None) return {};
    auto points = part_.readCache(source).read(false);
    if (!isForAll(source, points)) points.resize(count);
    auto kept = planNumbers(plan, source, std::move(points.numbers));
    if (source.isLiteral()) kept.hasCells = false;
    return kept;
}

void FillPlan::planDetails(SeriesPlan& plan, const SeriesDetails& details, std::size_t count)
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
        plan.sizes = choose(plan.look->sizes, details.sizes);
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

bool FillPlan::isEmptied(std::size_t group) const
{
    const auto isRemoved = [&](const auto* series) { return series->group == group; };
    const auto isThere = [&](const SeriesPlan& plan) { return plan.look->group == group; };
    return std::any_of(removed_.begin(), removed_.end(), isRemoved) &&
           std::none_of(series_.begin(), series_.end(), isThere);
}

void FillPlan::warn(const SeriesPlan& plan, const std::string& sentence)
{
    report_.warnings.push_back(
        "series " + quoteText(plan.name.content ? plan.name.content->points.texts[0] : "") + ": " + sentence);
}

/// The categories that showed a total still do, unless the data says which.
std::vector<bool> FillPlan::chooseTotals()
{
    auto categories = data_.dataSet->getCategories();
    if (categories.empty())
        for (const auto& name : getNames(*categories_, part_.is1904()))
            categories.push_back(fromCellText(name));
    const auto& before = part_.getTotals();
    std::vector<bool> kept;
    std::vector<std::u16string> names;
    for (std::size_t i = 0; i < categories.size(); ++i) {
        const auto old = i < categoryMatches_->size() ? (*categoryMatches_)[i] : noMatch;
        kept.push_back(std::find(before.begin(), before.end(), old) != before.end());
        if (kept.back()) names.push_back(categories[i]);
    }
    // Of categories with one name, some may be totals and some not.
    if (!data_.totals.empty() && data_.totals != names) return findTotals(categories, data_.totals);
    const auto namesBefore = getNames(categoriesBefore_, part_.is1904());
    for (const auto total : before)
        if (!contains(*categoryMatches_, total) && total < namesBefore.size())
            report_.warnings.push_back("the total " + quoteText(namesBefore[total]) +
                                       " is gone; say which categories are totals now (totals).");
    return kept;
}

/// The series of the author moves behind those that draw it.
void FillPlan::planWaterfall()
{
    auto own = std::move(series_[0]);
    own.categories = {};
    const auto totals = chooseTotals();
    for (std::size_t i = 0; i < totals.size(); ++i)
        if (totals[i]) totals_.push_back(i);
    const auto drawn = drawWaterfall(part_, *data_.dataSet->getSeries(0), totals, options_.numberFormat);
    requireNumbers(*drawn.dataSet);
    series_ = drawn.series;
    drawnCount_ = series_.size();
    for (std::size_t i = 0; i < drawnCount_; ++i) planContent(series_[i], *drawn.dataSet->getSeries(i), {});
    series_.push_back(std::move(own));
}

void FillPlan::shareCategories()
{
    std::map<std::string, std::size_t> firsts;
    const auto share = [&](std::size_t i) {
        auto& categories = series_[i].categories;
        series_[i].categoriesOf = i;
        if (categories.kind == Kind::None || !categories.hasCells) return;
        const auto first = firsts.emplace(categories.formula, i).first->second;
        const auto& content = series_[first].categories.content;
        if (content == categories.content || *content == *categories.content) {
            categories.content = content;
            series_[i].categoriesOf = first;
        } else {
            // Cells hold one thing: categories that differ from those of another series get cells of their
            // own.
            categories.formula.clear();
        }
    };
    // Series that are there already keep their cells; new ones share them.
    for (const bool isAdded : {false, true})
        for (std::size_t i = 0; i < series_.size(); ++i)
            if (series_[i].isAdded == isAdded) share(i);
}

bool FillPlan::isAnywhere(SourcePlan SeriesPlan::*source) const
{
    return std::any_of(series_.begin(), series_.end(), [&](const SeriesPlan& plan) {
        return (plan.*source).kind != Kind::None && (plan.*source).hasCells;
    });
}

std::vector<SeriesCells> FillPlan::makeCells() const
{
    std::vector<SeriesCells> cells;
    for (std::size_t i = 0; i < series_.size(); ++i) {
        const auto& plan = series_[i];
        SeriesCells one{.name = makeCellsOf(plan.name), .values = makeCellsOf(plan.values)};
        if (plan.categoriesOf == i) one.categories = makeCellsOf(plan.categories);
        for (const auto source : moreSources)
            if (isAnywhere(source)) one.more.push_back(makeCellsOf(plan.*source).value_or(CellBlock()));
        cells.push_back(std::move(one));
    }
    return cells;
}

std::vector<SeriesCells> FillPlan::makeRemovedCells() const
{
    std::vector<SeriesCells> cells;
    for (const auto* series : removed_) {
        SeriesCells one{.name = makeRemoved(series->nameSource),
                        .categories = makeRemoved(series->categories),
                        .values = makeRemoved(series->values)};
        for (const auto* source : {&series->sizes, &series->errors.plus, &series->errors.minus})
            if (auto block = makeRemoved(*source)) one.more.push_back(*block);
        cells.push_back(std::move(one));
    }
    return cells;
}

void FillPlan::setReferences(const std::vector<SeriesCells>& cells)
{
    for (std::size_t i = 0; i < series_.size(); ++i) {
        auto& plan = series_[i];
        const auto& one = cells.at(i);
        if (one.name) plan.name.formula = one.name->reference;
        if (one.values) plan.values.formula = one.values->reference;
        if (const auto& shared = cells.at(plan.categoriesOf).categories)
            plan.categories.formula = shared->reference;
        auto block = one.more.begin();
        for (const auto source : moreSources)
            if (isAnywhere(source)) (plan.*source).formula = block++->reference;
    }
}

}  // namespace quillon::report
