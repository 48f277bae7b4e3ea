#include "report/finish/ShownChart.h"

#include <algorithm>
#include <cmath>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/finish/RingChart.h"
#include "report/finish/SeriesCopies.h"
#include "report/finish/SeriesNames.h"
#include "report/finish/ShownAmounts.h"
#include "report/finish/ShownCategories.h"
#include "report/finish/ShownPoints.h"
#include "report/finish/Waterfall.h"
#include "report/options/ChartError.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

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
        takeAmounts(options_, data());
        if (options_.categoryType) data().categoryKind = *options_.categoryType;
        if (pointKinds.contains(context_.kind)) {
            preparePoints(context_, shown_);
            // X values take the place of the categories, which need not be written first.
            drawn_ = makeDataSet({}, *dataSet().getSeriesList());
        } else {
            prepareCategories(context_, data());
            drawn_ = data().dataSet;
        }
        if (is(ChartKind::Bubble)) requireSizes(shown_);
        if (is(ChartKind::Stock)) requireStock();
        if (is(ChartKind::Waterfall)) drawWaterfall();
        addErrorColumns(shown_);
    }

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
