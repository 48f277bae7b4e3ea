#include "report/document/Document.h"

#include <array>
#include <stdexcept>
#include <utility>
#include <variant>
#include <xercesc/dom/DOM.hpp>

#include "report/document/ChartWriting.h"
#include "report/document/FixedParts.h"
#include "report/finish/Finishing.h"
#include "report/options/Options.h"
#include "report/package/PackageWriter.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

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
    ChartData data;
};

using Block = std::variant<TextBlock, ChartBlock>;

constexpr auto mainPart = "word/document.xml";

/// A part that every document has beside its main one.
struct FixedPart {
    const char* name;
    const char* bytes;
    const char* contentType;
    /// Of the main part with it; also the relationship's id.
    const char* relationship;
};
const std::array fixedParts = {
    FixedPart{"styles.xml", parts::styles, content_type::styles, "styles"},
    FixedPart{"settings.xml", parts::settings, content_type::settings, "settings"},
    FixedPart{"theme/theme1.xml", parts::theme, content_type::theme, "theme"},
};

DocumentPointer createMainDocument()
{
    auto doc = createDocument();
    auto* root = doc->createElement(u"w:document");
    declareNamespaces(root);
    doc->appendChild(root);
    appendElement(root, u"w:body");
    return doc;
}

/// A4 with margins of an inch.
void appendSectionProperties(DOMElement* body)
{
    auto* section = appendElement(body, u"w:sectPr");
    auto* size = appendElement(section, u"w:pgSz");
    size->setAttribute(u"w:w", u"11906");
    size->setAttribute(u"w:h", u"16838");
    auto* margins = appendElement(section, u"w:pgMar");
    for (const auto* side : {u"w:top", u"w:right", u"w:bottom", u"w:left"})
        margins->setAttribute(side, u"1440");
    for (const auto* edge : {u"w:header", u"w:footer"}) margins->setAttribute(edge, u"708");
    margins->setAttribute(u"w:gutter", u"0");
}

void appendText(DOMElement* run, std::u16string_view text)
{
    if (text.empty()) return;
    auto* element = appendElement(run, u"w:t");
    element->setAttribute(u"xml:space", u"preserve");
    element->appendChild(run->getOwnerDocument()->createTextNode(std::u16string(text).c_str()));
}

/// Tabs and line breaks have elements of their own.
void appendRun(DOMElement* paragraph, std::u16string_view text)
{
    auto* run = appendElement(paragraph, u"w:r");
    while (!text.empty()) {
        const auto end = text.find_first_of(u"\t\r\n");
        appendText(run, text.substr(0, end));
        if (end == std::u16string_view::npos) return;
        appendElement(run, text[end] == u'\t' ? u"w:tab" : u"w:br");
        text.remove_prefix(text.substr(end, 2) == u"\r\n" ? end + 2 : end + 1);
    }
}

void appendTextBlock(DOMElement* body, const TextBlock& block)
{
    auto* paragraph = appendElement(body, u"w:p");
    if (block.headingLevel > 0) {
        auto* style = appendElement(appendElement(paragraph, u"w:pPr"), u"w:pStyle");
        style->setAttribute(u"w:val",
                            (u"Heading" + num2str(static_cast<unsigned long>(block.headingLevel))).c_str());
    }
    if (!block.text.empty()) appendRun(paragraph, block.text);
}

/// The package of a document under construction: its main part, and the parts of its charts.
class DocumentWriter {
 public:
    DocumentWriter(std::size_t chartCount, const Listener& listener)
        : chartCount_(chartCount), listener_(listener), main_(createMainDocument())
    {
        body_ = findChild(main_->getDocumentElement(), u"w:body");
    }

    void add(const TextBlock& block) { appendTextBlock(body_, block); }
    void add(const ChartBlock& block);
    std::string finish();

