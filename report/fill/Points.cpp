#include "report/fill/Points.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/package/TagScanner.h"
#include "report/package/Xml.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

bool isSameNumber(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// A number that is no negative one, as positions and counts are.
std::size_t readPosition(const XmlSpans& xml, std::string_view text)
{
    const auto count = readPlainNumber<std::size_t>(text);
    if (!count)
        throw std::runtime_error(showText(xml.getPart()) + ": " + quoteText(text) +
                                 " is not a position or number of points.");
    if (*count > PointCache::maximumCount)
        throw std::runtime_error(showText(xml.getPart()) + ": a series has " + std::to_string(*count) +
                                 " points; a worksheet has 1,048,576 rows.");
    return *count;
}

std::u16string unescape(std::u16string_view text)
{
    std::u16string units;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text.substr(at, 2) == u"_x" && at + 6 < text.size() && text[at + 6] == u'_') {
            const auto digits = toUtf8(text.substr(at + 2, 4));
            std::uint16_t unit = 0;
            const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), unit, 16);
            if (result.ec == std::errc() && result.ptr == digits.data() + digits.size() &&
                digits.size() == 4) {
                units += static_cast<char16_t>(unit);
                at += 6;
                continue;
            }
        }
        units += text[at];
    }
    return units;
}

/// The text as this library writes it: other writers escape what needs no escape.
std::string toCanonical(std::string text)
{
    return text.find("_x") == std::string::npos ? text : toCellText(fromCellText(text));
}

void appendPoint(std::string& markup, const std::string& prefix, std::size_t index, std::string_view format,
                 std::string_view value)
{
    markup += "<" + prefix + "pt idx=\"" + std::to_string(index) + "\"";
    // The format is markup already, which may stand between quotes of either kind.
    const auto* quote = format.find('"') == std::string_view::npos ? "\"" : "'";
    if (!format.empty()) markup += " formatCode=" + (quote + std::string(format)) + quote;
    markup += "><" + prefix + "v>";
    markup += value;
    markup += "</" + prefix + "v></" + prefix + "pt>";
}

std::string decode(std::string_view markup)
{
    return toCanonical(unescapeText(markup));
}

}  // namespace

void Points::resize(std::size_t size)
{
    if (areText)
        texts.resize(size);
    else
        numbers.resize(size, missing);
}

bool Points::operator==(const Points& other) const
{
    return areText == other.areText && texts == other.texts &&
           std::equal(numbers.begin(), numbers.end(), other.numbers.begin(), other.numbers.end(),
                      isSameNumber);
}

bool Points::isMissing(std::size_t index) const
{
    return areText ? texts[index].empty() : std::isnan(numbers[index]);
}

std::size_t Points::estimateMarkup(std::size_t prefixSize) const
{
    // Tags, position and the longest number.
    constexpr std::size_t perPoint = 60;
    std::size_t size = getSize() * (perPoint + 4 * prefixSize);
    for (const auto& text : texts) size += text.size();
    return size;
}

/// Reads the content of a cache tag by tag; a chart may hold very many.
class PointCache::Reader {
 public:
    Reader(PointCache& cache, const XmlSpans& xml, const XmlElement& element, std::size_t level)
        : cache_(cache),
          xml_(xml),
          scanner_(xml.getText(), element.getInner()),
          level_(level),
          hasLevels_(element.getName() == "multiLvlStrCache")
    {
    }

    void read()
    {
        while (const auto tag = scanner_.next()) {
            if (tag->isEnd) {
                close(*tag, --depth_);
                continue;
            }
            open(*tag);
            if (tag->isEmpty)
                close(*tag, depth_);
            else
                ++depth_;
        }
    }

 private:
    void open(const Tag& tag)
    {
        const auto pointDepth = hasLevels_ ? 1 : 0;
        if (depth_ == 0) {
            start_ = tag.span;
            if (tag.name == "ptCount") cache_.count_ = readNumber(tag, "val");
            if (hasLevels_ && tag.name == "lvl") ++cache_.levelCount_;
        }
        const bool isWanted = !hasLevels_ || cache_.levelCount_ == level_ + 1;
        if (depth_ == pointDepth && tag.name == "pt" && isWanted) {
            point_ = {static_cast<std::uint32_t>(readNumber(tag, "idx")), tag.span, {}, {}};
            point_.format = scanner_.findAttribute(tag, "formatCode").value_or(Span());
            hasValue_ = false;
            isPoint_ = true;
        }
        if (depth_ == pointDepth + 1 && isPoint_ && tag.name == "v")
            point_.value = {tag.span.end, tag.span.end};
    }

