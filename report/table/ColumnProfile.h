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
    /// The first value that is no number in any style.
    const Sample& getFirstText() const { return firstText_; }

    /// Numbers in one unit, which is empty for those that have none.
    struct UnitCount {
        std::string symbol = {};
        bool isBefore = false;
        bool isSpaced = false;
        std::size_t count = 0;
        Sample first = {};
    };
    /// The unit of most cells, and another that some have. 45 among percentages has another; 45 among amounts
    /// of money has not.
    struct UnitConflict {
        const UnitCount& usual;
        const UnitCount& other;
    };
    std::optional<UnitConflict> findUnitConflict() const;
    /// The worksheet format that suits the cells. Empty: General.
    std::string makeFormat(const Reading& reading) const;

    /// Whether all cells are dates, none is empty, and a worksheet can hold them. Four digits are years where
    /// each is later than the one before.
    bool isDate(DateOrder order) const;
    /// The first cell that is no date, where the others are months, days or times in this order; not set
    /// where all are dates, or fewer than half.
    Sample getMisfit(DateOrder order) const;
    /// Whether it would hold dates, were none of them before March 1900.
    bool hasEarlyDates() const;
    /// A date that is another day where the month comes first.
    const Sample& getDifferingDate() const { return differingDate_; }
    /// A time whose clock is ahead of UTC by another time than those before, or says nothing of it.
    const Sample& getOtherOffset() const { return otherOffset_; }
    /// In a column of dates a day written as one number, as in 20240331.
    Sample getCompactDate() const
    {
        return dateUnit_ != DateStep::Month && isDate(DateOrder::DayMonthYear) ? doubtful_ : Sample{};
    }
    /// A month, where each may be a season over two years, as in 2010-11; not set where one may not.
    Sample getSeason() const
    {
        return dateUnit_ == DateStep::Month && doubtfulCount_ == rows_ ? doubtful_ : Sample{};
    }
    DateStep getDateUnit() const { return dateUnit_.value_or(DateStep::Day); }

 private:
    void addText(std::string_view text, std::size_t line);
    bool addPlain(std::string_view text, std::size_t line);
    bool addNumber(const NumberText& number, std::string_view text, std::size_t line);
    UnitCount& getUnit(const Unit& unit);
    void addBare(std::string_view text, std::size_t line);
    void addFormat(const Cell& cell, std::size_t line);
    void addDate(const Cell& cell, std::size_t line);
    void addDates(const std::array<std::optional<DateText>, 3>& dates, std::string_view text,
                  std::size_t line);
    bool suitsUnit(const DateText& date);
    void addDoubts(const DateText& date, std::string_view text, std::size_t line);
    bool staysDates() const;
    const UnitCount* findSymbol() const;

    const std::vector<std::string>* missing_;
    std::vector<Reading> readings_;
    std::size_t rows_ = 0;
    std::size_t filled_ = 0;
    std::size_t values_ = 0;
    Sample differing_;
    Sample firstText_;

    /// The first counts numbers without a unit.
    std::vector<UnitCount> units_ = {{}};
    std::string cellFormat_;
    std::string lastFormat_;
    std::string lastFormatUnit_;

    /// Cells that are no dates.
    struct Misfits {
        std::size_t count = 0;
        Sample first = {};
    };
    /// By DateOrder; the last, with the year first, is asked for by the author alone.
    std::array<Misfits, 3> misfits_;
    bool mayBeDates_ = true;
    Sample differingDate_;
    std::optional<DateStep> dateUnit_;
    std::optional<DateText> firstDate_;
    Sample otherOffset_;
    Sample doubtful_;
    std::size_t doubtfulCount_ = 0;
    double lastDate_ = 0;
    bool hasEarly_ = false;
    bool isAscending_ = true;
};

}  // namespace quillon::report
