#pragma once

/// How the columns of a table are called that holds the data of a chart, and by which it is known again.
namespace quillon::report::columnNames {

/// Outer levels of the categories, "Level 1" the outermost, and the categories.
inline constexpr auto level = "Level ";
inline constexpr auto category = "Category";
/// X values that all series share; those of series "North" are "North X", its sizes "North size".
inline constexpr auto x = "X";
inline constexpr auto ownX = " X";
inline constexpr auto size = " size";

}  // namespace quillon::report::columnNames
