#include "report/fill/ChartFiller.h"

#include <algorithm>
#include <array>
#include <set>

#include "report/fill/CategoryAxis.h"
#include "report/fill/PointFormats.h"
#include "report/fill/SourceWriter.h"
#include "report/fill/WaterfallPlan.h"
#include "report/finish/TextBody.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Kind = PointSource::Kind;

XmlElement getSelf(const XmlElement& element)
{
    return element;
}

/// What follows the reference to the workbook in a chart space.
constexpr std::array<std::string_view, 3> behindWorkbook = {"printSettings", "userShapes", "extLst"};

bool isInOrder(const std::vector<const SeriesPlan*>& series)
{
    const SeriesMarkup* last = nullptr;
    for (const auto* plan : series) {
        if (plan->isAdded) continue;
        if (last != nullptr && plan->look < last) return false;
        last = plan->look;
    }
    return true;
}

std::string makeElement(const XmlElement& sibling, std::string_view name, const std::string& content)
{
    const auto tag = std::string(sibling.getPrefix()) + std::string(name);
    return "<" + tag + ">" + content + "</" + tag + ">";
}

/// The labels of a series; false where they show shares, which have a format apart from the values.
XmlElement findValueLabels(const XmlElement& series)
{
    const auto labels = series.findChild("dLbls");
    const auto shows = [&](std::string_view what) {
        const auto text = labels.findChild(what).getAttribute("val").value_or("");
        return text == "1" || text == "true";
    };
    return shows("showVal") && !shows("showPercent") ? labels : XmlElement();
}

}  // namespace

ChartFiller::ChartFiller(const FillPlan& plan, const Palette& palette)
    : plan_(plan), part_(plan.getPart()), palette_(palette), ids_(plan.getPart().getXml().getRoot())
{
}

std::string ChartFiller::write(const std::string& workbookId)
{
    for (std::size_t i = 0; i < part_.getGroups().size(); ++i) writeGroup(i);
    removeEmptyGroups();
    if (const auto* waterfall = plan_.getWaterfall()) writeWaterfall(*waterfall);
    writeCategoryAxes(edits_, plan_);
    writeAxisFormats();
    writeLegend();
    writeTitle();
    writeWorkbook(workbookId);
    return edits_.apply(part_.getXml());
}

void ChartFiller::writeGroup(std::size_t group)
{
    std::vector<const SeriesPlan*> series;
    std::vector<XmlElement> places;
    for (const auto& plan : plan_.getSeries())
        if (plan.look->group == group) series.push_back(&plan);
    std::stable_sort(series.begin(), series.end(),
                     [](const auto* left, const auto* right) { return left->order < right->order; });
    for (const auto& old : part_.getDrawnSeries())
        if (old.group == group) places.push_back(old.element);
    if (series.empty()) return;
    writeSecondPies(part_.getGroups()[group].element);
    if (isInOrder(series)) return writeInPlace(series);
    std::sort(places.begin(), places.end(), [](const XmlElement& left, const XmlElement& right) {
        return left.getOuter().begin < right.getOuter().begin;
    });
    rearrange(places, series);
}

void ChartFiller::writeInPlace(const std::vector<const SeriesPlan*>& series)
{
    for (const auto* plan : series)
        if (!plan->isAdded) writeSeries(edits_, *plan);
    for (const auto* old : plan_.getRemoved())
        if (old->group == series[0]->look->group) edits_.remove(old->element.getOuter());
    // New ones stand behind the one before them, or before the first.
    auto at = series[0]->look->element.getOuter().begin;
    for (const auto* plan : series) {
        if (plan->isAdded)
            edits_.insert(at, makeSeries(*plan));
        else
            at = plan->look->element.getOuter().end;
    }
}

void ChartFiller::rearrange(const std::vector<XmlElement>& places,
                            const std::vector<const SeriesPlan*>& series)
{
    for (std::size_t i = 0; i < std::max(places.size(), series.size()); ++i) {
        if (i >= series.size())
            edits_.remove(places[i].getOuter());
        else if (i >= places.size())
            edits_.insert(places.back().getOuter().end, makeSeries(*series[i]));
        else
            edits_.replace(places[i].getOuter(), makeSeries(*series[i]));
    }
}

std::string ChartFiller::makeSeries(const SeriesPlan& plan)
{
    Edits edits;
    writeSeries(edits, plan);
    return edits.apply(part_.getXml().getText(), plan.look->element.getOuter());
}

