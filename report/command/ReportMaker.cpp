#include "report/command/ReportMaker.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

#include "report/command/ChartMaker.h"
#include "report/command/ChartReader.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

using Kind = JsonNode::Kind;

std::string getText(const JsonNode& object, const char* name, const char* otherwise = "")
{
    const auto* value = object.find(name);
    return value == nullptr ? otherwise : value->text;
}

bool getFlag(const JsonNode& object, const char* name)
{
    const auto* value = object.find(name);
    return value != nullptr && value->flag;
}

int getNumber(const JsonNode& object, const char* name, int otherwise)
{
    const auto* value = object.find(name);
    return value == nullptr ? otherwise : static_cast<int>(value->number);
}

std::vector<std::string> getTexts(const JsonNode& object, const char* name)
{
    std::vector<std::string> texts;
    if (const auto* list = object.find(name))
        for (const auto& item : list->items) texts.push_back(item.text);
    return texts;
}

TextRun readRun(const JsonNode& node)
{
    if (node.is(Kind::Text)) return {.text = node.text};
    return {.text = getText(node, "text"),
            .bold = getFlag(node, "bold"),
            .italic = getFlag(node, "italic"),
            .link = getText(node, "link"),
            .reference = getText(node, "reference")};
}

/// A text, or a list of texts and runs.
TextRuns readRuns(const JsonNode& node)
{
    if (node.is(Kind::Text)) return {{.text = node.text}};
    TextRuns runs;
    for (const auto& item : node.items) runs.push_back(readRun(item));
    return runs;
}

TableCell readCell(const JsonNode& cell)
{
    return cell.is(Kind::Number) ? TableCell(cell.number) : TableCell(cell.text);
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!file) fail("Cannot read {}: {}.", quoteText(path, 200), std::strerror(errno));
    if (bytes.empty()) fail("Cannot read {}: it is empty.", quoteText(path, 200));
    return bytes;
}

/// Adds blocks, one after the other, to the document.
class BlockAdder {
 public:
    BlockAdder(Document& document, const JobPlace& place, const Listener& listener)
        : document_(document), place_(place), listener_(listener)
    {
    }

    void add(const JsonNode& block);

 private:
    void addHeading(const JsonNode& block)
    {
        document_.addHeading(getText(block, "heading"), getNumber(block, "level", 1));
    }
    void addParagraph(const JsonNode& block)
    {
        document_.addParagraph(readRuns(*block.find("paragraph")), getText(block, "style"));
    }
    void addList(const JsonNode& block);
    void addChart(const JsonNode& block);
    void addCharts(const JsonNode& block);
    void addTable(const JsonNode& block);
    void addImage(const JsonNode& block);
    void addCaption(const JsonNode& block);
    void addPageBreak(const JsonNode& block)
    {
        if (block.find("page-break")->flag) document_.addPageBreak();
    }
    void startSection(const JsonNode& block);
    void addContents(const JsonNode& block) { document_.addTableOfContents(getNumber(block, "contents", 3)); }
    TextTable makeOwnTable(const JsonNode& table) const;
    TextTable makeDataTable(const JsonNode& table) const;

    struct Row {
        const char* name;
        void (BlockAdder::*add)(const JsonNode& block);
    };
    static const std::array<Row, 11> rows;

    Document& document_;
    const JobPlace& place_;
    const Listener& listener_;
};

const std::array<BlockAdder::Row, 11> BlockAdder::rows = {{
    {"heading", &BlockAdder::addHeading},
    {"paragraph", &BlockAdder::addParagraph},
    {"list", &BlockAdder::addList},
    {"chart", &BlockAdder::addChart},
    {"charts", &BlockAdder::addCharts},
    {"table", &BlockAdder::addTable},
    {"image", &BlockAdder::addImage},
    {"caption", &BlockAdder::addCaption},
    {"page-break", &BlockAdder::addPageBreak},
    {"section", &BlockAdder::startSection},
    {"contents", &BlockAdder::addContents},
}};

void BlockAdder::add(const JsonNode& block)
{
    for (const auto& row : rows)
        if (block.find(row.name) != nullptr) return (this->*row.add)(block);
}

void BlockAdder::addList(const JsonNode& block)
{
    std::vector<ListItem> items;
    for (const auto& node : block.find("list")->items) {
        const auto& text = node.is(Kind::Object) ? *node.find("text") : node;
        items.push_back({readRuns(text), static_cast<unsigned>(getNumber(node, "level", 0))});
    }
    document_.addList(items, getText(block, "kind") == "numbers" ? ListKind::Numbers : ListKind::Bullets);
}

