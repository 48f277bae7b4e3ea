#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "report/fill/DocumentText.h"
#include "report/fill/Placeholder.h"
#include "report/fill/PlaceholderSpots.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"
#include "support/Export.h"

namespace quillon::report {

/// There is no placeholder of that name.
class MissingPlaceholder : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// What a part with running text holds of placeholders. Threads may share it.
struct QUILLON_EXPORT TextPart {
    TextPart(const Package& document, const std::string& part);

    std::string bytes;
    XmlSpans xml;
    /// Those with placeholders.
    std::vector<std::shared_ptr<const ParagraphText>> paragraphs;
    /// Pictures whose alternative text is one.
    std::vector<Spot> pictures;
};

/// The running text of a document, in which placeholders are replaced: each part is read once, however many
/// are, and written once.
class QUILLON_EXPORT DocumentTexts {
 public:
    /// Reads a part of a document, or has read it already.
    using Read = std::function<std::shared_ptr<const TextPart>(const Package&, const std::string&)>;

    DocumentTexts() = default;
    explicit DocumentTexts(Read read) : read_(std::move(read)) {}

    /// The placeholders in order: text, headers, footers and notes, with what stands in tables, text boxes,
    /// links, fields and content controls. The two copies of a text box count once.
    std::vector<Placeholder> findPlaceholders(const Package& document);
    /// Replaces a placeholder wherever it stands in text, which takes the look of its first character. Tabs
    /// and line ends of `text`, in UTF-8, become those of the document. Returns how many there were.
    /// Throws: std::runtime_error when there is none such, or `text` has characters that no document can
    /// hold.
    std::size_t replace(const Package& document, const std::string& name, const std::string& text);
    /// Says that a placeholder is missing, or stands where it cannot become what it should, with those that
    /// there are. Throws: MissingPlaceholder, or std::runtime_error, always.
    [[noreturn]] void failMissing(const Package& document, const Placeholder& wanted,
                                  const std::string& reason);
    /// Puts what was replaced into the document; returns whether there was anything.
    bool save(Package& document);
    /// Comes after other changes to the document, and after save.
    void forget() { drafts_.clear(); }

 private:
    struct Draft {
        std::shared_ptr<const TextPart> part;
        std::vector<std::shared_ptr<const ParagraphText>> paragraphs;
        bool isChanged = false;
    };

    Draft& getDraft(const Package& document, const std::string& part);
    static std::size_t replace(Draft& draft, const std::string& name, const std::string& text);

    Read read_ = [](const Package& document, const std::string& part) {
        return std::make_shared<const TextPart>(document, part);
    };
    std::map<std::string, Draft> drafts_;
};

}  // namespace quillon::report