    void close(const Tag& tag, int depth)
    {
        const auto pointDepth = hasLevels_ ? 1 : 0;
        if (depth == 0 && tag.name == "formatCode" && !tag.isEmpty)
            cache_.format_ = unescapeText(xml_.getText({start_.end, tag.span.begin}));
        if (depth == 0 && tag.name == "extLst") cache_.extensions_ = {start_.begin, tag.span.end};
        if (!isPoint_) return;
        if (depth == pointDepth + 1 && tag.name == "v") {
            if (!tag.isEmpty) point_.value.end = tag.span.begin;
            hasValue_ = true;
        }
        if (depth != pointDepth) return;
        point_.element.end = tag.span.end;
        isPoint_ = false;
        if (hasValue_ && point_.index < cache_.count_) cache_.points_.push_back(point_);
    }

    std::size_t readNumber(const Tag& tag, std::string_view attribute) const
    {
        const auto span = scanner_.findAttribute(tag, attribute).value_or(Span());
        return readPosition(xml_, xml_.getText(span));
    }

    PointCache& cache_;
    const XmlSpans& xml_;
    TagScanner scanner_;
    std::size_t level_;
    bool hasLevels_;
    int depth_ = 0;
    /// Of the child of the cache that is open.
    Span start_;
    Point point_{};
    bool isPoint_ = false;
    bool hasValue_ = false;
};

PointCache::PointCache(const XmlSpans& xml, const XmlElement& cache, std::size_t level) : text_(xml.getText())
{
    if (!cache) return;
    Reader(*this, xml, cache, level).read();
    const auto isBefore = [](const Point& left, const Point& right) { return left.index < right.index; };
    if (!std::is_sorted(points_.begin(), points_.end(), isBefore))
        std::stable_sort(points_.begin(), points_.end(), isBefore);
}

std::size_t PointCache::readCount(const XmlSpans& xml, const XmlElement& cache)
{
    if (!cache) return 0;
    TagScanner scanner(xml.getText(), cache.getInner());
    while (const auto tag = scanner.next())
        if (tag->name == "ptCount")
            return readPosition(xml, xml.getText(scanner.findAttribute(*tag, "val").value_or(Span())));
    return 0;
}

const PointCache::Point* PointCache::find(std::size_t index) const
{
    // Where none is missing, each stands at its place.
    if (index < points_.size() && points_[index].index == index) return &points_[index];
    const auto found = std::lower_bound(points_.begin(), points_.end(), index,
                                        [](const Point& point, std::size_t i) { return point.index < i; });
    return found == points_.end() || found->index != index ? nullptr : &*found;
}

Points PointCache::read(bool asText) const
{
    Points points{.areText = asText};
    points.resize(count_);
    for (const auto& point : points_) {
        if (asText)
            points.texts[point.index] = decode(getValue(point));
        else
            points.numbers[point.index] = readCachedNumber(getValue(point));
    }
    return points;
}

bool PointCache::hasValue(const Point& point, const Points& points, std::size_t index) const
{
    return points.areText ? decode(getValue(point)) == points.texts[index]
                          : isSameNumber(readCachedNumber(getValue(point)), points.numbers[index]);
}

bool PointCache::holds(const Points& points) const
{
    if (points.getSize() != count_) return false;
    for (std::size_t i = 0; i < count_; ++i) {
        const auto* point = find(i);
        if (point == nullptr ? !points.isMissing(i) : !hasValue(*point, points, i)) return false;
    }
    return true;
}

void PointCache::append(std::string& markup, const Points& points, const Matches& matches,
                        const std::string& prefix) const
{
    for (std::size_t i = 0; i < points.getSize(); ++i) {
        const auto* before = i < count_ ? find(i) : nullptr;
        const auto source = i < matches.size() ? matches[i] : noMatch;
        const auto* look = source == i ? before : source == noMatch ? nullptr : find(source);
        const auto format = look == nullptr ? std::string_view() : getText(look->format);
        if (before != nullptr && hasValue(*before, points, i)) {
            if (format == getText(before->format)) {
                markup += getText(before->element);
            } else {
                appendPoint(markup, prefix, i, format, getValue(*before));
            }
            continue;
        }
        if (points.isMissing(i)) continue;
        appendPoint(markup, prefix, i, format,
                    points.areText ? escapeText(points.texts[i]) : writeCachedNumber(points.numbers[i]));
    }
}

double readCachedNumber(std::string_view text)
{
    text = trim(text, " \t\r\n");
    if (text.starts_with('+')) text.remove_prefix(1);
    const auto number = readPlainNumber<double>(text).value_or(missing);
    return std::isfinite(number) ? number : missing;
}

std::string writeCachedNumber(double number)
{
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

std::string toCellText(std::u16string_view text)
{
    return toUtf8(escapeCharacters(text));
}

std::u16string fromCellText(std::string_view text)
{
    const auto units = toUtf16(text);
    return units.find(u"_x") == std::u16string::npos ? units : unescape(units);
}

}  // namespace quillon::report
