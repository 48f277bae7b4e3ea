#pragma once

#include <stdexcept>
#include <string>

namespace quillon {

/// The text of the Error that `call` throws. An error of another type passes through and fails the test.
template <typename Error = std::runtime_error, typename Call>
std::string thrownText(const Call& call)
{
    try {
        call();
    } catch (const Error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

}  // namespace quillon
