#include "report/document/Numbering.h"

#include <algorithm>
#include <array>

#include "report/options/PlainNumber.h"
#include "report/package/Edits.h"

namespace quillon::report {
namespace {

constexpr auto emptyPart =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<w:numbering xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"></w:numbering>";

constexpr unsigned levels = 9;
constexpr unsigned indent = 720;

std::string makeLevel(ListKind kind, unsigned level)
{
    constexpr std::array bullets = {"\u2022", "\u25E6", "\u25AA"};
    constexpr std::array formats = {"decimal", "lowerLetter", "lowerRoman"};
    const auto number = std::to_string(level);
    const bool isBullet = kind == ListKind::Bullets;
    const auto text = isBullet ? std::string(bullets[level % 3]) : "%" + std::to_string(level + 1) + ".";
    return R"(<w:lvl w:ilvl=")" + number + R"("><w:start w:val="1"/><w:numFmt w:val=")" +
           (isBullet ? "bullet" : formats[level % 3]) + R"("/><w:lvlText w:val=")" + text +
           R"("/><w:lvlJc w:val="left"/><w:pPr><w:ind w:left=")" + std::to_string(indent * (level + 1)) +
           R"(" w:hanging="360"/></w:pPr></w:lvl>)";
}

std::string makeDefinition(ListKind kind, unsigned id)
{
    auto markup = R"(<w:abstractNum w:abstractNumId=")" + std::to_string(id) +
                  R"("><w:multiLevelType w:val="hybridMultilevel"/>)";
    for (unsigned level = 0; level < levels; ++level) markup += makeLevel(kind, level);
    return markup + "</w:abstractNum>";
}

unsigned readId(const XmlElement& element, std::string_view attribute)
{
    return readPlainNumber<unsigned>(element.getAttribute(Ns::Word, attribute).value_or("")).value_or(0);
}

/// Larger than every id of the part.
unsigned findFreeId(const XmlElement& root)
{
    unsigned last = 0;
    for (const auto child : root.getChildren())
        last = std::max({last, readId(child, "abstractNumId"), readId(child, "numId")});
    return last + 1;
}

}  // namespace

Numbering::Numbering(std::string part) : part_(part.empty() ? emptyPart : std::move(part))
{
    firstId_ = findFreeId(XmlSpans(part_, "the numbering").getRoot());
    lastId_ = firstId_ + 1;
}

std::string Numbering::add(ListKind kind)
{
    auto id = std::to_string(++lastId_);
    const auto definition = std::to_string(firstId_ + (kind == ListKind::Numbers ? 1 : 0));
    numbers_ += R"(<w:num w:numId=")" + id + R"("><w:abstractNumId w:val=")" + definition + R"("/>)";
    if (kind == ListKind::Numbers)
        numbers_ += R"(<w:lvlOverride w:ilvl="0"><w:startOverride w:val="1"/></w:lvlOverride>)";
    numbers_ += "</w:num>";
    return id;
}

std::string Numbering::getPart() const
{
    const XmlSpans xml(part_, "the numbering");
    const auto root = xml.getRoot();
    const auto definitions =
        makeDefinition(ListKind::Bullets, firstId_) + makeDefinition(ListKind::Numbers, firstId_ + 1);
    Edits edits;
    if (root.findPrefix(Ns::Word) != "w:") edits.setAttribute(root, "xmlns:w", getUri(Ns::Word));
    // Definitions stand before all lists.
    const auto first = root.findChild("num");
    if (first)
        edits.insert(first.getOuter().begin, definitions);
    else
        edits.append(root, definitions);
    edits.append(root, numbers_);
    return edits.apply(xml);
}

}  // namespace quillon::report
