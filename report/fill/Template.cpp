#include "report/fill/Template.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "report/fill/AltTextRenewal.h"
#include "report/fill/CategoryNames.h"
#include "report/fill/ChartFiller.h"
#include "report/fill/ChartFinder.h"
#include "report/fill/ChartReader.h"
#include "report/fill/DocumentText.h"
#include "report/fill/FillPlan.h"
#include "report/fill/Originals.h"
#include "report/fill/PartCopy.h"
#include "report/fill/Placeholders.h"
#include "report/fill/ScaleWarnings.h"
#include "report/options/NearName.h"
#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/package/OutputFile.h"

namespace quillon::report {
namespace {

/// The relationship to the workbook: a part may have one that its markup does not name.
std::string findWorkbookId(const Package& package, const std::string& name, const ChartMarkup& part)
{
    if (auto id = part.getWorkbookId(); !id.empty()) return id;
    for (const auto& row : package.getRelationships(name))
        if (row.getKind() == "package" && !row.isExternal && package.hasPart(row.target)) return row.id;
    return {};
}

/// A name that may stand in braces.
std::string stripBraces(const std::string& text)
{
    const auto name = readPlaceholder(text);
    return name.empty() ? text : name;
}

/// All that a chart may be asked for by.
std::vector<std::string> listKeys(const ChartDrawing& drawing, const std::string& title)
{
    std::vector<std::string> keys = {drawing.name, drawing.description, drawing.title, title};
    keys.insert(keys.end(), drawing.tags.begin(), drawing.tags.end());
    keys.insert(keys.end(), drawing.bookmarks.begin(), drawing.bookmarks.end());
    for (auto& key : keys) key = stripBraces(key);
    return keys;
}

bool isNamed(const ChartDrawing& drawing, const std::string& title, const std::string& key)
{
    const auto keys = listKeys(drawing, title);
    return !key.empty() && std::ranges::find(keys, stripBraces(key)) != keys.end();
}

/// A number from 1 to `count`; 0 for anything else.
std::size_t readChartNumber(const std::string& text, std::size_t count)
{
    const auto number = readPlainNumber<std::size_t>(text).value_or(0);
    return number <= count ? number : 0;
}

std::string describe(const FoundChart& chart)
{
    auto text = std::to_string(chart.number) + " " + quoteText(chart.name);
    if (!chart.title.empty()) text += ", title " + quoteText(chart.title);
    if (!chart.altText.empty()) text += ", alternative text " + quoteText(chart.altText);
    return text;
}

}  // namespace

struct Template::Content {
    Content(Package opened, std::string path)
        : package(std::move(opened)),
          file(std::move(path)),
          originals(std::make_shared<Originals>(package)),
          texts([known = originals](const Package& copy, const std::string& part) {
              return known->getText(copy, part);
          })
    {
    }

    /// What is wrong with a part is told with the file that has it.
    template <typename Read>
    auto inFile(Read read) const
    {
        try {
            return read();
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(file.empty() ? error.what() : file + ": " + error.what());
        }
    }

    const Drawings& getDrawings() const;
    std::shared_ptr<const FoundChart> describePart(const std::string& part) const;
    FoundChart describeChart(std::size_t index) const;
    std::vector<std::u16string> findCategoryNames(const std::string& part, const ChartMarkup& chart) const;
    std::string getTitle(const ChartDrawing& drawing) const;
    std::vector<std::size_t> findNamed(const std::string& key) const;
    std::size_t find(const std::string& key) const;
    [[noreturn]] void failToFind(const std::string& key, std::size_t count) const;
    std::string explainMissing(const std::string& key) const;
    /// What the report of a fill calls the chart.
    std::string nameChart(std::size_t index, const std::string& key) const;
    FillReport fill(std::size_t index, const ChartData& data, const FillOptions& options);
    void separate(std::size_t index);
    void separateWorkbooks(std::size_t index);
    FillReport fillPart(const std::string& part, const ChartData& data, const FillOptions& options,
                        std::string& altText);
    void setAltText(std::size_t index, const std::string& altText);

