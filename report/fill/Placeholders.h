#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "chart/model/Chart.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/Package.h"
#include "support/Export.h"

namespace quillon::report {

/// What a placeholder can become: text anywhere, a chart in the place of a paragraph or a picture, a table in
/// the place of a paragraph.
enum class PlaceholderKind : std::uint8_t { Text, Paragraph, Picture, Table };

/// A name in double braces, `{{margin}}`, in the text of a document or in the alternative text of a picture.
struct Placeholder {
    /// Without the braces; that of a table without "table:".
    std::string name;
    PlaceholderKind kind = PlaceholderKind::Text;
    /// The part that holds it, "word/document.xml".
    std::string part;

    bool operator==(const Placeholder& other) const = default;
};

/// The placeholders of a document, in order: its text, headers, footers and notes, with what stands in
/// tables, text boxes, links, fields and content controls. The two copies of a text box count once.
QUILLON_EXPORT std::vector<Placeholder> findPlaceholders(const Package& document);

/// Replaces a placeholder wherever it stands in text, which takes the look of its first character. Tabs and
/// line ends of `text`, in UTF-8, become those of the document. Returns how many there were.
/// Throws: std::runtime_error with the placeholders that there are when this is none of them.
QUILLON_EXPORT std::size_t replaceText(Package& document, const std::string& name, const std::string& text);

/// Puts a chart wherever the placeholder is alone in a paragraph, as wide as the column or cell unless the
/// options have another width, or is the alternative text of a picture, whose size and place it takes. Its
/// name in the document is that of the placeholder.
/// Throws: as replaceText and makeChartParts.
QUILLON_EXPORT void insertChart(Package& document, const std::string& name, const chart::Chart& chart,
                                const ChartOptions& options = {}, const Listener& listener = {},
                                const ChartData& data = {});

/// Puts a table of the data wherever `{{table:name}}` is alone in a paragraph, in the style that tables of
/// the document have. Throws: as replaceText.
QUILLON_EXPORT void insertTable(Package& document, const std::string& name, const ChartData& data,
                                const ChartOptions& options = {});

}  // namespace quillon::report