void ChartFiller::writeSeries(Edits& edits, const SeriesPlan& plan)
{
    const auto& series = plan.look->element;
    if (plan.isAdded || plan.order != plan.look->order)
        edits.setAttribute(series.findChild("order"), "val", std::to_string(plan.order));
    FormatChange labelFormat;
    if (!plan.isAdded || plan.hasOwnColor) labelFormat = writeNumberFormat(edits, findValueLabels(series));
    if (plan.isAdded)
        takeLook(edits, plan);
    else
        writePointFormats(edits, part_, plan, palette_, ids_, labelFormat);
    writeContent(edits, plan);
}

/// What has a number format of its own does not follow that of the cells.
FormatChange ChartFiller::writeNumberFormat(Edits& edits, const XmlElement& holder) const
{
    const auto& format = plan_.getOptions().numberFormat;
    const auto element = holder.findChild("numFmt");
    const auto linked = element.getAttribute("sourceLinked").value_or("");
    if (format.empty() || !element || linked == "1" || linked == "true") return {};
    const auto before = element.getAttribute("formatCode").value_or("");
    const auto after = plan_.getWaterfall() == nullptr ? format : keepSign(before, format);
    edits.setAttribute(element, "formatCode", after);
    return {before, after};
}

/// Axes of shares keep their percentages.
void ChartFiller::writeAxisFormats()
{
    std::set<std::string> axes;
    for (std::size_t i = 0; i < part_.getGroups().size(); ++i) {
        const auto& group = part_.getGroups()[i];
        const auto grouping = group.element.findChild("grouping").getAttribute("val");
        if (group.axes.size() > 1 && grouping != "percentStacked" && !plan_.isEmptied(i))
            axes.insert(group.axes[1]);
    }
    for (const auto axis : part_.getPlotArea().getChildren())
        if (axis.getName() == "valAx" &&
            axes.contains(axis.findChild("axId").getAttribute("val").value_or("")))
            writeNumberFormat(edits_, axis);
}

void ChartFiller::writeContent(Edits& edits, const SeriesPlan& plan)
{
    const bool hasX = part_.getShape(*plan.look) != GroupShape::Categories;
    const auto& look = *plan.look;
    static const Matches nothing;
    const auto write = [&](const XmlElement& parent, std::string_view name, const PointSource& source,
                           const SourcePlan& to) {
        if (to.kind == Kind::None) return;
        const auto& matches = plan.isAdded || &source == &look.nameSource ? nothing : *plan.points;
        writeSource(edits, part_, parent, name, source,
                    {to.kind, to.formula, to.content->points, to.content->levels, matches, to.format});
    };
    write(look.element, "tx", look.nameSource, plan.name);
    write(look.element, hasX ? "xVal" : "cat", look.categories, plan.categories);
    write(look.element, hasX ? "yVal" : "val", look.values, plan.values);
    write(look.element, "bubbleSize", look.sizes, plan.sizes);
    if (look.errors.plus.holder) write(look.element, "plus", look.errors.plus, plan.errorsPlus);
    if (look.errors.minus.holder) write(look.element, "minus", look.errors.minus, plan.errorsMinus);
}

void ChartFiller::takeLook(Edits& edits, const SeriesPlan& plan)
{
    const auto& series = plan.look->element;
    edits.setAttribute(series.findChild("idx"), "val", std::to_string(plan.index));
    // What belongs to single points stays with them, and a trend line takes the name of its new series.
    std::vector<XmlElement> gone = findAll(series, "dPt");
    // A part of a waterfall below 0 is labelled above.
    const auto labels =
        plan.hasOwnColor ? findAll(series.findChild("dLbls"), "dLbl") : findAll(series, "dLbls");
    gone.insert(gone.end(), labels.begin(), labels.end());
    for (const auto& trend : findAll(series, "trendline"))
        if (const auto name = trend.findChild("name")) gone.push_back(name);
    if (plan.leavesErrorBars && plan.look->errors.holder) gone.push_back(plan.look->errors.holder);
    for (const auto& element : gone) edits.remove(element.getOuter());
    ids_.renew(edits, series, gone);
    if (plan.hasOwnColor) recolor(edits, series, findNextColor(plan.index), gone);
}

/// The series of the author, which stands among those that draw it.
void ChartFiller::writeWaterfall(const SeriesPlan& plan)
{
    writeContent(edits_, plan);
    if (plan_.getTotals() == part_.getTotals()) return;
    const auto& mark = plan.look->element;
    for (const auto child : mark.getChildren())
        if (child.getName() == "total") edits_.remove(child.getOuter());
    for (const auto total : plan_.getTotals())
        edits_.append(mark,
                      "<" + std::string(mark.getPrefix()) + "total val=\"" + std::to_string(total) + "\"/>");
}

