#include "report/table/JsonRows.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/JsonText.h"
#include "report/table/Limits.h"

namespace quillon::report {
namespace {

using Json = nlohmann::json;

constexpr std::string_view blanks = " \t\r\n";
constexpr auto expected = "expected rows as objects, as in [{\"month\": \"May\", \"sales\": 3}]";

/// A member of a row, by its position among the names of all rows.
struct Member {
    std::size_t name;
    CellKind kind;
    double number;
    std::string text;
};

/// A row and where it stands.
struct JsonRow {
    std::size_t line;
    std::size_t firstMember;
};

/// Makes rows of the parser's events: of the objects in a list, which may stand in an object of its own as
/// services answer, or of one object on each line.
class RowBuilder {
 public:
    RowBuilder(const SourcePlace& place, std::string_view text) : place_(place), text_(text) {}

    void readLines()
    {
        shape_ = Shape::Lines;
        for (std::size_t at = 0; at < text_.size();) {
            const auto end = std::min(text_.find('\n', at), text_.size());
            ++line_;
            if (text_.substr(at, end - at).find_first_not_of(blanks) != std::string_view::npos)
                parse(at, end);
            at = end + 1;
        }
    }

    void readList()
    {
        parse(0, text_.size());
        if (shape_ == Shape::Wrapped && listCount_ != 1)
            fail("{}: {}; the file has {} lists.", place_.name, expected, listCount_);
        if (!problem_.empty()) fail("{}", problem_);
    }

    const std::vector<std::string>& getNames() const { return names_; }

    /// Hands out the rows with all columns.
    void store(StoredRows& stored) const
    {
        std::vector<Cell> cells;
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const auto end = i + 1 < rows_.size() ? rows_[i + 1].firstMember : members_.size();
            cells.assign(names_.size(), {});
            for (auto at = rows_[i].firstMember; at < end; ++at)
                cells[members_[at].name] = {members_[at].text, members_[at].kind, members_[at].number, {}};
            stored.add(rows_[i].line, cells);
        }
    }

    // The parser calls these.

    bool null() { return add({name_, CellKind::Text, 0, {}}); }
    bool boolean(bool value) { return add({name_, CellKind::Text, 0, value ? "true" : "false"}); }
    bool number_integer(std::int64_t value) { return addNumber(static_cast<double>(value)); }
    bool number_unsigned(std::uint64_t value) { return addNumber(static_cast<double>(value)); }
    bool number_float(double value, const std::string& /*digits*/) { return addNumber(value); }
    bool string(std::string& value) { return add({name_, CellKind::Text, 0, std::move(value)}); }
    static bool binary(const std::vector<std::uint8_t>& /*value*/) { return false; }

    bool start_array(std::size_t /*size*/)
    {
        if (depth_ == 0 && shape_ == Shape::List)
            isCollecting_ = true;
        else if (depth_ == 1 && shape_ == Shape::Wrapped)
            isCollecting_ = ++listCount_ == 1 && problem_.empty();
        else
            refuseValue("a list");
        ++depth_;
        return true;
    }

    bool start_object(std::size_t /*size*/)
    {
        if (depth_ == 0 && shape_ == Shape::List)
            shape_ = Shape::Wrapped;
        else if (depth_ == getRowDepth())
            startRow();
        else
            refuseValue("an object");
        ++depth_;
        return true;
    }

    bool end_object() { return close(); }
    bool end_array() { return close(); }

    bool key(std::string& name)
    {
        if (!isInRow()) return true;
        const auto [found, isNew] = positions_.try_emplace(name, names_.size());
        name_ = found->second;
        if (isNew) {
            if (names_.size() == limits::columns)
                fail("{}: more than {} columns.", place_.at(rows_.back().line), limits::columns);
            names_.push_back(name);
            lastRows_.push_back(0);
        }
        if (std::exchange(lastRows_[name_], rows_.size()) == rows_.size())
            fail("{}: the row has two members {}.",
                 describePosition(text_, place_.name, findOpeningQuote(text_, taken_)), quoteText(name));
        return true;
    }

    bool parse_error(std::size_t /*position*/, const std::string& token, const Json::exception& error)
    {
        failParsing(text_, place_.name, taken_, token, error);
    }

 private:
    enum class Shape : unsigned char { List, Wrapped, Lines };

