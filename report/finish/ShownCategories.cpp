#include "report/finish/ShownCategories.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "report/finish/CategoryValues.h"
#include "report/finish/SeriesCopies.h"
#include "report/options/ChartError.h"
#include "report/options/NumberText.h"
#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

[[noreturn]] void refuseCategory(const std::vector<std::u16string>& categories, CategoryReader read,
                                 const char* type, const char* allowed)
{
    std::size_t index = 0;
    while (index < categories.size() && read(categories[index])) ++index;
    throw ChartError("", std::string("category-type ") + type + ": category " + std::to_string(index + 1) +
                             " is " + quoteText(categories.at(index)) + "; expected " + allowed + ".");
}

/// What the author calls dates or numbers must be so.
void readTexts(ChartData& data)
{
    const bool isDate = data.categoryKind == CategoryKind::Date;
    const auto read = isDate ? readDateText : readNumberText;
    const auto& categories = data.dataSet->getCategories();
    data.categoryValues = readCategories(categories, read);
    if (data.categoryValues.empty() && !categories.empty())
        refuseCategory(categories, read, isDate ? "date" : "number",
                       isDate ? "a date, as in 2026-07-31" : "a number, as in 1.5");
}

void makeTexts(ChartData& data)
{
    data.categoryKind = CategoryKind::Text;
    data.categoryValues.clear();
}

/// Dates as texts. Worksheets have no format for those before 1900: their names stand as they are.
void writeDates(ChartData& data)
{
    const auto& dates = data.categoryValues;
    const auto format = data.categoryFormat.empty() ? chooseDateFormat(dates) : data.categoryFormat;
    std::vector<std::u16string> texts;
    for (std::size_t i = 0; i < dates.size(); ++i)
        texts.push_back(!(dates[i] >= 0) ? data.dataSet->getCategories()[i]
                                         : toUtf16(formatNumber(dates[i], format)));
    data.dataSet = makeDataSet(texts, *data.dataSet->getSeriesList());
    makeTexts(data);
}

/// Whether each date is on a later day than the one before: an axis has no unit below days.
bool ascend(const std::vector<double>& dates)
{
    const auto goesBack = [](double date, double next) { return std::floor(date) >= std::floor(next); };
    return std::none_of(dates.begin(), dates.end(), [](double date) { return std::isnan(date); }) &&
           std::adjacent_find(dates.begin(), dates.end(), goesBack) == dates.end();
}

bool suitsDateAxis(const ChartContext& context, const std::vector<double>& dates)
{
    const bool isGiven = context.options.categoryType == CategoryKind::Date;
    constexpr ChartKinds always{ChartKind::Line, ChartKind::Area};
    constexpr ChartKinds whenGiven{ChartKind::Column};
    if (!always.contains(context.kind) && !(isGiven && whenGiven.contains(context.kind))) return false;
    // Worksheets count days before March 1900 in another way.
    constexpr double firstDay = 61;
    if (std::any_of(dates.begin(), dates.end(), [](double date) { return date < firstDay; })) {
        context.warn("dates before March 1900 cannot stand in a worksheet; the categories are texts.");
        return false;
    }
    const bool suits = ascend(dates);
    if (!suits && isGiven)
        context.warn("the dates do not ascend, each on a day of its own; the categories are texts.");
    return suits;
}

}  // namespace

void prepareCategories(const ChartContext& context, ChartData& data)
{
    auto& kind = data.categoryKind;
    if (data.dataSet->getCategories().empty()) data.dropLevels();
    if (!data.levels.empty()) kind = CategoryKind::Text;
    const bool isGiven = kind == CategoryKind::Date || kind == CategoryKind::Number;
    if (isGiven && data.categoryValues.empty()) readTexts(data);
    if (data.categoryValues.empty() || kind == CategoryKind::Text) {
        if (!data.categoryFormat.empty())
            context.warn("category-format is for categories that are dates or numbers; these are texts.");
        return makeTexts(data);
    }
    data.categoryValues.resize(data.dataSet->getCategories().size(), missing);
    if (kind == CategoryKind::Number) return;
    if (suitsDateAxis(context, data.categoryValues))
        kind = CategoryKind::Date;
    else
        writeDates(data);
}

}  // namespace quillon::report
