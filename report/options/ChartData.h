#pragma once

#include <memory>
#include <string>
#include <vector>

#include "chart/model/DataSet.h"
#include "report/options/ChartOptions.h"

namespace quillon::report {

/// What a data series cannot say of itself.
struct SeriesDetails {
    /// As in a cell of a worksheet, "#,##0.00". Default, empty: General.
    std::string numberFormat = {};
    /// One for each point: the sizes of bubbles.
    std::vector<double> sizes = {};
    /// One for each point: how far the error bar reaches up and down, in units of the value.
    std::vector<double> errorsPlus = {};
    std::vector<double> errorsMinus = {};
};

/// The data of a chart: the data set, shared, and what it cannot say. Charts are made of it, tables and
/// documents are read into it, and documents are filled with it. A data set alone converts.
struct ChartData {
    ChartData() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a data set is chart data that says no more.
    ChartData(std::shared_ptr<chart::DataSet> set) : dataSet(std::move(set)) {}

    /// The details of a series by 0-based position; the defaults where `series` is shorter.
    const SeriesDetails& getDetails(std::size_t index) const
    {
        static const SeriesDetails none;
        return index < series.size() ? series[index] : none;
    }

    /// What a column of categories is called, by 0-based position, those of the levels first; empty where
    /// `categoryNames` is shorter.
    const std::u16string& getCategoryName(std::size_t column) const
    {
        static const std::u16string none;
        return column < categoryNames.size() ? categoryNames[column] : none;
    }

    /// Leaves the innermost level, the categories.
    void dropLevels()
    {
        if (categoryNames.size() > 1) categoryNames = {categoryNames.back()};
        levels.clear();
    }

    std::shared_ptr<chart::DataSet> dataSet;
    CategoryKind categoryKind = CategoryKind::Automatic;
    /// One for each category where they are dates or numbers; NaN where there is none. A date is its serial
    /// number in a worksheet: days since 30 December 1899, with the time of day as fraction.
    std::vector<double> categoryValues = {};
    /// As in a cell of a worksheet, "mmm yy". Default, empty: suits the kind.
    std::string categoryFormat = {};
    /// Further category columns of multi-level categories, the outermost first; each has a text for each
    /// category, empty where the level's text before it goes on.
    std::vector<std::vector<std::u16string>> levels = {};
    /// What stands above the columns of the levels, and above that of the categories, in tables and in the
    /// workbook: "Month".
    std::vector<std::u16string> categoryNames = {};
    /// The categories of a waterfall that show a total.
    std::vector<std::u16string> totals = {};
    /// In the order of the data set; may be shorter.
    std::vector<SeriesDetails> series = {};
};

}  // namespace quillon::report
