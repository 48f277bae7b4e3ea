#pragma once

namespace quillon::report {

/// No value, in a variant of texts and lists. It can be copied by more than its bytes, so that libstdc++ does
/// not take such a variant for one that always holds a value: it would then destroy a copy that was never
/// made, for want of memory.
struct Nothing {
    Nothing() = default;
    // NOLINTNEXTLINE(modernize-use-equals-default): see above.
    Nothing(const Nothing& /*other*/) noexcept {}
    // NOLINTNEXTLINE(modernize-use-equals-default): goes with the constructor.
    Nothing& operator=(const Nothing& /*other*/) noexcept { return *this; }
    ~Nothing() = default;

    bool operator==(const Nothing& /*other*/) const { return true; }
};

}  // namespace quillon::report
