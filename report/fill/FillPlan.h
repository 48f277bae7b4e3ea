#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "report/fill/ChartMarkup.h"
#include "report/fill/ChartReader.h"
#include "report/fill/FillReport.h"
#include "report/fill/Matching.h"
#include "report/fill/WorkbookFill.h"
#include "report/options/ChartData.h"

namespace quillon::report {

/// What a source of points holds from now on.
struct SourcePlan {
    /// Number, Text or Levels; None when the source is left alone.
    PointSource::Kind kind = PointSource::Kind::None;
    /// Series share what they have in common.
    std::shared_ptr<const Categories> content = {};
    /// What replaces the number format; empty keeps it.
    std::string format = {};
    /// Empty for cells that are to be found.
    std::string formula = {};
    /// Whether cells hold the points: literals have none.
    bool hasCells = true;
};

/// The labels of points whose text is computed.
struct LabelTexts {
    /// The points that had one.
    std::set<std::size_t> before = {};
    std::map<std::size_t, std::string> after = {};
};

/// A series that the chart has from now on.
struct SeriesPlan {
    /// Whose place, or whose look for a series that is added.
    const SeriesMarkup* look = nullptr;
    bool isAdded = false;
    /// Whether a series that is added takes a colour of its own.
    bool hasOwnColor = true;
    /// Whether it does without the error bars of that look, whose amounts are those of another series.
    bool leavesErrorBars = false;
    std::uint32_t index = 0;
    std::uint32_t order = 0;
    SourcePlan name = {};
    SourcePlan categories = {};
    /// The position of the series whose cells hold the categories.
    std::size_t categoriesOf = 0;
    SourcePlan values = {};
    SourcePlan sizes = {};
    SourcePlan errorsPlus = {};
    SourcePlan errorsMinus = {};
    /// For each point, the old one whose format it takes.
    std::shared_ptr<const Matches> points = {};
    LabelTexts labels = {};
};

/// How a chart takes new data: which series, and what each of their parts holds.
class FillPlan {
 public:
    /// Throws: std::runtime_error that says why the chart cannot take the data.
    FillPlan(const ChartMarkup& part, const ChartData& data, const FillOptions& options);

    const ChartMarkup& getPart() const { return part_; }
    const FillOptions& getOptions() const { return options_; }
    /// Those that the chart draws, in their order.
    std::span<const SeriesPlan> getSeries() const { return {series_.data(), drawnCount_}; }
    /// The series that those of a waterfall draw; null for other charts.
    const SeriesPlan* getWaterfall() const
    {
        return drawnCount_ == series_.size() ? nullptr : &series_[drawnCount_];
    }
    /// The 0-based categories of a waterfall that show a total.
    const std::vector<std::size_t>& getTotals() const { return totals_; }
    const std::vector<const SeriesMarkup*>& getRemoved() const { return removed_; }
    /// Whether all series of a group go, and the group with them; one that had none already stays.
    bool isEmptied(std::size_t group) const;
    const Categories& getCategoriesBefore() const { return categoriesBefore_; }
    const Categories& getCategories() const { return *categories_; }
    /// For each category, the old one whose formats it takes.
    const Matches& getCategoryMatches() const { return *categoryMatches_; }
    const FillReport& getReport() const { return report_; }

    /// What the cells of the workbook are to hold, and those whose series has gone.
    std::vector<SeriesCells> makeCells() const;
    std::vector<SeriesCells> makeRemovedCells() const;
    /// Takes over where the workbook holds the cells.
    void setReferences(const std::vector<SeriesCells>& cells);

 private:
    void requireFillable() const;
    void requireNumbers(const chart::DataSet& dataSet) const;
    void requireTexts() const;
    void planCategories();
    void matchCategories(const Categories& after, std::size_t count);
    void planSeries();
    void warnOfHiddenSlices();
    void planOrder();
    void planContent(SeriesPlan& plan, const chart::DataSeries& series, const SeriesDetails& details);
    void planName(SeriesPlan& plan, const std::string& name) const;
    void planNames(SeriesPlan& plan);
    void planPoints(SeriesPlan& plan, const chart::DataSeries& series, const SeriesDetails& details);
    void planX(SeriesPlan& plan, const chart::DataSeries& series, std::size_t count);
    std::vector<double> readX(const SeriesPlan& plan, const chart::DataSeries& series);
    void planDetails(SeriesPlan& plan, const SeriesDetails& details, std::size_t count);
    SourcePlan planNumbers(const SeriesPlan& plan, const PointSource& source,
                           std::vector<double> numbers) const;
    SourcePlan keepNumbers(const SeriesPlan& plan, const PointSource& source, std::size_t count) const;
    std::size_t countPoints(const SeriesPlan& plan, const std::vector<double>& numbers) const;
    bool hasCells(const PointSource& source) const;
    void planWaterfall();
    std::vector<bool> chooseTotals();
    void shareCategories();
    bool isAnywhere(SourcePlan SeriesPlan::*source) const;
    void warn(const SeriesPlan& plan, const std::string& sentence);

    const ChartMarkup& part_;
    const ChartData& data_;
    FillOptions options_;
    Categories categoriesBefore_;
    std::shared_ptr<const Categories> categories_;
    std::shared_ptr<const Matches> categoryMatches_;
    bool areCategoriesNew_ = false;
    /// Whether every series gets categories, as none had any.
    bool areCategoriesMissing_ = false;
    std::size_t pointsBefore_ = 0;
    /// That of the author of a waterfall comes behind those that draw it.
    std::vector<SeriesPlan> series_;
    std::size_t drawnCount_ = 0;
    std::vector<std::size_t> totals_;
    std::vector<const SeriesMarkup*> removed_;
    FillReport report_;
};

}  // namespace quillon::report