    /// With all that was replaced in its text.
    Package& getPackage();
    /// After a change of anything but a chart part or text.
    void forget();

    Package package;
    /// Empty for a document that came as bytes.
    std::string file;
    std::shared_ptr<Originals> originals;
    DocumentTexts texts;
    /// What is known of this copy: its drawings, null until they are needed, and the chart parts that it has
    /// changed.
    mutable std::shared_ptr<const Drawings> drawings;
    mutable std::map<std::string, std::shared_ptr<const FoundChart>> charts;
    bool isChanged = false;
};

const Drawings& Template::Content::getDrawings() const
{
    if (!drawings)
        drawings = inFile([&] {
            return isChanged ? std::make_shared<const Drawings>(findCharts(package))
                             : originals->getDrawings();
        });
    return *drawings;
}

Package& Template::Content::getPackage()
{
    if (!texts.save(package)) return package;
    // Drawings stand elsewhere in their parts now.
    isChanged = true;
    drawings.reset();
    return package;
}

void Template::Content::forget()
{
    isChanged = true;
    texts.forget();
    drawings.reset();
    charts.clear();
}

std::shared_ptr<const FoundChart> Template::Content::describePart(const std::string& part) const
{
    auto& known = charts[part];
    if (!known) known = originals->describeChart(package, part);
    return known;
}

FoundChart Template::Content::describeChart(std::size_t index) const
{
    const auto& drawing = getDrawings()[index];
    auto found = drawing.problem.empty() ? *describePart(drawing.chartParts[0])
                                         : FoundChart{.problem = drawing.problem};
    found.number = index + 1;
    found.name = drawing.name;
    found.altText = drawing.description.empty() ? drawing.title : drawing.description;
    found.place = drawing.place;
    return found;
}

std::string Template::Content::getTitle(const ChartDrawing& drawing) const
{
    return drawing.problem.empty() ? describePart(drawing.chartParts[0])->title : std::string();
}

std::vector<std::size_t> Template::Content::findNamed(const std::string& key) const
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < getDrawings().size(); ++i)
        if (isNamed(getDrawings()[i], getTitle(getDrawings()[i]), key)) found.push_back(i);
    return found;
}

std::size_t Template::Content::find(const std::string& key) const
{
    const auto found = findNamed(key);
    if (found.size() == 1) return found[0];
    const auto number = readChartNumber(key, getDrawings().size());
    if (!found.empty() || number == 0) failToFind(key, found.size());
    return number - 1;
}

void Template::Content::failToFind(const std::string& key, std::size_t count) const
{
    if (getDrawings().empty())
        throw std::runtime_error("There is no chart " + quoteText(key) + ": the document has none.");
    auto sentence = count == 0 ? "There is no chart " + quoteText(key) + explainMissing(key)
                               : "There are " + std::to_string(count) + " charts " + quoteText(key) + "; the";
    constexpr std::size_t named = 20;
    const auto there = getDrawings().size();
    for (std::size_t i = 0; i < std::min(there, named); ++i)
        sentence += (i == 0 ? " document has " : "; ") + describe(describeChart(i));
    if (there > named) sentence += " and " + std::to_string(there - named) + " more";
    throw std::runtime_error(sentence + ".");
}

/// The middle of the sentence that says what is there.
std::string Template::Content::explainMissing(const std::string& key) const
{
    for (const auto& placeholder : DocumentTexts(texts).findPlaceholders(package))
        if (placeholder.name == stripBraces(key))
            return ", but a placeholder {{" + showText(placeholder.name) +
                   "}}, where a new chart is inserted (--at, in a job file \"at\"); the";
    std::vector<std::string> keys;
    for (const auto& drawing : getDrawings())
        for (auto& one : listKeys(drawing, getTitle(drawing))) keys.push_back(std::move(one));
    const auto near = findNearName(key, keys);
    return near.empty() ? "; the" : "; did you mean " + quoteText(near) + "? The";
}

