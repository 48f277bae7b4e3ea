#include <array>

#include "report/finish/Rules.h"
#include "report/package/Xml.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

template <typename GetText>
void escapeCache(DOMElement* cache, const GetText& getText)
{
    if (cache == nullptr) return;
    std::size_t index = 0;
    for (auto* point : findChildren(cache, u"c:pt")) {
        const std::u16string& text = getText(index++);
        const auto escaped = escapeCharacters(text);
        if (escaped != text) point->getFirstElementChild()->setTextContent(escaped.c_str());
    }
}

/// Characters that XML cannot hold: the caches have a notation for them.
void escapeTexts(ChartPart& part)
{
    const auto& categories = part.context.chart.getDataSet()->getCategories();
    for (const auto& [element, position, series] : part.series) {
        const auto& name = series.getName();
        escapeCache(
            findPath(element, {u"c:tx", u"c:strRef", u"c:strCache"}), [&name](std::size_t) -> const auto& {
                return name;
            });
        escapeCache(
            findPath(element, {u"c:cat", u"c:strRef", u"c:strCache"}),
            [&categories](std::size_t k) -> const auto& { return categories[k]; });
    }
}

constexpr std::array rules = {Rule{allKinds, escapeTexts}};

}  // namespace

const std::span<const Rule> textRules = rules;

}  // namespace quillon::report