    void parse(std::size_t begin, std::size_t end)
    {
        taken_ = begin;
        isCollecting_ = shape_ == Shape::Lines;
        const CountingIterator first(text_.data() + begin, &taken_);
        const CountingIterator last(text_.data() + end, &taken_);
        Json::sax_parse(first, last, this);
    }

    /// How many lists and objects stand around a row.
    std::size_t getRowDepth() const { return shape_ == Shape::Lines ? 0 : shape_ == Shape::List ? 1 : 2; }
    bool isInRow() const { return isCollecting_ && depth_ == getRowDepth() + 1; }

    void startRow()
    {
        if (!isCollecting_) return;
        rows_.push_back({shape_ == Shape::Lines ? line_ : rows_.size() + 1, members_.size()});
    }

    bool addNumber(double value) { return add({name_, CellKind::Number, value, {}}); }

    bool add(Member member)
    {
        if (!isInRow()) {
            refuseRow();
            return true;
        }
        if (members_.size() == limits::storedCells)
            fail("{}: more than {} cells; CSV files may be larger.", place_.name, limits::storedCells);
        members_.push_back(std::move(member));
        return true;
    }

    bool close()
    {
        --depth_;
        if (depth_ == 1 && shape_ == Shape::Wrapped) isCollecting_ = false;
        return true;
    }

    void refuseValue(const char* what)
    {
        if (!isInRow()) return refuseRow();
        refuse(fmt::format("{}: column {}: expected a number, a text or null, got {}.",
                           place_.at(rows_.back().line), quoteText(names_[name_]), what));
    }

    /// What stands in the place of a row.
    void refuseRow()
    {
        if (shape_ == Shape::Lines && depth_ == 0) fail("{}: {}.", place_.at(line_), expected);
        if (shape_ == Shape::List && depth_ == 0) fail("{}: {}.", place_.name, expected);
        if (isCollecting_ && depth_ == getRowDepth())
            refuse(fmt::format("{}: {}.", place_.at(rows_.size() + 1), expected));
    }

    /// Whether the list is the right one shows at the end of the object around it.
    void refuse(const std::string& problem)
    {
        if (shape_ != Shape::Wrapped) fail("{}", problem);
        problem_ = problem;
        isCollecting_ = false;
    }

    const SourcePlace& place_;
    std::string_view text_;
    std::size_t taken_ = 0;
    Shape shape_ = Shape::List;
    /// Lists and objects that are open.
    std::size_t depth_ = 0;
    bool isCollecting_ = false;
    std::size_t listCount_ = 0;
    std::size_t line_ = 0;
    std::string problem_;

    std::vector<JsonRow> rows_;
    std::vector<Member> members_;
    /// In the order in which they first come.
    std::vector<std::string> names_;
    std::unordered_map<std::string, std::size_t> positions_;
    /// The last row, from 1, that has a member of each name.
    std::vector<std::size_t> lastRows_;
    /// Of the member that is read.
    std::size_t name_ = 0;
};

/// Whether the first line is a row by itself, and no object around all rows.
bool startsWithRow(std::string_view text, std::size_t start)
{
    if (text[start] != '{') return false;
    const auto lineEnd = std::min(text.find('\n', start), text.size());
    const auto object = Json::parse(text.substr(start, lineEnd - start), nullptr, false);
    if (object.is_discarded()) return false;
    const bool isOnly = text.find_first_not_of(blanks, lineEnd) == std::string_view::npos;
    const auto isList = [](const Json& one) { return one.is_array(); };
    return !isOnly || std::count_if(object.begin(), object.end(), isList) != 1;
}

}  // namespace

std::unique_ptr<RowSource> readJsonRows(InputFile& file)
{
    auto text = file.readAll(limits::wholeFile);
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark)) text.erase(0, mark.size());
    SourcePlace place{file.getName()};
    const auto start = text.find_first_not_of(blanks);
    if (start == std::string::npos) fail("{}: the file is empty; {}.", place.name, expected);
    place.countsLines = startsWithRow(text, start);
    RowBuilder builder(place, text);
    if (place.countsLines)
        builder.readLines();
    else
        builder.readList();
    auto stored = std::make_unique<StoredRows>(place, true, '.', 0);
    stored->addNames(builder.getNames());
    builder.store(*stored);
    return stored;
}

}  // namespace quillon::report
