#include "report/fill/Placeholders.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "report/document/ChartParts.h"
#include "report/fill/BlockWidth.h"
#include "report/fill/DataTable.h"
#include "report/fill/DocumentText.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "report/package/XmlSpans.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr std::string_view tablePrefix = "table:";
constexpr double emuPerInch = 914'400;
constexpr auto chartType = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml";
constexpr auto workbookType = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet";

/// A placeholder where it stands.
struct Spot {
    PlaceholderKind kind;
    std::string name;
    /// The text around it; nothing for a picture.
    std::optional<ParagraphText> paragraph;
    TextMatch match;
    /// The properties of the picture.
    XmlElement picture;

    std::uint32_t getPosition() const
    {
        return (paragraph ? paragraph->getParagraph() : picture).getOuter().begin;
    }
};

PlaceholderKind getTextKind(const ParagraphText& paragraph, const TextMatch& match)
{
    if (!paragraph.isAlone(match)) return PlaceholderKind::Text;
    return match.name.starts_with(tablePrefix) ? PlaceholderKind::Table : PlaceholderKind::Paragraph;
}

void findTextSpots(const XmlElement& root, std::vector<Spot>& spots)
{
    for (const auto& element : findParagraphs(root)) {
        const ParagraphText paragraph(element);
        for (const auto& match : paragraph.findPlaceholders()) {
            const auto kind = getTextKind(paragraph, match);
            const auto prefix = kind == PlaceholderKind::Table ? tablePrefix.size() : 0;
            spots.push_back({kind, match.name.substr(prefix), paragraph, match, {}});
        }
    }
}

/// The placeholder that the alternative text or the title of a picture is.
std::string readPicturePlaceholder(const XmlElement& properties)
{
    for (const auto* name : {"descr", "title"}) {
        const auto found = readPlaceholder(properties.getAttribute(name).value_or(""));
        if (!found.empty()) return found;
    }
    return {};
}

void findPictureSpots(const XmlElement& element, std::vector<Spot>& spots)
{
    for (const auto child : element.getChildren()) {
        if (child.is(Ns::WordDrawing, "docPr")) {
            const auto name = readPicturePlaceholder(child);
            const auto graphic = child.getParent().findChild(Ns::Drawing, "graphic");
            if (!name.empty() && findInside(graphic, Ns::Picture, "pic"))
                spots.push_back({PlaceholderKind::Picture, name, {}, {}, child});
        }
        findPictureSpots(child, spots);
    }
}

std::vector<Spot> findSpots(const XmlElement& root)
{
    std::vector<Spot> spots;
    findTextSpots(root, spots);
    findPictureSpots(root, spots);
    std::ranges::stable_sort(spots, {}, &Spot::getPosition);
    return spots;
}

std::string describe(const Placeholder& placeholder)
{
    const auto prefix = placeholder.kind == PlaceholderKind::Table ? std::string(tablePrefix) : "";
    return "{{" + prefix + placeholder.name + "}}";
}

/// Says that a placeholder is missing, or stands where it cannot become what it should, with those there are.
[[noreturn]] void failMissing(const Package& document, const std::string& name, const std::string& reason)
{
    const auto placeholders = findPlaceholders(document);
    std::string list;
    for (const auto& placeholder : placeholders) {
        const auto text = describe(placeholder);
        if (list.find(text) == std::string::npos) list += (list.empty() ? "" : ", ") + text;
    }
    for (const auto& placeholder : placeholders)
        if (placeholder.name == name) throw std::runtime_error("Placeholder {{" + name + "}}: " + reason);
    throw std::runtime_error("There is no placeholder {{" + name + "}}; the document has " +
                             (list.empty() ? "none" : list) + ".");
}

/// Calls `change` with each part that holds text, and stores what it changed.
void changeTextParts(Package& document, const std::function<void(const XmlSpans&, Edits&)>& change)
{
    for (const auto& part : getTextParts(document)) {
        // Cheap to search, which most parts do not survive.
        if (document.getPart(part).find('{') == std::string::npos) continue;
        const XmlSpans xml(document.getPart(part), part);
        Edits edits;
        change(xml, edits);
        if (!edits.isEmpty()) document.setPart(part, edits.apply(xml));
    }
}

/// The numbers of the drawings of a part.
class DrawingNumbers {
 public:
    explicit DrawingNumbers(const XmlElement& root) { collect(root); }
    std::size_t take()
    {
        while (!taken_.insert(next_).second) ++next_;
        return next_;
    }

 private:
    void collect(const XmlElement& element)
    {
        if (element.is(Ns::WordDrawing, "docPr"))
            taken_.insert(static_cast<std::size_t>(readInteger(element, Ns::None, "id", 0)));
        for (const auto child : element.getChildren()) collect(child);
    }

    std::set<std::size_t> taken_;
    std::size_t next_ = 1;
};

