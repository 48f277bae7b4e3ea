#include "report/document/PageMarkup.h"

#include <array>
#include <stdexcept>

#include "report/options/Length.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// Twentieths of a point, upright. Source: ISO 216, ANSI Y14.1, as word processors round them.
struct Paper {
    const char* name;
    std::int64_t width;
    std::int64_t height;
};
constexpr std::array papers = {Paper{"A4", 11'906, 16'838}, Paper{"A3", 16'838, 23'811},
                               Paper{"A5", 8'391, 11'906}, Paper{"letter", 12'240, 15'840},
                               Paper{"legal", 12'240, 20'160}};

/// As the setup turns it.
Paper findPaper(const PageSetup& setup)
{
    for (const auto& paper : papers)
        if (setup.paper == paper.name)
            return setup.landscape ? Paper{paper.name, paper.height, paper.width} : paper;
    std::string known;
    for (const auto& paper : papers) known += (known.empty() ? "" : ", ") + std::string(paper.name);
    throw std::runtime_error("paper: expected one of " + known + ", got " + quoteText(setup.paper) + ".");
}

std::int64_t readMargin(const std::string& text, const char* side)
{
    return parseLength(side, text) / emuPerTwip;
}

void setNumber(DOMElement* element, const char16_t* name, std::int64_t number)
{
    element->setAttribute(name, num2str(static_cast<unsigned long>(number)).c_str());
}

}  // namespace

void checkPageSetup(const PageSetup& setup)
{
    const auto paper = findPaper(setup);
    const auto across = readMargin(setup.left, "left margin") + readMargin(setup.right, "right margin");
    const auto down = readMargin(setup.top, "top margin") + readMargin(setup.bottom, "bottom margin");
    if (across * emuPerTwip + emuPerInch > paper.width * emuPerTwip ||
        down * emuPerTwip + emuPerInch > paper.height * emuPerTwip)
        throw std::runtime_error("The margins leave less than an inch of " + setup.paper +
                                 " paper for text.");
}

std::int64_t getTextWidth(const PageSetup& setup)
{
    const auto margins = readMargin(setup.left, "left margin") + readMargin(setup.right, "right margin");
    return (findPaper(setup).width - margins) * emuPerTwip;
}

void appendSection(DOMElement* parent, const PageSetup& setup,
                   const std::vector<PageLineReference>& references)
{
    auto* section = appendElement(parent, u"w:sectPr");
    for (const auto& [name, type, id] : references) {
        auto* reference = appendElement(section, name.c_str());
        reference->setAttribute(u"w:type", type.c_str());
        reference->setAttribute(u"r:id", id.c_str());
    }
    const auto paper = findPaper(setup);
    auto* size = appendElement(section, u"w:pgSz");
    setNumber(size, u"w:w", paper.width);
    setNumber(size, u"w:h", paper.height);
    if (setup.landscape) size->setAttribute(u"w:orient", u"landscape");
    auto* margins = appendElement(section, u"w:pgMar");
    setNumber(margins, u"w:top", readMargin(setup.top, "top margin"));
    setNumber(margins, u"w:right", readMargin(setup.right, "right margin"));
    setNumber(margins, u"w:bottom", readMargin(setup.bottom, "bottom margin"));
    setNumber(margins, u"w:left", readMargin(setup.left, "left margin"));
    for (const auto* edge : {u"w:header", u"w:footer"}) margins->setAttribute(edge, u"708");
    margins->setAttribute(u"w:gutter", u"0");
}

}  // namespace quillon::report
