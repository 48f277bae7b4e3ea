#include "report/Document.h"

#include <array>
#include <stdexcept>
#include <utility>
#include <variant>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/Chart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "report/Finishing.h"
#include "report/FixedParts.h"
#include "report/Length.h"
#include "report/Package.h"
#include "report/Worksheet.h"
#include "report/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

struct TextBlock {
    std::u16string text;
    /// 0 for a paragraph.
    int headingLevel;
};

struct ChartBlock {
    std::shared_ptr<const chart::Chart> chart;
    ChartOptions options;
};

using Block = std::variant<TextBlock, ChartBlock>;

constexpr auto xmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr auto relationshipTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr auto relationshipsNamespace = "http://schemas.openxmlformats.org/package/2006/relationships";

struct ReleaseDocument {
    void operator()(DOMDocument* document) const { document->release(); }
};
using DocumentPointer = std::unique_ptr<DOMDocument, ReleaseDocument>;

DocumentPointer createDocument()
{
    return DocumentPointer(xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS")->createDocument());
}

DOMElement* append(DOMElement* parent, const char16_t* name)
{
    auto* element = parent->getOwnerDocument()->createElement(name);
    parent->appendChild(element);
    return element;
}

DocumentPointer createMainDocument()
{
    auto doc = createDocument();
    auto* root = doc->createElement(u"w:document");
    const std::array<std::pair<const char16_t*, const char16_t*>, 3> namespaces = {{
        {u"xmlns:w", u"http://schemas.openxmlformats.org/wordprocessingml/2006/main"},
        {u"xmlns:r", u"http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
        {u"xmlns:wp", u"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing"},
    }};
    for (const auto& [name, uri] : namespaces) root->setAttribute(name, uri);
    doc->appendChild(root);
    append(root, u"w:body");
    return doc;
}

/// A4 with margins of an inch.
void appendSectionProperties(DOMElement* body)
{
    auto* section = append(body, u"w:sectPr");
    auto* size = append(section, u"w:pgSz");
    size->setAttribute(u"w:w", u"11906");
    size->setAttribute(u"w:h", u"16838");
    auto* margins = append(section, u"w:pgMar");
    for (const auto* side : {u"w:top", u"w:right", u"w:bottom", u"w:left"})
        margins->setAttribute(side, u"1440");
    for (const auto* edge : {u"w:header", u"w:footer"}) margins->setAttribute(edge, u"708");
    margins->setAttribute(u"w:gutter", u"0");
}

void appendText(DOMElement* run, std::u16string_view text)
{
    if (text.empty()) return;
    auto* element = append(run, u"w:t");
    element->setAttribute(u"xml:space", u"preserve");
    element->appendChild(run->getOwnerDocument()->createTextNode(std::u16string(text).c_str()));
}

/// Tabs and line breaks have elements of their own.
void appendRun(DOMElement* paragraph, std::u16string_view text)
{
    auto* run = append(paragraph, u"w:r");
    while (!text.empty()) {
        const auto end = text.find_first_of(u"\t\r\n");
        appendText(run, text.substr(0, end));
        if (end == std::u16string_view::npos) return;
        append(run, text[end] == u'\t' ? u"w:tab" : u"w:br");
        text.remove_prefix(text.substr(end, 2) == u"\r\n" ? end + 2 : end + 1);
    }
}

void appendTextBlock(DOMElement* body, const TextBlock& block)
{
    auto* paragraph = append(body, u"w:p");
    if (block.headingLevel > 0) {
        auto* style = append(append(paragraph, u"w:pPr"), u"w:pStyle");
        style->setAttribute(u"w:val",
                            (u"Heading" + num2str(static_cast<unsigned long>(block.headingLevel))).c_str());
    }
    if (!block.text.empty()) appendRun(paragraph, block.text);
}

std::string makeRelationship(const std::string& id, const char* type, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" + relationshipTypes + type + "\" Target=\"" + target +
           "\"/>";
}

std::string makeRelationships(const std::string& rows)
{
    return std::string(xmlDeclaration) + "<Relationships xmlns=\"" + relationshipsNamespace + "\">" + rows +
           "</Relationships>";
}

/// The package under construction: parts come in, with what refers to them.
class PackageBuilder {
 public:
    PackageBuilder(std::size_t chartCount, Document::Progress progress, Document::Warning warning)
        : chartCount_(chartCount),
          progress_(std::move(progress)),
          warning_(std::move(warning)),
          main_(createMainDocument())
    {
        body_ = findChild(main_->getDocumentElement(), u"w:body");
    }

    void add(const TextBlock& block) { appendTextBlock(body_, block); }
    void add(const ChartBlock& block);
    std::string finish();

 private:
    void addChartPart(const ChartBlock& block, const FinishingContext& context,
                      chart::DOCXChartWriter& writer);
    void addDrawing(const FinishingContext& context, chart::DOCXChartWriter& writer);
    void addWorkbook(const chart::Chart& chart, const std::string& number);
    void addFixedParts();
    std::string makeContentTypes() const;

    std::size_t chartCount_;
    Document::Progress progress_;
    Document::Warning warning_;
    DocumentPointer main_;
    DOMElement* body_;
    std::size_t done_ = 0;
    bool hasWorkbook_ = false;
    std::string chartRelationships_;
    std::vector<Part> parts_;
};

void requireSheetSize(const chart::DataSet& dataSet)
{
    unsigned long rows = dataSet.getCategories().size();
    for (unsigned long i = 0; i < dataSet.getSeriesCount(); ++i)
        rows = std::max<unsigned long>(rows, dataSet.getSeries(i)->getSize());
    if (dataSet.getSeriesCount() > maximumColumn)
        throw std::runtime_error("A chart takes at most " + std::to_string(maximumColumn) + " series, got " +
                                 std::to_string(dataSet.getSeriesCount()) + ".");
    if (rows > maximumRow)
        throw std::runtime_error("A series takes at most " + std::to_string(maximumRow) + " points, got " +
                                 std::to_string(rows) + ".");
}

void PackageBuilder::add(const ChartBlock& block)
{
    const auto number = done_ + 1;
    try {
        const auto writer = block.chart->getDOCXWriter();
        const FinishingContext context{*block.chart,
                                       block.options,
                                       number,
                                       parseLength(block.options.width),
                                       parseLength(block.options.height),
                                       block.options.workbook ? u"rId1" : nullptr,
                                       warning_};
        addChartPart(block, context, *writer);
        addDrawing(context, *writer);
    } catch (const std::exception& error) {
        const std::string place = "chart " + std::to_string(number);
        const std::string message = error.what();
        throw std::runtime_error(message.starts_with(place) ? message : place + ": " + message);
    }
    done_ = number;
    if (progress_) progress_(done_, chartCount_);
}

void PackageBuilder::addChartPart(const ChartBlock& block, const FinishingContext& context,
                                  chart::DOCXChartWriter& writer)
{
    const auto number = std::to_string(context.drawingNumber);
    const auto doc = createDocument();
    writer.createChartDOMDocContent(doc.get());
    requireSheetSize(*block.chart->getDataSet());
    finishChartPart(doc.get(), context);
    parts_.push_back({"word/charts/chart" + number + ".xml", serialise(doc.get())});
    if (block.options.workbook) addWorkbook(*block.chart, number);
}

void PackageBuilder::addWorkbook(const chart::Chart& chart, const std::string& number)
{
    hasWorkbook_ = true;
    parts_.push_back(
        {"word/charts/_rels/chart" + number + ".xml.rels",
         makeRelationships(makeRelationship("rId1", "package", "../embeddings/data" + number + ".xlsx"))});
    parts_.push_back({"word/embeddings/data" + number + ".xlsx", makeWorkbook(chart), false});
}

void PackageBuilder::addDrawing(const FinishingContext& context, chart::DOCXChartWriter& writer)
{
    const auto number = std::to_string(context.drawingNumber);
    const auto id = "chart" + number;
    auto* paragraph = append(body_, u"w:p");
    writer.createChartDOMElemContent(main_.get(), paragraph, toUtf16(number), toUtf16(id));
    finishDrawing(findChild(paragraph, u"w:r"), context);
    chartRelationships_ += makeRelationship(id, "chart", "charts/chart" + number + ".xml");
}

std::string PackageBuilder::makeContentTypes() const
{
    std::string types = std::string(xmlDeclaration) +
                        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
                        "<Default Extension=\"rels\" "
                        "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                        "<Default Extension=\"xml\" ContentType=\"application/xml\"/>";
    if (hasWorkbook_)
        types +=
            "<Default Extension=\"xlsx\" "
            "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet\"/>";
    const auto addOverride = [&types](const std::string& name, const std::string& type) {
        types += "<Override PartName=\"/" + name + "\" ContentType=\"application/vnd.openxmlformats-" + type +
                 "+xml\"/>";
    };
    addOverride("word/document.xml", "officedocument.wordprocessingml.document.main");
    addOverride("word/styles.xml", "officedocument.wordprocessingml.styles");
    addOverride("word/settings.xml", "officedocument.wordprocessingml.settings");
    addOverride("word/theme/theme1.xml", "officedocument.theme");
    addOverride("docProps/core.xml", "package.core-properties");
    addOverride("docProps/app.xml", "officedocument.extended-properties");
    for (std::size_t i = 1; i <= done_; ++i)
        addOverride("word/charts/chart" + std::to_string(i) + ".xml", "officedocument.drawingml.chart");
    return types + "</Types>";
}

void PackageBuilder::addFixedParts()
{
    parts_.push_back({"_rels/.rels", parts::packageRelationships});
    parts_.push_back({"word/styles.xml", parts::styles});
    parts_.push_back({"word/settings.xml", parts::settings});
    parts_.push_back({"word/theme/theme1.xml", parts::theme});
    parts_.push_back({"docProps/core.xml", parts::coreProperties});
    parts_.push_back({"docProps/app.xml", parts::extendedProperties});
}

std::string PackageBuilder::finish()
{
    appendSectionProperties(body_);
    parts_.insert(parts_.begin(), {"[Content_Types].xml", makeContentTypes()});
    addFixedParts();
    parts_.push_back({"word/document.xml", serialise(main_.get())});
    parts_.push_back(
        {"word/_rels/document.xml.rels",
         makeRelationships(makeRelationship("styles", "styles", "styles.xml") +
                           makeRelationship("settings", "settings", "settings.xml") +
                           makeRelationship("theme", "theme", "theme/theme1.xml") + chartRelationships_)});
    return zipParts(parts_);
}

std::u16string readText(const std::string& text, const char* field)
{
    try {
        auto wide = toUtf16(text);
        requireXmlText(wide, field);
        return wide;
    } catch (const std::runtime_error& error) {
        const std::string message = error.what();
        throw std::runtime_error(message.starts_with(field) ? message : std::string(field) + ": " + message);
    }
}

}  // namespace

struct Document::Content {
    std::vector<Block> blocks;
    std::size_t chartCount = 0;
    Progress progress;
    Warning warning;
};

Document::Document() : content_(std::make_unique<Content>()) {}
Document::~Document() = default;
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;

void Document::addHeading(const std::string& text, int level)
{
    if (level < 1 || level > 9)
        throw std::runtime_error("Heading level: expected 1 to 9, got " + std::to_string(level) + ".");
    content_->blocks.emplace_back(TextBlock{readText(text, "Heading"), level});
}

void Document::addParagraph(const std::string& text)
{
    content_->blocks.emplace_back(TextBlock{readText(text, "Paragraph"), 0});
}

void Document::addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options)
{
    if (!chart) throw std::runtime_error("addChart: expected a chart, got an empty handle.");
    parseLength(options.width);
    parseLength(options.height);
    readText(options.altText, "Alternative text");
    content_->blocks.emplace_back(ChartBlock{std::move(chart), options});
    ++content_->chartCount;
}

void Document::setProgress(Progress progress)
{
    content_->progress = std::move(progress);
}

void Document::setWarning(Warning warning)
{
    content_->warning = std::move(warning);
}

std::string Document::toBytes() const
{
    PackageBuilder package(content_->chartCount, content_->progress, content_->warning);
    for (const auto& block : content_->blocks)
        std::visit([&package](const auto& b) { package.add(b); }, block);
    return package.finish();
}

void Document::save(const std::string& path) const
{
    writeFile(path, toBytes());
}

}  // namespace quillon::report
