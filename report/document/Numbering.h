#pragma once

#include <string>

#include "report/document/Blocks.h"

namespace quillon::report {

/// The numbering part of a document: how its lists are marked.
class Numbering {
 public:
    /// Part: that of a template, or empty.
    explicit Numbering(std::string part = {});

    /// The id of a new list, which starts to count at 1.
    std::string add(ListKind kind);
    bool isUsed() const { return !numbers_.empty(); }
    /// The markup with what was added.
    std::string getPart() const;

 private:
    std::string part_;
    unsigned firstId_ = 1;
    unsigned lastId_ = 0;
    std::string numbers_;
};

}  // namespace quillon::report
