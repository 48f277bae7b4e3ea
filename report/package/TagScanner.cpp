#include "report/package/TagScanner.h"

#include <string>

#include "report/package/XmlText.h"

namespace quillon::report {

std::optional<Tag> TagScanner::next()
{
    while (true) {
        const auto begin = text_.find('<', at_);
        if (begin >= end_) return {};
        std::string passedOver;
        at_ = static_cast<std::uint32_t>(skipMarkup(passedOver, text_, begin));
        if (text_[begin + 1] == '!' || text_[begin + 1] == '?') continue;
        const bool isEnd = text_[begin + 1] == '/';
        const auto start = begin + (isEnd ? 2 : 1);
        const auto name = text_.substr(start, text_.find_first_of(" \t\r\n/>", start) - start);
        const auto colon = name.find(':');
        return Tag{{static_cast<std::uint32_t>(begin), at_},
                   name.substr(colon == std::string_view::npos ? 0 : colon + 1),
                   isEnd,
                   text_[at_ - 2] == '/'};
    }
}

std::optional<Span> TagScanner::findAttribute(const Tag& tag, std::string_view name) const
{
    std::optional<Span> span;
    visitAttributes(text_.substr(tag.span.begin, tag.span.getSize()), [&](const Attribute& attribute) {
        if (attribute.name != name) return false;
        span = Span{tag.span.begin + static_cast<std::uint32_t>(attribute.begin),
                    tag.span.begin + static_cast<std::uint32_t>(attribute.end)};
        return true;
    });
    return span;
}

}  // namespace quillon::report
