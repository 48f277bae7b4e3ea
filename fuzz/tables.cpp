#include <array>
#include <string>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/PackageReader.h"
#include "fuzz/TemporaryFile.h"
#include "report/table/ChartTable.h"
#include "support/Text.h"

// Tables of every kind, with options. The options stand in front; behind them stands the file, or a part of a
// workbook.

namespace quillon::fuzz {
namespace {

constexpr auto workbookMarkup =
    R"(<workbook><sheets><sheet name="S" sheetId="1" id="r1"/></sheets></workbook>)";
constexpr auto relationshipMarkup =
    R"(<Relationships><Relationship Id="r1" Type="x/worksheet" Target="worksheets/sheet1.xml"/>)"
    R"(<Relationship Id="r2" Type="x/sharedStrings" Target="sharedStrings.xml"/>)"
    R"(<Relationship Id="r3" Type="x/styles" Target="styles.xml"/></Relationships>)";
constexpr auto sheetMarkup =
    R"(<worksheet><sheetData><row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c></row>)"
    R"(<row r="2"><c r="A2" s="1"><v>45000</v></c><c r="B2"><v>2.5</v></c></row></sheetData></worksheet>)";
constexpr auto textMarkup = R"(<sst><si><t>Day</t></si><si><t>North</t></si></sst>)";
constexpr auto styleMarkup =
    R"(<styleSheet><numFmts><numFmt numFmtId="164" formatCode="yyyy-mm-dd"/></numFmts><cellXfs><xf numFmtId="0"/>)"
    R"(<xf numFmtId="164"/></cellXfs></styleSheet>)";

/// A workbook of which one part is the rest of the input.
std::string makeXlsx(Input& input)
{
    Parts parts = {{"[Content_Types].xml", "<Types/>"},
                   {"_rels/.rels", "<Relationships/>"},
                   {"xl/workbook.xml", workbookMarkup},
                   {"xl/_rels/workbook.xml.rels", relationshipMarkup},
                   {"xl/worksheets/sheet1.xml", sheetMarkup},
                   {"xl/sharedStrings.xml", textMarkup},
                   {"xl/styles.xml", styleMarkup}};
    static const std::array<std::string, 5> changed = {"xl/worksheets/sheet1.xml", "xl/sharedStrings.xml",
                                                       "xl/styles.xml", "xl/workbook.xml",
                                                       "xl/_rels/workbook.xml.rels"};
    const auto& name = input.pick(changed);
    parts[name] = input.takeRest();
    return writeParts(parts);
}

std::string makeOds(Input& input)
{
    return writeParts(
        {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}, {"content.xml", input.takeRest()}});
}

/// A file of a kind that its first bytes or its name show.
struct TableFile {
    std::string extension;
    std::string bytes;
};

TableFile makeFile(Input& input)
{
    switch (input.takeIndex(5)) {
        case 1:
            return {".json", input.takeRest()};
        case 2:
            return {".jsonl", input.takeRest()};
        case 3:
            return {".xlsx", makeXlsx(input)};
        case 4:
            return {".ods", makeOds(input)};
        default:
            return {".csv", input.takeRest()};
    }
}

/// A column by its position, which exists in most tables, or by a name.
std::string takeColumn(Input& input)
{
    static const std::array<std::string, 6> columns = {"#1", "#2", "#3", "#4", "#0", "North"};
    return input.pick(columns);
}

std::string takeValue(Input& input, const report::TableOption& option)
{
    const std::string values = option.values;
    if (values.empty()) return input.takeChance(2) ? takeColumn(input) : input.takeBytes(12);
    const auto start = std::min(values.size(), input.takeIndex(values.size()));
    const auto first = values.rfind('|', start) + 1;
    return values.substr(first, values.find('|', first) - first);
}

/// Sets a member of any type.
struct SetMember {
    report::TableOptions& options;
    const report::TableOption& option;
    Input& input;

    void operator()(std::string report::TableOptions::*member) const
    {
        options.*member = takeValue(input, option);
    }
    void operator()(std::vector<std::string> report::TableOptions::*member) const
    {
        (options.*member).push_back(takeValue(input, option));
    }
    void operator()(std::size_t report::TableOptions::*member) const
    {
        options.*member = input.takeNumber(0, 5);
    }
    void operator()(bool report::TableOptions::*member) const { options.*member = true; }
};

report::TableOptions makeOptions(Input& input)
{
    report::TableOptions options;
    for (auto count = input.takeIndex(5); count > 0; --count) {
        const auto& option = input.pick(report::tableOptions);
        std::visit(SetMember{options, option, input}, option.member);
    }
    return options;
}

void checkData(const report::ChartData& data)
{
    const auto count = data.dataSet->getCategories().size();
    require(data.categoryValues.empty() || data.categoryValues.size() == count,
            "values for other categories");
    for (const auto& level : data.levels) require(level.size() == count, "a level of other categories");
    const auto list = data.dataSet->getSeriesList();
    for (const auto& series : *list) require(series->getSize() == count, "a series of another length");
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    Input input(data, size);
    const auto options = makeOptions(input);
    const auto made = makeFile(input);
    const TemporaryFile file(made.extension);
    const auto& path = file.write(made.bytes);
    const quillon::report::Listener listener{.warning = requireWords};
    isAccepted([&] { checkData(quillon::report::readChartData(path, options, listener)); });
    return 0;
}
