#pragma once

#include <string>

namespace quillon::report {

/// Every option of a chart with its values, meaning, default and an example, in the order of the groups: a
/// Markdown document.
std::string describeOptions();

}  // namespace quillon::report
