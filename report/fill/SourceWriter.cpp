#include "report/fill/SourceWriter.h"

#include <algorithm>
#include <array>
#include <utility>

#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

using Kind = PointSource::Kind;

/// The children of c:ser in the order of the schema, those of all kinds in one row: no two kinds disagree.
constexpr std::array<std::string_view, 20> childOrder = {
    "idx",        "order",          "tx",  "spPr",  "explosion", "invertIfNegative",
    "marker",     "pictureOptions", "dPt", "dLbls", "trendline", "errBars",
    "cat",        "xVal",           "val", "yVal",  "shape",     "smooth",
    "bubbleSize", "bubble3D"};

std::size_t getRank(std::string_view name)
{
    return static_cast<std::size_t>(std::find(childOrder.begin(), childOrder.end(), name) -
                                    childOrder.begin());
}

bool isIdentity(const Matches& matches)
{
    for (std::size_t i = 0; i < matches.size(); ++i)
        if (matches[i] != i) return false;
    return true;
}

/// The names of a reference and of its cache.
std::pair<std::string_view, std::string_view> getNames(Kind kind)
{
    if (kind == Kind::Number) return {"numRef", "numCache"};
    if (kind == Kind::Text) return {"strRef", "strCache"};
    return {"multiLvlStrRef", "multiLvlStrCache"};
}

std::string wrap(const std::string& prefix, std::string_view name, const std::string& content)
{
    const std::string tag = prefix + std::string(name);
    return "<" + tag + ">" + content + "</" + tag + ">";
}

std::string makeCount(const std::string& prefix, std::size_t count)
{
    return "<" + prefix + "ptCount val=\"" + std::to_string(count) + "\"/>";
}

/// The content of a cache, with what is kept of the old one. It is written when all is planned.
class CacheMarkup {
 public:
    /// The caller keeps all but the prefix until the cache is written.
    CacheMarkup(const ChartMarkup& part, const PointSource& source, const SourceContent& content,
                std::string prefix)
        : part_(part), source_(source), content_(content), prefix_(std::move(prefix)), isKept_(isSameKind())
    {
    }

    bool isKept() const { return isKept_; }

    bool isUnchanged() const
    {
        const auto before = part_.readCache(source_);
        if (!isIdentity(content_.matches) || !before.holds(content_.points)) return false;
        if (!content_.format.empty() && content_.format != before.getFormat()) return false;
        if (content_.kind != Kind::Levels) return true;
        if (before.getLevelCount() != content_.levels.size() + 1) return false;
        for (std::size_t i = 0; i < content_.levels.size(); ++i)
            if (!part_.readCache(source_, content_.levels.size() - i).holds(content_.levels[i])) return false;
        return true;
    }

    void append(std::string& markup) const
    {
        if (content_.kind == Kind::Levels) return appendLevels(markup);
        const auto before = isKept_ ? part_.readCache(source_) : PointCache();
        markup += makeFormat(before.getFormat()) + makeCount(prefix_, content_.points.getSize());
        before.append(markup, content_.points, content_.matches, prefix_);
        markup += before.getExtensions();
    }

    /// The most bytes that append adds, roughly.
    std::size_t estimate() const
    {
        auto size = content_.points.estimateMarkup(prefix_.size());
        for (const auto& level : content_.levels) size += level.estimateMarkup(prefix_.size());
        return size;
    }

 private:
    bool isSameKind() const
    {
        if (!source_.cache) return false;
        return content_.kind == Kind::Number
                   ? source_.kind == Kind::Number || source_.kind == Kind::NumberLiteral
               : content_.kind == Kind::Text ? source_.kind == Kind::Text || source_.kind == Kind::TextLiteral
                                             : source_.kind == Kind::Levels;
    }

    void appendLevels(std::string& markup) const
    {
        markup += makeCount(prefix_, content_.points.getSize());
        for (std::size_t i = 0; i <= content_.levels.size(); ++i) {
            const auto& points = i == 0 ? content_.points : content_.levels[content_.levels.size() - i];
            const auto before = isKept_ ? part_.readCache(source_, i) : PointCache();
            markup += "<" + prefix_ + "lvl>";
            before.append(markup, points, {}, prefix_);
            markup += "</" + prefix_ + "lvl>";
        }
        if (isKept_) markup += part_.readCache(source_).getExtensions();
    }

    std::string makeFormat(const std::string& before) const
    {
        if (content_.kind != Kind::Number) return {};
        const auto& format = content_.format.empty() ? before : content_.format;
        return wrap(prefix_, "formatCode", escapeText(format.empty() ? "General" : format));
    }

    const ChartMarkup& part_;
    const PointSource& source_;
    SourceContent content_;
    std::string prefix_;
    bool isKept_;
};

/// A reference with a cache, as what writes it.
Edits::Write makeReference(const CacheMarkup& cache, const SourceContent& content, const std::string& prefix)
{
    const auto [reference, cacheName] = getNames(content.kind);
    const auto start = "<" + prefix + std::string(reference) + ">" +
                       wrap(prefix, "f", escapeText(content.formula)) + "<" + prefix +
                       std::string(cacheName) + ">";
    const auto end = "</" + prefix + std::string(cacheName) + "></" + prefix + std::string(reference) + ">";
    return [=](std::string& markup) {
        markup += start;
        cache.append(markup);
        markup += end;
    };
}

void writeReference(Edits& edits, const PointSource& source, const SourceContent& content,
                    const std::string& prefix)
{
    if (source.isLiteral() || source.formula == content.formula) return;
    const auto formula = source.reference.findChild("f");
    if (formula)
        edits.setInner(formula, escapeText(content.formula));
    else
        edits.insert(source.reference.getInner().begin, wrap(prefix, "f", escapeText(content.formula)));
}

}  // namespace

void insertIntoSeries(Edits& edits, const XmlElement& series, std::string_view name,
                      const std::string& markup)
{
    for (const auto child : series.getChildren())
        if (getRank(child.getName()) > getRank(name)) return edits.insert(child.getOuter().begin, markup);
    edits.append(series, markup);
}

void writeSource(Edits& edits, const ChartMarkup& part, const XmlElement& series, std::string_view name,
                 const PointSource& source, const SourceContent& content)
{
    if (source.kind == Kind::Value && content.kind == Kind::Text) {
        const auto text = content.points.texts.empty() ? std::string() : content.points.texts[0];
        if (source.reference.getText() != text) edits.setInner(source.reference, escapeText(text));
        return;
    }
    const std::string prefix((source.holder ? source.holder : series).getPrefix());
    const CacheMarkup cache(part, source, content, prefix);
    if (cache.isKept()) {
        writeReference(edits, source, content, prefix);
        if (!cache.isUnchanged())
            edits.setInnerLater(source.cache, cache.estimate(),
                                [cache](std::string& markup) { cache.append(markup); });
        return;
    }
    if (source.kind == Kind::None && content.formula.empty())
        return insertIntoSeries(
            edits, series, name,
            wrap(prefix, name, wrap(prefix, "v", escapeText(content.points.texts.at(0)))));
    const auto write = makeReference(cache, content, prefix);
    if (source.holder) return edits.setInnerLater(source.holder, cache.estimate(), write);
    std::string markup;
    write(markup);
    insertIntoSeries(edits, series, name, wrap(prefix, name, markup));
}

}  // namespace quillon::report
