#include <algorithm>
#include <array>
#include <map>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/SeriesNames.h"
#include "report/finish/Shapes.h"
#include "report/finish/Waterfall.h"
#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// A group of series: what it is drawn as, and on which axes. Groups are drawn in this order.
struct GroupKey {
    bool isSecond;
    ChartKind kind;

    /// Areas lie behind columns, and lines before both.
    int getRank() const { return kind == ChartKind::Area ? 0 : kind == ChartKind::Line ? 2 : 1; }
    bool operator<(const GroupKey& other) const
    {
        return std::pair(isSecond, getRank()) < std::pair(other.isSecond, other.getRank());
    }
};

struct KindRow {
    const char* option;
    const std::vector<std::string> ChartOptions::*names;
    ChartKind kind;
};
constexpr std::array kindOptions = {
    KindRow{"line", &ChartOptions::line, ChartKind::Line},
    KindRow{"area", &ChartOptions::area, ChartKind::Area},
    KindRow{"column", &ChartOptions::column, ChartKind::Column},
};

std::vector<GroupKey> chooseGroups(const ChartPart& part)
{
    const auto& options = part.context.options;
    const auto& dataSet = *part.context.chart.getDataSet();
    std::vector<GroupKey> keys(part.series.size(), {false, part.context.kind});
    std::vector<const char*> chosen(keys.size());
    for (const auto& row : kindOptions)
        for (const auto index : findSeries(dataSet, options.*row.names, row.option)) {
            if (chosen[index] != nullptr && chosen[index] != row.option)
                throw ChartError(ChartPart::describe(part.series[index]),
                                 std::string(chosen[index]) + " and " + row.option +
                                     " both name it; a series is drawn in one way.");
            chosen[index] = row.option;
            keys[index].kind = row.kind;
        }
    for (const auto index : findSeries(dataSet, options.second, "second")) keys[index].isSecond = true;
    const auto isSecond = [](const auto& key) { return key.isSecond; };
    if (!keys.empty() && std::all_of(keys.begin(), keys.end(), isSecond))
        throw ChartError("", "second: at least one series stands on the first value axis; all are named.");
    return keys;
}

struct GroupRow {
    ChartKind kind;
    /// What it starts with: elements and their values.
    std::vector<std::pair<const char16_t*, const char16_t*>> children;
};

/// Of the kinds that the writer has no group for, or not in a combination.
const GroupRow* findGroupRow(ChartKind kind)
{
    static const std::array<GroupRow, 8> rows = {{
        {ChartKind::Column,
         {{u"c:barDir", u"col"},
          {u"c:grouping", u"clustered"},
          {u"c:varyColors", u"0"},
          {u"c:gapWidth", u"219"}}},
        {ChartKind::Line, {{u"c:grouping", u"standard"}, {u"c:varyColors", u"0"}}},
        {ChartKind::Area, {{u"c:grouping", u"standard"}, {u"c:varyColors", u"0"}}},
        {ChartKind::Doughnut, {{u"c:varyColors", u"1"}, {u"c:firstSliceAng", u"0"}}},
        {ChartKind::Scatter, {{u"c:scatterStyle", u"lineMarker"}, {u"c:varyColors", u"0"}}},
        {ChartKind::Bubble,
         {{u"c:varyColors", u"0"}, {u"c:bubbleScale", u"100"}, {u"c:showNegBubbles", u"0"}}},
        {ChartKind::Radar, {{u"c:radarStyle", u"marker"}, {u"c:varyColors", u"0"}}},
        {ChartKind::Stock, {}},
    }};
    for (const auto& row : rows)
        if (row.kind == kind) return &row;
    return nullptr;
}

/// Makes the writer's group one of another kind, without its series.
void formGroup(DOMElement* group, ChartKind kind)
{
    const auto* row = findGroupRow(kind);
    if (row == nullptr) return;
    group->getOwnerDocument()->renameNode(group, nullptr, findRow(kindRows, kind).token);
    for (const auto* name : {u"c:barDir", u"c:grouping", u"c:gapWidth"}) removeChildren(group, name);
    for (const auto& [name, value] : row->children) replaceInOrder(group, name, value);
}

