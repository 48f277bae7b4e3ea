#include "report/table/DelimitedSource.h"

#include <csv.h>

#include <algorithm>
#include <array>
#include <exception>
#include <map>
#include <new>
#include <vector>

#include "report/table/Decoder.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

struct Delimiter {
    const char* name;
    char character;
};
/// In the order of preference where the lines speak for several: commas stand in numbers and sentences too.
constexpr std::array delimiters = {Delimiter{"semicolon", ';'}, Delimiter{"tab", '\t'},
                                   Delimiter{"pipe", '|'}, Delimiter{"comma", ','}};

/// How many bytes may come without the end of a cell; an open quote would take in the rest of the file.
constexpr std::size_t longestCell = 1U << 20U;

/// The number of cells in each of the lines that are not empty, were `delimiter` to part them.
std::vector<std::size_t> countCells(std::string_view text, char delimiter)
{
    std::vector<std::size_t> counts;
    std::size_t cells = 1;
    bool isQuoted = false;
    bool isEmpty = true;
    for (const char c : text) {
        if (c == '"') isQuoted = !isQuoted;
        const bool endsLine = !isQuoted && (c == '\n' || c == '\r');
        if (endsLine && !isEmpty) counts.push_back(cells);
        if (endsLine) cells = 1;
        if (!isQuoted && c == delimiter) ++cells;
        isEmpty = endsLine;
    }
    if (!isEmpty) counts.push_back(cells);
    return counts;
}

/// How many lines agree on a number of cells above one.
std::size_t countAgreeing(const std::vector<std::size_t>& counts)
{
    std::map<std::size_t, std::size_t> lines;
    std::size_t most = 0;
    for (const auto count : counts)
        if (count > 1) most = std::max(most, ++lines[count]);
    return most;
}

char detectDelimiter(std::string_view text)
{
    const Delimiter* best = &delimiters.back();
    std::size_t most = 0;
    for (const auto& delimiter : delimiters) {
        const auto agreeing = countAgreeing(countCells(text, delimiter.character));
        if (agreeing > most) best = &delimiter;
        most = std::max(most, agreeing);
    }
    return best->character;
}

/// The position behind the first `count` lines.
std::size_t skipLines(std::string_view text, std::size_t& count)
{
    std::size_t at = 0;
    while (count > 0 && at < text.size()) {
        const auto end = text.find('\n', at);
        if (end == std::string_view::npos) return text.size();
        at = end + 1;
        --count;
    }
    return at;
}

