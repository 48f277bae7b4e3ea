#pragma once

#include <string>

#include "report/command/Verbs.h"

/// What people read of the command, made of the table of verbs.
namespace quillon::report {

/// What --help prints.
std::string describeVerb(const Verb& verb);

/// The man page, for section 1.
std::string describeAsManPage();

/// The completion for a shell, "bash" or "zsh". Throws: UsageError for another.
std::string describeCompletion(const std::string& shell);

/// "quillon-report 0.1.0".
std::string describeVersion();

}  // namespace quillon::report