std::string Template::Content::nameChart(std::size_t index, const std::string& key) const
{
    const auto& drawing = getDrawings()[index];
    const auto title = getTitle(drawing);
    if (isNamed(drawing, title, key)) return key;
    return title.empty() ? drawing.name : title;
}

FillReport Template::Content::fill(std::size_t index, const ChartData& data, const FillOptions& options)
{
    if (const auto& problem = getDrawings()[index].problem; !problem.empty())
        throw std::runtime_error("The chart cannot be filled: " + problem + ".");
    separate(index);
    const auto drawing = getDrawings()[index];
    separateWorkbooks(index);
    auto altText = drawing.description;
    auto report = fillPart(drawing.chartParts[0], data, options, altText);
    if (altText != drawing.description) setAltText(index, altText);
    for (std::size_t i = 1; i < drawing.chartParts.size(); ++i)
        fillPart(drawing.chartParts[i], data, options, altText);
    report.number = index + 1;
    if (package.isSigned())
        report.warnings.emplace_back("The document is signed; its signature is no longer valid.");
    return report;
}

void Template::Content::setAltText(std::size_t index, const std::string& altText)
{
    auto& current = getPackage();
    auto described = std::make_shared<Drawings>(getDrawings());
    describeDrawing(current, *described, index, altText);
    texts.forget();
    drawings = described;
    isChanged = true;
}

/// A part that other drawings show as well is copied first.
void Template::Content::separate(std::size_t index)
{
    const auto drawing = getDrawings()[index];
    for (const auto& part : drawing.chartParts) {
        const auto shows = [&](const ChartDrawing& other) {
            return std::find(other.chartParts.begin(), other.chartParts.end(), part) !=
                   other.chartParts.end();
        };
        if (std::count_if(getDrawings().begin(), getDrawings().end(), shows) < 2) continue;
        showCopy(getPackage(), drawing, part, copyChart(package, part));
        forget();
    }
}

/// What the cells of other charts hold stays what these show.
void Template::Content::separateWorkbooks(std::size_t index)
{
    const auto shared = originals->getSharedWorkbooks();
    if (shared->empty()) return;
    const auto& all = getDrawings();
    const auto isElsewhere = [&](const std::string& workbook) {
        for (std::size_t i = 0; i < all.size(); ++i)
            for (const auto& part : all[i].chartParts)
                for (const auto& row : package.getRelationships(part))
                    if (i != index && row.target == workbook) return true;
        return false;
    };
    for (const auto& part : all[index].chartParts)
        for (const auto& row : package.getRelationships(part))
            if (!row.isExternal && shared->contains(row.target) && isElsewhere(row.target))
                copyWorkbook(package, part, row);
}

/// A workbook that is missing or damaged says none.
std::vector<std::u16string> Template::Content::findCategoryNames(const std::string& part,
                                                                 const ChartMarkup& chart) const
{
    const auto rows = package.getRelationships(part);
    const auto row = std::ranges::find(rows, chart.getWorkbookId(), &Relationship::id);
    if (row == rows.end() || row->isExternal || !package.hasPart(row->target)) return {};
    try {
        return readCategoryNames(chart, *originals->getWorkbook(package, row->target));
    } catch (const std::runtime_error&) {
        return {};
    }
}

/// `altText`: that of the drawing; it becomes what it is to be.
FillReport Template::Content::fillPart(const std::string& part, const ChartData& data,
                                       const FillOptions& options, std::string& altText)
{
    const auto chart = inFile([&] { return originals->getChart(package, part); });
    FillPlan plan(chart->part, data, options);
    altText = renewAltText(altText, plan, data);
    const auto read = [this](const std::string& name) { return originals->getWorkbook(package, name); };
    auto workbook = updateWorkbook(package, part, findWorkbookId(package, part, chart->part),
                                   plan.makeCells(), plan.makeRemovedCells(), read);
    plan.setReferences(workbook.series);
    workbook.series.clear();
    workbook.series.shrink_to_fit();
    charts.erase(part);
    package.setPart(part, ChartFiller(plan, chart->palette).write(workbook.relationshipId));
    auto report = plan.getReport();
    for (auto& sentence : listCutValues(plan)) report.warnings.push_back(std::move(sentence));
    if (!workbook.warning.empty()) report.warnings.push_back(workbook.warning);
    return report;
}

