#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

/// Where the legend of a chart stands. Automatic: below a pie and below several series, nowhere otherwise.
enum class Legend { Automatic, None, Right, Top, Left, Bottom };

/// How a chart stands in its document.
struct ChartOptions {
    /// Lengths with a unit (cm, mm, in, pt), 0.1 to 22 inches. Default: 6in by 3.5in.
    std::string width = "6in";
    std::string height = "3.5in";
    Legend legend = Legend::Automatic;
    /// What a screen reader says. Default, for an empty text: made from type, title, series and range of the
    /// data.
    std::string altText = {};
    /// Whether the document carries the chart's data as an embedded workbook, for editing in a word
    /// processor.
    bool workbook = true;
};

/// Says that a file cannot be written: the path, and the reason.
class QUILLON_EXPORT FileError : public std::runtime_error {
 public:
    /// Number: as in errno.
    FileError(const std::string& path, int number);
    int getNumber() const noexcept { return number_; }

 private:
    int number_;
};

/// A word-processing document made of headings, paragraphs and charts, one below the other.
///
/// Text is UTF-8. Equal content gives equal bytes. Use a document on one thread at a time; different
/// documents may be written on different threads at once.
class QUILLON_EXPORT Document {
 public:
    /// Called while the document is written, with the number of charts done and of all charts.
    using Progress = std::function<void(std::size_t done, std::size_t total)>;
    /// Called with a sentence on something in a chart that was replaced so that the document stays valid.
    using Warning = std::function<void(const std::string& sentence)>;

    Document();
    ~Document();
    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;

    /// Level: 1 to 9. Throws: std::runtime_error for another level, and for text that a document cannot hold
    /// (ill-formed UTF-8, control characters other than tab and line break).
    void addHeading(const std::string& text, int level = 1);
    /// Throws: std::runtime_error for text that a document cannot hold.
    void addParagraph(const std::string& text);
    /// Appends a chart, which is written as it is when the document is; the document shares it.
    /// Throws: std::runtime_error for an empty handle, and for a width or height that is no length.
    void addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options = {});

    void setProgress(Progress progress);
    void setWarning(Warning warning);

    /// The whole package, a .docx file.
    /// Throws: std::runtime_error that names the chart, and the series and point, that cannot be written.
    std::string toBytes() const;

    /// Writes the package to `path`, beside it first, so that no half-written file is ever found there. A
    /// link stays one, and the file it leads to is replaced; a pipe or a device is written to. Throws: as
    /// toBytes, and FileError.
    void save(const std::string& path) const;

 private:
    struct Content;
    std::unique_ptr<Content> content_;
};

}  // namespace quillon::report
