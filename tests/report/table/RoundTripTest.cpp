#include <gtest/gtest.h>
#include <iconv.h>

#include <cmath>
#include <random>

#include "report/table/ChartTable.h"
#include "support/Text.h"
#include "tests/report/table/TableReading.h"

namespace quillon::report {
namespace {

/// A number as its digits: 12345 with 2 decimals is 123.45.
struct Number {
    std::int64_t digits;
    int decimals;

    double getValue() const { return std::stod(std::to_string(digits) + "e-" + std::to_string(decimals)); }
};

struct Data {
    std::vector<std::string> names;
    std::vector<std::string> categories;
    /// A list for each series.
    std::vector<std::vector<Number>> values;
};

/// How a program may write a table.
struct Convention {
    const char* delimiterName;
    char delimiter;
    const char* decimalName;
    char decimal;
    const char* group;
    const char* encoding;
    const char* lineEnd;
    bool quotesAll;
    /// What stands before and behind a negative number.
    std::pair<const char*, const char*> sign;
};

class Random {
 public:
    int pick(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }

    std::string makeText()
    {
        const char* parts[] = {"a", "Ö", "é", " ", ",", ";", "\"", "\n", "\t", "x", "=", "'", "ß"};
        std::string text = "n";
        for (int i = pick(8); i > 0; --i) text += parts[pick(13)];
        return text;
    }

    Data makeData()
    {
        Data data;
        const int rows = 1 + pick(6);
        for (int i = 0; i < rows; ++i) data.categories.push_back(makeText());
        for (int i = 1 + pick(4); i > 0; --i) {
            data.names.push_back(makeText() + std::to_string(i));
            data.values.emplace_back();
            const int decimals = pick(5);
            for (int row = 0; row < rows; ++row) data.values.back().push_back(makeNumber(decimals));
        }
        return data;
    }

 private:
    Number makeNumber(int decimals)
    {
        std::int64_t digits = 0;
        for (int i = pick(10); i > 0; --i) digits = digits * 10 + pick(10);
        return {pick(3) == 0 ? -digits : digits, decimals};
    }

