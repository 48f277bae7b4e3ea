#pragma once

#include <optional>
#include <string>

#include "report/table/ColumnProfile.h"
#include "report/table/DateText.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// A column that may hold dates, and what its author says of them: the option dates.
struct DateColumn {
    const ColumnProfile& profile;
    const SourcePlace& place;
    const std::string& name;
    const std::string& asked;
};

/// The order of day, month and year of a column of dates; nothing where it holds none, or stays ambiguous.
/// `note` hears of what is doubtful, and of a cell that keeps a column from holding dates.
std::optional<DateOrder> chooseDateOrder(const DateColumn& column, const Note& note);

}  // namespace quillon::report
