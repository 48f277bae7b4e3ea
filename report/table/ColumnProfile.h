#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "report/table/DateText.h"
#include "report/table/NumberText.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// A cell that a sentence may have to name.
struct Sample {
    std::size_t line = 0;
    std::string text = {};

    bool isSet() const { return line > 0; }
    void setOnce(std::size_t atLine, std::string_view cell)
    {
        if (!isSet()) *this = {atLine, std::string(cell)};
    }
};

/// What all cells of a column say of how they are read.
class ColumnProfile {
 public:
    /// What the cells say under one style of numbers.
    struct Reading {
        NumberStyle style = {};
        std::size_t count = 0;
        std::size_t decimals = 0;
        bool isGrouped = false;
    };

    /// `missing` must outlive the profile.
    ColumnProfile(const std::vector<NumberStyle>& styles, const std::vector<std::string>& missing);

    void add(const Cell& cell, std::size_t line);

    /// Cells that are not empty.
    std::size_t getFilled() const { return filled_; }
    /// Whether half of the values at least are numbers: what is no number then is a mistake, and no text.
    bool isNumeric() const;
    /// Whether all values are numbers in this style.
    bool fits(const Reading& reading) const { return reading.count == values_ && values_ > 0; }
    const std::vector<Reading>& getReadings() const { return readings_; }
    /// A cell that is one number with a decimal point, and another with a decimal comma.
    const Sample& getDiffering() const { return differing_; }

    const std::string& getUnit() const { return unitSymbol_; }
    /// A cell whose unit is not that of the first. 45 among percentages is one; 45 among amounts of money is
    /// none.
    const Sample& getOtherUnit() const
    {
        return !otherUnit_.isSet() && unitSymbol_ == "%" ? bare_ : otherUnit_;
    }
    /// The worksheet format that suits the cells. Empty: General.
    std::string makeFormat(const Reading& reading) const;

    /// Whether all cells are dates, none is empty, and a worksheet can hold them. Four digits are years where
    /// each is later than the one before.
    bool isDate(DateOrder order) const;
    /// A date that is another day where the month comes first.
    const Sample& getDifferingDate() const { return differingDate_; }
    DateUnit getDateUnit() const { return dateUnit_.value_or(DateUnit::Day); }

 private:
    void addText(std::string_view text, std::size_t line);
    bool addPlain(std::string_view text, std::size_t line);
    void addNumber(const NumberText& number, std::string_view text, std::size_t line);
    void addUnit(const NumberText& number, std::string_view text, std::size_t line);
    void addDate(const Cell& cell, std::size_t line);
    void addDateText(std::string_view text, std::size_t line);
    void noteDate(const DateText& date);

    const std::vector<std::string>* missing_;
    std::vector<Reading> readings_;
    std::size_t rows_ = 0;
    std::size_t filled_ = 0;
    std::size_t values_ = 0;
    Sample differing_;

    std::string unitSymbol_;
    bool unitIsBefore_ = false;
    bool unitIsSpaced_ = false;
    Sample otherUnit_;
    Sample bare_;
    std::string cellFormat_;

    /// By DateOrder; the last, with the year first, is asked for by the author alone.
    std::array<bool, 3> datesFit_ = {true, true, true};
    Sample differingDate_;
    std::optional<DateUnit> dateUnit_;
    double lastDate_ = 0;
    bool hasEarly_ = false;
    bool isAscending_ = true;
};

}  // namespace quillon::report