    std::mt19937 engine_{20240607};
};

std::string writeNumber(const Number& number, const Convention& convention)
{
    auto digits = std::to_string(std::abs(number.digits));
    const auto decimals = static_cast<std::size_t>(number.decimals);
    if (digits.size() <= decimals) digits.insert(0, decimals + 1 - digits.size(), '0');
    auto whole = digits.substr(0, digits.size() - decimals);
    for (auto at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3)
        whole.insert(static_cast<std::size_t>(at), convention.group);
    if (decimals > 0) whole += convention.decimal + digits.substr(digits.size() - decimals);
    return number.digits < 0 ? convention.sign.first + whole + convention.sign.second : whole;
}

std::string quote(const std::string& cell, const Convention& convention)
{
    const std::string special = std::string("\"\n\r\t ") + convention.delimiter;
    if (!convention.quotesAll && cell.find_first_of(special) == std::string::npos) return cell;
    std::string quoted = "\"";
    for (const char c : cell) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

std::string encode(const std::string& text, const std::string& encoding)
{
    if (encoding == "marked") return "\xEF\xBB\xBF" + text;
    const auto handle = iconv_open(encoding.c_str(), "UTF-8");
    std::string input = text;
    std::string output(4 * text.size() + 16, '\0');
    char* from = input.data();
    char* to = output.data();
    std::size_t left = input.size();
    std::size_t room = output.size();
    EXPECT_EQ(iconv(handle, &from, &left, &to, &room), 0U);
    iconv_close(handle);
    output.resize(output.size() - room);
    return output;
}

std::string write(const Data& data, const Convention& convention)
{
    const auto join = [&](const std::string& first, auto getCell) {
        std::string line = quote(first, convention);
        for (std::size_t i = 0; i < data.names.size(); ++i)
            line += convention.delimiter + quote(getCell(i), convention);
        return line + convention.lineEnd;
    };
    std::string text = join("Name", [&](std::size_t i) { return data.names[i]; });
    for (std::size_t row = 0; row < data.categories.size(); ++row)
        text += join(data.categories[row],
                     [&](std::size_t i) { return writeNumber(data.values[i][row], convention); });
    return encode(text, convention.encoding);
}

/// Nothing where what was read is the data.
std::string findDifference(const Data& data, const ChartData& read)
{
    const auto& categories = read.dataSet->getCategories();
    if (categories.size() != data.categories.size()) return "number of categories";
    for (std::size_t row = 0; row < categories.size(); ++row)
        if (toUtf8(categories[row]) != data.categories[row]) return "category " + toUtf8(categories[row]);
    if (read.dataSet->getSeriesCount() != data.names.size()) return "number of series";
    for (std::size_t i = 0; i < data.names.size(); ++i) {
        const auto& series = *read.dataSet->getSeries(i);
        if (toUtf8(series.getName()) != data.names[i]) return "name " + toUtf8(series.getName());
        for (std::size_t row = 0; row < categories.size(); ++row)
            if (series.getPoint(row)->getValue() != data.values[i][row].getValue())
                return "value " + std::to_string(series.getPoint(row)->getValue());
    }
    return {};
}

std::vector<Convention> listConventions()
{
    struct Style {
        const char* name;
        char decimal;
        std::vector<const char*> groups;
    };
    const Style styles[] = {{"point", '.', {"", ",", " ", "\u00A0", "'"}},
                            {"comma", ',', {"", ".", " ", "\u202F", "\u2019"}}};
    const std::pair<const char*, const char*> signs[] = {{"-", ""}, {"", "-"}, {"(", ")"}, {"\u2013", ""}};
    std::vector<Convention> conventions;
    for (const auto& [delimiterName, delimiter] :
         {std::pair("comma", ','), std::pair("semicolon", ';'), std::pair("tab", '\t')})
        for (const auto& style : styles)
            for (const auto* group : style.groups)
                for (const auto* encoding : {"utf-8", "marked", "utf-16", "utf-16be", "windows-1252"})
                    conventions.push_back({delimiterName, delimiter, style.name, style.decimal, group,
                                           encoding, conventions.size() % 2 == 0 ? "\n" : "\r\n",
                                           conventions.size() % 3 == 0, signs[conventions.size() % 4]});
    return conventions;
}

bool canWrite(const Convention& convention)
{
    return std::string_view(convention.encoding) != "windows-1252" ||
           std::string_view(convention.group) != "\u202F";
}

TEST(RoundTrip, AnyDataReadsBackFromEachConvention)
{
    Random random;
    for (const auto& convention : listConventions())
        for (int i = 0; i < 12 && canWrite(convention); ++i) {
            const auto data = random.makeData();
            const auto bytes = write(data, convention);
            const auto path = writeTable(bytes);
            TableOptions options;
            options.delimiter = convention.delimiterName;
            options.decimal = convention.decimalName;
            if (std::string_view(convention.encoding) == "windows-1252") options.encoding = "windows-1252";
            EXPECT_EQ(findDifference(data, readChartData(path, options)), "") << bytes;
        }
}

/// Without options a table is read as it was meant, or refused; it is never read as something else.
TEST(RoundTrip, AmbiguousNumbersAreRefusedAndNeverGuessed)
{
    Random random;
    int refused = 0;
    int read = 0;
    for (const auto& convention : listConventions())
        for (int i = 0; i < 12 && std::string_view(convention.encoding) == "utf-8"; ++i) {
            // A decimal comma in a file with commas is the one thing that the delimiter decides.
            if (convention.delimiter == ',' && convention.decimal == ',') continue;
            const auto data = random.makeData();
            const auto path = writeTable(write(data, convention));
            TableOptions options;
            options.delimiter = convention.delimiterName;
            try {
                EXPECT_EQ(findDifference(data, readChartData(path, options)), "") << write(data, convention);
                ++read;
            } catch (const std::runtime_error& error) {
                EXPECT_NE(std::string(error.what()).find("--decimal"), std::string::npos) << error.what();
                ++refused;
            }
        }
    EXPECT_GT(refused, 0);
    EXPECT_GT(read, 10 * refused);
}

}  // namespace
}  // namespace quillon::report