Template::Template(std::string bytes)
{
    Package package(std::move(bytes));
    package.requireDocument();
    content_ = std::make_unique<Content>(std::move(package), "");
}

Template Template::open(const std::string& path)
{
    auto package = Package::open(path);
    try {
        package.requireDocument();
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
    return Template(std::make_unique<Content>(std::move(package), path));
}

Template::Template(std::unique_ptr<Content> content) : content_(std::move(content)) {}
Template::~Template() = default;
Template::Template(const Template& other)
    : content_(other.content_ ? std::make_unique<Content>(*other.content_) : nullptr)
{
}
Template::Template(Template&& other) noexcept = default;
Template& Template::operator=(Template&& other) noexcept = default;

Template& Template::operator=(const Template& other)
{
    if (this != &other) *this = Template(other);
    return *this;
}

Template::Content& Template::getContent() const
{
    if (!content_) throw std::runtime_error("The document was moved elsewhere.");
    return *content_;
}

std::vector<FoundChart> Template::getCharts() const
{
    std::vector<FoundChart> charts;
    for (std::size_t i = 0; i < getContent().getDrawings().size(); ++i)
        charts.push_back(getContent().describeChart(i));
    return charts;
}

ChartData Template::getChartData(const std::string& chart) const
{
    const auto index = getContent().find(chart);
    if (const auto found = getContent().describeChart(index); !found.problem.empty())
        throw std::runtime_error("The chart cannot be read: " + found.problem + ".");
    const auto& content = getContent();
    const auto& part = content.getDrawings()[index].chartParts[0];
    const auto read = content.originals->getChart(content.package, part);
    auto data = readChartData(read->part);
    data.categoryNames = content.findCategoryNames(part, read->part);
    if (data.categoryNames.size() != data.levels.size() + 1) data.categoryNames.clear();
    return data;
}

FillReport Template::fill(const std::string& chart, const ChartData& data, const FillOptions& options)
{
    // What goes wrong half-way leaves the document as it was.
    auto filled = std::make_unique<Content>(getContent());
    const auto index = filled->find(chart);
    const auto name = filled->nameChart(index, chart);
    auto report = filled->fill(index, data, options);
    report.chart = name;
    content_ = std::move(filled);
    return report;
}

std::vector<Placeholder> Template::getPlaceholders() const
{
    return getContent().inFile([&] { return getContent().texts.findPlaceholders(getContent().package); });
}

void Template::insert(const std::string& placeholder, const chart::Chart& chart, const ChartOptions& options,
                      const ChartData& data, const Listener& listener)
{
    try {
        insertChart(getContent().getPackage(), placeholder, {chart, options, listener, data});
    } catch (const MissingPlaceholder&) {
        if (getContent().findNamed(placeholder).empty()) throw;
        throw std::runtime_error("There is no placeholder {{" + showText(placeholder) + "}}, but a chart " +
                                 quoteText(placeholder) +
                                 ", which is filled (--chart, in a job file \"fill\").");
    }
    getContent().forget();
}

void Template::insertTable(const std::string& placeholder, const ChartData& data, const ChartOptions& options)
{
    report::insertTable(getContent().getPackage(), placeholder, data, options);
    getContent().forget();
}

std::size_t Template::replace(const std::string& placeholder, const std::string& text)
{
    return getContent().texts.replace(getContent().package, placeholder, text);
}

std::string Template::toBytes() const
{
    return getContent().getPackage().toBytes();
}

void Template::save(const std::string& path) const
{
    writeFile(path, toBytes());
}

const Package& Template::getPackage() const
{
    return getContent().getPackage();
}

}  // namespace quillon::report
