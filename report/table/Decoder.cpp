#include "report/table/Decoder.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr std::size_t blockSize = 1U << 16U;

struct Mark {
    std::string_view bytes;
    const char* encoding;
};
constexpr std::array marks = {Mark{"\xEF\xBB\xBF", "utf-8"}, Mark{"\xFF\xFE", "utf-16le"},
                              Mark{"\xFE\xFF", "utf-16be"}};

/// Names that are suggested; iconv knows several hundred more.
const std::vector<std::string> knownEncodings = {
    "utf-8",        "utf-16",       "utf-16le",     "utf-16be",     "latin1",       "latin2",
    "latin9",       "iso-8859-1",   "iso-8859-2",   "iso-8859-5",   "iso-8859-7",   "iso-8859-9",
    "iso-8859-15",  "windows-1250", "windows-1251", "windows-1252", "windows-1253", "windows-1254",
    "windows-1257", "macintosh",    "koi8-r",       "koi8-u",       "cp437",        "cp850",
    "cp852",        "shift_jis",    "euc-jp",       "euc-kr",       "gb18030",      "big5"};

/// Letters without a mark: every other byte of the first two is zero.
const char* guessUnmarked(std::string_view start)
{
    if (start.size() < 4) return "utf-8";
    if (start[0] != 0 && start[1] == 0 && start[2] != 0 && start[3] == 0) return "utf-16le";
    if (start[0] == 0 && start[1] != 0 && start[2] == 0 && start[3] != 0) return "utf-16be";
    return "utf-8";
}

/// What iconv takes for an instruction, as "//IGNORE", is no name.
bool isName(const std::string& text)
{
    return std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || c == '-' || c == '_' || c == '.' ||
               c == ':';
    });
}

// NOLINTNEXTLINE(performance-no-int-to-ptr,misc-misplaced-const): how iconv_open says that there is none.
const iconv_t noConversion = iconv_t(-1);

}  // namespace

struct Decoder::Conversion {
    explicit Conversion(const std::string& name)
        : handle(isName(toLower(name)) ? iconv_open("UTF-8", name.c_str()) : noConversion)
    {
        if (handle == noConversion)
            fail("--encoding: expected a name as latin1, windows-1252 or utf-16, got {}{}", quoteText(name),
                 suggestName(name, knownEncodings));
    }
    ~Conversion() { iconv_close(handle); }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    iconv_t handle;
    /// Bytes of a character whose end stands in the next block.
    std::string rest;
};

Decoder::Decoder(InputFile& file, const std::string& encoding)
    : file_(file), encoding_(toLower(encoding)), block_(blockSize, '\0')
{
    const auto start = file.peek(4);
    const auto mark = std::find_if(marks.begin(), marks.end(),
                                   [&](const Mark& one) { return start.starts_with(one.bytes); });
    const bool isMarked = mark != marks.end();
    if (encoding_.empty()) encoding_ = isMarked ? mark->encoding : guessUnmarked(start);
    if (encoding_ == "utf-16") encoding_ = isMarked ? mark->encoding : "utf-16le";
    if (encoding_.starts_with("utf-16")) requireZeros();
    if (isMarked && encoding_ == mark->encoding) markLength_ = mark->bytes.size();
    if (encoding_ != "utf-8" && encoding_ != "utf8") conversion_ = std::make_unique<Conversion>(encoding_);
    file.rewind();
}

Decoder::~Decoder() = default;

/// The end of a line and each mark between cells has a zero byte in UTF-16.
void Decoder::requireZeros() const
{
    if (file_.peek(blockSize).find('\0') != std::string::npos) return;
    fail("{}: the file is not in {}, which has zero bytes; leave --encoding out, or name another encoding.",
         file_.getName(), encoding_);
}

std::string_view Decoder::read()
{
    line_ += static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n'));
    text_.clear();
    while (text_.empty()) {
        const auto count = file_.read(block_);
        done_ += count;
        const auto bytes = std::string_view(block_).substr(0, count).substr(std::min(markLength_, count));
        markLength_ = 0;
        if (conversion_)
            convert(bytes);
        else
            text_ = bytes;
        if (count == 0) break;
    }
    requireNoZero();
    return text_;
}

void Decoder::convert(std::string_view bytes)
{
    auto& [handle, rest] = *conversion_;
    const bool isEnd = bytes.empty();
    rest += bytes;
    char* input = rest.data();
    std::size_t left = rest.size();
    std::array<char, 4096> output;
    while (left > 0) {
        char* end = output.data();
        std::size_t room = output.size();
        const auto result = iconv(handle, &input, &left, &end, &room);
        const int error = errno;
        text_.append(output.data(), end);
        if (result != static_cast<std::size_t>(-1) || error == E2BIG) continue;
        if (error != EINVAL || isEnd) refuseByte(static_cast<unsigned char>(*input));
        break;
    }
    rest.erase(0, rest.size() - left);
}

void Decoder::refuseByte(unsigned char byte) const
{
    const auto line = line_ + static_cast<std::size_t>(std::count(text_.begin(), text_.end(), '\n'));
    const auto start = text_.rfind('\n') + 1;  // 0 where there is none
    const auto character =
        1 + std::count_if(text_.begin() + static_cast<std::ptrdiff_t>(start), text_.end(),
                          [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
    fail("{}:{}: character {} of the line is not in {} (byte 0x{:02X}); --encoding names another encoding.",
         file_.getName(), line, character, encoding_, byte);
}

void Decoder::requireNoZero() const
{
    const auto at = text_.find('\0');
    if (at == std::string::npos) return;
    const auto line = line_ + static_cast<std::size_t>(std::count(
                                  text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
    fail("{}:{}: the file holds a zero byte; expected text, in UTF-8 or in the --encoding that you name.",
         file_.getName(), line);
}

}  // namespace quillon::report
