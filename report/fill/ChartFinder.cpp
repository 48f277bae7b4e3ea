#include "report/fill/ChartFinder.h"

#include <algorithm>
#include <array>
#include <map>
#include <stdexcept>
#include <utility>

#include "report/fill/DocumentText.h"
#include "report/package/Edits.h"
#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

bool isChart(const XmlElement& element)
{
    return element.getName() == "chart" && (element.getNs() == Ns::Chart || element.getNs() == Ns::ChartEx);
}

constexpr auto newKind =
    "it is of a kind of 2016 (waterfall, histogram, treemap ...), whose markup is another";

/// What the series of those kinds are called. A Pareto chart has columns besides.
struct NewKindRow {
    std::string_view layout;
    const char* problem;
};
constexpr std::array<NewKindRow, 8> newKindRows = {{
    {"paretoLine", "it is a Pareto chart, a kind of 2016, whose markup is another"},
    {"clusteredColumn", "it is a histogram, a kind of 2016, whose markup is another"},
    {"waterfall", "it is a waterfall of the kind of 2016, whose markup is another"},
    {"treemap", "it is a treemap, a kind of 2016, whose markup is another"},
    {"sunburst", "it is a sunburst, a kind of 2016, whose markup is another"},
    {"funnel", "it is a funnel, a kind of 2016, whose markup is another"},
    {"boxWhisker", "it is a box and whisker chart, a kind of 2016, whose markup is another"},
    {"regionMap", "it is a map, a kind of 2016, whose markup is another"},
}};

bool hasLayout(const XmlElement& element, std::string_view layout)
{
    if (element.is(Ns::ChartEx, "series") && element.getAttribute("layoutId") == layout) return true;
    for (const auto child : element.getChildren())
        if (hasLayout(child, layout)) return true;
    return false;
}

/// What a part of those kinds holds.
std::string describeNewKind(const Package& document, const std::string& part)
{
    try {
        const XmlSpans xml(document.getPart(part), part);
        for (const auto& row : newKindRows)
            if (hasLayout(xml.getRoot(), row.layout)) return row.problem;
    } catch (const std::runtime_error&) {
        // A part that cannot be read is refused all the same.
        return newKind;
    }
    return newKind;
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What stands around a place in the text.
struct Surroundings {
    std::string place;
    /// The properties of the content controls.
    std::vector<XmlElement> controls = {};
    /// wp:docPr, or the same of a member of a group.
    XmlElement properties = {};
};

/// Walks through one part.
class PartWalk {
 public:
    PartWalk(const XmlSpans& xml, const std::string& part, const std::vector<Relationship>& relationships)
        : xml_(xml), part_(part)
    {
        for (const auto& row : relationships)
            if (!row.isExternal) targets_.emplace(row.id, row.target);
    }

    std::vector<ChartDrawing> walk(const std::string& place)
    {
        visit(xml_.getRoot(), {.place = place});
        return std::move(found_);
    }

 private:
    void visit(const XmlElement& element, Surroundings around)
    {
        if (element.is(Ns::MarkupCompatibility, "AlternateContent"))
            return visitAlternatives(element, around);
        if (element.is(Ns::Word, "bookmarkStart")) openBookmark(element);
        if (element.is(Ns::Word, "bookmarkEnd"))
            bookmarks_.erase(element.getAttribute(Ns::Word, "id").value_or(""));
        if (isChart(element) && element.findAttribute(Ns::OfficeRelationships, "id"))
            addChart(element, around);
        if (element.is(Ns::Office, "OLEObject")) addObject(element, around);
        enter(element, around);
        for (const auto child : element.getChildren()) visit(child, around);
    }

    static void enter(const XmlElement& element, Surroundings& around)
    {
        const auto name = element.getName();
        if (element.is(Ns::Word, "tbl")) around.place += ", table";
        if (element.is(Ns::Word, "txbxContent")) around.place += ", text box";
        if (element.is(Ns::WordGroup, "wgp") || element.is(Ns::WordCanvas, "wpc")) around.place += ", group";
        if (element.is(Ns::Word, "sdt")) around.controls.push_back(element.findChild("sdtPr"));
        if (!isOneOf(name, {"inline", "anchor", "graphicFrame"})) return;
        for (const auto child : element.getChildren())
            if (isOneOf(child.getName(), {"docPr", "cNvPr"})) around.properties = child;
    }

    static void addTags(const XmlElement& properties, std::vector<std::string>& tags)
    {
        for (const auto* name : {"tag", "alias"})
            if (const auto tag = properties.findChild(name).getAttribute(Ns::Word, "val"))
                tags.push_back(*tag);
    }

    void openBookmark(const XmlElement& element)
    {
        const auto name = element.getAttribute(Ns::Word, "name").value_or("");
        // Those that begin so are the word processor's own.
        if (!name.starts_with('_')) bookmarks_[element.getAttribute(Ns::Word, "id").value_or("")] = name;
    }

    /// The branches hold the same in different words: what they show is one.
    void visitAlternatives(const XmlElement& element, const Surroundings& around)
    {
        auto before = std::exchange(found_, {});
        std::vector<ChartDrawing> shown;
        for (const auto branch : element.getChildren()) {
            found_.clear();
            for (const auto child : branch.getChildren()) visit(child, around);
            if (shown.empty())
                shown = std::move(found_);
            else
                for (std::size_t i = 0; i < std::min(shown.size(), found_.size()); ++i)
                    addCopy(shown[i], found_[i]);
        }
        found_ = std::move(before);
        found_.insert(found_.end(), std::make_move_iterator(shown.begin()),
                      std::make_move_iterator(shown.end()));
    }

    static void addCopy(ChartDrawing& drawing, const ChartDrawing& copy)
    {
        const auto append = [](auto& to, const auto& from) { to.insert(to.end(), from.begin(), from.end()); };
        append(drawing.relationshipIds, copy.relationshipIds);
        append(drawing.positions, copy.positions);
        append(drawing.descriptions, copy.descriptions);
        for (const auto& part : copy.chartParts)
            if (std::find(drawing.chartParts.begin(), drawing.chartParts.end(), part) ==
                drawing.chartParts.end())
                drawing.chartParts.push_back(part);
    }

    ChartDrawing& add(const Surroundings& around)
    {
        ChartDrawing drawing{.part = part_};
        if (around.properties) {
            drawing.name = around.properties.getAttribute("name").value_or("");
            drawing.description = around.properties.getAttribute("descr").value_or("");
            if (const auto span = around.properties.findAttribute(Ns::None, "descr"))
                drawing.descriptions = {*span};
            drawing.title = around.properties.getAttribute("title").value_or("");
        }
        for (const auto& control : around.controls) addTags(control, drawing.tags);
        // Marks without an end pile up.
        constexpr std::ptrdiff_t most = 100;
        auto bookmark = bookmarks_.begin();
        for (auto left = most; left > 0 && bookmark != bookmarks_.end(); --left, ++bookmark)
            drawing.bookmarks.push_back(bookmark->second);
        drawing.place = around.place;
        return found_.emplace_back(std::move(drawing));
    }

    void addChart(const XmlElement& element, const Surroundings& around)
    {
        auto& drawing = add(around);
        const auto id = element.getAttribute(Ns::OfficeRelationships, "id").value_or("");
        const auto target = targets_.find(id);
        if (target == targets_.end()) drawing.problem = "its part is missing";
        if (element.getNs() == Ns::ChartEx) drawing.problem = newKind;
        drawing.relationshipIds = {id};
        drawing.positions = {position_++};
        if (target != targets_.end()) drawing.chartParts = {target->second};
    }

    void addObject(const XmlElement& element, const Surroundings& around)
    {
        const auto program = element.getAttribute("ProgID").value_or("");
        if (program.find("Chart") == std::string::npos) return;
        add(around).problem = "it is an embedded object (" + program + "), a picture to a word processor";
    }

    const XmlSpans& xml_;
    const std::string& part_;
    std::map<std::string, std::string> targets_;
    std::map<std::string, std::string> bookmarks_;
    std::vector<ChartDrawing> found_;
    std::size_t position_ = 0;
};

void collectChartIds(const XmlElement& element, std::vector<Span>& ids)
{
    if (isChart(element))
        if (const auto id = element.findAttribute(Ns::OfficeRelationships, "id")) ids.push_back(*id);
    for (const auto child : element.getChildren()) collectChartIds(child, ids);
}

/// Whether the part refers to anything that may be a chart; most do not, and are not read.
bool mayHoldCharts(const std::vector<Relationship>& relationships)
{
    return std::any_of(relationships.begin(), relationships.end(), [](const Relationship& row) {
        return isOneOf(row.getKind(), {"chart", "chartEx", "oleObject"});
    });
}

}  // namespace

