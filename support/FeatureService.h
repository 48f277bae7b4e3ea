#pragma once

#include <string>

#include "support/Export.h"

namespace quillon {

/// A part of the system that is off unless someone turns it on.
///
/// What setFeature() said last decides. Where it said nothing, a feature is on when the environment variable
/// QUILLON_FEATURES, a list of names with commas between, has its name.
class QUILLON_EXPORT Feature {
 public:
    explicit Feature(std::string name) : name_(std::move(name)) {}

    bool isOn() const;

 private:
    std::string name_;
};

/// Turns a feature on or off for the whole process; called by the host program.
QUILLON_EXPORT void setFeature(const std::string& name, bool on);

}  // namespace quillon
