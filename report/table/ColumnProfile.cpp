#include "report/table/ColumnProfile.h"

#include <algorithm>
#include <cmath>

#include "report/table/CellText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Digits, with a point between them or without: by far the most cells. The number of digits before the point
/// and behind it; nothing for any other text.
std::optional<std::pair<std::size_t, std::size_t>> countPlainDigits(std::string_view text)
{
    if (text.starts_with('-')) text.remove_prefix(1);
    std::size_t whole = 0;
    while (whole < text.size() && isDigit(text[whole])) ++whole;
    if (whole == 0 || whole > 300) return std::nullopt;
    if (whole == text.size()) return std::pair(whole, std::size_t{0});
    const auto decimals = text.substr(whole + 1);
    if (text[whole] != '.' || decimals.empty() || !std::all_of(decimals.begin(), decimals.end(), isDigit))
        return std::nullopt;
    return std::pair(whole, decimals.size());
}

/// The days of March 1900 and later count alike in all worksheets.
constexpr double firstSerial = 61;
/// Four digits beyond 2200 are hardly years.
constexpr double lastYear = 109'575;

}  // namespace

ColumnProfile::ColumnProfile(const std::vector<NumberStyle>& styles, const std::vector<std::string>& missing)
    : missing_(&missing)
{
    for (const auto& style : styles) readings_.push_back({style});
}

void ColumnProfile::add(const Cell& cell, std::size_t line)
{
    ++rows_;
    if (mayBeDates_) addDate(cell, line);
    mayBeDates_ = mayBeDates_ && staysDates();
    if (cell.isEmpty()) return;
    ++filled_;
    if (cell.kind == CellKind::Text) return addText(cell.text, line);
    ++values_;
    if (cell.kind == CellKind::Date) return;
    for (auto& reading : readings_) ++reading.count;
    addFormat(cell, line);
}

/// A format tells the currency of a number. Percentages are numbers already, and a zero has any unit.
void ColumnProfile::addFormat(const Cell& cell, std::size_t line)
{
    if (cellFormat_.empty()) cellFormat_ = cell.format;
    if (cell.format != lastFormat_) {
        lastFormat_ = cell.format;
        lastFormatUnit_ = findUnit(lastFormat_);
    }
    if (cell.number == 0 || lastFormatUnit_ == "%") return;
    auto& unit = getUnit({lastFormatUnit_});
    ++unit.count;
    if (!unit.first.isSet()) unit.first = {line, writeNumber(cell.number)};
}

void ColumnProfile::addText(std::string_view text, std::size_t line)
{
    if (isMissing(text, *missing_)) return;
    ++values_;
    if (addPlain(text, line)) return;
    const auto number = readNumberText(text);
    if (!number || !addNumber(*number, text, line)) firstText_.setOnce(line, text);
}

bool ColumnProfile::addPlain(std::string_view text, std::size_t line)
{
    const auto digits = countPlainDigits(text);
    if (!digits) return false;
    const auto [whole, decimals] = *digits;
    // "1.234" is also a number of thousands.
    if (decimals == 3 && whole <= 3) return false;
    for (auto& reading : readings_) {
        if (decimals > 0 && reading.style.decimal == ',') continue;
        ++reading.count;
        reading.decimals = std::max(reading.decimals, decimals);
    }
    if (whole > 1 || text != "0") addBare(text, line);
    return true;
}

bool ColumnProfile::addNumber(const NumberText& number, std::string_view text, std::size_t line)
{
    std::optional<double> first;
    bool isNumber = false;
    for (auto& reading : readings_) {
        const auto digits = readDigits(number.digits, reading.style);
        if (!digits) continue;
        isNumber = true;
        ++reading.count;
        reading.decimals = std::max(reading.decimals, digits->decimals);
        reading.isGrouped = reading.isGrouped || digits->isGrouped;
        if (first && *first != digits->value) differing_.setOnce(line, text);
        first = digits->value;
    }
    if (!isNumber) return false;
    auto& unit = getUnit(number.unit);
    ++unit.count;
    unit.first.setOnce(line, text);
    return true;
}

void ColumnProfile::addBare(std::string_view text, std::size_t line)
{
    ++units_.front().count;
    units_.front().first.setOnce(line, text);
}

ColumnProfile::UnitCount& ColumnProfile::getUnit(const Unit& unit)
{
    for (auto& known : units_)
        if (known.symbol == unit.symbol) return known;
    return units_.emplace_back(UnitCount{std::string(unit.symbol), unit.isBefore, unit.isSpaced});
}

const ColumnProfile::UnitCount* ColumnProfile::findSymbol() const
{
    return units_.size() > 1 ? &units_[1] : nullptr;
}