/// The delimiter that a first line "sep=;" names.
std::optional<char> readSeparatorLine(std::string_view text)
{
    if (!(text.starts_with("sep=") || text.starts_with("SEP=")) || text.size() < 5) return std::nullopt;
    const bool isLine = text.size() == 5 || text[5] == '\n' || text[5] == '\r';
    const bool isKnown = std::any_of(delimiters.begin(), delimiters.end(),
                                     [&](const Delimiter& one) { return one.character == text[4]; });
    return isLine && isKnown ? std::optional(text[4]) : std::nullopt;
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Puts the rows together from what the parser finds, counts lines, and keeps what the handler throws away
/// from the parser, which is written in C.
class RowBuilder {
 public:
    RowBuilder(const SourcePlace& place, const RowSource::Handler& handler, std::size_t line, bool checksText)
        : place_(place), handler_(handler), line_(line), checksText_(checksText)
    {
    }

    void addCell(const char* bytes, std::size_t size)
    {
        ++events_;
        if (isDone_) return;
        keepThrown([&] {
            if (ends_.empty()) startLine_ = line_;
            text_.append(bytes, size);
            ends_.push_back(text_.size());
            line_ += static_cast<std::size_t>(std::count(bytes, bytes + size, '\n'));
            afterReturn_ = false;
            checkCell({bytes, size});
        });
    }

    void endLine(int terminator)
    {
        ++events_;
        if (isDone_) return;
        const bool secondHalf = terminator == '\n' && afterReturn_;
        if (!secondHalf) keepThrown([&] { handOver(); });
        if (!secondHalf) ++line_;
        afterReturn_ = terminator == '\r';
    }

    bool isDone() const { return isDone_; }
    std::size_t getLine() const { return line_; }
    std::size_t getEvents() const { return events_; }
    void rethrow() const
    {
        if (thrown_) std::rethrow_exception(thrown_);
    }

 private:
    template <typename Work>
    void keepThrown(const Work& work)
    {
        try {
            work();
        } catch (...) {
            thrown_ = std::current_exception();
            isDone_ = true;
        }
    }

    void checkCell(std::string_view text) const
    {
        if (ends_.size() > limits::columns)
            fail("{}: more than {} cells in a row.", place_.at(startLine_), limits::columns);
        if (!checksText_ || isAscii(text)) return;
        try {
            toUtf16(text);
        } catch (const std::runtime_error&) {
            fail("{}: field {} is not in UTF-8; name its encoding, as in --encoding windows-1252.",
                 place_.at(startLine_), ends_.size());
        }
    }

    void handOver()
    {
        if (ends_.empty()) {
            afterBlank_ = true;
            return;
        }
        cells_.clear();
        std::size_t start = 0;
        for (const auto end : ends_) {
            cells_.push_back({std::string_view(text_).substr(start, end - start)});
            start = end;
        }
        isDone_ = !handler_({startLine_, afterBlank_, cells_});
        afterBlank_ = false;
        text_.clear();
        ends_.clear();
    }

    const SourcePlace& place_;
    const RowSource::Handler& handler_;
    std::string text_;
    std::vector<std::size_t> ends_;
    std::vector<Cell> cells_;
    std::size_t line_;
    std::size_t startLine_ = 1;
    std::size_t events_ = 0;
    std::exception_ptr thrown_;
    bool checksText_;
    bool afterReturn_ = false;
    bool afterBlank_ = false;
    bool isDone_ = false;
};

/// libcsv's parser, which releases its buffer whatever happens.
class Parser {
 public:
    Parser(char delimiter, RowBuilder& builder) : builder_(builder)
    {
        if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL) != 0) throw std::bad_alloc();
        csv_set_delim(&parser_, static_cast<unsigned char>(delimiter));
    }
    ~Parser() { csv_free(&parser_); }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    /// False where the text is no well-formed CSV.
    bool parse(std::string_view text)
    {
        return check(csv_parse(&parser_, text.data(), text.size(), onCell, onLine, &builder_) == text.size());
    }
    bool finish() { return check(csv_fini(&parser_, onCell, onLine, &builder_) == 0); }

 private:
    static void onCell(void* bytes, std::size_t size, void* builder)
    {
        static_cast<RowBuilder*>(builder)->addCell(static_cast<const char*>(bytes), size);
    }
    static void onLine(int terminator, void* builder)
    {
        static_cast<RowBuilder*>(builder)->endLine(terminator);
    }
    bool check(bool succeeded)
    {
        if (!succeeded && csv_error(&parser_) == CSV_ENOMEM) throw std::bad_alloc();
        return succeeded;
    }

    csv_parser parser_{};
    RowBuilder& builder_;
};

}  // namespace

DelimitedSource::DelimitedSource(std::shared_ptr<InputFile> file, const TableOptions& options,
                                 InputFile::Progress progress)
    : RowSource({.name = file->getName(), .isDelimited = true}, false, std::nullopt),
      file_(std::move(file)),
      encoding_(options.encoding),
      progress_(std::move(progress)),
      skippedLines_(options.skip)
{
    Decoder decoder(*file_, encoding_);
    const auto start = std::string(decoder.read());
    const auto named = readSeparatorLine(start);
    if (named) skippedLines_ = std::max<std::size_t>(skippedLines_, 1);
    auto lines = skippedLines_;
    const auto rows = std::string_view(start).substr(skipLines(start, lines));
    delimiter_ = named ? *named : detectDelimiter(rows);
    for (const auto& delimiter : delimiters)
        if (options.delimiter == delimiter.name) delimiter_ = delimiter.character;
    // A decimal comma would need quotes around every number.
    if (delimiter_ == ',') setLikelyDecimal('.');
}

void DelimitedSource::read(const Handler& handler)
{
    Decoder decoder(*file_, encoding_);
    RowBuilder builder(getPlace(), handler, skippedLines_ + 1, !isChecked_);
    Parser parser(delimiter_, builder);
    auto linesToSkip = skippedLines_;
    std::size_t pending = 0;
    bool isParsed = true;
    for (auto text = decoder.read(); isParsed && !builder.isDone(); text = decoder.read()) {
        if (progress_) progress_(decoder.getDone(), file_->getSize());
        const auto events = builder.getEvents();
        const bool isEnd = text.empty();
        if (linesToSkip > 0) text.remove_prefix(skipLines(text, linesToSkip));
        isParsed = isEnd ? parser.finish() : parser.parse(text);
        pending = builder.getEvents() == events ? pending + text.size() : 0;
        if (isEnd || pending > longestCell) break;
    }
    builder.rethrow();
    if (!isParsed || (pending > longestCell && !builder.isDone()))
        fail(
            "{}: a field that begins here has a quote that is not closed, or stands inside it; quote the "
            "whole field and double each quote in it.",
            getPlace().at(builder.getLine()));
    isChecked_ = isChecked_ || !builder.isDone();
}

}  // namespace quillon::report
