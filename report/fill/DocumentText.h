#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report/package/Edits.h"
#include "report/package/Package.h"

namespace quillon::report {

/// The parts that hold running text: the main part, headers, footers and notes, with what people call them.
std::vector<std::pair<std::string, std::string>> findTextParts(const Package& document);

/// A stretch of the text of a paragraph.
struct TextMatch {
    /// What stands in the braces, without blanks around it.
    std::string name;
    /// In the paragraph's text.
    std::size_t begin;
    std::size_t end;
};

/// The text of a paragraph, however many runs hold it.
class ParagraphText {
 public:
    /// A w:t element, and where its text begins in that of the paragraph; false for what is no text.
    struct Piece {
        XmlElement element;
        std::size_t begin;
        std::string text;
        bool isChanged = false;
    };

    explicit ParagraphText(const XmlElement& paragraph);

    const XmlElement& getParagraph() const { return paragraph_; }
    const std::string& getText() const { return text_; }
    const std::vector<Piece>& getPieces() const { return pieces_; }
    std::vector<TextMatch> findPlaceholders() const;
    /// Whether the match is all that the paragraph shows.
    bool isAlone(const TextMatch& match) const;
    /// Whether the paragraph holds nothing but runs of text, so that nothing is lost with it.
    bool isBare() const;
    /// The run in which a match begins.
    XmlElement getRun(const TextMatch& match) const;

    /// Replaces every placeholder `name` by a text; returns how many.
    std::size_t replace(const std::string& name, const std::string& replacement);
    /// Puts what was replaced into the part.
    void write(Edits& edits) const;
    /// Takes the text of a match away.
    void remove(const TextMatch& match, Edits& edits) const;

 private:
    void collect(const XmlElement& parent);
    void replace(const std::vector<TextMatch>& matches, const std::string& replacement);
    void join();

    XmlElement paragraph_;
    std::string text_;
    /// Without the blanks around it.
    std::size_t shownBegin_ = 0;
    std::size_t shownEnd_ = 0;
    std::vector<Piece> pieces_;
};

/// All paragraphs below an element, those in text boxes of paragraphs behind them.
std::vector<XmlElement> findParagraphs(const XmlElement& root);
/// Whether an element stands in the second copy of what there is two of.
bool isInFallback(const XmlElement& element);
/// What stands in double braces when that is all; empty otherwise.
std::string readPlaceholder(std::string_view text);

}  // namespace quillon::report
