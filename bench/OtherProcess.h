#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// What is measured outside the process of the benchmarks.
namespace quillon::bench {

/// The seconds that the other library takes for a script of `docx_js` with these numbers. It runs in a
/// process of its own and times itself, so that its start does not count. Throws: std::runtime_error when
/// Node or its packages are missing.
double runOtherLibrary(const std::string& script, const std::vector<std::size_t>& numbers);

/// What the process needs at most for `work`, in bytes, beyond what it has; measured in a child.
double measurePeakMemory(const std::function<void()>& work);

}  // namespace quillon::bench
