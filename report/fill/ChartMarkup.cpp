#include "report/fill/ChartMarkup.h"

#include <algorithm>
#include <stdexcept>

#include "report/finish/Waterfall.h"
#include "report/options/PlainNumber.h"

namespace quillon::report {
namespace {

constexpr std::array<GroupKind, 16> groupKinds = {{
    {"barChart", "column", GroupShape::Categories},
    {"bar3DChart", "3-D column", GroupShape::Categories},
    {"lineChart", "line", GroupShape::Categories},
    {"line3DChart", "3-D line", GroupShape::Categories},
    {"areaChart", "area", GroupShape::Categories},
    {"area3DChart", "3-D area", GroupShape::Categories},
    {"pieChart", "pie", GroupShape::Categories},
    {"pie3DChart", "3-D pie", GroupShape::Categories},
    {"ofPieChart", "pie of pie", GroupShape::Categories},
    {"doughnutChart", "doughnut", GroupShape::Categories},
    {"radarChart", "radar", GroupShape::Categories},
    {"stockChart", "stock", GroupShape::Categories},
    {"scatterChart", "scatter", GroupShape::Points},
    {"bubbleChart", "bubble", GroupShape::Bubbles},
    {"surfaceChart", "surface", GroupShape::Unfillable},
    {"surface3DChart", "3-D surface", GroupShape::Unfillable},
}};

/// Groups whose name depends on a setting.
struct NameBySetting {
    std::string_view element;
    std::string_view setting;
    std::string_view value;
    std::string_view name;
};
constexpr std::array<NameBySetting, 3> namesBySetting = {{
    {"barChart", "barDir", "bar", "bar"},
    {"bar3DChart", "barDir", "bar", "3-D bar"},
    {"ofPieChart", "ofPieType", "bar", "bar of pie"},
}};

/// What points come from, by the element that says so.
struct SourceRow {
    std::string_view element;
    PointSource::Kind kind;
    /// The element inside with the points; empty where they stand in the element itself.
    std::string_view cache;
};
constexpr std::array<SourceRow, 6> sourceRows = {{
    {"numRef", PointSource::Kind::Number, "numCache"},
    {"strRef", PointSource::Kind::Text, "strCache"},
    {"multiLvlStrRef", PointSource::Kind::Levels, "multiLvlStrCache"},
    {"numLit", PointSource::Kind::NumberLiteral, ""},
    {"strLit", PointSource::Kind::TextLiteral, ""},
    {"v", PointSource::Kind::Value, ""},
}};

/// What a fill would break, by an element that gives it away; an empty name stands for all that begin so.
struct ProblemRow {
    Ns ns;
    std::string_view prefix;
    const char* problem;
};
constexpr std::array<ProblemRow, 6> problemRows = {{
    {Ns::Chart, "pivotSource", "it is a pivot chart; its numbers come from a pivot table"},
    {Ns::Chart, "surface", "it is a surface chart, whose colours are bands of values"},
    {Ns::Chart2012, "filtered", "a chart filter hides series or categories; show them all first"},
    {Ns::Chart2012, "categoryFilterException",
     "a chart filter hides series or categories; show them all first"},
    {Ns::Chart2012, "datalabelsRange",
     "labels take their text from cells (\"Value From Cells\"); switch that off first"},
    {Ns::Chart2012, "dlblRangeCache",
     "labels take their text from cells (\"Value From Cells\"); switch that off first"},
}};

bool isCache(Ns ns, std::string_view name)
{
    return ns == Ns::Chart && (name.ends_with("Cache") || name.ends_with("Lit"));
}

const char* findProblemBelow(const XmlElement& element)
{
    for (const auto& row : problemRows)
        if (element.getNs() == row.ns && element.getName().starts_with(row.prefix) &&
            element.getName() != "surfaceFormats")
            return row.problem;
    for (const auto child : element.getChildren())
        if (const auto* problem = findProblemBelow(child)) return problem;
    return nullptr;
}

std::uint32_t readNumber(const XmlElement& element, std::uint32_t otherwise)
{
    return readPlainNumber<std::uint32_t>(element.getAttribute("val").value_or("")).value_or(otherwise);
}

bool isSet(const XmlElement& element)
{
    const auto value = element.getAttribute("val").value_or("true");
    return element && (value == "1" || value == "true");
}

/// The text of all runs, paragraph after paragraph.
void appendRuns(std::string& text, const XmlElement& element)
{
    if (element.is(Ns::Drawing, "br")) text += '\n';
    if (element.is(Ns::Drawing, "p") && !text.empty()) text += ' ';
    if (element.is(Ns::Drawing, "t")) text += element.getText();
    for (const auto child : element.getChildren()) appendRuns(text, child);
}

}  // namespace

ChartMarkup::ChartMarkup(std::string_view bytes, const std::string& part) : xml_(bytes, part, isCache)
{
    const auto root = xml_.getRoot();
    if (!root.is(Ns::Chart, "chartSpace")) {
        problem_ = "its part is not a chart of a known kind";
        return;
    }
    chart_ = root.findChild("chart");
    is1904_ = isSet(root.findChild("date1904"));
    problem_ = findProblem();
    readGroups();
    readWaterfall();
    if (problem_.empty() && series_.empty()) problem_ = "it has no series whose look new ones could take";
}

std::string ChartMarkup::findProblem() const
{
    const auto* problem = findProblemBelow(xml_.getRoot());
    return problem == nullptr ? std::string() : problem;
}

void ChartMarkup::readGroups()
{
    for (const auto element : getPlotArea().getChildren()) {
        const auto* kind = std::find_if(groupKinds.begin(), groupKinds.end(),
                                        [&](const auto& row) { return element.is(Ns::Chart, row.element); });
        if (kind == groupKinds.end()) continue;
        GroupMarkup group{element, kind, kind->name, {}};
        for (const auto& row : namesBySetting)
            if (row.element == kind->element &&
                element.findChild(row.setting).getAttribute("val") == row.value)
                group.name = row.name;
        for (const auto child : element.getChildren())
            if (child.is(Ns::Chart, "axId")) group.axes.push_back(child.getAttribute("val").value_or(""));
        groups_.push_back(group);
        for (const auto child : element.getChildren())
            if (child.is(Ns::Chart, "ser")) readSeries(child, groups_.size() - 1);
    }
    std::stable_sort(series_.begin(), series_.end(),
                     [](const auto& left, const auto& right) { return left.order < right.order; });
}

void ChartMarkup::readSeries(const XmlElement& element, std::size_t group)
{
    const bool hasX =
        groups_[group].kind->shape == GroupShape::Points || groups_[group].kind->shape == GroupShape::Bubbles;
    const auto position = static_cast<std::uint32_t>(series_.size());
    SeriesMarkup series{
        .element = element,
        .group = group,
        .index = readNumber(element.findChild("idx"), position),
        .order = readNumber(element.findChild("order"), position),
        .name = {},
        .nameSource = readSource(element.findChild("tx")),
        .categories = readSource(element.findChild(hasX ? "xVal" : "cat")),
        .values = readSource(element.findChild(hasX ? "yVal" : "val")),
        .sizes = readSource(element.findChild("bubbleSize")),
        .errors = readErrorBars(element),
    };
    series.name = readText(series.nameSource);
    series_.push_back(std::move(series));
}

void ChartMarkup::readWaterfall()
{
    for (const auto& series : series_)
        for (const auto extension : series.element.findChild("extLst").getChildren()) {
            if (extension.getAttribute("uri") != waterfallMark) continue;
            for (const auto mark : extension.getChildren()) return readWaterfall(series, mark);
        }
}

/// The parts of a waterfall are known by their indices: either those above 0 alone, or all.
bool ChartMarkup::hasWaterfallParts(const SeriesMarkup& base) const
{
    constexpr auto allCount = static_cast<std::uint32_t>(WaterfallPart::TotalBelow) + 1;
    constexpr auto aboveCount = static_cast<std::uint32_t>(WaterfallPart::Base) + 1;
    if (series_.size() != aboveCount && series_.size() != allCount) return false;
    for (std::uint32_t part = 0; part < series_.size(); ++part)
        if (std::count_if(series_.begin(), series_.end(),
                          [&](const auto& series) { return series.index == part; }) != 1)
            return false;
    return base.index == static_cast<std::uint32_t>(WaterfallPart::Base);
}

void ChartMarkup::readWaterfall(const SeriesMarkup& base, const XmlElement& mark)
{
    auto own = base;
    own.element = mark;
    own.nameSource = readSource(mark.findChild(Ns::Chart, "tx"));
    own.categories = {};
    own.values = readSource(mark.findChild(Ns::Chart, "val"));
    // What was made another chart since is read as that.
    if (!own.nameSource.cache || !own.values.cache || !hasWaterfallParts(base)) return;
    own.name = readText(own.nameSource);
    groups_[own.group].name = "waterfall";
    for (const auto child : mark.getChildren())
        if (child.getName() == "total") totals_.push_back(readNumber(child, 0));
    waterfall_.push_back(std::move(own));
}

PointSource ChartMarkup::readSource(const XmlElement& holder) const
{
    PointSource source{.holder = holder};
    for (const auto& row : sourceRows) {
        const auto reference = holder.findChild(row.element);
        if (!reference) continue;
        source.kind = row.kind;
        source.reference = reference;
        source.cache = row.cache.empty() ? reference : reference.findChild(row.cache);
        source.formula = reference.findChild("f").getText();
        break;
    }
    return source;
}

ErrorBars ChartMarkup::readErrorBars(const XmlElement& series) const
{
    for (const auto bars : series.getChildren()) {
        if (!bars.is(Ns::Chart, "errBars")) continue;
        const bool isCustom = bars.findChild("errValType").getAttribute("val") == "cust";
        if (isCustom && bars.findChild("errDir").getAttribute("val").value_or("y") == "y")
            return {bars, readSource(bars.findChild("plus")), readSource(bars.findChild("minus"))};
    }
    return {};
}

std::string ChartMarkup::readText(const PointSource& source) const
{
    if (source.kind == PointSource::Kind::Value) return source.reference.getText();
    const auto points = readCache(source).read(true);
    std::string text;
    for (const auto& part : points.texts) text += (text.empty() || part.empty() ? "" : " ") + part;
    return text;
}

std::size_t ChartMarkup::countPoints(const PointSource& source) const
{
    return source.kind == PointSource::Kind::Value ? 0 : PointCache::readCount(xml_, source.cache);
}

PointCache ChartMarkup::readCache(const PointSource& source, std::size_t level) const
{
    if (source.kind == PointSource::Kind::Value) return {};
    return {xml_, source.cache, level};
}

Points ChartMarkup::readPoints(const PointSource& source) const
{
    if (source.kind == PointSource::Kind::Value) return {.areText = true, .texts = {readText(source)}};
    return readCache(source).read(source.isText() || source.kind == PointSource::Kind::Levels);
}

const SeriesMarkup* ChartMarkup::findCategories() const
{
    for (const auto& series : series_)
        if (getShape(series) == GroupShape::Categories && series.categories.kind != PointSource::Kind::None)
            return &series;
    return nullptr;
}

std::vector<std::string> ChartMarkup::getTypes() const
{
    std::vector<std::string> types;
    for (const auto& group : groups_)
        if (std::find(types.begin(), types.end(), group.name) == types.end()) types.emplace_back(group.name);
    return types;
}

std::string ChartMarkup::getTitle() const
{
    const auto title = chart_.findChild("title");
    const auto text = title.findChild("tx");
    if (const auto rich = text.findChild("rich")) {
        std::string runs;
        appendRuns(runs, rich);
        return runs;
    }
    if (text) return readText(readSource(text));
    return title && getSeries().size() == 1 ? getSeries()[0].name : std::string();
}

std::string ChartMarkup::getWorkbookId() const
{
    const auto data = xml_.getRoot().findChild("externalData");
    return data.getAttribute(Ns::OfficeRelationships, "id").value_or("");
}

}  // namespace quillon::report
