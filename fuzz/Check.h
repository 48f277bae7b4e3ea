#pragma once

#include <algorithm>
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
        static_cast<void>(
            std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(character)));
        if (character < u' ' || character > u'~')
            shown += escaped;
        else
            shown += static_cast<char>(character);
    }
    return shown;
}

/// What an oracle asks for: ends the program, for the fuzzer to keep the input, where it does not hold.
inline void require(bool condition, std::string_view sentence, std::string_view detail = "")
{
    if (condition) return;
    static_cast<void>(std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(sentence.size()), sentence.data(),
                                   static_cast<int>(detail.size()), detail.data()));
    std::abort();
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

/// Sentences for a terminal are UTF-8 without control characters; each is short, and they are not many.
inline void requireWords(std::string_view sentences)
{
    require(!sentences.empty(), "an error without a sentence");
    require(isUtf8(sentences), "a message that is not UTF-8", sentences);
    std::size_t lineCount = 0;
    for (std::size_t at = 0; at <= sentences.size(); ++lineCount) {
        const auto line = sentences.substr(at, std::min(sentences.find('\n', at), sentences.size()) - at);
        require(line.size() < 4096, "a sentence too long for a terminal", line.substr(0, 400));
        for (const char character : line)
            require(static_cast<unsigned char>(character) >= ' ', "a control character in a message", line);
        at += line.size() + 1;
    }
    require(lineCount <= 60, "too many sentences", sentences.substr(0, 400));
}

/// Runs `work`, and says whether it came to its end. The library may refuse what it is asked for by a
/// std::runtime_error with a sentence for a terminal; whatever else is thrown ends the program.
template <typename Work>
bool isAccepted(const Work& work)
{
    try {
        work();
        return true;
    } catch (const std::runtime_error& error) {
        requireWords(error.what());
        return false;
    }
}

}  // namespace quillon::fuzz
