#include <charconv>
#include <cmath>
#include <string>

#include "chart/model/Color.h"
#include "fuzz/Check.h"
#include "fuzz/Escapes.h"
#include "fuzz/Input.h"
#include "report/options/ColorText.h"
#include "report/options/Length.h"
#include "report/options/ListText.h"
#include "report/options/NumberText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

// Texts of colours, lengths, lists and number formats, and the helpers for texts and numbers.

namespace quillon::fuzz {
namespace {

bool isSixDigits(const std::u16string& text)
{
    return text.size() == 6 && text.find_first_not_of(u"0123456789ABCDEF") == std::u16string::npos;
}

void checkRgb(const std::u16string& text, const std::u16string& digits)
{
    const auto components = chart::parseRgbComponents(text);
    std::u16string read;
    for (const auto component : components) {
        require(component < 256, "a component beyond a byte", show(text));
        read += num2HexStr(static_cast<unsigned char>(component));
    }
    require(toUpperString(read) == digits, "components and digits differ", show(text));
}

void checkColor(const std::u16string& text)
{
    const auto digits = report::findColorDigits(text);
    if (digits) require(isSixDigits(*digits), "no digits of a colour", show(text));
    const auto color = chart::Color::create(text);
    require(text.starts_with(u'#') || isSixDigits(color->toHexString()), "no colour of the markup",
            show(text));
    if (chart::isRgbColorString(text)) {
        require(digits.has_value(), "an rgb expression without digits", show(text));
        checkRgb(text, *digits);
    }
    isAccepted([&] { color->toTriplet(); });
}

void checkTriplet(const double (&numbers)[3])
{
    const auto color = chart::Color::create();
    color->setFromTriplet(numbers[0], numbers[1], numbers[2]);
    require(isSixDigits(color->toHexString()), "no digits of a triplet", show(color->toHexString()));
    isAccepted([&] { color->toTriplet(); });
}

void checkNumber(double number, const std::string& format)
{
    const auto text = toUtf8(num2str(number));
    isAccepted([&] { toUtf16(report::formatNumber(number, format)); });
    if (!std::isfinite(number)) return;
    double read = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    require(error == std::errc() && end == text.data() + text.size(), "no number", text);
    require(std::bit_cast<std::uint64_t>(read) == std::bit_cast<std::uint64_t>(number), "another number",
            text);
}

void checkText(const std::u16string& text)
{
    str2uint(text);
    require(toUpperString(toLowerString(text)) == toUpperString(text), "letters of another case", show(text));
    isAccepted([&] { require(toUtf16(toUtf8(text)) == text, "another text after UTF-8", show(text)); });
    isAccepted([&] { toWideString(text); });
    const auto escaped = report::escapeCharacters(text);
    isAccepted([&] { require(readEscapes(escaped) == text, "another text after escapes", show(text)); });
}

void checkBytes(const std::string& bytes)
{
    isAccepted([&] { require(toUtf8(toUtf16(bytes)) == bytes, "other bytes after UTF-16", bytes); });
    isAccepted([&] {
        const auto length = report::parseLength(bytes);
        require(length >= 91'440 && length <= 20'116'800, "a length beyond its bounds", bytes);
    });
    isAccepted([&] {
        for (const auto& item : report::splitList(bytes)) {
            const auto again = report::splitList(report::putInQuotes(item));
            require(again.size() == 1 && again[0] == item, "an item that is not read back", item);
        }
    });
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    Input input(data, size);
    const double numbers[] = {input.takeDouble(), input.takeDouble(), input.takeDouble()};
    checkTriplet(numbers);
    checkText(input.takeText());
    const auto bytes = input.takeRest();
    for (const double number : numbers) checkNumber(number, bytes);
    checkBytes(bytes);
    checkText(std::u16string(bytes.begin(), bytes.end()));
    checkColor(std::u16string(bytes.begin(), bytes.end()));
    return 0;
}
