#include "chart/model/DataSet.h"

#include <gtest/gtest.h>

#include <limits>

#include "chart/model/GradientFillFormat.h"
#include "chart/model/PieChartDataSeriesFormatOptions.h"
#include "tests/ThrownText.h"

namespace quillon::chart {
namespace {

constexpr std::uint64_t lastPosition = std::numeric_limits<std::uint64_t>::max();
constexpr auto appended = "nothing was thrown";

std::shared_ptr<DataSeries> grow(std::shared_ptr<DataSeries> series, std::size_t size)
{
    while (series->getSize() < size) series->appendPoint(1);
    return series;
}

/// A set with one series for each size; those past the first reach it after they are appended.
std::shared_ptr<DataSet> setOf(const std::vector<std::size_t>& sizes)
{
    auto set = DataSet::create();
    for (const auto size : sizes) grow(set->appendSeries(grow(DataSeries::create(), sizes.front())), size);
    return set;
}

TEST(DataSet, ComparesASeriesWithTheFirstAndAListOfValuesWithTheSecond)
{
    const std::string noSecond = "vector::_M_range_check: __n (which is 1) >= this->size() (which is 1)";
    struct {
        std::vector<std::size_t> existing;
        std::size_t size;
        std::string seriesText, valuesText;
    } const cases[] = {
        {{}, 4, appended, appended},
        {{}, 0, appended, appended},
        {{3}, 3, appended, noSecond},
        {{3}, 4, "New series size 4 differs from existing series size 3", noSecond},
        {{3, 5}, 3, appended, "New series size 3 differs from existing series size 5"},
        {{3, 5}, 5, "New series size 5 differs from existing series size 3", appended},
    };
    for (const auto& [existing, size, seriesText, valuesText] : cases) {
        const auto set = setOf(existing);
        const auto series = grow(DataSeries::create(), size);
        EXPECT_EQ(thrownText([&] { EXPECT_EQ(set->appendSeries(series), series); }), seriesText);
        EXPECT_EQ(set->getSeriesCount(), existing.size() + (seriesText == appended ? 1 : 0));
        EXPECT_EQ(series.use_count(), seriesText == appended ? 2 : 1);

        const auto other = setOf(existing);
        const std::vector<double> values(size);
        EXPECT_EQ(thrownText<std::exception>([&] { other->appendSeries(u"new", values); }), valuesText);
        EXPECT_EQ(other->getSeriesCount(), existing.size() + (valuesText == appended ? 1 : 0));

        const auto third = setOf(existing);
        EXPECT_EQ(thrownText([&] { EXPECT_EQ(appendSeries(*third, u"new", values)->getName(), u"new"); }),
                  seriesText);
        EXPECT_EQ(third->getSeriesCount(), existing.size() + (seriesText == appended ? 1 : 0));
    }
}

TEST(DataSet, RefusesEmptyHandles)
{
    const auto set = setOf({1});
    const auto series = set->getSeries(0);
    EXPECT_EQ(thrownText([&] { set->appendSeries(nullptr); }),
              "appendSeries: expected a DataSeries, got an empty handle.");
    EXPECT_EQ(thrownText([&] { series->appendPoint(nullptr); }),
              "appendPoint: expected a DataPoint, got an empty handle.");
    EXPECT_EQ(set->getSeriesCount(), 1U);
    EXPECT_EQ(series->getSize(), 1U);
}

TEST(DataSet, FindsSeriesAndPointsByPosition)
{
    const auto set = setOf({1});
    EXPECT_EQ(set->getSeries(0)->getPoint(0)->getY(), 1);
    for (const auto index : {std::uint64_t{1}, lastPosition}) {
        EXPECT_EQ(thrownText<std::out_of_range>([&] { set->getSeries(index); }),
                  "vector::_M_range_check: __n (which is " + std::to_string(index) +
                      ") >= this->size() (which is 1)");
        EXPECT_EQ(thrownText([&] { set->getSeries(0)->getPoint(index); }), "Data point index out of range.");
        EXPECT_EQ(DataSet().getSeries(index), nullptr);
    }
    EXPECT_EQ(DataSet().getSeries(0), nullptr);
}

TEST(DataSet, CopiesItsCategoriesAlone)
{
    DataSet source({u"b", u"a", u""});
    source.appendSeries(u"s", {1});
    source.getSeriesList()->clear();
    const DataSet copy(source);
    EXPECT_EQ(copy.getCategories(), (std::vector<std::u16string>{u"b", u"a", u""}));
    EXPECT_EQ(copy.getSeriesCount(), 0U);
    EXPECT_EQ(source.getSeriesCount(), 1U);
}

TEST(DataSeries, AppendsPointsAndValues)
{
    DataSet set;
    const auto series = set.appendSeries(u"name", {2.5});
    EXPECT_EQ(series->getName(), u"name");
    EXPECT_TRUE(!series->getFormat() && !series->getLabelFormat() && !series->getFormatOptions());
    const auto point = series->getPoint(0);
    EXPECT_EQ(point->getX(), 0);
    EXPECT_EQ(point->getY(), 2.5);
    EXPECT_TRUE(!point->getFormat() && !point->getLabelFormat());
    EXPECT_EQ(series->appendPoint(1, 2)->getX(), 1);

    DataSeries other;
    EXPECT_EQ(other.appendPoint(point), point);
    other.getPoint(0)->setValue(7);
    EXPECT_EQ(series->getPoint(0)->getY(), 7);
}

TEST(DataSeries, CopiesPointsAndFormatsIntoNewOnes)
{
    DataSeries source(u"name");
    source.setFormat(DataSeriesShapeFormat::create(u"red"));
    source.setFormatOptions(PieChartDataSeriesFormatOptions::create(50U));
    const auto point = source.appendPoint(1, 2);
    point->setFormat(DataPointShapeFormat::create(u"blue"));
    source.setLabelFormat(DataLabelFormat::create());
    point->setLabelFormat(source.getLabelFormat());
    source.appendPoint(3);

    const DataSeries copy(source);
    source.getFormat()->getFill()->setColor(u"changed");
    point->getFormat()->getFill()->setColor(u"changed");
    ASSERT_EQ(copy.getSize(), 2U);
    EXPECT_EQ(copy.getPoint(0)->getX(), 1);
    EXPECT_EQ(copy.getPoint(1)->getY(), 3);
    EXPECT_EQ(copy.getFormat()->getFill()->getColor()->getText(), u"red");
    EXPECT_EQ(copy.getPoint(0)->getFormat()->getFill()->getColor()->getText(), u"blue");
    EXPECT_TRUE(!copy.getPoint(1)->getFormat() && !copy.getPoint(1)->getLabelFormat());
    // The copy's own handle, and the one that it gives.
    EXPECT_EQ(copy.getLabelFormat().use_count(), 2);
    EXPECT_EQ(copy.getPoint(0)->getLabelFormat().use_count(), 2);
    EXPECT_EQ(copy.getPoint(0).use_count(), 2);
    // Of the options only the base part is kept.
    EXPECT_STREQ(copy.getFormatOptions()->getFullyQualifiedOrcaTypeName(),
                 "quillon.chart.DataSeriesFormatOptions");

    source.getPoint(1)->setFormat(DataPointShapeFormat::create());
    source.getPoint(1)->getFormat()->setFill(GradientFillFormat::create());
    EXPECT_EQ(thrownText([&] { DataSeries another(source); }),
              "Unsupported fill format type: quillon.chart.GradientFillFormat");
}

TEST(PieChartDataSeriesFormatOptions, RefusesValuesPastTheirRange)
{
    using Options = PieChartDataSeriesFormatOptions;
    const std::string explosionText = "Pie explosion percentage must be <= 100.";
    const std::string angleText = "First slice angle must be <= 360 degrees.";
    EXPECT_EQ(thrownText([] { Options::create(101U, 361U); }), explosionText);
    EXPECT_EQ(thrownText([] { Options::create(100U, 361U); }), angleText);
    Options options(100, 360);
    EXPECT_EQ(thrownText([&] { options.setPieExplosion(0xFFFFFFFF); }), explosionText);
    EXPECT_EQ(thrownText([&] { options.setFirstSliceAngle(361); }), angleText);
    const Options copy(options);
    EXPECT_TRUE(copy.getPieExplosion() == 100 && copy.getFirstSliceAngle() == 360);
}

}  // namespace
}  // namespace quillon::chart