DOMElement* copyGroup(const DOMElement* group)
{
    auto* copy = static_cast<DOMElement*>(group->cloneNode(false));
    for (auto* child = group->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        if (std::u16string_view(child->getTagName()) != u"c:ser") copy->appendChild(child->cloneNode(true));
    return copy;
}

/// The outline of a line is its colour; filled shapes have none. The colours follow later.
void formShape(DOMElement* series, bool isLine)
{
    auto* properties = findChild(series, u"c:spPr");
    for (const auto* name : {u"a:solidFill", u"a:ln", u"a:effectLst"}) removeChildren(properties, name);
    auto* solid = isLine ? nullptr : appendElement(properties, u"a:solidFill");
    if (solid != nullptr) appendElement(solid, u"a:schemeClr", u"accent1");
    auto* line = appendElement(properties, u"a:ln");
    if (isLine)
        appendElement(appendElement(line, u"a:solidFill"), u"a:schemeClr", u"accent1");
    else
        appendElement(line, u"a:noFill");
    appendElement(properties, u"a:effectLst");
}

/// Fits a series to the group it now stands in.
void formSeries(const ChartPart& part, const SeriesPart& series, ChartKind kind)
{
    constexpr ChartKinds inverting{ChartKind::Column, ChartKind::Bubble};
    constexpr ChartKinds curving{ChartKind::Line, ChartKind::Scatter, ChartKind::Stock};
    constexpr ChartKinds marking{ChartKind::Line, ChartKind::Scatter, ChartKind::Stock, ChartKind::Radar};
    auto* element = series.element;
    for (auto* point : findChildren(element, u"c:dPt")) {
        removeChildren(point, u"c:invertIfNegative");
        if (inverting.contains(kind)) insertInOrder(point, u"c:invertIfNegative", u"0");
    }
    for (const auto* name : {u"c:invertIfNegative", u"c:smooth", u"c:marker"}) removeChildren(element, name);
    if (inverting.contains(kind)) insertInOrder(element, u"c:invertIfNegative", u"0");
    if (marking.contains(kind)) appendElement(insertInOrder(element, u"c:marker"), u"c:symbol", u"none");
    if (curving.contains(kind))
        insertInOrder(element, u"c:smooth", part.context.options.smooth ? u"1" : u"0");
    formShape(element, isLine(series));
}

/// A second pair of axes: its categories are those of the first and stay hidden, its values stand opposite.
void addSecondAxes(ChartPart& part)
{
    constexpr auto categoryId = u"751708753";
    constexpr auto valueId = u"713724113";
    auto& axes = part.secondAxes;
    axes.category = static_cast<DOMElement*>(part.axes.category->cloneNode(true));
    axes.value = static_cast<DOMElement*>(part.axes.value->cloneNode(true));
    insertAfter(part.plotArea, axes.value, part.axes.value);
    insertAfter(part.plotArea, axes.category, axes.value);
    removeChildren(axes.value, u"c:majorGridlines");
    for (const auto& [axis, id, crossed] :
         {std::tuple(axes.category, categoryId, valueId), std::tuple(axes.value, valueId, categoryId)}) {
        replaceInOrder(axis, u"c:axId", id);
        replaceInOrder(axis, u"c:crossAx", crossed);
    }
    replaceInOrder(axes.category, u"c:delete", u"1");
    replaceInOrder(axes.value, u"c:axPos", u"r");
    replaceInOrder(axes.value, u"c:crosses", u"max");
    for (auto* group : part.secondGroups) {
        const auto ids = findChildren(group, u"c:axId");
        replaceAttribute(ids[0], u"val", categoryId);
        replaceAttribute(ids[1], u"val", valueId);
    }
}

/// One kind of series on one pair of axes: the writer's group, renamed.
void formOnlyGroup(ChartPart& part)
{
    constexpr ChartKinds asWritten{ChartKind::Bar, ChartKind::Column, ChartKind::Line, ChartKind::Pie,
                                   ChartKind::Waterfall};
    const auto kind = part.context.kind;
    if (asWritten.contains(kind)) return;
    auto* group = part.groups.front();
    formGroup(group, kind);
    if (kind == ChartKind::Radar && part.context.options.filled)
        replaceInOrder(group, u"c:radarStyle", u"filled");
    putInOrder(group);
    if (kind == ChartKind::Doughnut) return;
    for (const auto& series : part.series) formSeries(part, series, kind);
}

/// Each series moves to the group of its kind and axes.
void combine(ChartPart& part, const std::vector<GroupKey>& keys)
{
    auto* written = part.groups.front();
    std::map<GroupKey, DOMElement*> groups;
    for (const auto& key : keys) groups.try_emplace(key, nullptr);
    for (auto& [key, group] : groups) group = copyGroup(written);
    for (std::size_t i = 0; i < keys.size(); ++i) groups[keys[i]]->appendChild(part.series[i].element);
    part.groups.clear();
    for (auto& [key, group] : groups) {
        formGroup(group, key.kind);
        putInOrder(group);
        part.plotArea->insertBefore(group, written);
        part.groups.push_back(group);
        if (key.isSecond) part.secondGroups.push_back(group);
    }
    part.plotArea->removeChild(written)->release();
    for (std::size_t i = 0; i < keys.size(); ++i) formSeries(part, part.series[i], keys[i].kind);
    if (!part.secondGroups.empty()) addSecondAxes(part);
}

void formGroups(ChartPart& part)
{
    const auto keys = chooseGroups(part);
    const bool isOne = std::all_of(keys.begin(), keys.end(), [&part](const auto& key) {
        return !key.isSecond && key.kind == part.context.kind;
    });
    if (isOne)
        formOnlyGroup(part);
    else
        combine(part, keys);
}

bool isGroup(const DOMElement* group, std::u16string_view name)
{
    return group->getTagName() == name;
}

/// Areas reach from edge to edge, where no bars need room at both ends.
void spreadAreas(ChartPart& part)
{
    const auto has = [&part](std::u16string_view name) {
        return std::any_of(part.groups.begin(), part.groups.end(),
                           [name](const DOMElement* group) { return isGroup(group, name); });
    };
    if (!has(u"c:areaChart") || has(u"c:barChart")) return;
    for (auto* axis : {part.axes.value, part.secondAxes.value})
        if (axis != nullptr) replaceInOrder(axis, u"c:crossBetween", u"midCat");
}

/// Bars of one stack stand on top of each other unless the author moves them apart. The steps of a waterfall
/// are close to each other.
void placeBars(ChartPart& part)
{
    const auto& options = part.context.options;
    const bool isStacked = options.stacking || part.context.kind == ChartKind::Waterfall;
    const auto overlap = isStacked && !options.overlap ? 100 : options.overlap;
    const auto gap = part.context.kind == ChartKind::Waterfall && !options.gap ? 50U : options.gap;
    for (auto* group : part.groups) {
        if (!isGroup(group, u"c:barChart")) continue;
        if (gap) replaceInOrder(group, u"c:gapWidth", num2str(static_cast<unsigned long>(*gap)).c_str());
        if (overlap) replaceInOrder(group, u"c:overlap", toUtf16(std::to_string(*overlap)).c_str());
    }
}

/// Lines before stacked columns or areas stay where their values are.
void stackSeries(ChartPart& part)
{
    auto stacking = part.context.options.stacking;
    if (part.context.kind == ChartKind::Waterfall) stacking = Stacking::Normal;
    if (!stacking) return;
    for (auto* group : part.groups)
        if (!isGroup(group, u"c:lineChart") || part.context.kind == ChartKind::Line)
            replaceInOrder(group, u"c:grouping", findRow(stackingRows, *stacking).token);
}

/// The base carries the other parts of a waterfall: it stands first, and is not to be seen.
void hideBase(ChartPart& part)
{
    constexpr auto basePosition = static_cast<std::size_t>(WaterfallPart::Base);
    if (part.series.size() <= basePosition) return;
    auto* base = part.series[basePosition].element;
    auto* group = part.groups.front();
    group->insertBefore(base, part.series.front().element);
    unsigned long order = 0;
    for (auto* series : findChildren(group, u"c:ser"))
        replaceInOrder(series, u"c:order", num2str(order++).c_str());
}

void cutHole(ChartPart& part)
{
    const std::uint32_t standard = part.series.size() > 1 ? 40 : 60;
    const auto size = static_cast<unsigned long>(part.context.options.hole.value_or(standard));
    replaceInOrder(part.groups.front(), u"c:holeSize", num2str(size).c_str());
}

constexpr std::array rules = {
    Rule{allKinds, formGroups},
    Rule{combinedKinds, spreadAreas},
    Rule{stackKinds, placeBars},
    Rule{stackKinds, stackSeries},
    Rule{ChartKinds(ChartKind::Waterfall), hideBase},
    Rule{ChartKinds(ChartKind::Doughnut), cutHole},
};

}  // namespace

const std::span<const Rule> groupRules = rules;

}  // namespace quillon::report
