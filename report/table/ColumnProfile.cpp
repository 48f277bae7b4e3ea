#include "report/table/ColumnProfile.h"

#include <algorithm>
#include <cmath>

#include "report/table/CellText.h"

namespace quillon::report {
namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

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
    if (datesFit_ != std::array<bool, 3>{}) addDate(cell, line);
    if (cell.isEmpty()) return;
    ++filled_;
    if (cell.kind == CellKind::Text) return addText(cell.text, line);
    ++values_;
    if (cell.kind == CellKind::Date) return;
    for (auto& reading : readings_) ++reading.count;
    const bool isBare = cell.number != 0 && cell.format.find('%') == std::string_view::npos;
    if (isBare && !bare_.isSet()) bare_.setOnce(line, writeNumber(cell.number));
    if (cellFormat_.empty()) cellFormat_ = cell.format;
}

void ColumnProfile::addText(std::string_view text, std::size_t line)
{
    if (isMissing(text, *missing_)) return;
    ++values_;
    if (addPlain(text, line)) return;
    if (const auto number = readNumberText(text)) addNumber(*number, text, line);
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
    if (whole > 1 || text != "0") bare_.setOnce(line, text);
    return true;
}

void ColumnProfile::addNumber(const NumberText& number, std::string_view text, std::size_t line)
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
    if (isNumber) addUnit(number, text, line);
}

void ColumnProfile::addUnit(const NumberText& number, std::string_view text, std::size_t line)
{
    const auto& unit = number.unit;
    if (unit.symbol.empty()) return bare_.setOnce(line, text);
    if (unitSymbol_.empty()) {
        unitSymbol_ = unit.symbol;
        unitIsBefore_ = unit.isBefore;
        unitIsSpaced_ = unit.isSpaced;
    }
    if (unit.symbol != unitSymbol_) otherUnit_.setOnce(line, text);
}

bool ColumnProfile::isNumeric() const
{
    return std::any_of(readings_.begin(), readings_.end(), [this](const Reading& reading) {
        return reading.count > 0 && reading.count * 2 >= values_;
    });
}

std::string ColumnProfile::makeFormat(const Reading& reading) const
{
    if (unitSymbol_.empty() && !cellFormat_.empty()) return cellFormat_;
    return makeNumberFormat({unitSymbol_, unitIsBefore_, unitIsSpaced_}, reading.decimals, reading.isGrouped);
}

void ColumnProfile::addDate(const Cell& cell, std::size_t line)
{
    if (cell.kind == CellKind::Date) {
        const bool hasTime = cell.number != std::floor(cell.number);
        noteDate({cell.number, hasTime ? DateUnit::Time : DateUnit::Day});
    } else {
        addDateText(cell.kind == CellKind::Number ? writeNumber(cell.number) : std::string(cell.text), line);
    }
}

void ColumnProfile::addDateText(std::string_view text, std::size_t line)
{
    std::array<std::optional<DateText>, 3> dates;
    for (std::size_t order = 0; order < dates.size(); ++order) {
        if (datesFit_.at(order)) dates.at(order) = readDate(text, static_cast<DateOrder>(order));
        datesFit_.at(order) = dates.at(order).has_value();
    }
    const auto& [dayFirst, monthFirst, yearFirst] = dates;
    if (dayFirst && monthFirst && dayFirst->serial != monthFirst->serial) differingDate_.setOnce(line, text);
    if (const auto& date = dayFirst ? dayFirst : monthFirst ? monthFirst : yearFirst) noteDate(*date);
}

void ColumnProfile::noteDate(const DateText& date)
{
    const auto isDay = [](DateUnit unit) { return unit == DateUnit::Day || unit == DateUnit::Time; };
    if (dateUnit_ && *dateUnit_ != date.unit && !(isDay(*dateUnit_) && isDay(date.unit))) datesFit_ = {};
    dateUnit_ = dateUnit_ ? std::max(*dateUnit_, date.unit) : date.unit;
    hasEarly_ = hasEarly_ || date.serial < firstSerial;
    isAscending_ = isAscending_ && (rows_ == 1 || date.serial > lastDate_);
    lastDate_ = date.serial;
}

bool ColumnProfile::isDate(DateOrder order) const
{
    const bool isPlausible = dateUnit_ != DateUnit::Year || (isAscending_ && lastDate_ <= lastYear);
    return datesFit_.at(static_cast<std::size_t>(order)) && rows_ > 0 && !hasEarly_ && isPlausible;
}

}  // namespace quillon::report
