#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "report/fill/CategoriesPlan.h"
#include "report/fill/ChartMarkup.h"
#include "report/fill/FillReport.h"
#include "report/fill/SeriesPlan.h"
#include "report/options/ChartData.h"

namespace quillon::report {

/// Plans what the sources of a series hold from now on: name, categories or x values, values, sizes, and
/// amounts of error bars. What the data leaves unsaid stays as the chart has it.
class ContentPlanner {
 public:
    /// The caller keeps all of them; warnings go to `report`.
    ContentPlanner(const ChartMarkup& part, const ChartData& data, const FillOptions& options,
                   const CategoriesPlan& categories, FillReport& report)
        : part_(part), data_(data), options_(options), categories_(categories), report_(report)
    {
    }

    /// Completes `plan`, one of `all` series that the chart has from now on.
    void plan(SeriesPlan& plan, const std::vector<SeriesPlan>& all, const chart::DataSeries& series,
              const SeriesDetails& details);

 private:
    void planName(SeriesPlan& plan) const;
    void planNames(SeriesPlan& plan, const std::vector<SeriesPlan>& all) const;
    void planPoints(SeriesPlan& plan, const chart::DataSeries& series, const SeriesDetails& details);
    void planX(SeriesPlan& plan, const chart::DataSeries& series, std::size_t count);
    bool hasX() const;
    std::vector<double> keepX(const SeriesPlan& plan, std::size_t count);
    std::vector<double> readX(const SeriesPlan& plan, const chart::DataSeries& series);
    void planDetails(SeriesPlan& plan, const SeriesDetails& details, std::size_t count);
    SourcePlan planNumbers(const SeriesPlan& plan, const PointSource& source,
                           std::vector<double> numbers) const;
    SourcePlan keepNumbers(const SeriesPlan& plan, const PointSource& source, std::size_t count) const;
    std::size_t countPoints(const SeriesPlan& plan, const std::vector<double>& numbers) const;
    bool hasCells(const PointSource& source) const;
    void warn(const SeriesPlan& plan, const std::string& sentence);

    const ChartMarkup& part_;
    const ChartData& data_;
    const FillOptions& options_;
    const CategoriesPlan& categories_;
    FillReport& report_;
};

}  // namespace quillon::report
