#pragma once

#include <string>

namespace quillon::report {

/// Makes the chart classes known to the host system of this process, as a host program does. A second call
/// does nothing.
void registerChartClasses();

/// Every registered class with its superclass, constructors, properties and methods, or its members, in the
/// order of registration: a Markdown document.
std::string describeClasses();

/// The same as JSON.
std::string describeClassesAsJson();

}  // namespace quillon::report
