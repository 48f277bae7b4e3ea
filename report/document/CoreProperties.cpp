#include "report/document/CoreProperties.h"

#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

std::string makeCoreProperties(const Properties& properties)
{
    const auto doc = createDocument();
    doc->setXmlStandalone(true);
    auto* root = doc->createElement(u"cp:coreProperties");
    root->setAttribute(u"xmlns:cp",
                       u"http://schemas.openxmlformats.org/package/2006/metadata/core-properties");
    root->setAttribute(u"xmlns:dc", u"http://purl.org/dc/elements/1.1/");
    doc->appendChild(root);
    const auto add = [root](const char16_t* name, const std::string& text) {
        if (!text.empty()) appendTextElement(root, name, toUtf16(text));
    };
    add(u"dc:title", properties.title);
    add(u"dc:creator", properties.author.empty() ? "quillon-report" : properties.author);
    add(u"cp:keywords", properties.keywords);
    add(u"dc:language", properties.language);
    return serialise(doc.get());
}

}  // namespace quillon::report
