#include "chart/writer/ColumnLetters.h"

namespace quillon::chart {

ColumnLetters::ColumnLetters()
{
    for (unsigned long number = 0; number < 26; ++number)
        letters_[number] = std::u16string(1, static_cast<char16_t>(u'A' + number));
}

const std::u16string& ColumnLetters::operator[](unsigned long number)
{
    if (const auto found = letters_.find(number); found != letters_.end()) return found->second;
    const std::lock_guard lock(addedGuard_);
    return added_[number];
}

}  // namespace quillon::chart
