#pragma once

#include <string>
#include <vector>

#include "report/fill/DocumentText.h"
#include "report/fill/FillReport.h"
#include "report/options/ChartData.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The style for a new table: that of the first table below `root`, else the usual grid when the document
/// has it; empty otherwise.
std::string findTableStyle(const Package& document, const XmlElement& root);

/// The data of a chart as a table of a document: a header row, which is repeated on each page, and a row for
/// each category.
class DataTable {
 public:
    DataTable(const ChartData& data, const TableFormats& formats, std::string style);

    /// Puts the table in the place of the paragraph. `main` is the root of the main part.
    void insert(const ParagraphText& paragraph, const TextMatch& match, const XmlElement& main,
                Edits& edits) const;

 private:
    struct Column {
        bool isNumber;
        /// The header first.
        std::vector<std::string> texts;
    };

    void addCategories(const ChartData& data, const TableFormats& formats);
    void addSeries(const ChartData& data, std::size_t index, const TableFormats& formats);
    std::string makeMarkup(const ParagraphText& paragraph, const TextMatch& match,
                           const XmlElement& main) const;
    std::string makeRow(std::size_t row, std::int64_t width, const std::string& look, bool isStrict) const;

    std::string style_;
    std::vector<Column> columns_;
    std::size_t rowCount_ = 1;
};

}  // namespace quillon::report