 private:
    void addChart(const ChartBlock& block, std::size_t number);
    void addWorkbook(std::string bytes, const std::string& chartPart, std::size_t number);
    void addFixedParts();

    std::size_t chartCount_;
    const Listener& listener_;
    DocumentPointer main_;
    DOMElement* body_;
    std::size_t done_ = 0;
    PackageWriter package_;
};

void DocumentWriter::add(const ChartBlock& block)
{
    addChart(block, done_ + 1);
    ++done_;
    if (listener_.progress) listener_.progress(done_, chartCount_);
}

void DocumentWriter::addChart(const ChartBlock& block, std::size_t number)
{
    const auto name = "chart" + std::to_string(number);
    const auto part = "word/charts/" + name + ".xml";
    auto written = writeChart(main_.get(), {*block.chart, block.data, block.options, getKind(*block.chart),
                                            number, name, listener_});
    appendElement(body_, u"w:p")->appendChild(written.run);
    package_.addPart(part, std::move(written.chart), content_type::chart);
    package_.relate(mainPart, name, makeRelationshipType("chart"), "charts/" + name + ".xml");
    if (block.options.workbook) addWorkbook(std::move(written.workbook), part, number);
}

void DocumentWriter::addWorkbook(std::string bytes, const std::string& chartPart, std::size_t number)
{
    const auto name = "embeddings/data" + std::to_string(number) + ".xlsx";
    package_.relate(chartPart, workbookRelationshipId, makeRelationshipType("package"), "../" + name);
    package_.addFile("word/" + name, std::move(bytes));
}

void DocumentWriter::addFixedParts()
{
    for (const auto& [name, bytes, type, relationship] : fixedParts) {
        package_.addPart(std::string("word/") + name, bytes, type);
        package_.relate(mainPart, relationship, makeRelationshipType(relationship), name);
    }
    package_.addPart("docProps/core.xml", parts::coreProperties, content_type::coreProperties);
    package_.addPart("docProps/app.xml", parts::extendedProperties, content_type::extendedProperties);
    package_.relate("", "rId1", makeRelationshipType("officeDocument"), mainPart);
    package_.relate("", "rId2", corePropertiesRelationship, "docProps/core.xml");
    package_.relate("", "rId3", makeRelationshipType("extended-properties"), "docProps/app.xml");
}

std::string DocumentWriter::finish()
{
    appendSectionProperties(body_);
    addFixedParts();
    package_.addPart(mainPart, serialise(main_.get()), content_type::mainDocument);
    return package_.toBytes();
}

}  // namespace

struct Document::Content {
    std::vector<Block> blocks;
    std::size_t chartCount = 0;
};

Document::Document() : content_(std::make_unique<Content>()) {}
Document::~Document() = default;
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;

void Document::addHeading(const std::string& text, int level)
{
    if (level < 1 || level > 9)
        throw std::runtime_error("Heading level: expected 1 to 9, got " + std::to_string(level) + ".");
    content_->blocks.emplace_back(TextBlock{readXmlText(text, "Heading"), level});
}

void Document::addParagraph(const std::string& text)
{
    content_->blocks.emplace_back(TextBlock{readXmlText(text, "Paragraph"), 0});
}

void Document::addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options,
                        ChartData data)
{
    if (!chart) throw std::runtime_error("addChart: expected a chart, got an empty handle.");
    checkOptions(options, getKind(*chart));
    readXmlText(options.altText, "alt-text");
    content_->blocks.emplace_back(ChartBlock{std::move(chart), options, std::move(data)});
    ++content_->chartCount;
}

std::string Document::toBytes(const Listener& listener) const
{
    DocumentWriter package(content_->chartCount, listener);
    for (const auto& block : content_->blocks)
        std::visit([&package](const auto& b) { package.add(b); }, block);
    return package.finish();
}

void Document::save(const std::string& path, const Listener& listener) const
{
    writeFile(path, toBytes(listener));
}

}  // namespace quillon::report
