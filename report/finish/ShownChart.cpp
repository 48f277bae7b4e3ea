#include "report/finish/ShownChart.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/finish/CategoryValues.h"
#include "report/finish/ChartPart.h"
#include "report/finish/RingChart.h"
#include "report/finish/SeriesNames.h"
#include "report/finish/Waterfall.h"
#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
#include "report/options/NumberText.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();

using Amounts = std::vector<double> SeriesDetails::*;

std::vector<double> listValues(const chart::DataSeries& series)
{
    std::vector<double> values;
    values.reserve(series.getSize());
    for (const auto& point : series.getPoints()) values.push_back(point->getValue());
    return values;
}

/// The series without its points.
std::shared_ptr<chart::DataSeries> copyHead(const chart::DataSeries& series)
{
    auto copy = chart::DataSeries::create(series.getName());
    copy->setFormat(series.getFormat());
    copy->setLabelFormat(series.getLabelFormat());
    copy->setFormatOptions(series.getFormatOptions());
    return copy;
}

/// A data set takes series of one length alone, and the series of a chart may differ: those that are empty
/// take their points when they are in it. The points are shared.
std::shared_ptr<chart::DataSet> makeDataSet(const std::vector<std::u16string>& categories,
                                            const std::vector<std::shared_ptr<chart::DataSeries>>& series)
{
    auto made = chart::DataSet::create(categories);
    for (const auto& one : series) made->appendSeries(copyHead(*one));
    for (std::size_t i = 0; i < series.size(); ++i)
        for (const auto& point : series[i]->getPoints()) made->getSeries(i)->appendPoint(point);
    return made;
}

/// Makes the data that a chart is drawn from, step by step.
class Preparation {
 public:
    explicit Preparation(const ChartContext& context) : context_(context), options_(context.options)
    {
        shown_.data = context.data;
        shown_.data.dataSet = context.chart.getDataSet();
    }

    ShownChart run()
    {
        if (data().dataSet) prepareData();
        chooseChart();
        return std::move(shown_);
    }

 private:
    ChartData& data() { return shown_.data; }
    const chart::DataSet& dataSet() const { return *shown_.data.dataSet; }
    bool is(ChartKind kind) const { return context_.kind == kind; }

    void prepareData()
    {
        setFormats();
        takeAmounts();
        if (options_.categoryType) data().categoryKind = *options_.categoryType;
        if (pointKinds.contains(context_.kind))
            findXValues();
        else
            findCategories();
        drawn_ = pointKinds.contains(context_.kind) ? leaveCategories() : data().dataSet;
        if (is(ChartKind::Bubble)) requireSizes();
        if (is(ChartKind::Stock)) requireStock();
        if (is(ChartKind::Waterfall)) drawWaterfall();
        addErrorColumns();
    }

    // --- Formats and amounts ---

    void setFormats()
    {
        if (!options_.categoryFormat.empty()) data().categoryFormat = options_.categoryFormat;
        if (options_.numberFormat.empty() && options_.secondFormat.empty()) return;
        const auto count = dataSet().getSeriesCount();
        data().series.resize(std::max<std::size_t>(data().series.size(), count));
        std::vector<bool> isSecond(data().series.size());
        for (const auto index : findSeries(dataSet(), options_.second, "second")) isSecond[index] = true;
        for (std::size_t i = 0; i < isSecond.size(); ++i)
            setFormat(data().series[i].numberFormat,
                      isSecond[i] ? options_.secondFormat : options_.numberFormat);
    }

    /// What the author says of an axis wins over the formats in the data. The first axis speaks for series of
    /// the second that nothing else is said of.
    void setFormat(std::string& own, const std::string& ofAxis) const
    {
        if (!ofAxis.empty())
            own = ofAxis;
        else if (own.empty())
            own = options_.numberFormat;
    }

    struct AmountRow {
        const char* name;
        const std::vector<std::string>& series;
        Amounts amounts;
    };