/// Markup that we write, in the dialect of the document.
std::string toDialect(std::string markup, bool isStrict)
{
    if (!isStrict) return markup;
    for (const auto ns : {Ns::Chart, Ns::Drawing, Ns::Word, Ns::WordDrawing, Ns::OfficeRelationships}) {
        const auto from = getUri(ns);
        const auto to = getUri(ns, true);
        for (std::size_t at = 0; (at = markup.find(from, at)) != std::string::npos; at += to.size())
            markup.replace(at, from.size(), to);
    }
    return markup;
}

std::string makeLength(std::int64_t emu)
{
    constexpr std::int64_t smallest = 91'440;
    constexpr std::int64_t largest = 22 * 914'400;
    return toUtf8(num2str(static_cast<double>(std::clamp(emu, smallest, largest)) / emuPerInch)) + "in";
}

/// Puts charts into one part of a document.
class ChartInserter {
 public:
    struct Chart {
        const chart::Chart& chart;
        const ChartOptions& options;
        const Listener& listener;
        const ChartData& data;
    };

    ChartInserter(Package& document, const XmlSpans& xml, const XmlSpans& main, const Chart& chart)
        : document_(document), xml_(xml), main_(main), chart_(chart), numbers_(xml.getRoot())
    {
    }

    void insert(const Spot& spot, Edits& edits)
    {
        if (spot.paragraph)
            insertInParagraph(spot, edits);
        else
            replacePicture(spot, edits);
    }

 private:
    std::string addChart(const ChartOptions& options, const Spot& spot);
    ChartOptions fitWidth(const XmlElement& paragraph) const;
    void insertInParagraph(const Spot& spot, Edits& edits);
    void replacePicture(const Spot& spot, Edits& edits);

    Package& document_;
    const XmlSpans& xml_;
    const XmlSpans& main_;
    Chart chart_;
    DrawingNumbers numbers_;
    /// Where the last chart stands in two copies, and its relationship, which the second copy shares.
    std::uint32_t lastCopies_ = 0;
    std::string lastRelationship_;
    std::string lastPart_;
};

/// A run with the drawing of a new chart. The second copy of a text box shows the chart of the first.
std::string ChartInserter::addChart(const ChartOptions& options, const Spot& spot)
{
    const auto element = spot.paragraph ? spot.paragraph->getParagraph() : spot.picture;
    const auto copies = element.findAncestor(Ns::MarkupCompatibility, "AlternateContent");
    const auto place = copies ? copies.getOuter().begin : 0;
    const bool isSecond = isInFallback(element) && place != 0 && place == lastCopies_;
    if (!isSecond) {
        lastPart_ = document_.findFreeName("word/charts/chart", ".xml");
        lastRelationship_ = document_.addRelationship(xml_.getPart(), "chart", lastPart_);
        lastCopies_ = place;
    }
    auto parts = makeChartParts(chart_.chart, options, numbers_.take(), lastRelationship_,
                                isSecond ? Listener() : chart_.listener, chart_.data);
    if (!isSecond) {
        document_.addPart(lastPart_, toDialect(std::move(parts.chart), document_.isStrict()), chartType);
        if (!parts.workbook.empty()) {
            const auto workbook = document_.findFreeName("word/embeddings/data", ".xlsx");
            document_.addPart(workbook, std::move(parts.workbook), workbookType);
            document_.addRelationship(lastPart_, "package", workbook);
        }
    }
    return toDialect(std::move(parts.run), document_.isStrict());
}

/// The width of the column, unless the caller wants another; then the height keeps its relation to it.
ChartOptions ChartInserter::fitWidth(const XmlElement& paragraph) const
{
    static const ChartOptions usual;
    auto options = chart_.options;
    if (options.width != usual.width) return options;
    const auto width = findBlockWidth(paragraph, main_.getRoot());
    options.width = makeLength(width);
    if (options.height == usual.height)
        options.height = makeLength(width * parseLength(usual.height) / parseLength(usual.width));
    return options;
}

bool isRunOfText(const XmlElement& run)
{
    for (const auto content : run.getChildren())
        if (!content.is(Ns::Word, "t") && !content.is(Ns::Word, "rPr") &&
            !content.is(Ns::Word, "lastRenderedPageBreak"))
            return false;
    return true;
}

/// Takes away the runs that hold the text of a paragraph; of runs that hold more, the text alone.
void removeText(const ParagraphText& paragraph, const TextMatch& match, Edits& edits)
{
    const auto& pieces = paragraph.getPieces();
    const auto getRun = [](const auto& piece) { return piece.element.findAncestor(Ns::Word, "r"); };
    const bool isAllText = std::ranges::all_of(pieces, [&](const auto& p) { return isRunOfText(getRun(p)); });
    if (!isAllText) return paragraph.remove(match, edits);
    XmlElement last;
    for (const auto& piece : pieces) {
        const auto run = getRun(piece);
        if (!(run == last)) edits.remove(run.getOuter());
        last = run;
    }
}

/// The run of a chart with the name of its placeholder, by which it is found again.
std::string nameDrawing(const std::string& run, const std::string& name)
{
    const XmlSpans xml(run, "chart");
    Edits edits;
    edits.setAttribute(findInside(xml.getRoot(), Ns::WordDrawing, "docPr"), "name", name);
    return edits.apply(xml);
}