std::optional<ColumnProfile::UnitConflict> ColumnProfile::findUnitConflict() const
{
    const bool hasPercent =
        std::any_of(units_.begin(), units_.end(), [](const UnitCount& unit) { return unit.symbol == "%"; });
    std::vector<const UnitCount*> units;
    for (const auto& unit : units_)
        if (unit.count > 0 && (hasPercent || !unit.symbol.empty())) units.push_back(&unit);
    if (units.size() < 2) return std::nullopt;
    const auto isRarer = [](const UnitCount* a, const UnitCount* b) {
        return a->count != b->count ? a->count < b->count : a->symbol.empty() && !b->symbol.empty();
    };
    // Of two that are as frequent, the later one is the other.
    std::reverse(units.begin(), units.end());
    std::stable_sort(units.begin(), units.end(), isRarer);
    return UnitConflict{*units.back(), *units.front()};
}

bool ColumnProfile::isNumeric() const
{
    return std::any_of(readings_.begin(), readings_.end(), [this](const Reading& reading) {
        return reading.count > 0 && reading.count * 2 >= values_;
    });
}

std::string ColumnProfile::makeFormat(const Reading& reading) const
{
    const auto* unit = findSymbol();
    if (!cellFormat_.empty() && (unit == nullptr || findUnit(cellFormat_) == unit->symbol))
        return cellFormat_;
    if (unit == nullptr) return makeNumberFormat({}, reading.decimals, reading.isGrouped);
    return makeNumberFormat({unit->symbol, unit->isBefore, unit->isSpaced}, reading.decimals,
                            reading.isGrouped);
}

/// Where no more cells are misfits than dates, of which the first may be one. A column of years has none:
/// four digits are any number.
bool ColumnProfile::staysDates() const
{
    static constexpr std::size_t early = 4;
    return std::any_of(misfits_.begin(), misfits_.end(), [this](const Misfits& misfits) {
        const bool areYears = dateUnit_ == DateStep::Year;
        return misfits.count == 0 || (!areYears && misfits.count * 2 <= std::max(rows_, early));
    });
}

void ColumnProfile::addDate(const Cell& cell, std::size_t line)
{
    if (cell.kind == CellKind::Date) {
        const bool hasTime = cell.number != std::floor(cell.number);
        const DateText date{cell.number, hasTime ? DateStep::Time : DateStep::Day};
        return addDates({date, date, date}, {}, line);
    }
    const auto text = writeCell(cell);
    std::array<std::optional<DateText>, 3> dates;
    for (std::size_t order = 0; order < dates.size(); ++order)
        dates.at(order) = readDate(text, static_cast<DateOrder>(order));
    addDates(dates, text, line);
}

void ColumnProfile::addDates(const std::array<std::optional<DateText>, 3>& dates, std::string_view text,
                             std::size_t line)
{
    const auto& [dayFirst, monthFirst, yearFirst] = dates;
    const auto& date = dayFirst ? dayFirst : monthFirst ? monthFirst : yearFirst;
    const bool isDate = date && suitsUnit(*date);
    for (std::size_t order = 0; order < dates.size(); ++order) {
        if (isDate && dates.at(order)) continue;
        ++misfits_.at(order).count;
        misfits_.at(order).first.setOnce(line, text);
    }
    if (dayFirst && monthFirst && dayFirst->serial != monthFirst->serial) differingDate_.setOnce(line, text);
    if (!isDate) return;
    hasEarly_ = hasEarly_ || date->serial < firstSerial;
    isAscending_ = isAscending_ && (rows_ == 1 || date->serial > lastDate_);
    lastDate_ = date->serial;
    addDoubts(*date, text, line);
}

void ColumnProfile::addDoubts(const DateText& date, std::string_view text, std::size_t line)
{
    if (!firstDate_) firstDate_ = date;
    if (date.offset != firstDate_->offset) otherOffset_.setOnce(line, text);
    if (!date.isDoubtful) return;
    ++doubtfulCount_;
    doubtful_.setOnce(line, text);
}

/// Days may have a time; other units do not mix.
bool ColumnProfile::suitsUnit(const DateText& date)
{
    const auto isDay = [](DateStep unit) { return unit == DateStep::Day || unit == DateStep::Time; };
    if (dateUnit_ && *dateUnit_ != date.unit && !(isDay(*dateUnit_) && isDay(date.unit))) return false;
    dateUnit_ = dateUnit_ ? std::max(*dateUnit_, date.unit) : date.unit;
    return true;
}

bool ColumnProfile::isDate(DateOrder order) const
{
    const bool isPlausible = dateUnit_ != DateStep::Year || (isAscending_ && lastDate_ <= lastYear);
    return misfits_.at(static_cast<std::size_t>(order)).count == 0 && rows_ > 0 && !hasEarly_ && isPlausible;
}

bool ColumnProfile::hasEarlyDates() const
{
    const bool fits = std::any_of(misfits_.begin(), misfits_.end(),
                                  [](const Misfits& misfits) { return misfits.count == 0; });
    return hasEarly_ && mayBeDates_ && fits && dateUnit_ != DateStep::Year;
}

Sample ColumnProfile::getMisfit(DateOrder order) const
{
    const auto& misfits = misfits_.at(static_cast<std::size_t>(order));
    const bool isNamed = dateUnit_ && *dateUnit_ != DateStep::Year && *dateUnit_ != DateStep::Quarter;
    return mayBeDates_ && isNamed && misfits.count * 2 <= rows_ ? misfits.first : Sample{};
}

}  // namespace quillon::report