Palette::Color ChartFiller::findNextColor(std::uint32_t index)
{
    if (usedColors_.empty())
        for (const auto& plan : plan_.getSeries())
            if (!plan.isAdded)
                if (const auto color = findOwnColor(plan.look->element))
                    usedColors_.push_back({color.getAttribute("val").value_or(""), {}});
    const auto isUsed = [&](const Palette::Color& color) {
        return std::any_of(usedColors_.begin(), usedColors_.end(),
                           [&](const auto& used) { return toLower(used.value) == toLower(color.value); });
    };
    auto at = index;
    while (at < index + palette_.getSize() && isUsed(palette_.getColor(at))) ++at;
    auto color = palette_.getColor(at < index + palette_.getSize() ? at : index);
    usedColors_.push_back(color);
    return color;
}

void ChartFiller::removeEmptyGroups()
{
    std::vector<std::string> kept;
    std::vector<std::string> gone;
    for (std::size_t i = 0; i < part_.getGroups().size(); ++i) {
        const auto& group = part_.getGroups()[i];
        auto& axes = plan_.isEmptied(i) ? gone : kept;
        axes.insert(axes.end(), group.axes.begin(), group.axes.end());
        if (plan_.isEmptied(i)) edits_.remove(group.element.getOuter());
    }
    for (const auto axis : part_.getPlotArea().getChildren()) {
        const auto id = axis.findChild("axId").getAttribute("val");
        const bool isAxis = axis.getName().ends_with("Ax") && id;
        if (isAxis && std::find(gone.begin(), gone.end(), *id) != gone.end() &&
            std::find(kept.begin(), kept.end(), *id) == kept.end())
            edits_.remove(axis.getOuter());
    }
}

void ChartFiller::writeSecondPies(const XmlElement& group)
{
    const auto points = findAll(group.findChild("custSplit"), "secondPiePt");
    const auto& matches = plan_.getCategoryMatches();
    const auto before = plan_.getReport().pointsBefore;
    moveElements(edits_, part_.getXml(), points, getSelf,
                 {.after = invert(matches, before), .isRestKept = matches.size() == before});
}

void ChartFiller::writeLegend()
{
    const auto entries = findAll(part_.getChart().findChild("legend"), "legendEntry");
    if (entries.empty()) return;
    const auto& before = part_.getDrawnSeries();
    const bool variesByPoint = before.size() == 1 && part_.getGroups()[before[0].group].axes.empty();
    Places places{.after = {}, .isRestKept = true};
    if (variesByPoint) {
        const auto& matches = plan_.getCategoryMatches();
        places = {.after = invert(matches, plan_.getReport().pointsBefore),
                  .isRestKept = matches.size() == plan_.getReport().pointsBefore};
    } else {
        places.after = findLegendPlaces();
    }
    moveElements(edits_, part_.getXml(), entries, getIndexChild, places);
    if (plan_.getWaterfall() != nullptr) hideAddedParts(entries.back());
}

/// Parts of a waterfall below 0 have no entry in the legend; all that are left out are left out alike.
void ChartFiller::hideAddedParts(const XmlElement& entry)
{
    for (std::size_t i = 0; i < plan_.getSeries().size(); ++i) {
        if (!plan_.getSeries()[i].isAdded) continue;
        Edits edits;
        edits.setAttribute(getIndexChild(entry), "val", std::to_string(i));
        edits_.insert(entry.getOuter().end, edits.apply(part_.getXml().getText(), entry.getOuter()));
    }
}

std::vector<std::size_t> ChartFiller::findLegendPlaces() const
{
    const auto countTrends = [](const SeriesMarkup& series) {
        return findAll(series.element, "trendline").size();
    };
    const auto& before = part_.getDrawnSeries();
    std::vector<std::size_t> after(before.size(), noMatch);
    for (std::size_t i = 0; i < plan_.getSeries().size(); ++i) {
        const auto& plan = plan_.getSeries()[i];
        if (!plan.isAdded) after[static_cast<std::size_t>(plan.look - before.data())] = i;
    }
    // Trend lines are listed behind all series.
    std::vector<std::size_t> firstTrend(before.size(), noMatch);
    auto next = plan_.getSeries().size();
    for (const auto& plan : plan_.getSeries()) {
        if (!plan.isAdded) firstTrend[static_cast<std::size_t>(plan.look - before.data())] = next;
        next += countTrends(*plan.look);
    }
    for (std::size_t i = 0; i < before.size(); ++i)
        for (std::size_t trend = 0; trend < countTrends(before[i]); ++trend)
            after.push_back(firstTrend[i] == noMatch ? noMatch : firstTrend[i] + trend);
    return after;
}

