#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace quillon::fuzz {

/// The bytes that a harness was given, taken from the front. Behind their end everything taken is its
/// smallest.
class Input {
 public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    bool isEmpty() const { return rest_.empty(); }

    std::uint8_t takeByte()
    {
        if (isEmpty()) return 0;
        const auto byte = static_cast<std::uint8_t>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }

    /// From `minimum` to `maximum`; as many bytes as that range needs.
    std::uint64_t takeNumber(std::uint64_t minimum, std::uint64_t maximum)
    {
        const auto range = maximum - minimum;
        std::uint64_t number = 0;
        for (auto left = range; left > 0; left >>= 8) number = number << 8 | takeByte();
        return range == std::numeric_limits<std::uint64_t>::max() ? number : minimum + number % (range + 1);
    }

    /// From 0 to `count` - 1.
    std::size_t takeIndex(std::size_t count) { return takeNumber(0, count - 1); }
    /// True once in `every` times; at the end of the input, false.
    bool takeChance(unsigned every) { return takeIndex(every) == every - 1; }

    template <typename Choices>
    const auto& pick(const Choices& choices)
    {
        return choices[takeIndex(std::size(choices))];
    }

    /// Up to `longest` bytes; the first says how many.
    std::string takeBytes(std::uint8_t longest = 40)
    {
        const std::size_t wanted = takeNumber(0, longest);
        const auto size = std::min(wanted, rest_.size());
        std::string bytes(rest_.substr(0, size));
        rest_.remove_prefix(size);
        return bytes;
    }

    std::string takeRest() { return std::string(std::exchange(rest_, {})); }

    /// Any double, and often one at a limit of its type, of charts or of worksheets.
    double takeDouble();
    /// UTF-16 with a taste for trouble: halves of pairs, control characters, escapes, markup, formulas.
    std::u16string takeText();
    /// UTF-8, mostly well-formed, with the same taste.
    std::string takeUtf8();

 private:
    std::string_view rest_;
};

inline double Input::takeDouble()
{
    using Limits = std::numeric_limits<double>;
    static constexpr double limits[] = {0.0,
                                        -0.0,
                                        1.0,
                                        -1.0,
                                        0.1,
                                        1.0 / 3,
                                        100,
                                        Limits::quiet_NaN(),
                                        -Limits::quiet_NaN(),
                                        Limits::infinity(),
                                        -Limits::infinity(),
                                        Limits::denorm_min(),
                                        Limits::min(),
                                        Limits::max(),
                                        Limits::lowest(),
                                        9.99999999999999e307,
                                        9.999999999999991e307,
                                        1e15,
                                        123456789012345680.0,
                                        1e-7,
                                        1e21,
                                        45000,
                                        59.5,
                                        60,
                                        2958465,
                                        2958466,
                                        4294967296.0,
                                        18446744073709551615.0,
                                        9007199254740993.0};
    switch (takeIndex(3)) {
        case 0:
            return pick(limits);
        case 1:
            return static_cast<double>(static_cast<std::int16_t>(takeNumber(0, 0xFFFF))) / 7;
        default:
            return std::bit_cast<double>(takeNumber(0, std::numeric_limits<std::uint64_t>::max()));
    }
}

inline std::u16string Input::takeText()
{
    using namespace std::string_literals;
    static const std::u16string pieces[] = {u"\xD800"s,   u"\xDC00"s,     u"\xD83D\xDE00"s,
                                            u"\uFFFE"s,   u"\uFFFF"s,     u"\0"s,
                                            u"\x01"s,     u"\x1F"s,       u"\x7F"s,
                                            u"\x85"s,     u"\u2028"s,     u"_x0041_"s,
                                            u"_x005F_"s,  u"_x0041"s,     u"_x"s,
                                            u"_"s,        u"\r"s,         u"\n"s,
                                            u"\t"s,       u" "s,          u"]]>"s,
                                            u"<!--"s,     u"&amp;"s,      u"<a>"s,
                                            u"\""s,       u"'"s,          u"=cmd|' /C calc'!A0"s,
                                            u"+1"s,       u"@SUM(A1)"s,   u"http://x/"s,
                                            u"\uFEFF"s,   u"\u202E"s,     u"%s%n"s,
                                            u"{{name}}"s, u"2024-03-31"s, u"1,234.5"s,
                                            u"North"s};
    std::u16string text;
    for (auto count = takeNumber(0, 5); count > 0; --count) {
        switch (takeIndex(4)) {
            case 0:
            case 1:
                text += pick(pieces);
                break;
            case 2:
                for (const char byte : takeBytes(12)) text += static_cast<unsigned char>(byte);
                break;
            default:
                // A cell's text ends at 32,767 characters.
                const std::size_t length = takeChance(250) ? 32'766 + takeIndex(3) : takeIndex(300);
                text.append(length, static_cast<char16_t>(takeNumber(0, 0xFFFF)));
        }
    }
    return text;
}

inline std::string Input::takeUtf8()
{
    static const std::string pieces[] = {"North", "a & b <c>",    "\xE2\x82\xAC", "\xF0\x9F\x8E\x89",
                                         "\xC3",  "\xED\xA0\x80", "\x01",         "\r\n",
                                         "\t",    "_x0041_",      "{page}",       "\xEF\xBF\xBF"};
    std::string text;
    for (auto count = takeNumber(0, 3); count > 0; --count)
        text += takeChance(4) ? pick(pieces) : takeBytes(20);
    return text;
}

}  // namespace quillon::fuzz
