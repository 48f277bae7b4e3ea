#include "report/options/NumberFormat.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr std::size_t maximumLength = 255;
constexpr int maximumParts = 4;

[[noreturn]] void refuse(const std::string& format, const std::string& sentence)
{
    throw std::runtime_error(quoteText(format) + " is not a number format; " + sentence);
}

/// Walks through a format, past what stands for itself.
class FormatReader {
 public:
    explicit FormatReader(const std::string& format) : format_(format), rest_(format) {}

    void read()
    {
        while (!rest_.empty()) readNext();
        if (parts_ > maximumParts)
            refuse(format_, "expected at most 4 parts with ; between, got " + std::to_string(parts_) + ".");
    }

 private:
    void readNext();
    void skipTo(char end, const char* sentence);
    void readLetter();
    /// Of a code such as "General", in any case of letters.
    bool skip(std::string_view code);

    const std::string& format_;
    std::string_view rest_;
    int parts_ = 1;
};

void FormatReader::readNext()
{
    const char c = rest_.front();
    if (c == '"') return skipTo('"', "a quote stays open.");
    if (c == '[') return skipTo(']', "a bracket stays open.");
    if (c == ']') refuse(format_, "a bracket closes that was not open.");
    if (c == '\\' || c == '_' || c == '*') {
        if (rest_.size() == 1) refuse(format_, std::string("a character is missing behind ") + c + ".");
        return rest_.remove_prefix(2);
    }
    if (c == ';') ++parts_;
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) return readLetter();
    rest_.remove_prefix(1);
}

void FormatReader::skipTo(char end, const char* sentence)
{
    const auto at = rest_.find(end, 1);
    if (at == std::string_view::npos) refuse(format_, sentence);
    rest_.remove_prefix(at + 1);
}

bool FormatReader::skip(std::string_view code)
{
    const auto isSame = [](char have, char want) {
        return have == want || (have >= 'A' && have <= 'Z' && have - 'A' + 'a' == want);
    };
    const auto start = rest_.substr(0, code.size());
    if (!std::equal(start.begin(), start.end(), code.begin(), code.end(), isSame)) return false;
    rest_.remove_prefix(code.size());
    return true;
}

void FormatReader::readLetter()
{
    constexpr std::array<std::string_view, 13> codes = {"general", "am/pm", "a/p", "e+", "e-", "e", "y",
                                                        "m",       "d",     "h",   "s",  "g",  "b"};
    for (const auto code : codes)
        if (skip(code)) return;
    refuse(format_, std::string(R"(text in it stands in quotes, as in #,##0 "kg", and ")") + rest_.front() +
                        "\" does not.");
}

}  // namespace

int countDecimals(double value)
{
    constexpr double exactAbove = 1e15;
    if (!std::isfinite(value) || std::abs(value) >= exactAbove) return 0;
    double scaled = std::abs(value);
    for (int decimals = 0; decimals <= maximumDecimals; ++decimals) {
        if (std::abs(scaled - std::round(scaled)) <= 1e-12 * scaled) return decimals;
        scaled *= 10;
    }
    return maximumDecimals + 1;
}

std::string makeNumberFormat(int decimals)
{
    return decimals == 0 ? "#,##0" : "#,##0." + std::string(static_cast<std::size_t>(decimals), '0');
}

std::string dropDecimals(const std::string& format)
{
    constexpr std::string_view digits = "0#?";
    std::string whole;
    bool isQuoted = false;
    for (std::size_t i = 0; i < format.size();) {
        const auto behind = std::min(format.find_first_not_of(digits, i + 1), format.size());
        const bool isPoint =
            format[i] == '.' && !isQuoted && i > 0 && digits.find(format[i - 1]) != std::string_view::npos;
        const bool isNeeded = behind < format.size() && (format[behind] == ',' || format[behind] == 'E');
        if (format[i] == '"') isQuoted = !isQuoted;
        if (isPoint && !isNeeded)
            i = behind;
        else
            whole += format[i++];
    }
    return whole;
}

void checkNumberFormat(const std::string& format)
{
    const auto length = toUtf16(format).size();
    if (length > maximumLength)
        throw std::runtime_error("expected a number format of at most 255 characters, got " +
                                 std::to_string(length) + ".");
    FormatReader(format).read();
}

}  // namespace quillon::report
