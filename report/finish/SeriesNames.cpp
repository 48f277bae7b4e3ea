#include "report/finish/SeriesNames.h"

#include <algorithm>

#include "report/options/ChartError.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

[[noreturn]] void refuseName(const chart::DataSet& dataSet, const std::string& name, const char* option)
{
    std::vector<std::u16string> names;
    const auto all = dataSet.getSeriesList();
    for (const auto& series : *all) names.push_back(series->getName());
    throw ChartError("", std::string(option) + ": there is no series " + quoteText(name) + "; " +
                             (names.empty() ? "there are no series" : "the series are") +
                             listNames(names, name));
}

}  // namespace

std::vector<std::size_t> findSeries(const chart::DataSet& dataSet, const std::vector<std::string>& names,
                                    const char* option)
{
    std::vector<std::size_t> positions;
    for (const auto& name : names) {
        const auto wanted = toUtf16(name);
        const auto before = positions.size();
        for (std::size_t i = 0; i < dataSet.getSeriesCount(); ++i)
            if (dataSet.getSeries(i)->getName() == wanted) positions.push_back(i);
        if (positions.size() == before) refuseName(dataSet, name, option);
    }
    return positions;
}

std::vector<std::size_t> findCategories(const std::vector<std::u16string>& categories,
                                        const std::u16string& name, const char* option)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < categories.size(); ++i)
        if (categories[i] == name) positions.push_back(i);
    if (positions.empty())
        throw ChartError("", std::string(option) + ": there is no category " + quoteText(name) +
                                 "; the categories are" + listNames(categories, toUtf8(name)));
    return positions;
}

std::string listNames(const std::vector<std::u16string>& names, const std::string& wanted)
{
    constexpr std::size_t named = 20;
    // Near names of a million categories would be long to find.
    constexpr std::size_t compared = 1000;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.size(), named); ++i)
        list += (i == 0 ? " " : ", ") + quoteText(names[i]);
    if (names.size() > named) list += " and " + std::to_string(names.size() - named) + " more";
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < std::min(names.size(), compared); ++i) texts.push_back(toUtf8(names[i]));
    return list + suggestName(wanted, texts);
}

}  // namespace quillon::report
