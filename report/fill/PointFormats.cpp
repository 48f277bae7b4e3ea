#include "report/fill/PointFormats.h"

#include <algorithm>
#include <array>
#include <map>

#include "report/fill/BlockWidth.h"
#include "report/options/PlainNumber.h"
#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

std::size_t readIndex(const XmlElement& holder)
{
    return readPlainNumber<std::size_t>(holder.getAttribute("val").value_or("")).value_or(noMatch);
}

/// The markup of an element on its way to a position.
struct Moved {
    std::size_t index;
    std::string markup;
};

/// Puts what was moved, by position, where the elements stood; `end` is where further ones stand.
void replaceAll(Edits& edits, const XmlSpans& xml, const std::vector<XmlElement>& elements,
                std::vector<Moved> moved, std::uint32_t end)
{
    std::stable_sort(moved.begin(), moved.end(),
                     [](const Moved& left, const Moved& right) { return left.index < right.index; });
    for (std::size_t i = moved.size(); i < elements.size(); ++i) edits.remove(elements[i].getOuter());
    for (std::size_t i = 0; i < moved.size(); ++i) {
        if (i >= elements.size())
            edits.insert(end, std::move(moved[i].markup));
        else if (moved[i].markup != xml.getText(elements[i].getOuter()))
            edits.replace(elements[i].getOuter(), std::move(moved[i].markup));
    }
}

bool hasFormat(const XmlElement& label, const FormatChange& format)
{
    return format.before != format.after &&
           label.findChild("numFmt").getAttribute("formatCode") == format.before;
}

Moved renumber(const XmlSpans& xml, const XmlElement& element, const XmlElement& holder, std::size_t index,
               const FormatChange& format)
{
    Edits edits;
    edits.setAttribute(holder, "val", std::to_string(index));
    if (hasFormat(element, format))
        edits.setAttribute(element.findChild("numFmt"), "formatCode", format.after);
    return {index, edits.apply(xml.getText(), element.getOuter())};
}

/// Where the elements that have a place go; nothing when all stay.
std::vector<Moved> moveAll(const XmlSpans& xml, const std::vector<XmlElement>& elements,
                           XmlElement (*getHolder)(const XmlElement&), const Places& places, bool& isMoved,
                           const FormatChange& format = {})
{
    std::vector<Moved> moved;
    for (const auto& element : elements) {
        const auto holder = getHolder(element);
        const auto to = places.find(readIndex(holder));
        isMoved = isMoved || to != readIndex(holder) || hasFormat(element, format);
        if (to != noMatch) moved.push_back(renumber(xml, element, holder, to, format));
    }
    return moved;
}

Places findPlaces(const ChartMarkup& part, const SeriesPlan& plan)
{
    const auto before =
        std::max(part.countPoints(plan.look->values), part.countPoints(plan.look->categories));
    return {.after = invert(*plan.points, before), .isRestKept = plan.points->size() == before};
}

/// Whether each of the old points has an element of its own.
bool isForAll(const std::vector<XmlElement>& elements, std::size_t count)
{
    std::vector<bool> isThere(count, false);
    for (const auto& element : elements)
        if (const auto index = readIndex(getIndexChild(element)); index < count) isThere[index] = true;
    return std::find(isThere.begin(), isThere.end(), false) == isThere.end();
}

/// Continues formats that every point has for the points that are new.
class FormatRow {
 public:
    FormatRow(const XmlSpans& xml, const std::vector<XmlElement>& elements, const Palette& palette,
              UniqueIds& ids)
        : xml_(xml), last_(elements.back()), palette_(palette), ids_(ids)
    {
        isExploded_ = std::all_of(elements.begin(), elements.end(),
                                  [](const auto& element) { return bool(element.findChild("explosion")); });
    }

    Moved make(std::size_t index)
    {
        Edits edits;
        edits.setAttribute(getIndexChild(last_), "val", std::to_string(index));
        recolor(edits, last_, palette_.getColor(index));
        ids_.renew(edits, last_);
        if (!isExploded_)
            for (const auto& explosion : findAll(last_, "explosion")) edits.remove(explosion.getOuter());
        return {index, edits.apply(xml_.getText(), last_.getOuter())};
    }

 private:
    const XmlSpans& xml_;
    XmlElement last_;
    const Palette& palette_;
    UniqueIds& ids_;
    bool isExploded_;
};

void writeFormats(Edits& edits, const ChartMarkup& part, const SeriesPlan& plan, const Places& places,
                  const Palette& palette, UniqueIds& ids)
{
    const auto elements = findAll(plan.look->element, "dPt");
    if (elements.empty()) return;
    bool isMoved = false;
    auto moved = moveAll(part.getXml(), elements, getIndexChild, places, isMoved);
    const auto& matches = *plan.points;
    FormatRow row(part.getXml(), elements, palette, ids);
    for (std::size_t i = 0; isForAll(elements, places.after.size()) && i < matches.size(); ++i) {
        if (matches[i] != noMatch) continue;
        moved.push_back(row.make(i));
        isMoved = true;
    }
    if (isMoved) replaceAll(edits, part.getXml(), elements, std::move(moved), elements.back().getOuter().end);
}