std::vector<ChartDrawing> findCharts(const Package& document)
{
    std::vector<ChartDrawing> drawings;
    for (const auto& [part, place] : findTextParts(document)) {
        const auto relationships = document.getRelationships(part);
        if (!mayHoldCharts(relationships)) continue;
        const XmlSpans xml(document.getPart(part), part);
        auto found = PartWalk(xml, part, relationships).walk(place);
        drawings.insert(drawings.end(), std::make_move_iterator(found.begin()),
                        std::make_move_iterator(found.end()));
    }
    for (auto& drawing : drawings) {
        if (drawing.problem == newKind && !drawing.chartParts.empty())
            drawing.problem = describeNewKind(document, drawing.chartParts[0]);
        if (drawing.problem.empty() && !document.hasPart(drawing.chartParts[0]))
            drawing.problem = "its part is missing";
    }
    return drawings;
}

void describeDrawing(Package& document, std::vector<ChartDrawing>& drawings, std::size_t index,
                     const std::string& description)
{
    auto& drawing = drawings[index];
    const auto text = escapeAttribute(description);
    const auto changed = drawing.descriptions;
    Edits edits;
    for (const auto& span : changed) edits.replace(span, text);
    const auto& bytes = document.getPart(drawing.part);
    // Positions count in UTF-8, which most parts are.
    const bool isPlain = bytes.size() > 1 && bytes[0] == '<' && bytes[1] != '\0';
    document.setPart(drawing.part, isPlain ? edits.apply(bytes) : edits.apply(XmlSpans(bytes, drawing.part)));
    drawing.description = description;
    const auto size = static_cast<std::uint32_t>(text.size());
    const auto move = [&](std::uint32_t& position) {
        const auto before = position;
        for (const auto& span : changed)
            if (span.end <= before) position += size - span.getSize();
    };
    for (auto& other : drawings)
        for (auto& span : other.descriptions) {
            if (other.part != drawing.part) break;
            move(span.begin);
            move(span.end);
        }
}

std::vector<Span> findChartIds(const XmlSpans& xml)
{
    std::vector<Span> ids;
    collectChartIds(xml.getRoot(), ids);
    return ids;
}

}  // namespace quillon::report
