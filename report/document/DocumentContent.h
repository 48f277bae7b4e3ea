#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "report/document/Blocks.h"
#include "report/document/Styles.h"
#include "report/package/Package.h"

namespace quillon::report {

struct TextBlock {
    TextRuns runs;
    /// The name of a paragraph style, or empty.
    std::string style;
    /// 0 for a paragraph.
    int headingLevel = 0;
};
struct ListBlock {
    std::vector<ListItem> items;
    ListKind kind;
};
struct ChartBlock {
    std::vector<PlacedChart> charts;
};
struct ImageBlock {
    std::string bytes;
    ImageOptions options;
};
struct PageBreakBlock {};
struct ContentsBlock {
    int levels;
};

using Block = std::variant<TextBlock, ListBlock, ChartBlock, Caption, TextTable, ImageBlock, PageBreakBlock,
                           PageSetup, ContentsBlock>;

/// All that a document holds until it is written.
struct DocumentContent {
    std::vector<Block> blocks;
    std::size_t chartCount = 0;
    PageLine header;
    PageLine footer;
    Properties properties;
    /// The document that this one looks like.
    std::optional<Package> look;
};

/// The styles that the document may use.
Styles makeStyles(const DocumentContent& content);

}  // namespace quillon::report
