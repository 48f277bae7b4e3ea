#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "report/fill/Points.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// How the series of a group run: over categories, or each over x values of its own.
enum class GroupShape : std::uint8_t { Categories, Points, Bubbles, Unfillable };

/// What a chart part calls a group of series, and what people call it.
struct GroupKind {
    std::string_view element;
    std::string_view name;
    GroupShape shape;
};

/// Where the points of a series, its name or its categories come from: the content of c:val, c:tx ...
struct PointSource {
    enum class Kind : std::uint8_t { None, Number, Text, Levels, NumberLiteral, TextLiteral, Value };

    Kind kind = Kind::None;
    /// c:val, c:cat, c:tx ...; false when the series has none.
    XmlElement holder = {};
    /// c:numRef, c:strRef ..., or the literal.
    XmlElement reference = {};
    /// c:numCache ..., or the literal; false when a reference has none.
    XmlElement cache = {};
    /// What a reference names: cells. Empty for literals.
    std::string formula = {};

    bool isText() const { return kind == Kind::Text || kind == Kind::TextLiteral || kind == Kind::Value; }
    bool isLiteral() const
    {
        return kind == Kind::NumberLiteral || kind == Kind::TextLiteral || kind == Kind::Value;
    }
};

/// Custom error bars along the values.
struct ErrorBars {
    /// c:errBars; false when the series has none.
    XmlElement holder = {};
    PointSource plus = {};
    PointSource minus = {};
};

/// A c:ser element.
struct SeriesMarkup {
    XmlElement element;
    /// Position of its group.
    std::size_t group;
    /// c:idx, which numbers automatic colours, and c:order.
    std::uint32_t index;
    std::uint32_t order;
    std::string name;
    PointSource nameSource;
    /// c:cat, or c:xVal.
    PointSource categories;
    /// c:val, or c:yVal.
    PointSource values;
    PointSource sizes;
    ErrorBars errors;
};

/// A c:barChart element or one like it.
struct GroupMarkup {
    XmlElement element;
    const GroupKind* kind;
    /// "bar" and "column" share an element.
    std::string_view name;
    std::vector<std::string> axes;
};

/// A chart part with what a fill changes in its place.
class ChartMarkup {
 public:
    /// The caller keeps `bytes`. Throws: std::runtime_error when the part is no XML, or its caches cannot be
    /// read.
    ChartMarkup(std::string_view bytes, const std::string& part);

    const XmlSpans& getXml() const { return xml_; }
    /// c:chart; false without one.
    XmlElement getChart() const { return chart_; }
    XmlElement getPlotArea() const { return chart_.findChild("plotArea"); }
    const std::vector<GroupMarkup>& getGroups() const { return groups_; }
    /// The series of the author, in the order that they are shown in, that of c:order.
    const std::vector<SeriesMarkup>& getSeries() const { return isWaterfall() ? waterfall_ : series_; }
    /// The c:ser elements; in a waterfall several draw the only series of the author.
    const std::vector<SeriesMarkup>& getDrawnSeries() const { return series_; }
    GroupShape getShape(const SeriesMarkup& series) const { return groups_[series.group].kind->shape; }
    /// The first series that runs over categories and names them; null without one.
    const SeriesMarkup* findCategories() const;
    /// Whether dates count from 1904.
    bool is1904() const { return is1904_; }
    bool isWaterfall() const { return !waterfall_.empty(); }
    /// The 0-based categories of a waterfall that show a total.
    const std::vector<std::size_t>& getTotals() const { return totals_; }
    /// The kinds of the groups, each once.
    std::vector<std::string> getTypes() const;
    /// The text of the title; that of the only series where the chart takes it.
    std::string getTitle() const;
    /// The relationship to the workbook; empty without one.
    std::string getWorkbookId() const;
    /// Why the chart cannot be filled: "it is a pivot chart". Empty when it can.
    const std::string& getProblem() const { return problem_; }

    /// As the source announces.
    std::size_t countPoints(const PointSource& source) const;
    PointCache readCache(const PointSource& source, std::size_t level = 0) const;
    /// Empty for a source that holds none.
    Points readPoints(const PointSource& source) const;

 private:
    void readGroups();
    void readSeries(const XmlElement& element, std::size_t group);
    void readWaterfall();
    void readWaterfall(const SeriesMarkup& base, const XmlElement& mark);
    bool hasWaterfallParts(const SeriesMarkup& base) const;
    PointSource readSource(const XmlElement& holder) const;
    std::string readText(const PointSource& source) const;
    ErrorBars readErrorBars(const XmlElement& series) const;
    std::string findProblem() const;

    XmlSpans xml_;
    XmlElement chart_;
    bool is1904_ = false;
    std::vector<GroupMarkup> groups_;
    std::vector<SeriesMarkup> series_;
    /// The series of the author, which stands in an extension of one of those that draw it; empty for other
    /// charts.
    std::vector<SeriesMarkup> waterfall_;
    std::vector<std::size_t> totals_;
    std::string problem_;
};

}  // namespace quillon::report
