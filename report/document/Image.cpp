#include "report/document/Image.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "report/options/Length.h"
#include "report/package/PackageWriter.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

constexpr double defaultDots = 96;
constexpr std::string_view pngMark = "\x89PNG\r\n\x1A\n";
constexpr std::string_view jpegMark = "\xFF\xD8\xFF";
constexpr auto drawingNamespace = u"http://schemas.openxmlformats.org/drawingml/2006/main";
constexpr auto pictureNamespace = u"http://schemas.openxmlformats.org/drawingml/2006/picture";

[[noreturn]] void refuseDamaged(const char* type)
{
    throw std::runtime_error(std::string("Image: the ") + type + " file is damaged.");
}

/// Big-endian; 0 past the end.
std::uint32_t readNumber(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8 | (at + i < bytes.size() ? static_cast<unsigned char>(bytes[at + i]) : 0U);
    return number;
}

struct Picture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    double dotsAcross = defaultDots;
    double dotsDown = defaultDots;
};

void setDots(Picture& picture, double across, double down)
{
    if (!(across >= 1) || !(down >= 1)) return;
    picture.dotsAcross = across;
    picture.dotsDown = down;
}

/// Chunks: four bytes of length, four of type, the content, four of checksum.
Picture readPng(std::string_view bytes)
{
    constexpr double metresPerInch = 0.0254;
    Picture picture;
    for (std::size_t at = pngMark.size(); at + 8 <= bytes.size();) {
        const auto size = readNumber(bytes, at, 4);
        const auto type = bytes.substr(at + 4, 4);
        if (type == "IHDR") {
            picture.width = readNumber(bytes, at + 8, 4);
            picture.height = readNumber(bytes, at + 12, 4);
        }
        if (type == "pHYs" && readNumber(bytes, at + 16, 1) == 1)
            setDots(picture, readNumber(bytes, at + 8, 4) * metresPerInch,
                    readNumber(bytes, at + 12, 4) * metresPerInch);
        if (type == "IDAT") break;
        at += std::size_t{12} + size;
    }
    return picture;
}

/// Whether a segment of that marker holds the size: a start of frame, apart from three markers among them.
bool isFrame(std::uint32_t marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

/// Segments: 0xFF and a marker, two bytes of length that count themselves, the content.
Picture readJpeg(std::string_view bytes)
{
    constexpr double centimetresPerInch = 2.54;
    Picture picture;
    for (std::size_t at = 2; at + 4 <= bytes.size();) {
        if (readNumber(bytes, at, 1) != 0xFF) break;
        const auto marker = readNumber(bytes, at + 1, 1);
        if (marker == 0xFF) {
            ++at;
            continue;
        }
        if (isFrame(marker)) {
            picture.height = readNumber(bytes, at + 5, 2);
            picture.width = readNumber(bytes, at + 7, 2);
            break;
        }
        if (marker == 0xE0 && bytes.substr(at + 4, 4) == "JFIF") {
            const double unit = readNumber(bytes, at + 11, 1) == 2 ? centimetresPerInch : 1;
            if (readNumber(bytes, at + 11, 1) != 0)
                setDots(picture, readNumber(bytes, at + 12, 2) * unit, readNumber(bytes, at + 14, 2) * unit);
        }
        at += 2 + std::max<std::size_t>(readNumber(bytes, at + 2, 2), 2);
    }
    return picture;
}

struct Size {
    std::int64_t width;
    std::int64_t height;
};

/// One length alone keeps the proportions.
Size chooseSize(const ImageInfo& info, const ImageOptions& options, std::int64_t textWidth)
{
    const auto ratio = static_cast<double>(info.height) / static_cast<double>(info.width);
    if (!options.width.empty() && !options.height.empty())
        return {parseLength(options.width), parseLength(options.height)};
    if (!options.height.empty()) {
        const auto height = parseLength(options.height);
        return {std::llround(static_cast<double>(height) / ratio), height};
    }
    const auto width = options.width.empty() ? std::min(info.width, textWidth) : parseLength(options.width);
    return {width, std::max<std::int64_t>(std::llround(static_cast<double>(width) * ratio), 1)};
}

void setSize(DOMElement* element, const Size& size)
{
    element->setAttribute(u"cx", num2str(static_cast<unsigned long>(size.width)).c_str());
    element->setAttribute(u"cy", num2str(static_cast<unsigned long>(size.height)).c_str());
}

void appendPicture(DOMElement* data, const Size& size, const std::u16string& relationshipId)
{
    auto* picture = appendElement(data, u"pic:pic");
    picture->setAttribute(u"xmlns:pic", pictureNamespace);
    auto* names = appendElement(picture, u"pic:nvPicPr");
    auto* name = appendElement(names, u"pic:cNvPr");
    name->setAttribute(u"id", u"0");
    name->setAttribute(u"name", u"Picture");
    appendElement(names, u"pic:cNvPicPr");
    auto* fill = appendElement(picture, u"pic:blipFill");
    appendElement(fill, u"a:blip")->setAttribute(u"r:embed", relationshipId.c_str());
    appendElement(appendElement(fill, u"a:stretch"), u"a:fillRect");
    auto* shape = appendElement(picture, u"pic:spPr");
    auto* transform = appendElement(shape, u"a:xfrm");
    auto* offset = appendElement(transform, u"a:off");
    offset->setAttribute(u"x", u"0");
    offset->setAttribute(u"y", u"0");
    setSize(appendElement(transform, u"a:ext"), size);
    auto* geometry = appendElement(shape, u"a:prstGeom");
    geometry->setAttribute(u"prst", u"rect");
    appendElement(geometry, u"a:avLst");
}

}  // namespace

ImageInfo readImageInfo(const std::string& bytes)
{
    const bool isPng = bytes.starts_with(pngMark);
    if (!isPng && !bytes.starts_with(jpegMark))
        throw std::runtime_error("Image: expected the bytes of a PNG or JPEG file.");
    const auto picture = isPng ? readPng(bytes) : readJpeg(bytes);
    if (picture.width == 0 || picture.height == 0) refuseDamaged(isPng ? "PNG" : "JPEG");
    return {isPng ? "png" : "jpeg", isPng ? content_type::png : content_type::jpeg,
            std::llround(picture.width / picture.dotsAcross * emuPerInch),
            std::llround(picture.height / picture.dotsDown * emuPerInch)};
}

void appendImage(DOMElement* run, const ImageInfo& info, const ImageOptions& options, const ImagePlace& place)
{
    const auto size = chooseSize(info, options, place.textWidth);
    const auto number = num2str(static_cast<unsigned long>(place.number));
    auto* drawing = appendElement(appendElement(run, u"w:drawing"), u"wp:inline");
    for (const auto* side : {u"distT", u"distB", u"distL", u"distR"}) drawing->setAttribute(side, u"0");
    setSize(appendElement(drawing, u"wp:extent"), size);
    auto* properties = appendElement(drawing, u"wp:docPr");
    properties->setAttribute(u"id", number.c_str());
    properties->setAttribute(u"name", (u"Picture " + number).c_str());
    properties->setAttribute(u"descr", toUtf16(options.altText).c_str());
    appendElement(drawing, u"wp:cNvGraphicFramePr");
    auto* graphic = appendElement(drawing, u"a:graphic");
    graphic->setAttribute(u"xmlns:a", drawingNamespace);
    auto* data = appendElement(graphic, u"a:graphicData");
    data->setAttribute(u"uri", pictureNamespace);
    appendPicture(data, size, place.relationshipId);
}

}  // namespace quillon::report
