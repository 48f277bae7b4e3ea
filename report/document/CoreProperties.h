#pragma once

#include <string>

#include "report/document/Blocks.h"

namespace quillon::report {

/// The part that says what the document is called, and who wrote it.
std::string makeCoreProperties(const Properties& properties);

}  // namespace quillon::report
