#include "report/table/PartReader.h"

#include <zip.h>

#include <memory>
#include <new>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "support/ForkLock.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

std::string toText(const XMLCh* text)
{
    return toUtf8(text);
}

/// What Xerces says of a part, which may name bytes and texts of it.
std::string describe(const XMLCh* message)
{
    return quoteText(toText(message), 200);
}

/// Hands on what Xerces reads. A document type is refused: no workbook has one, and its entities can grow
/// beyond bounds.
class Adapter : public xercesc::DefaultHandler {
 public:
    explicit Adapter(XmlListener& listener) : listener_(listener) {}

    void startElement(const XMLCh* /*uri*/, const XMLCh* name, const XMLCh* /*qualified*/,
                      const xercesc::Attributes& attributes) override
    {
        attributes_.resize(attributes.getLength());
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i)
            attributes_[i] = {toText(attributes.getLocalName(i)), toText(attributes.getValue(i))};
        listener_.startElement(toText(name), attributes_);
    }
    void endElement(const XMLCh* /*uri*/, const XMLCh* name, const XMLCh* /*qualified*/) override
    {
        listener_.endElement(toText(name));
    }
    void characters(const XMLCh* text, XMLSize_t length) override
    {
        listener_.addText(toUtf8(std::u16string_view(text, length)));
    }
    void startDTD(const XMLCh* /*name*/, const XMLCh* /*publicId*/, const XMLCh* /*systemId*/) override
    {
        fail("it has a document type");
    }
    void fatalError(const xercesc::SAXParseException& error) override
    {
        fail("line {}: {}", error.getLineNumber(), describe(error.getMessage()));
    }

 private:
    XmlListener& listener_;
    std::vector<XmlAttribute> attributes_;
};

}  // namespace

PartReader::PartReader(std::string_view bytes)
{
    zip_error_t error;
    zip_error_init(&error);
    auto* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    archive_ = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error);
    const std::string reason = zip_error_strerror(&error);
    zip_error_fini(&error);
    if (archive_ == nullptr && source != nullptr) zip_source_free(source);
    if (archive_ == nullptr) fail("{}", reason);
}

PartReader::~PartReader()
{
    zip_discard(archive_);
}

bool PartReader::hasPart(const std::string& name) const
{
    return zip_name_locate(archive_, name.c_str(), 0) >= 0;
}

std::string PartReader::read(const std::string& name, std::uint64_t most) const
{
    zip_stat_t status;
    if (zip_stat(archive_, name.c_str(), 0, &status) != 0) fail("the part {} is missing", quoteText(name));
    if (status.size > most) fail("the part {} is larger than {} MB, the most", quoteText(name), most >> 20U);
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> file(zip_fopen(archive_, name.c_str(), 0),
                                                                 &zip_fclose);
    std::string bytes(status.size, '\0');
    if (!file || zip_fread(file.get(), bytes.data(), bytes.size()) != static_cast<zip_int64_t>(bytes.size()))
        fail("the part {} is damaged", quoteText(name));
    return bytes;
}

std::string getAttribute(const std::vector<XmlAttribute>& attributes, const char* name)
{
    for (const auto& attribute : attributes)
        if (attribute.name == name) return attribute.value;
    return {};
}

std::unique_ptr<xercesc::SAX2XMLReader> makeReader()
{
    const ForkLock lock;
    return std::unique_ptr<xercesc::SAX2XMLReader>(xercesc::XMLReaderFactory::createXMLReader());
}

void readXml(const std::string& bytes, XmlListener& listener)
{
    static const struct Platform {
        Platform() { xercesc::XMLPlatformUtils::Initialize(); }
    } platform;
    try {
        const auto reader = makeReader();
        reader->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
        reader->setFeature(xercesc::XMLUni::fgXercesLoadExternalDTD, false);
        reader->setFeature(xercesc::XMLUni::fgXercesDisableDefaultEntityResolution, true);
        Adapter adapter(listener);
        reader->setContentHandler(&adapter);
        reader->setErrorHandler(&adapter);
        reader->setLexicalHandler(&adapter);
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(),
                                                "part");
        reader->parse(source);
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const xercesc::XMLException& error) {
        fail("{}", describe(error.getMessage()));
    }
}

}  // namespace quillon::report
