#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "report/fill/CategoriesPlan.h"
#include "report/fill/ChartMarkup.h"
#include "report/fill/FillReport.h"
#include "report/fill/SeriesPlan.h"
#include "report/fill/WorkbookFill.h"
#include "report/options/ChartData.h"

namespace quillon::report {

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
    const Categories& getCategoriesBefore() const { return categories_.before; }
    const Categories& getCategories() const { return *categories_.after; }
    /// Whether the data says how its categories look.
    bool isCategoryFormatGiven() const { return !data_.categoryFormat.empty(); }
    /// For each category, the old one whose formats it takes.
    const Matches& getCategoryMatches() const { return *categories_.matches; }
    const FillReport& getReport() const { return report_; }

    /// What the cells of the workbook are to hold, and those whose series has gone.
    std::vector<SeriesCells> makeCells() const;
    std::vector<SeriesCells> makeRemovedCells() const;
    /// Takes over where the workbook holds the cells.
    void setReferences(const std::vector<SeriesCells>& cells);

 private:
    void warnOfUnnamedPoints();
    void planSeries();
    void warnOfHiddenSlices();
    void planOrder();
    bool isPie() const;
    void putFirst(SeriesPlan& first);
    void planWaterfall();
    std::vector<std::u16string> listCategories() const;
    std::vector<bool> chooseTotals(const std::vector<std::u16string>& categories);
    void warnOfLostTotals();

    const ChartMarkup& part_;
    const ChartData& data_;
    FillOptions options_;
    CategoriesPlan categories_;
    /// That of the author of a waterfall comes behind those that draw it.
    std::vector<SeriesPlan> series_;
    std::size_t drawnCount_ = 0;
    std::vector<std::size_t> totals_;
    std::vector<const SeriesMarkup*> removed_;
    FillReport report_;
};

}  // namespace quillon::report