void ChartInserter::insertInParagraph(const Spot& spot, Edits& edits)
{
    const auto& paragraph = *spot.paragraph;
    const auto run = addChart(fitWidth(paragraph.getParagraph()), spot);
    edits.insert(paragraph.getRun(spot.match).getOuter().begin, nameDrawing(run, spot.name));
    removeText(paragraph, spot.match, edits);
}

/// The drawing of the picture stays, with its size, place and wrapping; what it shows is the chart.
void ChartInserter::replacePicture(const Spot& spot, Edits& edits)
{
    const auto drawing = spot.picture.getParent();
    const auto extent = drawing.findChild("extent");
    auto options = chart_.options;
    options.width = makeLength(readInteger(extent, Ns::None, "cx", parseLength(options.width)));
    options.height = makeLength(readInteger(extent, Ns::None, "cy", parseLength(options.height)));
    const auto run = addChart(options, spot);
    const XmlSpans made(run, "chart");
    const auto properties = findInside(made.getRoot(), Ns::WordDrawing, "docPr");
    // The prefix of the relationship's id is declared on the run.
    auto graphic = std::string(findInside(made.getRoot(), Ns::Drawing, "graphic").getSource());
    const auto prefix =
        "xmlns:r=\"" + std::string(getUri(Ns::OfficeRelationships, document_.isStrict())) + "\"";
    if (graphic.find("xmlns:r=") == std::string::npos)
        graphic.insert(graphic.find_first_of(" >"), " " + prefix);
    edits.replace(drawing.findChild(Ns::Drawing, "graphic").getOuter(), graphic);
    edits.setAttribute(spot.picture, "name", spot.name);
    edits.setAttribute(spot.picture, "descr", properties.getAttribute("descr").value_or(""));
    if (!readPlaceholder(spot.picture.getAttribute("title").value_or("")).empty())
        edits.setAttribute(spot.picture, "title", "");
}

}  // namespace

std::vector<Placeholder> findPlaceholders(const Package& document)
{
    std::vector<Placeholder> found;
    for (const auto& part : getTextParts(document)) {
        const XmlSpans xml(document.getPart(part), part);
        for (const auto& spot : findSpots(xml.getRoot())) {
            const auto element = spot.paragraph ? spot.paragraph->getParagraph() : spot.picture;
            const Placeholder placeholder{spot.name, spot.kind, part};
            const bool isKnown = std::ranges::find(found, placeholder) != found.end();
            if (!isKnown && !isInFallback(element)) found.push_back(placeholder);
        }
    }
    return found;
}

std::size_t replaceText(Package& document, const std::string& name, const std::string& text)
{
    static_cast<void>(readXmlText(text, "{{" + name + "}}"));
    std::size_t count = 0;
    auto changed = document;
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        for (const auto& paragraph : findParagraphs(xml.getRoot())) {
            const auto replaced = ParagraphText(paragraph).replace(name, text, edits);
            if (!isInFallback(paragraph)) count += replaced;
        }
    });
    if (count == 0) failMissing(document, name, "it is a picture or a table; expected one in running text.");
    document = std::move(changed);
    return count;
}

void insertChart(Package& document, const std::string& name, const chart::Chart& chart,
                 const ChartOptions& options, const Listener& listener, const ChartData& data)
{
    auto changed = document;
    const std::string mainBytes = document.getPart(document.getMainPart());
    const XmlSpans main(mainBytes, document.getMainPart());
    bool isFound = false;
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        ChartInserter inserter(changed, xml, main, {chart, options, listener, data});
        for (const auto& spot : findSpots(xml.getRoot())) {
            const bool isPlace =
                spot.kind == PlaceholderKind::Paragraph || spot.kind == PlaceholderKind::Picture;
            if (spot.name != name || !isPlace) continue;
            inserter.insert(spot, edits);
            isFound = true;
        }
    });
    if (!isFound)
        failMissing(document, name,
                    "a chart takes the place of a picture, or of a paragraph that holds nothing else.");
    document = std::move(changed);
}

void insertTable(Package& document, const std::string& name, const ChartData& data,
                 const ChartOptions& options)
{
    auto changed = document;
    const std::string mainBytes = document.getPart(document.getMainPart());
    const XmlSpans main(mainBytes, document.getMainPart());
    bool isFound = false;
    changeTextParts(changed, [&](const XmlSpans& xml, Edits& edits) {
        const DataTable table(data, options, findTableStyle(document, xml.getRoot()));
        for (const auto& spot : findSpots(xml.getRoot())) {
            if (spot.name != name || spot.kind != PlaceholderKind::Table) continue;
            table.insert(*spot.paragraph, spot.match, main.getRoot(), edits);
            isFound = true;
        }
    });
    if (!isFound)
        failMissing(document, name,
                    "a table takes the place of a paragraph that holds {{table:" + name + "}} alone.");
    document = std::move(changed);
}

}  // namespace quillon::report
