#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "report/fill/Matching.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The points of a range of cells, all numbers or all texts. A missing number is NaN, a missing text empty;
/// texts are in the notation of cells.
struct Points {
    bool areText = false;
    std::vector<double> numbers = {};
    std::vector<std::string> texts = {};

    std::size_t getSize() const { return areText ? texts.size() : numbers.size(); }
    void resize(std::size_t size);
    bool operator==(const Points& other) const;
    bool isMissing(std::size_t index) const;
    /// The most bytes that they take as markup, with prefixes of that length and without formats.
    std::size_t estimateMarkup(std::size_t prefixSize) const;
};

/// The points that a chart part holds of a range of cells: the content of numCache, numLit, strCache, strLit,
/// or of a level of categories.
class PointCache {
 public:
    /// The most points that a range of a worksheet has.
    static constexpr std::size_t maximumCount = 1'048'576;

    PointCache() = default;
    /// Reads `cache`, which was deferred, an element of `xml`; both must outlive it. Level: which of several,
    /// the innermost first. Throws: std::runtime_error for more points than cells, and positions that are no
    /// numbers.
    PointCache(const XmlSpans& xml, const XmlElement& cache, std::size_t level = 0);

    std::size_t getLevelCount() const { return levelCount_; }
    /// The number format of all points that have none of their own; empty without one.
    const std::string& getFormat() const { return format_; }
    /// The extensions of the cache, as markup.
    std::string_view getExtensions() const { return getText(extensions_); }
    Points read(bool asText) const;

    /// The number of points alone.
    static std::size_t readCount(const XmlSpans& xml, const XmlElement& cache);

    /// Whether these are the points that it holds.
    bool holds(const Points& points) const;
    /// Appends the points as markup. A point that stays at its place and has the value it had keeps its text;
    /// formats of points move along as `matches` says. Prefix: "c:".
    void append(std::string& markup, const Points& points, const Matches& matches,
                const std::string& prefix) const;

 private:
    struct Point {
        std::uint32_t index;
        Span element;
        Span value;
        /// The value of the attribute that is the number format; empty without.
        Span format;
    };

    class Reader;

    const Point* find(std::size_t index) const;
    bool hasValue(const Point& point, const Points& points, std::size_t index) const;
    std::string_view getText(Span span) const { return text_.substr(span.begin, span.getSize()); }
    std::string_view getValue(const Point& point) const { return getText(point.value); }

    std::string_view text_;
    std::string format_;
    std::size_t count_ = 0;
    std::size_t levelCount_ = 0;
    Span extensions_;
    /// By position.
    std::vector<Point> points_;
};

/// Reads a number as a cache holds it; NaN for what is none, such as "#N/A".
double readCachedNumber(std::string_view text);
/// The shortest text of a finite number.
std::string writeCachedNumber(double number);
/// A text in the notation of cells, in which characters that XML cannot hold are written _x0001_, and back.
std::string toCellText(std::u16string_view text);
std::u16string fromCellText(std::string_view text);

}  // namespace quillon::report
