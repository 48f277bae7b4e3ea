#pragma once

#include <memory>
#include <string>

#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/OutputFile.h"
#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

/// A word-processing document made of headings, paragraphs and charts, one below the other.
///
/// Text is UTF-8. Equal content gives equal bytes. Use a document on one thread at a time; different
/// documents may be written on different threads at once.
class QUILLON_EXPORT Document {
 public:
    Document();
    ~Document();
    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;

    /// Level: 1 to 9. Throws: std::runtime_error for another level, and for text that a document cannot hold
    /// (ill-formed UTF-8, control characters other than tab and line break).
    void addHeading(const std::string& text, int level = 1);
    /// Throws: std::runtime_error for text that a document cannot hold.
    void addParagraph(const std::string& text);
    /// Appends a chart, which is written as it is when the document is; the document shares it. `data` is
    /// what the chart's data set cannot say; its own data set is not looked at. Throws: std::runtime_error
    /// for an empty handle, and for an option that does not suit the chart.
    void addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options = {},
                  ChartData data = {});

    /// The whole package, a .docx file.
    /// Throws: std::runtime_error that names the chart, and the series and point, that cannot be written.
    std::string toBytes(const Listener& listener = {}) const;

    /// Writes the package to `path`, beside it first, so that no half-written file is ever found there. A
    /// link stays one, and the file it leads to is replaced; a pipe or a device is written to. Throws: as
    /// toBytes, and FileError.
    void save(const std::string& path, const Listener& listener = {}) const;

 private:
    struct Content;
    std::unique_ptr<Content> content_;
};

}  // namespace quillon::report
