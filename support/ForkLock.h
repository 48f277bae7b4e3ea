#pragma once

#include "support/Export.h"

namespace quillon {

/// Holds up forks of the process while it lives: a child that is made while another thread holds a lock of a
/// library below us, as Xerces-C has one for making parsers, would wait for it for ever. One thread has it at
/// a time. Requires: the thread does not fork meanwhile.
class QUILLON_EXPORT ForkLock {
 public:
    ForkLock();
    ~ForkLock();
    ForkLock(const ForkLock&) = delete;
    ForkLock& operator=(const ForkLock&) = delete;
};

}  // namespace quillon
