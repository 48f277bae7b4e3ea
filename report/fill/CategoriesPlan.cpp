#include "report/fill/CategoriesPlan.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "report/fill/FillRequirements.h"
#include "report/options/NumberText.h"

namespace quillon::report {
namespace {

bool isCounting(const std::vector<std::string>& texts)
{
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (texts[i] != std::to_string(i + 1)) return false;
    return true;
}

const char* getUsualFormat(const Categories& categories)
{
    if (categories.kind != Categories::Kind::Date) return "General";
    return categories.haveTimes() ? "yyyy\\-mm\\-dd\\ hh:mm" : "yyyy\\-mm\\-dd";
}

/// Categories of another kind than before have a format of their own; those of the same kind keep the
/// chart's, unless it hides the times that are new.
void chooseFormat(Categories& after, const Categories& before)
{
    const bool hidesTimes = after.haveTimes() && !before.haveTimes() && !showsUnit(before.format, "hH");
    if (after.kind == before.kind && !hidesTimes)
        after.format.clear();
    else if (after.format.empty())
        after.format = getUsualFormat(after);
}

/// The names with those of the levels above: "2026", "Q1". Empty without levels.
std::vector<std::string> getPaths(const Categories& categories)
{
    if (categories.levels.empty()) return {};
    auto paths = categories.points.texts;
    for (auto level = categories.levels.size(); level-- > 0;) {
        const auto& texts = categories.levels[level].texts;
        std::string name;
        for (std::size_t i = 0; i < paths.size(); ++i) {
            if (i < texts.size() && !texts[i].empty()) name = texts[i];
            paths[i] = name + '\n' + paths[i];
        }
    }
    return paths;
}

/// Where several years have a "Q1", it is that of the same year, if the chart had one.
void tellLevelsApart(const Categories& before, const Categories& after, std::vector<std::string>& namesBefore,
                     std::vector<std::string>& namesAfter)
{
    const auto pathsBefore = getPaths(before);
    const auto pathsAfter = getPaths(after);
    const std::set<std::string> known(pathsBefore.begin(), pathsBefore.end());
    std::set<std::string> common;
    for (const auto& path : pathsAfter)
        if (known.contains(path)) common.insert(path);
    for (std::size_t i = 0; i < pathsBefore.size(); ++i)
        if (common.contains(pathsBefore[i])) namesBefore[i] = pathsBefore[i];
    for (std::size_t i = 0; i < pathsAfter.size(); ++i)
        if (common.contains(pathsAfter[i])) namesAfter[i] = pathsAfter[i];
}

std::shared_ptr<const Matches> matchCategories(const ChartMarkup& part, const CategoriesPlan& plan,
                                               const Categories& after, std::size_t count, Match match)
{
    auto matches = matchPositions(plan.pointsBefore, count);
    if (match == Match::Name && plan.before.kind != Categories::Kind::None) {
        auto before = getNames(plan.before, part.is1904());
        auto names = getNames(after, part.is1904());
        tellLevelsApart(plan.before, after, before, names);
        auto byName = matchNames(before, names);
        // Points past the names stand where they stood.
        for (auto i = byName.size(); i < count; ++i)
            byName.push_back(i >= before.size() && i < plan.pointsBefore ? i : noMatch);
        matches = std::move(byName);
    }
    return std::make_shared<Matches>(std::move(matches));
}

}  // namespace

CategoriesPlan planCategories(const ChartMarkup& part, const ChartData& data, const FillOptions& options)
{
    CategoriesPlan plan;
    bool hasCategoryGroups = false;
    for (const auto& series : part.getSeries()) {
        plan.pointsBefore = std::max(plan.pointsBefore, part.countPoints(series.values));
        hasCategoryGroups = hasCategoryGroups || part.getShape(series) == GroupShape::Categories;
    }
    const auto* named = part.findCategories();
    if (named != nullptr) plan.before = readCategories(part, *named);
    const auto count = countLongest(*data.dataSet);
    auto after = makeCategories(data, plan.before, part.is1904());
    if (named == nullptr && isCounting(getNames(after, part.is1904()))) after = {};
    plan.areMissing = named == nullptr && after.kind != Categories::Kind::None;
    if (after.kind == Categories::Kind::None) {
        // Data without categories leaves those of the chart as they are, for as many points.
        after = plan.before;
        after.points.resize(count);
        for (auto& level : after.levels) level.resize(count);
    }
    // Dates and numbers that read as the old texts are those texts.
    if (plan.before.kind == Categories::Kind::Text && data.categoryFormat.empty() &&
        getNames(after, part.is1904()) == plan.before.points.texts)
        after = plan.before;
    plan.areNew = !(after == plan.before) && hasCategoryGroups;
    chooseFormat(after, plan.before);
    plan.matches = matchCategories(part, plan, after, count, options.match);
    plan.after = std::make_shared<Categories>(std::move(after));
    plan.pointsAfter = count;
    return plan;
}

}  // namespace quillon::report
