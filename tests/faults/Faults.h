#pragma once

/// A library that is loaded before all others and makes allocations and system calls fail. Programs ask for
/// that by its functions, other programs by their environment:
///
///   QUILLON_FAIL_START=12         allocation 12 fails, counted from the start of the program
///   QUILLON_FAIL_AT=12            allocation 12 fails, counted from main
///   QUILLON_FAIL_FROM=12          that one and all behind it
///   QUILLON_FAIL_CALL=write:2:28  the second call of write fails with errno 28
///   QUILLON_SLOW_CALLS=5          the calls that change a file take 5 ms longer
///   QUILLON_COUNTS=FILE           at the end, FILE has lines with a name and a count: start for the
///   allocations before
///                                 main, malloc for those behind, and each call
///
/// Reads and writes deal with few bytes at a time.
namespace quillon::faults {

/// Makes allocation `at` from now on fail, and all behind it where `all` is true; 0 for none.
void failAllocation(long at, bool all);

/// The allocations since the last call of failAllocation.
long countAllocations();

/// Whether an environment variable is set, and its number.
long readNumber(const char* variable);

/// Starts the counts, at the begin of main.
void startCalls();
/// Writes a line for each call.
void printCalls(int file);

}  // namespace quillon::faults
