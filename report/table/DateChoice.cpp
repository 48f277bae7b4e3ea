#include "report/table/DateChoice.h"

#include <fmt/format.h>

#include "report/options/QuotedText.h"
#include "report/table/CellText.h"

namespace quillon::report {
namespace {

/// The sentence behind the place of a cell, or of the column as a whole.
std::string describe(const DateColumn& column, const Sample& cell, const std::string& sentence)
{
    const auto place = cell.isSet() ? column.place.at(cell.line) : column.place.name;
    return fmt::format("{}: column {}{}", place, quoteText(column.name), sentence);
}

std::string describeCell(const Sample& cell)
{
    return cell.text.empty() ? "an empty cell" : quoteText(cell.text);
}

std::optional<DateOrder> findOrder(std::string_view name)
{
    if (name == "dmy") return DateOrder::DayMonthYear;
    if (name == "mdy") return DateOrder::MonthDayYear;
    return name == "ymd" ? std::optional(DateOrder::YearMonthDay) : std::nullopt;
}

void noteOtherOrder(const DateColumn& column, DateOrder asked, const Note& note)
{
    const auto misfit = column.profile.getMisfit(asked);
    note(describe(column, misfit,
                  fmt::format(" does not hold dates as --dates {} says{}; its texts are shown as they are.",
                              column.asked, misfit.isSet() ? ": got " + describeCell(misfit) : "")));
}

void noteAmbiguous(const DateColumn& column, const Note& note)
{
    const auto& cell = column.profile.getDifferingDate();
    note(describe(
        column, cell,
        fmt::format(": {} can be {} or {}; --dates dmy or --dates mdy settles it. Its texts are "
                    "shown as they are.",
                    describeCell(cell), writeIsoDate(readDate(cell.text, DateOrder::DayMonthYear)->serial),
                    writeIsoDate(readDate(cell.text, DateOrder::MonthDayYear)->serial))));
}

void noteSeason(const DateColumn& column, const Note& note)
{
    const auto cell = column.profile.getSeason();
    note(
        describe(column, cell,
                 fmt::format(": {} can be a month or a season over two years; --dates ymd reads a month. Its "
                             "texts are shown as they are.",
                             describeCell(cell))));
}

/// A column that would be all dates but for one cell names that cell; early dates are told of.
void noteMisfit(const DateColumn& column, const Note& note)
{
    if (column.profile.hasEarlyDates())
        return note(describe(column, {},
                             " holds dates before March 1900, for which worksheets have no numbers; its "
                             "texts are shown as they are."));
    const auto dayFirst = column.profile.getMisfit(DateOrder::DayMonthYear);
    const auto misfit = dayFirst.isSet() ? dayFirst : column.profile.getMisfit(DateOrder::MonthDayYear);
    // A total is told of by itself.
    if (!misfit.isSet() || namesTotal(misfit.text)) return;
    note(describe(
        column, misfit,
        fmt::format(": {} stands among dates and is none, so that the texts are shown as they are; "
                    "{}--dates none says that this is right.",
                    describeCell(misfit), misfit.text.empty() ? "" : "--drop leaves its row out, and ")));
}

void noteCompact(const DateColumn& column, const Note& note)
{
    const auto cell = column.profile.getCompactDate();
    if (cell.isSet())
        note(describe(column, cell,
                      fmt::format(": {} is read as a date; --dates none shows its texts as they are.",
                                  describeCell(cell))));
}

void noteOffsets(const DateColumn& column, const Note& note)
{
    const auto& cell = column.profile.getOtherOffset();
    if (cell.isSet())
        note(describe(column, cell,
                      fmt::format(": {} has another offset from UTC than the cells above; the times of the "
                                  "column are shown in UTC, and one without an offset counts as such.",
                                  describeCell(cell))));
}

/// Nothing where the cells leave it open.
std::optional<DateOrder> findOnlyOrder(const DateColumn& column, const Note& note)
{
    const bool dayFirst = column.profile.isDate(DateOrder::DayMonthYear);
    const bool monthFirst = column.profile.isDate(DateOrder::MonthDayYear);
    if (!dayFirst && !monthFirst) {
        noteMisfit(column, note);
        return {};
    }
    if (dayFirst && monthFirst && column.profile.getDifferingDate().isSet()) {
        noteAmbiguous(column, note);
        return {};
    }
    if (column.profile.getSeason().isSet()) {
        noteSeason(column, note);
        return {};
    }
    noteCompact(column, note);
    return dayFirst ? DateOrder::DayMonthYear : DateOrder::MonthDayYear;
}

/// Nothing where the cells are no dates in that order.
std::optional<DateOrder> requireOrder(const DateColumn& column, DateOrder asked, const Note& note)
{
    if (column.profile.isDate(asked)) return asked;
    noteOtherOrder(column, asked, note);
    return {};
}

}  // namespace

std::optional<DateOrder> chooseDateOrder(const DateColumn& column, const Note& note)
{
    if (column.asked == "none") return {};
    const auto asked = findOrder(column.asked);
    const auto order = asked ? requireOrder(column, *asked, note) : findOnlyOrder(column, note);
    if (order) noteOffsets(column, note);
    return order;
}

}  // namespace quillon::report
