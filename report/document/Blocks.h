#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

/// What the blocks of a document are made of. Text is UTF-8; lengths have a unit (cm, mm, in, pt).
namespace quillon::report {

/// A stretch of text of one look.
struct TextRun {
    std::string text = {};
    bool bold = false;
    bool italic = false;
    /// An address that the text leads to. Default: empty, no link.
    std::string link = {};
    /// The name of a caption: its label and number, "Figure 2", stand in place of the text and lead to it.
    std::string reference = {};
};

using TextRuns = std::vector<TextRun>;

/// An item of a list. Level: 0 to 8, how far it is indented.
struct ListItem {
    TextRuns runs = {};
    unsigned level = 0;
};

enum class ListKind : std::uint8_t { Bullets, Numbers };

/// The number and words above a table or below a figure. It stays on the page of what it belongs to: the
/// chart or image before it, or else the table after it.
struct Caption {
    std::string text = {};
    /// What is counted, "Figure 1", "Figure 2"; each label counts for itself. Default: empty, "Table" above a
    /// table and "Figure" elsewhere, in the language of the document.
    std::string label = {};
    /// For references to it; letters, digits and "_", at most 40. Default: empty, none.
    std::string name = {};
};

/// A cell of a table: a text, or a number, which stands as the language of the document writes it.
struct TableCell {
    TableCell() = default;
    // NOLINTBEGIN(google-explicit-constructor): rows of cells read as lists of texts and numbers.
    TableCell(std::string content) : text(std::move(content)) {}
    TableCell(const char* content) : text(content) {}
    template <typename Number>
    requires std::is_arithmetic_v<Number> TableCell(Number value, std::string numberFormat = {})
        : number(static_cast<double>(value)), format(std::move(numberFormat))
    {
    }
    // NOLINTEND(google-explicit-constructor)

    bool operator==(const TableCell& other) const = default;

    std::string text = {};
    /// In place of the text. One that is not finite leaves the cell empty.
    std::optional<double> number = {};
    /// Of the number, as in a cell of a worksheet: "#,##0.00". Default, empty: all digits that it has.
    std::string format = {};
    /// Whether the number is a date: days since 30 December 1899, with the time of day as fraction. Without a
    /// format it stands as the language orders day, month and year.
    bool isDate = false;
};

/// A table of texts and numbers. Numbers, and texts that look like some, are set to the right.
struct TextTable {
    /// The header row, which is repeated on each page.
    std::vector<std::string> columns = {};
    /// As many cells in each as there are columns.
    std::vector<std::vector<TableCell>> rows = {};
    /// By column; default: as wide as their texts need.
    std::vector<std::string> widths = {};
    /// The name of a table style. Default: the document's own look for tables.
    std::string style = {};
};

/// The table of a chart's data: a column for each level of categories, or one of X where there are none, and
/// one for each series, with its sizes behind it. `header` stands above the categories; default: their
/// names in the data. Of the options it takes the formats of numbers and categories, before those of the
/// data.
QUILLON_EXPORT TextTable makeTable(const ChartData& data, const std::string& header = {},
                                   const ChartOptions& options = {});

/// How a picture stands in the document.
struct ImageOptions {
    /// Default: the picture's own size at its resolution (96 dots an inch where it says none), at most as
    /// wide as the text. One length alone keeps the proportions.
    std::string width = {};
    std::string height = {};
    /// What a screen reader says.
    std::string altText = {};
};

/// A chart with its options, for several that stand side by side.
struct PlacedChart {
    std::shared_ptr<const chart::Chart> chart;
    ChartOptions options = {};
    ChartData data = {};
};

/// The pages of a section.
struct PageSetup {
    /// "A3", "A4", "A5", "letter" or "legal".
    std::string paper = "A4";
    bool landscape = false;
    std::string top = "1in";
    std::string right = "1in";
    std::string bottom = "1in";
    std::string left = "1in";
};

/// A line at the top or bottom of each page. In its texts "{page}" stands for the number of the page and
/// "{pages}" for how many there are; a tab goes to the middle, a second one to the right.
struct PageLine {
    TextRuns runs = {};
};

/// What the document says of itself. Default: empty, nothing.
struct Properties {
    std::string title = {};
    std::string author = {};
    std::string keywords = {};
    /// The language of the texts, as in "de-DE", for spelling marks and screen readers; tables have its
    /// decimal marks and its order of dates, and captions its words, or those of English where it is not
    /// among the European ones that are known. Default: "en-US", or the template's.
    std::string language = {};
};

}  // namespace quillon::report
