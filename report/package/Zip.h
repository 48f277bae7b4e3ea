#pragma once

#include <string>
#include <vector>

namespace quillon::report {

/// A part of a package: its name inside, and its bytes.
struct Part {
    std::string name;
    std::string bytes;
    /// Whether to compress it; what is compressed already is stored.
    bool compress = true;
};

/// The parts as a zip file, in their order; the times in it are fixed, so that equal parts give equal bytes.
/// Throws: std::runtime_error when the file cannot be made.
std::string zipParts(const std::vector<Part>& parts);

}  // namespace quillon::report
