#include "report/document/Styles.h"

#include <stdexcept>
#include <utility>

#include "report/document/FixedParts.h"
#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/package/Edits.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

std::string getName(const XmlElement& style)
{
    return style.findChild("name").getAttribute(Ns::Word, "val").value_or("");
}

/// In twentieths of a point.
std::vector<std::int64_t> readTabStops(const XmlElement& style)
{
    std::vector<std::int64_t> stops;
    const auto tabs = style.findPath({"pPr", "tabs"});
    if (!tabs) return stops;
    for (const auto tab : tabs.getChildren()) {
        const auto text = tab.getAttribute(Ns::Word, "pos").value_or("");
        if (const auto position = readPlainNumber<std::int64_t>(text)) stops.push_back(*position);
    }
    return stops;
}

/// The element that tells the language of all texts, or none.
XmlElement findLanguageElement(const XmlSpans& styles)
{
    return styles.getRoot().findPath({"docDefaults", "rPrDefault", "rPr", "lang"});
}

}  // namespace

Styles::Styles() : part_(parts::styles) {}

void Styles::read(Table& table, const std::string& part, bool isOwn)
{
    const XmlSpans xml(part, "the styles");
    for (const auto style : xml.getRoot().getChildren()) {
        if (!style.is(Ns::Word, "style")) continue;
        const auto kind = style.getAttribute(Ns::Word, "type").value_or("paragraph");
        table.try_emplace({kind, toLower(getName(style))},
                          Style{style.getAttribute(Ns::Word, "styleId").value_or(""),
                                isOwn ? "" : std::string(style.getSource()), readTabStops(style)});
    }
}

Styles::Table& Styles::getTable() const
{
    static const Table further = [] {
        Table table;
        read(table, parts::styles, false);
        read(table, parts::furtherStyles, false);
        return table;
    }();
    if (table_.empty()) {
        read(table_, part_, true);
        table_.insert(further.begin(), further.end());
    }
    return table_;
}

bool Styles::has(std::string_view kind, std::string_view name) const
{
    return getTable().contains({std::string(kind), toLower(name)});
}

std::u16string Styles::use(std::string_view kind, std::string_view name)
{
    auto& table = getTable();
    const auto found = table.find({std::string(kind), toLower(name)});
    if (found == table.end()) {
        std::string known;
        for (const auto& [key, style] : table)
            if (key.first == kind) known += (known.empty() ? "" : ", ") + key.second;
        throw std::runtime_error("There is no " + std::string(kind) + " style " + quoteText(name) +
                                 "; the styles are " + showText(known, 2000) + ".");
    }
    added_ += std::exchange(found->second.markup, "");
    return toUtf16(found->second.id);
}

std::vector<std::int64_t> Styles::getTabStops(std::string_view name) const
{
    const auto found = getTable().find({"paragraph", toLower(name)});
    return found == getTable().end() ? std::vector<std::int64_t>() : found->second.tabStops;
}

std::string Styles::getLanguage() const
{
    if (!language_.empty()) return language_;
    const XmlSpans xml(part_, "the styles");
    return findLanguageElement(xml).getAttribute(Ns::Word, "val").value_or("");
}

void Styles::setLanguage(const std::string& language)
{
    language_ = language;
}

std::string Styles::getPart() const
{
    if (added_.empty() && language_.empty()) return part_;
    const XmlSpans xml(part_, "the styles");
    Edits edits;
    const auto root = xml.getRoot();
    if (!language_.empty())
        if (const auto lang = findLanguageElement(xml))
            if (const auto value = lang.findAttribute(Ns::Word, "val"))
                edits.replace(*value, escapeAttribute(language_));
    if (!added_.empty()) {
        if (root.findPrefix(Ns::Word) != "w:") edits.setAttribute(root, "xmlns:w", getUri(Ns::Word));
        edits.append(root, added_);
    }
    return edits.apply(xml);
}

}  // namespace quillon::report
