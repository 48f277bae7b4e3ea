#include "report/package/Edits.h"

#include <algorithm>
#include <stdexcept>

#include "report/package/XmlText.h"

namespace quillon::report {

void Edits::setInner(const XmlElement& element, std::string markup)
{
    const auto size = markup.size();
    setInnerLater(element, size, [markup = std::move(markup)](std::string& text) { text += markup; });
}

void Edits::setInnerLater(const XmlElement& element, std::size_t size, Write write)
{
    if (!element.isEmptyTag()) return edits_.push_back({element.getInner(), {}, std::move(write), size});
    const auto source = element.getSource();
    const std::string name(source.substr(1, source.find_first_of(" \t\r\n/>") - 1));
    const auto end = element.getOuter().end;
    edits_.push_back({{end - 2, end},
                      {},
                      [name, write = std::move(write)](std::string& text) {
                          text += '>';
                          write(text);
                          text += "</" + name + ">";
                      },
                      size + name.size() + 4});
}

void Edits::append(const XmlElement& element, const std::string& markup)
{
    if (element.isEmptyTag()) return setInner(element, markup);
    insert(element.getInner().end, markup);
}

void Edits::setAttribute(const XmlElement& element, std::string_view name, std::string_view value)
{
    if (element.getAttribute(name) == value) return;
    const auto escaped = escapeAttribute(value);
    if (const auto span = element.findAttribute(Ns::None, name)) return replace(*span, escaped);
    const auto tag = element.getSource();
    const auto at = element.getOuter().begin + static_cast<std::uint32_t>(tag.find_first_of(" \t\r\n/>"));
    insert(at, " " + std::string(name) + "=\"" + escaped + "\"");
}

std::string Edits::apply(std::string_view text)
{
    return apply(text, {0, static_cast<std::uint32_t>(text.size())});
}

std::string Edits::apply(std::string_view text, Span stretch)
{
    std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& left, const Edit& right) {
        const bool leftStands = left.span.getSize() != 0;
        const bool rightStands = right.span.getSize() != 0;
        return std::pair(left.span.begin, leftStands) < std::pair(right.span.begin, rightStands);
    });
    std::size_t size = stretch.getSize();
    for (const auto& edit : edits_) size += edit.text.size() + edit.size;
    std::string changed;
    changed.reserve(size);
    auto at = stretch.begin;
    for (auto& edit : edits_) {
        if (edit.span.begin < at || edit.span.end > stretch.end)
            throw std::logic_error("Two changes of a part overlap.");
        changed += text.substr(at, edit.span.begin - at);
        changed += edit.text;
        if (edit.write) edit.write(changed);
        // Large texts are let go one by one, so that they are not there twice.
        edit.text = {};
        at = edit.span.end;
    }
    changed += text.substr(at, stretch.end - at);
    edits_.clear();
    return changed;
}

}  // namespace quillon::report
