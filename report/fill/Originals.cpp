#include "report/fill/Originals.h"

#include <algorithm>
#include <stdexcept>

namespace quillon::report {
namespace {

FoundChart describe(const ChartMarkup& part)
{
    FoundChart found;
    found.title = part.getTitle();
    found.types = part.getTypes();
    found.problem = part.getProblem();
    for (const auto& series : part.getSeries()) {
        found.series.push_back(series.name);
        found.points = std::max(found.points, part.countPoints(series.values));
    }
    return found;
}

std::shared_ptr<const std::set<std::string>> findSharedWorkbooks(const Package& document,
                                                                 const Drawings& drawings)
{
    std::set<std::string> known;
    std::set<std::string> shared;
    for (const auto& drawing : drawings) {
        std::set<std::string> own;
        for (const auto& part : drawing.chartParts)
            for (const auto& row : document.getRelationships(part))
                if (row.getKind() == "package" && !row.isExternal) own.insert(row.target);
        for (const auto& workbook : own)
            if (!known.insert(workbook).second) shared.insert(workbook);
    }
    return std::make_shared<const std::set<std::string>>(std::move(shared));
}

}  // namespace

ReadChart::ReadChart(const Package& package, const std::string& name) : part(package.getPart(name), name)
{
    const auto rows = package.getRelationships(package.getMainPart());
    if (std::ranges::none_of(rows, [](const auto& row) { return row.getKind() == "theme"; }))
        palette = Palette::makeUsual();
    for (const auto& row : package.getRelationships(name))
        if (row.getKind() == "chartColorStyle" && !row.isExternal && package.hasPart(row.target))
            palette = Palette(XmlSpans(package.getPart(row.target), row.target));
}

bool Originals::isChanged(const Package& copy, const std::string& part) const
{
    return !opened_.hasPart(part) || &opened_.getPart(part) != &copy.getPart(part);
}

std::shared_ptr<const Drawings> Originals::getDrawings()
{
    return drawings_.get([this] { return std::make_shared<const Drawings>(findCharts(opened_)); });
}

std::shared_ptr<const std::set<std::string>> Originals::getSharedWorkbooks()
{
    return sharedWorkbooks_.get([this] { return findSharedWorkbooks(opened_, *getDrawings()); });
}

std::shared_ptr<const ReadChart> Originals::getChart(const Package& copy, const std::string& part)
{
    const auto read = [&] { return std::make_shared<const ReadChart>(copy, part); };
    return isChanged(copy, part) ? read() : charts_.get(part, read);
}

std::shared_ptr<const FoundChart> Originals::describeChart(const Package& copy, const std::string& part)
{
    const auto read = [&] {
        return std::make_shared<const FoundChart>(describe(getChart(copy, part)->part));
    };
    try {
        return isChanged(copy, part) ? read() : descriptions_.get(part, read);
    } catch (const std::runtime_error& error) {
        return std::make_shared<const FoundChart>(FoundChart{.problem = error.what()});
    }
}

std::shared_ptr<const WorkbookMarkup> Originals::getWorkbook(const Package& copy, const std::string& part)
{
    const auto& bytes = copy.getPart(part);
    const auto read = [&] { return std::make_shared<const WorkbookMarkup>(bytes); };
    return isChanged(copy, part) ? read() : workbooks_.get(part, read, bytes.size());
}

std::shared_ptr<const TextPart> Originals::getText(const Package& copy, const std::string& part)
{
    const auto read = [&] { return std::make_shared<const TextPart>(copy, part); };
    return isChanged(copy, part) ? read() : texts_.get(part, read);
}

}  // namespace quillon::report
