#pragma once

#include <unordered_set>

#include "chart/model/Object.h"

namespace quillon::python {

/// Adds the addresses of a chart or data set and of all objects that can be reached from it, as
/// orca::HostObject::getObject() gives them. What is there already is not entered again.
void collectObjects(const chart::Object& root, std::unordered_set<const void*>& objects);

}  // namespace quillon::python
