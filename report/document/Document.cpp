#include "report/document/Document.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "report/document/DocumentWriter.h"
#include "report/document/Image.h"
#include "report/document/TableMarkup.h"
#include "report/document/TemplateParts.h"
#include "report/options/Length.h"
#include "report/options/Options.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

/// The longest name of a bookmark that word processors take.
constexpr std::size_t longestName = 40;

void checkRuns(const TextRuns& runs, const char* field)
{
    for (const auto& run : runs) {
        readXmlText(run.text, field);
        readXmlText(run.link, "Link");
    }
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isNameCharacter(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '_';
}

/// Word processors hide bookmarks with "_" at the start; those of headings are such.
void checkName(const std::string& name)
{
    const bool startsWithLetter = !name.empty() && isLetter(name[0]);
    if (!startsWithLetter || name.size() > longestName || !std::ranges::all_of(name, isNameCharacter))
        throw std::runtime_error("Caption name " + quoteText(name) +
                                 ": expected at most 40 letters, digits and \"_\", a letter first.");
}

void checkChart(const PlacedChart& placed)
{
    if (!placed.chart) throw std::runtime_error("addChart: expected a chart, got an empty handle.");
    checkOptions(placed.options, getKind(*placed.chart, placed.options));
    readXmlText(placed.options.altText, "alt-text");
}

void checkImage(const std::string& bytes, const ImageOptions& options)
{
    readImageInfo(bytes);
    readXmlText(options.altText, "Alternative text");
    if (!options.width.empty()) parseLength("width", options.width);
    if (!options.height.empty()) parseLength("height", options.height);
}

}  // namespace

struct Document::Content : DocumentContent {
    /// How many writings are under way; one may begin while a listener hears of another.
    int writings = 0;
};

namespace {

/// Counts a writing while it lives.
class Writing {
 public:
    explicit Writing(int& count) : count_(count) { ++count_; }
    ~Writing() { --count_; }
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

 private:
    int& count_;
};

}  // namespace

Document::Document() : content_(std::make_shared<Content>()) {}

Document::Document(const std::string& templatePath) : Document()
{
    content_->look = Package::open(templatePath);
    requireTemplate(*content_->look, templatePath);
    removeText(*content_->look);
}

Document::~Document() = default;
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;

Document::Content& Document::change()
{
    if (!content_) content_ = std::make_shared<Content>();
    if (content_->writings > 0)
        throw std::runtime_error("The document is being written; change it afterwards.");
    return *content_;
}

void Document::addHeading(const std::string& text, int level)
{
    if (level < 1 || level > 9)
        throw std::runtime_error("Heading level: expected 1 to 9, got " + std::to_string(level) + ".");
    readXmlText(text, "Heading");
    change().blocks.emplace_back(TextBlock{{{.text = text}}, {}, level});
}

void Document::addParagraph(const std::string& text, const std::string& style)
{
    addParagraph(TextRuns{{.text = text}}, style);
}

void Document::addParagraph(const TextRuns& runs, const std::string& style)
{
    checkRuns(runs, "Paragraph");
    if (!style.empty()) makeStyles(change()).use("paragraph", style);
    change().blocks.emplace_back(TextBlock{runs, style});
}

void Document::addList(const std::vector<ListItem>& items, ListKind kind)
{
    for (const auto& item : items) {
        checkRuns(item.runs, "List");
        if (item.level > 8)
            throw std::runtime_error("List level: expected 0 to 8, got " + std::to_string(item.level) + ".");
    }
    change().blocks.emplace_back(ListBlock{items, kind});
}

void Document::addChart(std::shared_ptr<const chart::Chart> chart, const ChartOptions& options,
                        ChartData data)
{
    addCharts({{std::move(chart), options, std::move(data)}});
}

void Document::addCharts(const std::vector<PlacedChart>& charts)
{
    for (const auto& placed : charts) checkChart(placed);
    auto& content = change();
    content.blocks.emplace_back(ChartBlock{charts});
    content.chartCount += charts.size();
}

void Document::addCaption(const Caption& caption)
{
    readXmlText(caption.text, "Caption");
    readXmlText(caption.label, "Caption label");
    auto& content = change();
    if (!caption.name.empty()) checkName(caption.name);
    for (const auto& block : content.blocks)
        if (const auto* other = std::get_if<Caption>(&block))
            if (!caption.name.empty() && other->name == caption.name)
                throw std::runtime_error("Caption name " + quoteText(caption.name) +
                                         ": there is one of that name.");
    content.blocks.emplace_back(caption);
}

void Document::addTable(const TextTable& table)
{
    checkTable(table);
    if (!table.style.empty()) makeStyles(change()).use("table", table.style);
    change().blocks.emplace_back(table);
}

void Document::addImage(std::string bytes, const ImageOptions& options)
{
    checkImage(bytes, options);
    change().blocks.emplace_back(ImageBlock{std::move(bytes), options});
}

void Document::addPageBreak()
{
    change().blocks.emplace_back(PageBreakBlock{});
}

void Document::startSection(const PageSetup& setup)
{
    checkPageSetup(setup);
    change().blocks.emplace_back(setup);
}

void Document::setHeader(const PageLine& line)
{
    checkRuns(line.runs, "Header");
    change().header = line;
}

void Document::setFooter(const PageLine& line)
{
    checkRuns(line.runs, "Footer");
    change().footer = line;
}

void Document::addTableOfContents(int levels)
{
    if (levels < 1 || levels > 9)
        throw std::runtime_error("Table of contents: expected 1 to 9 levels, got " + std::to_string(levels) +
                                 ".");
    change().blocks.emplace_back(ContentsBlock{levels});
}

void Document::setProperties(const Properties& properties)
{
    readXmlText(properties.title, "Title");
    readXmlText(properties.author, "Author");
    readXmlText(properties.keywords, "Keywords");
    readXmlText(properties.language, "Language");
    change().properties = properties;
}

std::string Document::toBytes(const Listener& listener) const
{
    // A listener may move the document elsewhere.
    const auto content = content_ ? content_ : std::make_shared<Content>();
    const Writing writing(content->writings);
    return translateXercesErrors([&] { return DocumentWriter(*content, listener).write(); });
}

void Document::save(const std::string& path, const Listener& listener) const
{
    writeFile(path, toBytes(listener));
}

}  // namespace quillon::report
