#pragma once

#include <string>

#include "report/command/Verbs.h"

/// What people read of the command, made of the table of verbs.
namespace quillon::report {

/// What --help prints.
std::string describeVerb(const Verb& verb);

/// The man page, for section 1.
std::string describeAsManPage();

/// "quillon-report 0.1.0".
std::string describeVersion();

}  // namespace quillon::report
