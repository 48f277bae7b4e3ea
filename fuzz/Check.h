#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/Text.h"

/// What libFuzzer, or replay.cpp, hands each input to.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quillon::fuzz {

/// UTF-16 in ASCII, for messages.
inline std::string show(std::u16string_view text)
{
    std::string shown;
    for (const char16_t character : text.substr(0, 200)) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(character));
        if (character < u' ' || character > u'~')
            shown += escaped;
        else
            shown += static_cast<char>(character);
    }
    return shown;
}

/// What an oracle asks for: ends the program, for the fuzzer to keep the input, where it does not hold.
inline void require(bool condition, std::string_view sentence, std::string_view detail = {})
{
    if (condition) return;
    std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(sentence.size()), sentence.data(),
                 static_cast<int>(detail.size()), detail.data());
    std::abort();
}

/// Runs `work`, and says whether it came to its end. The library may refuse what it is asked for by a
/// std::runtime_error with a sentence that people can read; whatever else is thrown ends the program.
template <typename Work>
bool isAccepted(const Work& work)
{
    try {
        work();
        return true;
    } catch (const std::runtime_error& error) {
        require(error.what()[0] != '\0', "an error without a sentence");
        return false;
    }
}

inline bool isUtf8(std::string_view text)
{
    try {
        toUtf16(text);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

/// A sentence for a terminal is short UTF-8 on lines without control characters.
inline void requireWords(std::string_view sentence)
{
    require(sentence.size() < 4096, "a message too long for a terminal", sentence.substr(0, 400));
    require(isUtf8(sentence), "a message that is not UTF-8", sentence);
    for (const char character : sentence)
        require(static_cast<unsigned char>(character) >= ' ' || character == '\n',
                "a control character in a message", sentence);
}

/// The same, where a sentence is for a terminal.
template <typename Work>
bool isAcceptedInWords(const Work& work)
{
    return isAccepted([&] {
        try {
            work();
        } catch (const std::runtime_error& error) {
            requireWords(error.what());
            throw;
        }
    });
}

}  // namespace quillon::fuzz