void ChartFiller::writeTitle()
{
    const auto& text = plan_.getOptions().title;
    if (text.empty() || text == part_.getTitle()) return;
    const auto title = part_.getChart().findChild("title");
    if (!title) return insertTitle(text);
    const auto source = title.findChild("tx");
    const auto paragraph = source.findChild("rich").findChild(Ns::Drawing, "p");
    const auto run = paragraph.findChild(Ns::Drawing, "r");
    if (run.findChild(Ns::Drawing, "t")) return replaceRuns(source.findChild("rich"), run, text);
    if (source) return edits_.replace(source.getOuter(), makeTitleText(title, text));
    if (title.isEmptyTag()) return edits_.setInner(title, makeTitleText(title, text));
    edits_.insert(title.getInner().begin, makeTitleText(title, text));
}

void ChartFiller::replaceRuns(const XmlElement& rich, const XmlElement& run, const std::string& text)
{
    const auto lines = splitLines(toUtf16(text));
    const auto element = run.findChild(Ns::Drawing, "t");
    edits_.setInner(element, escapeText(toUtf8(lines[0])));
    std::string further;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        Edits edits;
        edits.setInner(element, escapeText(toUtf8(lines[i])));
        further += "<" + std::string(run.getPrefix()) + "br/>" +
                   edits.apply(part_.getXml().getText(), run.getOuter());
    }
    if (!further.empty()) edits_.insert(run.getOuter().end, further);
    bool isFirst = true;
    for (const auto paragraph : rich.getChildren()) {
        if (!paragraph.is(Ns::Drawing, "p")) continue;
        const bool holdsRun = isFirst;
        isFirst = false;
        if (!holdsRun) {
            edits_.remove(paragraph.getOuter());
            continue;
        }
        for (const auto child : paragraph.getChildren())
            if (!(child == run) &&
                (child.is(Ns::Drawing, "r") || child.is(Ns::Drawing, "br") || child.is(Ns::Drawing, "fld")))
                edits_.remove(child.getOuter());
    }
}

std::string ChartFiller::makeTitleText(const XmlElement& sibling, const std::string& text) const
{
    const auto uri = getUri(Ns::Drawing, part_.getXml().isStrict());
    std::string runs;
    for (const auto& line : splitLines(toUtf16(text)))
        runs +=
            (runs.empty() ? "<a:r><a:t>" : "<a:br/><a:r><a:t>") + escapeText(toUtf8(line)) + "</a:t></a:r>";
    return makeElement(sibling, "tx",
                       makeElement(sibling, "rich",
                                   "<a:bodyPr xmlns:a=\"" + std::string(uri) + "\"/><a:p xmlns:a=\"" +
                                       std::string(uri) + "\">" + runs + "</a:p>"));
}

void ChartFiller::insertTitle(const std::string& text)
{
    const auto chart = part_.getChart();
    const auto deleted = chart.findChild("autoTitleDeleted");
    if (deleted) edits_.setAttribute(deleted, "val", "0");
    edits_.insert(chart.getInner().begin, makeElement(chart, "title", makeTitleText(chart, text)));
}

void ChartFiller::writeWorkbook(const std::string& id)
{
    const auto root = part_.getXml().getRoot();
    if (id.empty() || id == part_.getWorkbookId()) return;
    const auto data = root.findChild("externalData");
    if (const auto span = data.findAttribute(Ns::OfficeRelationships, "id"))
        return edits_.replace(*span, escapeAttribute(id));
    const auto uri = getUri(Ns::OfficeRelationships, part_.getXml().isStrict());
    const auto attribute = " r:id=\"" + escapeAttribute(id) + "\" xmlns:r=\"" + std::string(uri) + "\"";
    if (data) {
        const auto at = data.getOuter().begin + 1 +
                        static_cast<std::uint32_t>(data.getPrefix().size() + data.getName().size());
        return edits_.insert(at, attribute);
    }
    const std::string prefix(root.getPrefix());
    const auto markup = "<" + prefix + "externalData" + attribute + "><" + prefix +
                        "autoUpdate val=\"0\"/></" + prefix + "externalData>";
    for (const auto child : root.getChildren())
        if (std::find(behindWorkbook.begin(), behindWorkbook.end(), child.getName()) != behindWorkbook.end())
            return edits_.insert(child.getOuter().begin, markup);
    edits_.append(root, markup);
}

}  // namespace quillon::report
