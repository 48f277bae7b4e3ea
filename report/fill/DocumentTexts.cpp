#include "report/fill/DocumentTexts.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/package/Edits.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

/// What stands between the braces.
std::string getText(const Placeholder& placeholder)
{
    return (placeholder.kind == PlaceholderKind::Table ? std::string(tablePrefix) : "") + placeholder.name;
}

std::string showBraces(const std::string& text)
{
    return "{{" + showText(text) + "}}";
}

/// All placeholders of a part as it is now, in order.
std::vector<Spot> findSpots(const std::vector<std::shared_ptr<const ParagraphText>>& paragraphs,
                            const std::vector<Spot>& pictures)
{
    auto spots = pictures;
    for (const auto& paragraph : paragraphs) appendTextSpots(spots, paragraph);
    std::ranges::stable_sort(spots, {}, &Spot::getPosition);
    return spots;
}

}  // namespace

TextPart::TextPart(const Package& document, const std::string& part)
    : bytes(document.getPart(part)), xml(bytes, part)
{
    for (const auto& element : findParagraphs(xml.getRoot())) {
        auto paragraph = std::make_shared<const ParagraphText>(element);
        if (!paragraph->findPlaceholders().empty()) paragraphs.push_back(std::move(paragraph));
    }
    appendPictureSpots(pictures, xml.getRoot());
}

DocumentTexts::Draft& DocumentTexts::getDraft(const Package& document, const std::string& part)
{
    auto& draft = drafts_[part];
    if (!draft.part) {
        draft.part = read_(document, part);
        draft.paragraphs = draft.part->paragraphs;
    }
    return draft;
}

std::vector<Placeholder> DocumentTexts::findPlaceholders(const Package& document)
{
    std::vector<Placeholder> found;
    for (const auto& [part, place] : findTextParts(document)) {
        std::set<std::pair<std::string, PlaceholderKind>> known;
        const auto& draft = getDraft(document, part);
        for (const auto& spot : findSpots(draft.paragraphs, draft.part->pictures)) {
            if (isInFallback(spot.getElement()) || !known.emplace(spot.name, spot.kind).second) continue;
            found.push_back({spot.name, spot.kind, part});
        }
    }
    return found;
}

void DocumentTexts::failMissing(const Package& document, const Placeholder& wanted, const std::string& reason)
{
    constexpr std::size_t named = 20;
    std::string list;
    std::vector<std::string> texts;
    for (const auto& placeholder : findPlaceholders(document)) {
        if (placeholder.name == wanted.name)
            throw std::runtime_error("Placeholder " + showBraces(wanted.name) + ": " + reason);
        const auto text = getText(placeholder);
        if (std::ranges::find(texts, text) != texts.end()) continue;
        texts.push_back(text);
        if (texts.size() <= named) list += (list.empty() ? "" : ", ") + showBraces(text);
    }
    if (texts.size() > named) list += " and " + std::to_string(texts.size() - named) + " more";
    const auto near = findNearName(getText(wanted), texts);
    throw MissingPlaceholder("There is no placeholder " + showBraces(getText(wanted)) +
                             (near.empty() ? "; the" : "; did you mean " + showBraces(near) + "? The") +
                             " document has " + (list.empty() ? "none" : list) + ".");
}

std::size_t DocumentTexts::replace(const Package& document, const std::string& name, const std::string& text)
{
    static_cast<void>(readXmlText(text, "{{" + name + "}}"));
    // What cannot be read ends it before anything is replaced.
    std::vector<Draft*> drafts;
    for (const auto& [part, place] : findTextParts(document))
        // Cheap to search, which most parts do not survive.
        if (document.getPart(part).find('{') != std::string::npos)
            drafts.push_back(&getDraft(document, part));
    std::size_t count = 0;
    for (auto* draft : drafts) count += replace(*draft, name, text);
    if (count == 0)
        failMissing(document, {name}, "it is a picture or a table; expected one in running text.");
    return count;
}

std::size_t DocumentTexts::replace(Draft& draft, const std::string& name, const std::string& text)
{
    std::size_t count = 0;
    for (auto& paragraph : draft.paragraphs) {
        ParagraphText changed = *paragraph;
        const auto replaced = changed.replace(name, text);
        if (replaced == 0) continue;
        draft.isChanged = true;
        if (!isInFallback(paragraph->getParagraph())) count += replaced;
        paragraph = std::make_shared<const ParagraphText>(std::move(changed));
    }
    return count;
}

bool DocumentTexts::save(Package& document)
{
    bool isSaved = false;
    for (auto& [part, draft] : drafts_) {
        if (!std::exchange(draft.isChanged, false)) continue;
        isSaved = true;
        Edits edits;
        for (const auto& paragraph : draft.paragraphs) paragraph->write(edits);
        document.setPart(part, edits.apply(draft.part->xml));
    }
    return isSaved;
}

}  // namespace quillon::report
