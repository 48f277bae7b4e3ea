#pragma once

#include <string>
#include <utility>

#include "report/document/TableMarkup.h"
#include "report/fill/DocumentText.h"
#include "report/package/Edits.h"
#include "report/package/Package.h"

namespace quillon::report {

/// The style for a new table: that of the first table below `root`, else the usual grid when the document
/// has it; empty otherwise.
std::string findTableStyle(const Package& document, const XmlElement& root);

/// The language of the text at a placeholder: that of its run, else that of the document.
Language findLanguageAt(const Package& document, const ParagraphText& paragraph, const TextMatch& match);

/// The data of a chart as a table of a document: a header row, which is repeated on each page, and a row for
/// each category.
class DataTable {
 public:
    DataTable(const TextTable& table, std::string style, const Language& language)
        : style_(std::move(style)), texts_(writeTexts(table, language))
    {
    }

    /// Puts the table in the place of the paragraph. `main` is the root of the main part.
    void insert(const ParagraphText& paragraph, const TextMatch& match, const XmlElement& main,
                Edits& edits) const;

 private:
    std::string makeMarkup(const ParagraphText& paragraph, const TextMatch& match,
                           const XmlElement& main) const;
    std::string makeRow(std::size_t row, std::int64_t width, const std::string& look, bool isStrict) const;

    std::string style_;
    TableTexts texts_;
};

}  // namespace quillon::report
