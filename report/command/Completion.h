#pragma once

#include <string>

namespace quillon::report {

/// The completion of the command for a shell, "bash" or "zsh". Throws: UsageError for another.
std::string describeCompletion(const std::string& shell);

}  // namespace quillon::report
