#include "report/document/Document.h"

#include <stdexcept>
#include <utility>
#include <variant>
#include <xercesc/dom/DOM.hpp>

#include "report/document/AppendChart.h"
#include "report/document/FixedParts.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "report/package/Zip.h"
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
};

using Block = std::variant<TextBlock, ChartBlock>;

constexpr auto xmlDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr auto relationshipTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr auto relationshipsNamespace = "http://schemas.openxmlformats.org/package/2006/relationships";

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
    PackageBuilder(std::size_t chartCount, const Listener& listener)
        : chartCount_(chartCount), listener_(listener), main_(createMainDocument())
    {
        body_ = findChild(main_->getDocumentElement(), u"w:body");
    }

    void add(const TextBlock& block) { appendTextBlock(body_, block); }
    void add(const ChartBlock& block);
    std::string finish();

 private:
    void addChart(const ChartBlock& block, std::size_t number);
    void addWorkbook(std::string bytes, const std::string& number);
    void addFixedParts();
    std::string makeContentTypes() const;

    std::size_t chartCount_;
    const Listener& listener_;
    DocumentPointer main_;
    DOMElement* body_;
    std::size_t done_ = 0;
    bool hasWorkbook_ = false;
    std::string chartRelationships_;
    std::vector<Part> parts_;
};

void PackageBuilder::add(const ChartBlock& block)
{
    addChart(block, done_ + 1);
    ++done_;
    if (listener_.progress) listener_.progress(done_, chartCount_);
}

void PackageBuilder::addChart(const ChartBlock& block, std::size_t number)
{
    const auto name = "chart" + std::to_string(number);
    auto parts =
        appendChart(appendElement(body_, u"w:p"), {*block.chart, block.options, number, name, listener_});
    parts_.push_back({"word/charts/" + name + ".xml", std::move(parts.chart)});
    chartRelationships_ += makeRelationship(name, "chart", "charts/" + name + ".xml");
    if (block.options.workbook) addWorkbook(std::move(parts.workbook), std::to_string(number));
}

void PackageBuilder::addWorkbook(std::string bytes, const std::string& number)
{
    hasWorkbook_ = true;
    parts_.push_back({"word/charts/_rels/chart" + number + ".xml.rels",
                      makeRelationships(makeRelationship(workbookRelationshipId, "package",
                                                         "../embeddings/data" + number + ".xlsx"))});
    parts_.push_back({"word/embeddings/data" + number + ".xlsx", std::move(bytes), false});
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

void Document::addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options)
{
    if (!chart) throw std::runtime_error("addChart: expected a chart, got an empty handle.");
    parseLength(options.width);
    parseLength(options.height);
    readXmlText(options.altText, "Alternative text");
    content_->blocks.emplace_back(ChartBlock{std::move(chart), options});
    ++content_->chartCount;
}

std::string Document::toBytes(const Listener& listener) const
{
    PackageBuilder package(content_->chartCount, listener);
    for (const auto& block : content_->blocks)
        std::visit([&package](const auto& b) { package.add(b); }, block);
    return package.finish();
}

void Document::save(const std::string& path, const Listener& listener) const
{
    writeFile(path, toBytes(listener));
}

}  // namespace quillon::report
