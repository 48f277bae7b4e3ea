#pragma once

#include <memory>
#include <string>
#include <vector>

#include "report/document/Blocks.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/OutputFile.h"
#include "support/Export.h"

namespace quillon::report {

/// A word-processing document made of blocks that stand one below the other:
///
///     Document document;
///     document.addHeading("Sales");
///     document.addParagraph("The year began well.");
///     document.addChart(chart, {.width = "15cm", .valueTitle = "EUR"});
///     document.addCaption({.text = "Revenue by region"});
///     document.save("sales.docx");
///
/// Text is UTF-8. Equal content gives equal bytes. Use a document on one thread at a time; different
/// documents may be written on different threads at once. A document that was moved from is empty. Every
/// member throws std::runtime_error for text that a document cannot hold: ill-formed UTF-8, and control
/// characters other than tab and line break.
class QUILLON_EXPORT Document {
 public:
    Document();
    /// A document that looks like another: its styles, theme, page setup, headers and footers. Its text is
    /// left out, with all that only the text refers to: charts and their numbers, pictures, notes, comments.
    /// Throws: std::runtime_error when the file cannot be read, or is not a document.
    explicit Document(const std::string& templatePath);
    ~Document();
    Document(Document&& other) noexcept;
    Document& operator=(Document&& other) noexcept;

    /// Level: 1 to 9. Throws: std::runtime_error for another level.
    void addHeading(const std::string& text, int level = 1);
    /// `style` is the name of a paragraph style, "Title" or one of the template's.
    /// Throws: std::runtime_error that lists the styles when there is none of that name.
    void addParagraph(const std::string& text, const std::string& style = {});
    void addParagraph(const TextRuns& runs, const std::string& style = {});
    /// Numbers start at 1 in each list. Throws: std::runtime_error for a level above 8.
    void addList(const std::vector<ListItem>& items, ListKind kind = ListKind::Bullets);

    /// Appends a chart, which is written as it is when the document is; the document shares it. `data` is
    /// what the chart's data set cannot say; its own data set is not looked at. Throws: std::runtime_error
    /// for an empty handle, and for an option that does not suit the chart.
    void addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options = {},
                  ChartData data = {});
    /// Charts in one line. One whose width is the default gets an equal share of the line.
    void addCharts(const std::vector<PlacedChart>& charts);
    /// Throws: std::runtime_error for a name that is malformed or taken.
    void addCaption(const Caption& caption);
    /// Throws: std::runtime_error for a row of another length, and for an unknown style or a malformed width.
    void addTable(const TextTable& table);
    /// `bytes`: a PNG or JPEG file. Throws: std::runtime_error for other bytes, and for malformed lengths.
    void addImage(std::string bytes, const ImageOptions& options = {});

    void addPageBreak();
    /// Ends the pages so far and begins new ones; the first call before any block sets up the first.
    /// Throws: std::runtime_error for an unknown paper, and for margins that leave no room for text.
    void startSection(const PageSetup& setup);
    /// For all pages of the document.
    void setHeader(const PageLine& line);
    void setFooter(const PageLine& line);
    /// A table of the headings of levels 1 to `levels`; where there are none it is left out with a warning. A
    /// word processor fills in the numbers of the pages when it opens the document, and may ask before.
    /// Levels: 1 to 9. Throws: std::runtime_error for another number.
    void addTableOfContents(int levels = 3);
    void setProperties(const Properties& properties);

    /// The whole package, a .docx file. While it is made, the document refuses to be changed with a
    /// std::runtime_error, and its charts must stay as they are.
    /// Throws: std::runtime_error that names the chart, and the series and point, that cannot be written, and
    /// for the caption of a chart that floats, and a reference to a caption that is not there.
    std::string toBytes(const Listener& listener = {}) const;

    /// Writes the package to `path`, as writeFile does: the old file is there or the new one, whole.
    /// Throws: as toBytes, and FileError.
    void save(const std::string& path, const Listener& listener = {}) const;

 private:
    struct Content;

    Content& change();

    /// Empty when moved from.
    std::shared_ptr<Content> content_;
};

}  // namespace quillon::report
