#include "report/fill/ChartInserter.h"

#include <algorithm>
#include <utility>

#include "report/document/ChartParts.h"
#include "report/document/TemplateParts.h"
#include "report/fill/ChartFinder.h"
#include "report/options/Length.h"
#include "report/package/PackageWriter.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

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
    constexpr std::int64_t largest = 22 * emuPerInch;
    return toUtf8(num2str(static_cast<double>(std::clamp(emu, smallest, largest)) / emuPerInch)) + "in";
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

}  // namespace

DrawingNames::DrawingNames(const Package& document, std::string first) : first_(std::move(first))
{
    for (const auto& drawing : findCharts(document)) taken_.insert(drawing.name);
}

std::string DrawingNames::take()
{
    auto name = first_;
    for (std::size_t number = 2; !taken_.insert(name).second; ++number)
        name = first_ + " " + std::to_string(number);
    return name;
}

ChartInserter::ChartInserter(Package& document, const XmlSpans& xml, const XmlSpans& main,
                             const NewChart& chart, DrawingNames& names)
    : document_(document),
      xml_(xml),
      main_(main),
      chart_(chart),
      names_(names),
      numbers_(xml.getRoot()),
      theme_(readTheme(document))
{
}

/// A run with the drawing of a new chart. The second copy of a text box shows the chart of the first.
std::string ChartInserter::addChart(const ChartOptions& options, const Spot& spot)
{
    const auto element = spot.getElement();
    const auto copies = element.findAncestor(Ns::MarkupCompatibility, "AlternateContent");
    const auto place = copies ? copies.getOuter().begin : 0;
    const bool isSecond = isInFallback(element) && place != 0 && place == lastCopies_;
    if (!isSecond) {
        lastName_ = names_.take();
        lastPart_ = document_.findFreeName("word/charts/chart", ".xml");
        lastRelationship_ = document_.addRelationship(xml_.getPart(), "chart", lastPart_);
        lastCopies_ = place;
    }
    auto parts = makeChartParts(chart_.chart, options, numbers_.take(), lastRelationship_,
                                isSecond ? Listener() : chart_.listener, chart_.data, theme_);
    if (!isSecond) {
        document_.addPart(lastPart_, toDialect(std::move(parts.chart), document_.isStrict()),
                          content_type::chart);
        if (!parts.workbook.empty()) {
            const auto workbook = document_.findFreeName("word/embeddings/data", ".xlsx");
            document_.addPart(workbook, std::move(parts.workbook), content_type::workbook);
            document_.addRelationship(lastPart_, "package", workbook);
        }
    }
    return toDialect(std::move(parts.run), document_.isStrict());
}

/// The width of the column, unless the caller wants another; then the height keeps its relation to it.
ChartOptions ChartInserter::fitWidth(const XmlElement& paragraph) const
{
    static const auto usual = withSize({});
    auto options = chart_.options;
    if (!options.width.empty()) return options;
    const auto width = findBlockWidth(paragraph, main_.getRoot());
    options.width = makeLength(width);
    if (options.height.empty())
        options.height = makeLength(width * parseLength(usual.height) / parseLength(usual.width));
    return options;
}

void ChartInserter::insertInParagraph(const Spot& spot, Edits& edits)
{
    const auto& paragraph = *spot.paragraph;
    const auto run = addChart(fitWidth(paragraph.getParagraph()), spot);
    edits.insert(paragraph.getRun(spot.match).getOuter().begin, nameDrawing(run, lastName_));
    removeText(paragraph, spot.match, edits);
}

/// The drawing of the picture stays, with its size, place and wrapping; what it shows is the chart.
void ChartInserter::replacePicture(const Spot& spot, Edits& edits)
{
    const auto drawing = spot.picture.getParent();
    const auto extent = drawing.findChild("extent");
    auto options = withSize(chart_.options);
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
    edits.setAttribute(spot.picture, "name", lastName_);
    edits.setAttribute(spot.picture, "descr", properties.getAttribute("descr").value_or(""));
    if (!readPlaceholder(spot.picture.getAttribute("title").value_or("")).empty())
        edits.setAttribute(spot.picture, "title", "");
}

}  // namespace quillon::report
