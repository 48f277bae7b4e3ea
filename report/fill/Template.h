#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "report/fill/FillReport.h"
#include "report/fill/FoundChart.h"
#include "report/fill/Placeholder.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/Package.h"
#include "support/Export.h"

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

/// A word-processing document that exists, whose charts take new data: .docx, .docm, .dotx or .dotm.
///
/// What a fill need not touch keeps its bytes. Charts keep their names, so that what was filled can be
/// filled again. A copy is cheap, and shares what was read: open once, then copy, fill and save many times.
/// Use one copy on one thread at a time; different copies may be used on different threads at once. Every
/// member but assignment throws std::runtime_error when the document was moved from.
class QUILLON_EXPORT Template {
 public:
    /// Throws: std::runtime_error that names the file and says what is wrong with it, or what it is instead.
    static Template open(const std::string& path);
    /// The same for the bytes of a file.
    explicit Template(std::string bytes);
    ~Template();
    Template(const Template& other);
    Template(Template&& other) noexcept;
    Template& operator=(const Template& other);
    Template& operator=(Template&& other) noexcept;

    /// All charts, those that cannot be filled as well.
    /// Throws: std::runtime_error when a part of the document cannot be read.
    std::vector<FoundChart> getCharts() const;

    /// The data that a chart shows. Charts are found by name, alternative text ("Revenue", or "{{revenue}}"
    /// by "revenue"), tag or title of a content control around them, bookmark, title, or number ("2").
    /// Throws: std::runtime_error that lists the charts when none or several are found, and one that says why
    /// the chart cannot be read.
    ChartData getChartData(const std::string& chart) const;

    /// Gives a chart new data, and returns what changed. Series and categories are matched by name, what is
    /// left over by position; formats stay with their names. Data without categories, without any name of a
    /// series, or with X values of 0 alone leaves the chart its own. An alternative text that was generated
    /// is generated anew.
    /// Throws: as getChartData, and std::runtime_error for data that the chart cannot show. The document is
    /// then as it was.
    FillReport fill(const std::string& chart, const ChartData& data, const FillOptions& options = {});

    /// The names in double braces in the text and in the alternative texts of pictures.
    std::vector<Placeholder> getPlaceholders() const;
    /// Puts a new chart in the place of each paragraph that holds `{{placeholder}}`, as wide as its column,
    /// or of a picture that has it as its alternative text, whose size it takes. Its name in the document is
    /// that of the placeholder; where there are several, the others are "margin 2", "margin 3". `data` is
    /// what the chart's data set cannot say. Throws: std::runtime_error that lists the placeholders when
    /// there is none such, and as makeChartParts.
    void insert(const std::string& placeholder, const chart::Chart& chart, const ChartOptions& options = {},
                const ChartData& data = {}, const Listener& listener = {});
    /// Puts a table of the data in the place of each paragraph that holds `{{table:placeholder}}`, in the
    /// style that tables of the document have. Throws: std::runtime_error that lists the placeholders when
    /// there is none such.
    void insertTable(const std::string& placeholder, const ChartData& data, const ChartOptions& options = {});
    /// Replaces `{{placeholder}}` in running text, and returns how often.
    /// Throws: std::runtime_error that lists the placeholders when there is none such.
    std::size_t replace(const std::string& placeholder, const std::string& text);

    /// The whole file.
    std::string toBytes() const;
    /// Writes the file to `path`, as Document::save does. Throws: FileError.
    void save(const std::string& path) const;

    /// The parts of the document.
    const Package& getPackage() const;

 private:
    struct Content;
    explicit Template(std::unique_ptr<Content> content);
    Content& getContent() const;

    /// Empty when moved from.
    std::unique_ptr<Content> content_;
};

}  // namespace quillon::report
