#include "report/document/Preview.h"

#include <utility>

#include "report/document/ChartWriting.h"
#include "report/options/ChartKind.h"
#include "report/options/Length.h"
#include "report/package/PackageWriter.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

constexpr auto mainPart = "document.xml";
constexpr auto chartPart = "chart.xml";

void setTwips(DOMElement* element, const char16_t* name, std::int64_t twips)
{
    element->setAttribute(name, num2str(static_cast<unsigned long>(twips)).c_str());
}

void appendPage(DOMElement* body, const Preview& preview)
{
    auto* section = appendElement(body, u"w:sectPr");
    auto* size = appendElement(section, u"w:pgSz");
    setTwips(size, u"w:w", preview.width / emuPerTwip);
    setTwips(size, u"w:h", (preview.height + emuPerInch) / emuPerTwip);
    auto* margins = appendElement(section, u"w:pgMar");
    for (const auto* side :
         {u"w:top", u"w:right", u"w:bottom", u"w:left", u"w:header", u"w:footer", u"w:gutter"})
        setTwips(margins, side, 0);
}

}  // namespace

Preview makePreview(const chart::Chart& chart, const ChartOptions& options, const Listener& listener,
                    const ChartData& data)
{
    auto bare = withSize(options);
    bare.workbook = false;
    Preview preview{{}, parseLength(bare.width), parseLength(bare.height)};
    const auto doc = createDocument();
    auto* root = doc->createElement(u"w:document");
    doc->appendChild(root);
    declareNamespaces(root);
    auto* body = appendElement(root, u"w:body");
    PackageWriter package;
    package.relate("", "officeDocument", mainPart);
    const auto id = package.relate(mainPart, "chart", chartPart);
    auto written = writeChart(doc.get(), {chart, data, bare, getKind(chart, options), 1, id, listener});
    appendElement(body, u"w:p")->appendChild(written.run);
    appendPage(body, preview);
    package.addPart(mainPart, serialise(doc.get()), content_type::mainDocument);
    package.addPart(chartPart, std::move(written.chart), content_type::chart);
    preview.document = package.toBytes();
    return preview;
}

}  // namespace quillon::report
