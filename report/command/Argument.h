#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillon::report {

/// How often an option may stand on the command line.
enum class Often : std::uint8_t {
    Once,
    /// As often as wanted; the values add up.
    Repeatedly,
    /// Once for each TABLE; those before the first TABLE are for all.
    OncePerTable,
    RepeatedlyPerTable
};

/// An option of the command line. Parsing, help, the man page and completion follow from rows of these.
struct Argument {
    /// Behind "--".
    std::string name;
    /// Behind "-"; 0 for none.
    char letter = 0;
    /// What stands for the value in help, "FILE"; empty for a flag.
    std::string value = {};
    /// One line for the author.
    std::string help = {};
    /// The heading above it in help; empty for one that help leaves out.
    std::string group = {};
    /// The values that are allowed. Empty: any.
    std::vector<std::string> choices = {};
    Often often = Often::Once;

    bool isFlag() const { return value.empty(); }
    bool isPerTable() const { return often == Often::OncePerTable || often == Often::RepeatedlyPerTable; }
    bool isRepeatable() const { return often == Often::Repeatedly || often == Often::RepeatedlyPerTable; }
};

}  // namespace quillon::report
