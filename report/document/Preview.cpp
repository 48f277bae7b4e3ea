#include "report/document/Preview.h"

#include <utility>

#include "report/document/AppendChart.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "report/package/Zip.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

constexpr std::int64_t emuPerTwip = 635;
constexpr std::int64_t twipsPerInch = 1440;

struct PartRow {
    const char16_t* name;
    const char16_t* contentType;
};

constexpr PartRow mainPart = {
    u"/document.xml", u"application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"};
constexpr PartRow chartPart = {u"/chart.xml",
                               u"application/vnd.openxmlformats-officedocument.drawingml.chart+xml"};
constexpr auto chartId = "chart";

DOMElement* appendRoot(xercesc::DOMDocument* doc, const char16_t* name)
{
    auto* root = doc->createElement(name);
    doc->appendChild(root);
    return root;
}

void setTwips(DOMElement* element, const char16_t* name, std::int64_t twips)
{
    element->setAttribute(name, num2str(static_cast<unsigned long>(twips)).c_str());
}

void appendPage(DOMElement* body, const Preview& preview)
{
    auto* section = appendElement(body, u"w:sectPr");
    auto* size = appendElement(section, u"w:pgSz");
    setTwips(size, u"w:w", preview.width / emuPerTwip);
    setTwips(size, u"w:h", preview.height / emuPerTwip + twipsPerInch);
    auto* margins = appendElement(section, u"w:pgMar");
    for (const auto* side :
         {u"w:top", u"w:right", u"w:bottom", u"w:left", u"w:header", u"w:footer", u"w:gutter"})
        setTwips(margins, side, 0);
}

std::string makeContentTypes()
{
    const auto doc = createDocument();
    auto* root = appendRoot(doc.get(), u"Types");
    root->setAttribute(u"xmlns", u"http://schemas.openxmlformats.org/package/2006/content-types");
    auto* relationships = appendElement(root, u"Default");
    relationships->setAttribute(u"Extension", u"rels");
    relationships->setAttribute(u"ContentType", u"application/vnd.openxmlformats-package.relationships+xml");
    for (const auto& part : {mainPart, chartPart}) {
        auto* override = appendElement(root, u"Override");
        override->setAttribute(u"PartName", part.name);
        override->setAttribute(u"ContentType", part.contentType);
    }
    return serialise(doc.get());
}

std::string makeRelationship(const char* id, const char16_t* type, const PartRow& target)
{
    const auto doc = createDocument();
    auto* root = appendRoot(doc.get(), u"Relationships");
    root->setAttribute(u"xmlns", u"http://schemas.openxmlformats.org/package/2006/relationships");
    auto* relationship = appendElement(root, u"Relationship");
    relationship->setAttribute(u"Id", toUtf16(id).c_str());
    relationship->setAttribute(u"Type", type);
    relationship->setAttribute(u"Target", target.name);
    return serialise(doc.get());
}

}  // namespace

Preview makePreview(const chart::Chart& chart, const ChartOptions& options, const Listener& listener)
{
    auto bare = options;
    bare.workbook = false;
    Preview preview{{}, parseLength(options.width), parseLength(options.height)};
    const auto doc = createDocument();
    auto* root = appendRoot(doc.get(), u"w:document");
    declareNamespaces(root);
    auto* body = appendElement(root, u"w:body");
    auto parts = appendChart(appendElement(body, u"w:p"), {chart, bare, 1, chartId, listener});
    appendPage(body, preview);
    preview.document =
        zipParts({{"[Content_Types].xml", makeContentTypes()},
                  {"_rels/.rels",
                   makeRelationship(
                       "document",
                       u"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument",
                       mainPart)},
                  {"document.xml", serialise(doc.get())},
                  {"_rels/document.xml.rels",
                   makeRelationship(
                       chartId, u"http://schemas.openxmlformats.org/officeDocument/2006/relationships/chart",
                       chartPart)},
                  {"chart.xml", std::move(parts.chart)}});
    return preview;
}

}  // namespace quillon::report