void BlockAdder::addChart(const JsonNode& block)
{
    const auto job = readChartJob(*block.find("chart"), place_);
    const auto data = readData(job, listener_);
    if (!job.heading.empty()) document_.addHeading(job.heading, 1);
    document_.addChart(makeChart(job, data, listener_.warning), job.options, data);
    if (getFlag(block, "table")) document_.addTable(makeTable(data, {}, job.options));
}

void BlockAdder::addCharts(const JsonNode& block)
{
    std::vector<PlacedChart> charts;
    for (const auto& node : block.find("charts")->items) {
        const auto job = readChartJob(node, place_);
        const auto data = readData(job, listener_);
        charts.push_back({makeChart(job, data, listener_.warning), job.options, data});
    }
    document_.addCharts(charts);
}

TextTable BlockAdder::makeOwnTable(const JsonNode& table) const
{
    TextTable made{.columns = getTexts(table, "columns")};
    for (const auto& row : table.find("rows")->items) {
        auto& cells = made.rows.emplace_back();
        for (const auto& cell : row.items) cells.push_back(readCell(cell));
    }
    return made;
}

TextTable BlockAdder::makeDataTable(const JsonNode& table) const
{
    const auto job = readChartJob(table, place_);
    return makeTable(readData(job, listener_, {.hasTotals = true, .hasRepeated = true}),
                     getText(table, "header"), job.options);
}

void BlockAdder::addTable(const JsonNode& block)
{
    const auto& node = *block.find("table");
    auto table = node.find("rows") != nullptr ? makeOwnTable(node) : makeDataTable(node);
    table.widths = getTexts(node, "widths");
    table.style = getText(node, "style");
    document_.addTable(table);
}

void BlockAdder::addImage(const JsonNode& block)
{
    document_.addImage(readFile((place_.folder / getText(block, "image")).string()),
                       {.width = getText(block, "width"),
                        .height = getText(block, "height"),
                        .altText = getText(block, "alt-text")});
}

void BlockAdder::addCaption(const JsonNode& block)
{
    document_.addCaption({.text = getText(block, "caption"),
                          .label = getText(block, "label"),
                          .name = getText(block, "name")});
}

void BlockAdder::startSection(const JsonNode& block)
{
    const auto& node = *block.find("section");
    const PageSetup usual;
    document_.startSection({.paper = getText(node, "paper", usual.paper.c_str()),
                            .landscape = getFlag(node, "landscape"),
                            .top = getText(node, "top", usual.top.c_str()),
                            .right = getText(node, "right", usual.right.c_str()),
                            .bottom = getText(node, "bottom", usual.bottom.c_str()),
                            .left = getText(node, "left", usual.left.c_str())});
}

/// Adds all items of a list, and to the problems what is said of those that cannot be added.
template <typename Add>
void addAll(const JsonNode& list, const char* what, std::vector<Problem>& problems, const Add& add)
{
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        try {
            add(list.items[i]);
        } catch (const std::runtime_error& error) {
            problems.push_back({list.items[i].position, fmt::format("{} {}: {}", what, i + 1, error.what())});
        }
    }
}

Document startDocument(const JsonNode& job, const std::filesystem::path& folder)
{
    const auto look = getText(job, "template");
    return look.empty() ? Document() : Document((folder / look).string());
}

void setPageLines(Document& document, const JsonNode& job)
{
    if (const auto* header = job.find("header")) document.setHeader({readRuns(*header)});
    if (const auto* footer = job.find("footer")) document.setFooter({readRuns(*footer)});
    if (const auto* properties = job.find("properties"))
        document.setProperties({.title = getText(*properties, "title"),
                                .author = getText(*properties, "author"),
                                .keywords = getText(*properties, "keywords"),
                                .language = getText(*properties, "language")});
}

}  // namespace

void addChart(Document& document, const ChartJob& job, std::size_t number, const Listener& listener)
{
    try {
        const auto data = readData(job, listener);
        const auto chart = makeChart(job, data, listener.warning);
        if (!job.heading.empty()) document.addHeading(job.heading, 1);
        document.addChart(chart, job.options, data);
    } catch (const std::runtime_error& error) {
        if (number == 0) throw;
        fail("chart {}: {}", number, error.what());
    }
}

Document makeReport(const JsonNode& job, const JobPlace& place, const Listener& listener)
{
    auto document = startDocument(job, place.folder);
    setPageLines(document, job);
    BlockAdder adder(document, place, listener);
    auto problems = findLostReferences(job);
    if (const auto* blocks = job.find("blocks"))
        addAll(*blocks, "block", problems, [&](const auto& block) { adder.add(block); });
    if (const auto* charts = job.find("charts"))
        addAll(*charts, "chart", problems,
               [&](const auto& chart) { addChart(document, readChartJob(chart, place), 0, listener); });
    std::ranges::stable_sort(problems, {}, &Problem::position);
    requireNoProblems(problems, *place.source);
    return document;
}

}  // namespace quillon::report
