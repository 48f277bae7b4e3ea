#pragma once

#include <map>
#include <mutex>
#include <string>

#include "support/Export.h"

namespace quillon::chart {

/// The letters of worksheet columns by number, from 0 for "A" to 25 for "Z".
///
/// A number past these is added with an empty letter when it is first asked for: references to such columns
/// carry no letter. Safe to use from several threads; only the added numbers take a lock.
class QUILLON_EXPORT ColumnLetters {
 public:
    ColumnLetters();

    const std::u16string& operator[](unsigned long number);

 private:
    std::map<unsigned long, std::u16string> letters_;
    std::mutex addedGuard_;
    std::map<unsigned long, std::u16string> added_;
};

}  // namespace quillon::chart