    /// Series that hold sizes, or the lengths of error bars, become amounts of the others.
    void takeAmounts()
    {
        const std::array<AmountRow, 3> rows = {
            {{"size-series", options_.sizes, &SeriesDetails::sizes},
             {"plus-series", options_.errorPlus, &SeriesDetails::errorsPlus},
             {"minus-series", options_.errorMinus, &SeriesDetails::errorsMinus}}};
        std::array<std::vector<std::size_t>, 3> taken;
        std::vector<bool> isTaken(dataSet().getSeriesCount());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            taken[i] = findSeries(dataSet(), rows[i].series, rows[i].name);
            for (const auto position : taken[i]) isTaken[position] = true;
        }
        if (std::find(isTaken.begin(), isTaken.end(), true) == isTaken.end()) return;
        const auto all = *dataSet().getSeriesList();
        leaveSeries(isTaken);
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (!taken[i].empty()) giveAmounts(rows[i], taken[i], all);
    }

    void leaveSeries(const std::vector<bool>& isTaken)
    {
        std::vector<std::shared_ptr<chart::DataSeries>> left;
        std::vector<SeriesDetails> details;
        for (std::size_t i = 0; i < isTaken.size(); ++i) {
            if (isTaken[i]) continue;
            left.push_back(dataSet().getSeries(i));
            details.push_back(data().getDetails(i));
        }
        data().dataSet = makeDataSet(dataSet().getCategories(), left);
        data().series = std::move(details);
    }

    void giveAmounts(const AmountRow& row, const std::vector<std::size_t>& taken,
                     const std::vector<std::shared_ptr<chart::DataSeries>>& all)
    {
        const auto count = data().series.size();
        if (taken.size() != 1 && taken.size() != count)
            throw ChartError("", std::string(row.name) + ": " + std::to_string(taken.size()) +
                                     " series hold amounts for " + std::to_string(count) +
                                     " others; name one for each, or one for all.");
        for (std::size_t i = 0; i < count; ++i)
            data().series[i].*row.amounts = listValues(*all[taken.size() == 1 ? taken[0] : taken[i]]);
    }

    // --- Categories ---

    /// The number of each category, from the data or from its text; empty where one says none.
    std::vector<double> readCategories(std::optional<double> (*read)(const std::u16string&)) const
    {
        std::vector<double> numbers;
        for (const auto& category : dataSet().getCategories()) {
            const auto number = read(category);
            if (!number) return {};
            numbers.push_back(*number);
        }
        return numbers;
    }

    [[noreturn]] void refuseCategory(std::optional<double> (*read)(const std::u16string&), const char* type,
                                     const char* allowed) const
    {
        const auto& categories = dataSet().getCategories();
        std::size_t index = 0;
        while (index < categories.size() && read(categories[index])) ++index;
        throw ChartError("", std::string("category-type ") + type + ": category " +
                                 std::to_string(index + 1) + " is " + quoteText(categories.at(index)) +
                                 "; expected " + allowed + ".");
    }

    /// What the author calls dates or numbers must be so.
    void readTexts()
    {
        const bool isDate = data().categoryKind == CategoryKind::Date;
        const auto read = isDate ? readDateText : readNumberText;
        data().categoryValues = readCategories(read);
        if (data().categoryValues.empty() && !dataSet().getCategories().empty())
            refuseCategory(read, isDate ? "date" : "number",
                           isDate ? "a date, as in 2026-07-31" : "a number, as in 1.5");
    }

    void findCategories()
    {
        auto& kind = data().categoryKind;
        if (dataSet().getCategories().empty()) leaveLevels();
        if (!data().levels.empty()) kind = CategoryKind::Text;
        const bool isGiven = kind == CategoryKind::Date || kind == CategoryKind::Number;
        if (isGiven && data().categoryValues.empty()) readTexts();
        if (data().categoryValues.empty() || kind == CategoryKind::Text) {
            if (!data().categoryFormat.empty())
                context_.warn(
                    "category-format is for categories that are dates or numbers; these are texts.");
            return makeTexts();
        }
        data().categoryValues.resize(dataSet().getCategories().size(), missing);
        if (kind == CategoryKind::Number) return;
        if (suitsDateAxis(options_.categoryType == CategoryKind::Date)) {
            kind = CategoryKind::Date;
            return;
        }
        writeDates();
    }

    void leaveLevels()
    {
        auto& names = data().categoryNames;
        const auto levels = std::min(names.size(), data().levels.size());
        names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(levels));
        data().levels.clear();
    }

    bool suitsDateAxis(bool isGiven) const
    {
        constexpr ChartKinds always{ChartKind::Line, ChartKind::Area};
        constexpr ChartKinds whenGiven{ChartKind::Column};
        if (!always.contains(context_.kind) && !(isGiven && whenGiven.contains(context_.kind))) return false;
        const auto& dates = shown_.data.categoryValues;
        // Worksheets count days before March 1900 in another way.
        constexpr double firstDay = 61;
        if (std::any_of(dates.begin(), dates.end(), [](double date) { return date < firstDay; })) {
            context_.warn("dates before March 1900 cannot stand in a worksheet; the categories are texts.");
            return false;
        }
        // An axis has no unit below days.
        const bool ascends =
            std::none_of(dates.begin(), dates.end(), [](double d) { return std::isnan(d); }) &&
            std::adjacent_find(dates.begin(), dates.end(), [](double date, double next) {
                return std::floor(date) >= std::floor(next);
            }) == dates.end();
        if (!ascends && isGiven)
            context_.warn("the dates do not ascend, each on a day of its own; the categories are texts.");
        return ascends;
    }

    void makeTexts()
    {
        data().categoryKind = CategoryKind::Text;
        data().categoryValues.clear();
    }

    /// Dates as texts. Worksheets have no format for those before 1900: their names stand as they are.
    void writeDates()
    {
        const auto& dates = data().categoryValues;
        const auto format = data().categoryFormat.empty() ? chooseDateFormat(dates) : data().categoryFormat;
        std::vector<std::u16string> texts;
        for (std::size_t i = 0; i < dates.size(); ++i)
            texts.push_back(!(dates[i] >= 0) ? dataSet().getCategories()[i]
                                             : toUtf16(formatNumber(dates[i], format)));
        data().dataSet = makeDataSet(texts, *dataSet().getSeriesList());
        makeTexts();
    }

    // --- Points ---

    static bool hasX(const chart::DataSeries& series)
    {
        const auto& points = series.getPoints();
        return std::any_of(points.begin(), points.end(),
                           [](const auto& point) { return point->getX() != 0; });
    }

    /// The categories as x values: numbers, or dates.
    void readXOfCategories(const chart::DataSeries& series, std::size_t index)
    {
        if (!data().categoryValues.empty() && data().categoryKind != CategoryKind::Text) {
            if (data().categoryKind == CategoryKind::Automatic) data().categoryKind = CategoryKind::Date;
            return;
        }
        data().categoryKind = CategoryKind::Number;
        data().categoryValues = readCategories(readNumberText);
        if (!data().categoryValues.empty()) return;
        data().categoryKind = CategoryKind::Date;
        data().categoryValues = readCategories(readDateText);
        if (!data().categoryValues.empty() || series.getSize() == 0) return;
        throw ChartError(ChartPart::describe(index, series),
                         std::string("every X is 0, and the categories are not numbers; a ") +
                             findRow(kindRows, context_.kind).name +
                             " chart needs points with X, or categories that are numbers or dates; "
                             "--x names the column of a table that holds them.");
    }

    std::shared_ptr<chart::DataSeries> moveToCategories(const chart::DataSeries& series) const
    {
        auto moved = copyHead(series);
        const auto& x = shown_.data.categoryValues;
        for (std::size_t i = 0; i < series.getSize(); ++i) {
            const auto& point = series.getPoints()[i];
            const auto made = moved->appendPoint(i < x.size() ? x[i] : missing, point->getValue());
            made->setFormat(point->getFormat());
            made->setLabelFormat(point->getLabelFormat());
        }
        return moved;
    }

    static std::vector<double> listX(const chart::DataSeries& series)
    {
        std::vector<double> x;
        for (const auto& point : series.getPoints()) x.push_back(point->getX());
        return x;
    }

    /// X values that all series share stand in the place of the categories; others in columns of their own.
    void findXValues()
    {
        leaveLevels();
        std::vector<std::shared_ptr<chart::DataSeries>> series;
        const auto given = *dataSet().getSeriesList();
        for (std::size_t i = 0; i < given.size(); ++i) {
            const bool isOwn = hasX(*given[i]);
            if (!isOwn) readXOfCategories(*given[i], i);
            series.push_back(isOwn ? given[i] : moveToCategories(*given[i]));
        }
        shareX(series);
        data().dataSet = makeDataSet(dataSet().getCategories(), series);
    }

    /// X values take the place of the categories, which need not be written first.
    std::shared_ptr<chart::DataSet> leaveCategories() const
    {
        return makeDataSet({}, *dataSet().getSeriesList());
    }

    static bool areEqual(const std::vector<double>& a, const std::vector<double>& b)
    {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); });
    }

    void shareX(const std::vector<std::shared_ptr<chart::DataSeries>>& series)
    {
        if (series.empty()) return;
        const auto x = listX(*series.front());
        const bool isShared = std::all_of(series.begin(), series.end(),
                                          [&x](const auto& one) { return areEqual(listX(*one), x); });
        if (isShared) {
            if (data().categoryKind != CategoryKind::Date) data().categoryKind = CategoryKind::Number;
            data().categoryValues = x;
            return;
        }
        data().categoryKind = CategoryKind::Text;
        for (const auto& one : series)
            shown_.workbook.furtherColumns.push_back({u"X of " + one->getName(), listX(*one)});
    }

    void requireSizes()
    {
        shown_.workbook.sizes = true;
        data().series.resize(dataSet().getSeriesCount());
        for (std::size_t i = 0; i < data().series.size(); ++i) {
            auto& sizes = data().series[i].sizes;
            const auto count = dataSet().getSeries(i)->getSize();
            if (sizes.empty() && count > 0)
                throw ChartError(
                    ChartPart::describe(i, *dataSet().getSeries(i)),
                    "a bubble chart needs the sizes of its bubbles; name the series that hold them "
                    "(size-series).");
            sizes.resize(count, missing);
        }
    }

    // --- Stock and waterfall ---

    void requireStock() const
    {
        const auto count = dataSet().getSeriesCount();
        if (count != 3 && count != 4)
            throw ChartError(
                "",
                "a stock chart has 3 series, high, low and close, or 4, open, high, low and close; "
                "got " +
                    std::to_string(count) + ".");
    }

    void drawWaterfall()
    {
        if (dataSet().getSeriesCount() != 1)
            throw ChartError("", "a waterfall chart has one series, of changes and totals; got " +
                                     std::to_string(dataSet().getSeriesCount()) + ".");
        auto& totals = data().totals;
        if (!options_.totals.empty()) {
            totals.clear();
            for (const auto& name : options_.totals) totals.push_back(toUtf16(name));
        }
        const auto own = dataSet().getSeries(0);
        std::vector<std::shared_ptr<chart::DataSeries>> parts;
        for (auto& part : makeWaterfall(*own, findTotals(dataSet().getCategories(), totals))) {
            parts.push_back(drawPart(part, *own));
            shown_.workbook.furtherColumns.push_back(
                {part.name, std::move(part.values), data().getDetails(0).numberFormat});
        }
        drawn_ = makeDataSet(dataSet().getCategories(), parts);
    }

    /// A point that the author formatted keeps its format; the base shows nothing.
    static std::shared_ptr<chart::DataSeries> drawPart(const WaterfallSeries& part,
                                                       const chart::DataSeries& own)
    {
        auto series = chart::DataSeries::create(part.name);
        const bool isBase = part.part == WaterfallPart::Base;
        if (!isBase) series->setLabelFormat(own.getLabelFormat());
        for (std::size_t i = 0; i < part.values.size(); ++i) {
            const auto point = series->appendPoint(part.values[i]);
            if (!isBase && !std::isnan(part.values[i])) point->setFormat(own.getPoint(i)->getFormat());
        }
        return series;
    }

    // --- Error bars ---

    void addErrorColumns()
    {
        for (std::size_t i = 0; i < std::min<std::size_t>(data().series.size(), dataSet().getSeriesCount());
             ++i) {
            const auto& name = dataSet().getSeries(i)->getName();
            auto& details = data().series[i];
            const auto count = dataSet().getSeries(i)->getSize();
            for (auto* amounts : {&details.errorsPlus, &details.errorsMinus})
                if (!amounts->empty()) amounts->resize(count, missing);
            if (!details.errorsPlus.empty())
                shown_.workbook.furtherColumns.push_back({u"Error of " + name + u", up", details.errorsPlus});
            if (!details.errorsMinus.empty())
                shown_.workbook.furtherColumns.push_back(
                    {u"Error of " + name + u", down", details.errorsMinus});
        }
    }

    // --- The chart ---

    ChartKind findWriterKind() const
    {
        switch (context_.kind) {
            case ChartKind::Bar:
            case ChartKind::Column:
            case ChartKind::Line:
            case ChartKind::Pie:
            case ChartKind::Doughnut:
                return context_.kind;
            case ChartKind::Waterfall:
                return ChartKind::Column;
            default:
                return ChartKind::Line;
        }
    }

    static std::shared_ptr<chart::Chart> createChart(ChartKind kind)
    {
        switch (kind) {
            case ChartKind::Bar:
                return chart::BarChart::create();
            case ChartKind::Column:
                return chart::ColumnChart::create();
            case ChartKind::Pie:
                return chart::PieChart::create();
            case ChartKind::Doughnut:
                return std::make_shared<RingChart>();
            default:
                return chart::LineChart::create();
        }
    }

    /// The chart itself, where its writer and its data do; otherwise one of the right class.
    void chooseChart()
    {
        const auto kind = findWriterKind();
        if (kind == getKind(context_.chart) && drawn_ == context_.chart.getDataSet()) {
            // It belongs to the caller.
            shown_.chart = {std::shared_ptr<void>(), &context_.chart};
            return;
        }
        const auto made = createChart(kind);
        made->setTitle(context_.chart.getTitle());
        made->setPlotArea(context_.chart.getPlotArea());
        made->setDataSet(drawn_);
        shown_.chart = made;
    }

    const ChartContext& context_;
    const ChartOptions& options_;
    ShownChart shown_;
    /// The series that are drawn.
    std::shared_ptr<chart::DataSet> drawn_;
};

}  // namespace

ShownChart prepareChart(const ChartContext& context)
{
    return Preparation(context).run();
}

bool hasDateAxis(const ChartContext& context)
{
    return !pointKinds.contains(context.kind) && context.data.categoryKind == CategoryKind::Date;
}

}  // namespace quillon::report