/// What all labels of a series say of themselves, as a label of one point repeats it.
constexpr std::array<std::string_view, 11> labelSettings = {
    "numFmt",      "spPr",        "txPr",        "dLblPos",        "showLegendKey", "showVal",
    "showCatName", "showSerName", "showPercent", "showBubbleSize", "separator"};

/// A text in the look of labels.
std::string makeLabelText(const XmlSpans& xml, const XmlElement& look, const std::string& text)
{
    const auto run = "<a:r xmlns:a=\"" + std::string(getUri(Ns::Drawing, xml.isStrict())) + "\"><a:t>" +
                     escapeText(text) + "</a:t></a:r>";
    const auto paragraph = look.findChild(Ns::Drawing, "p");
    if (!paragraph || paragraph.isEmptyTag()) {
        const auto uri = " xmlns:a=\"" + std::string(getUri(Ns::Drawing, xml.isStrict())) + "\"";
        return "<a:bodyPr" + uri + "/><a:p" + uri + ">" + run + "</a:p>";
    }
    Edits edits;
    const auto end = paragraph.findChild("endParaRPr");
    edits.insert(end ? end.getOuter().begin : paragraph.getInner().end, run);
    return edits.apply(xml.getText(), look.getInner());
}

/// A label that says `text`: the one that the point has, or one like those of the series.
std::string makeLabel(const XmlSpans& xml, const XmlElement& labels, const XmlElement& old, std::size_t index,
                      const std::string& text)
{
    if (const auto run = findInside(old.findChild("tx"), Ns::Drawing, "t")) {
        Edits edits;
        edits.setAttribute(getIndexChild(old), "val", std::to_string(index));
        if (run.getText() != text) edits.setInner(run, escapeText(text));
        return edits.apply(xml.getText(), old.getOuter());
    }
    const std::string prefix(labels.getPrefix());
    auto markup = "<" + prefix + "dLbl><" + prefix + "idx val=\"" + std::to_string(index) + "\"/><" + prefix +
                  "tx><" + prefix + "rich>" + makeLabelText(xml, labels.findChild("txPr"), text) + "</" +
                  prefix + "rich></" + prefix + "tx>";
    for (const auto setting : labels.getChildren())
        if (std::find(labelSettings.begin(), labelSettings.end(), setting.getName()) != labelSettings.end())
            markup += setting.getSource();
    return markup + "</" + prefix + "dLbl>";
}

/// Labels whose text is computed say the new one; those of other points move along.
void writeComputedLabels(Edits& edits, const XmlSpans& xml, const XmlElement& labels, const LabelTexts& texts,
                         const Places& places, const FormatChange& format)
{
    const auto elements = findAll(labels, "dLbl");
    std::vector<XmlElement> plain;
    XmlElement like;
    std::map<std::size_t, XmlElement> computed;
    for (const auto& element : elements) {
        const auto index = readIndex(getIndexChild(element));
        if (texts.before.contains(index) && element.findChild("tx"))
            computed[index] = like = element;
        else
            plain.push_back(element);
    }
    bool isMoved = false;
    auto moved = moveAll(xml, plain, getIndexChild, places, isMoved, format);
    std::erase_if(moved, [&](const Moved& one) { return texts.after.contains(one.index); });
    for (const auto& [index, text] : texts.after) {
        const auto own = computed.find(index);
        moved.push_back(
            {index, makeLabel(xml, labels, own == computed.end() ? like : own->second, index, text)});
    }
    const auto end = elements.empty() ? labels.getInner().begin : elements.back().getOuter().end;
    replaceAll(edits, xml, elements, std::move(moved), end);
}

}  // namespace

std::vector<XmlElement> findAll(const XmlElement& parent, std::string_view name)
{
    std::vector<XmlElement> found;
    for (const auto child : parent.getChildren())
        if (child.is(Ns::Chart, name)) found.push_back(child);
    return found;
}

XmlElement getIndexChild(const XmlElement& element)
{
    return element.findChild("idx");
}

void moveElements(Edits& edits, const XmlSpans& xml, const std::vector<XmlElement>& elements,
                  XmlElement (*getHolder)(const XmlElement&), const Places& places,
                  const FormatChange& format)
{
    bool isMoved = false;
    auto moved = moveAll(xml, elements, getHolder, places, isMoved, format);
    if (isMoved) replaceAll(edits, xml, elements, std::move(moved), elements.back().getOuter().end);
}

void writePointFormats(Edits& edits, const ChartMarkup& part, const SeriesPlan& plan, const Palette& palette,
                       UniqueIds& ids, const FormatChange& labelFormat)
{
    const auto places = findPlaces(part, plan);
    writeFormats(edits, part, plan, places, palette, ids);
    const auto labels = plan.look->element.findChild("dLbls");
    if (plan.labels.before.empty() && plan.labels.after.empty())
        moveElements(edits, part.getXml(), findAll(labels, "dLbl"), getIndexChild, places, labelFormat);
    else
        writeComputedLabels(edits, part.getXml(), labels, plan.labels, places, labelFormat);
}

}  // namespace quillon::report
