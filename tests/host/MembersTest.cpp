#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <cmath>
#include <functional>

#include "chart/model/Color.h"
#include "orca/EnumClassInfo.h"
#include "tests/ThrownText.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::HostArray;
using orca::factory::EnumClass;
using orca::factory::impl::PropertyImpl;

const orca::ClassRegistry& registry()
{
    return orca::ClassRegistry::instance();
}

const EnumClass* findEnum(const std::string& name)
{
    return dynamic_cast<const EnumClass*>(registry().findClass(name));
}

/// Values that every property or argument of a host type takes.
std::vector<HostArray> samplesOf(const std::string& type)
{
    if (type == "double scalar") return {2.5, -1.0};
    if (type == "uint32 scalar") return {std::uint32_t{7}, std::uint32_t{0}};
    if (type == "logical scalar") return {true, false};
    if (type == "OrcaFactoryString scalar" || type == "any")
        return {u"rgb(1,2,3)", u"", u"\x00e4\xd83d\xde00"};
    if (type == "OrcaFactoryString vector")
        return {HostArray::cells(1, 2, {u"a", u""}), HostArray::cells(1, 0, {})};
    if (const auto* const enumClass = findEnum(type)) {
        std::vector<HostArray> members;
        for (std::size_t i = 0; i < enumClass->getMembers().size(); ++i)
            members.emplace_back(orca::EnumMember{enumClass, i});
        return members;
    }
    return {orca::construct(type), HostArray::empty(orca::internal::makeInterned(type))};
}

/// What reading gives after `value` was written. A text written to the colour of a format goes into the
/// colour object.
HostArray readBack(const HostArray& object, const PropertyImpl& property)
{
    const auto value = property.get(object);
    return property.getSetType().text == property.getType().text ? value : orca::get(value, "Color");
}

/// "~" stands for "quillon.chart.", "$" for "OrcaFactoryString".
std::string spellOut(std::string sentence)
{
    boost::replace_all(sentence, "~", "quillon.chart.");
    boost::replace_all(sentence, "$", "OrcaFactoryString");
    return sentence;
}

class Members : public HostTest {};

TEST_F(Members, ConstructByEveryOverload)
{
    std::size_t count = 0;
    for (const auto* info : registry().getClasses()) {
        for (const auto& form : info->getOwnConstructors()) {
            SCOPED_TRACE(form->getSignature());
            std::vector<HostArray> arguments;
            for (const auto& input : form->getInputs()) arguments.push_back(samplesOf(input.text).front());
            const auto object = info->construct(arguments);
            const bool isRenamed = info->getName() == "quillon.chart.DataPointShapeFormat";
            EXPECT_EQ(object.describe(), isRenamed ? "quillon.chart.DataPointFormat" : info->getName());
            EXPECT_EQ(&orca::classOf(object), info);
            ++count;
        }
    }
    EXPECT_EQ(count, 66);
}

TEST_F(Members, RoundTripEveryWritableProperty)
{
    std::size_t count = 0;
    for (const auto* info : registry().getClasses()) {
        if (info->getOwnConstructors().empty()) continue;
        const auto object = info->construct({});
        for (const auto* property : info->getProperties()) {
            if (!property->isWritable()) continue;
            SCOPED_TRACE(info->getName() + "." + property->getName());
            for (const auto& value : samplesOf(property->getSetType().text)) {
                property->set(object, value);
                EXPECT_EQ(readBack(object, *property), value) << value.describe();
            }
            ++count;
        }
    }
    EXPECT_EQ(count, 63);
}

/// A value, its kind, and what messages call it.
struct Stranger {
    HostArray value;
    char kind;
    std::string name;
};

std::vector<Stranger> strangers()
{
    const auto& separators = *findEnum(fullName("DataLabelContentSeparator"));
    return {
        {2.5, 'n', "double scalar 2.5"},
        {-1, 'n', "double scalar -1"},
        {std::nan(""), 'n', "double scalar NaN"},
        {std::uint64_t{1} << 32U, 'n', "uint64 scalar 4294967296"},
        {true, 'l', "logical scalar true"},
        {u"no such", 't', "text"},
        {HostArray::row({1, 0, 0}), 'm', "1x3 double matrix"},
        {HostArray::textArray({u"a", u"b"}), 's', "1x2 text array"},
        {HostArray::cells(1, 1, {2.0}), 'c', "1x1 cell array"},
        {orca::EnumMember{&separators, 4}, 'e', "quillon.chart.DataLabelContentSeparator.Space"},
        {make("ThreeDEffect"), 'o', "quillon.chart.ThreeDEffect"},
        {HostArray(), '0', "empty"},
    };
}

/// The end of the sentence with which a property refuses a value; empty when it takes it.
std::string refusalOf(const PropertyImpl& property, const Stranger& stranger)
{
    if (!property.isWritable()) return "the property is read-only.";
    const auto& type = property.getSetType().text;
    const auto unless = [&](const std::string& kinds, const std::string& expected) {
        if (kinds.find(stranger.kind) != std::string::npos) return std::string();
        return "expected " + expected + ", got " + stranger.name + ".";
    };
    if (type == "any") return "";
    if (type == "double scalar") return unless("n", type);
    if (type == "uint32 scalar") return unless("", type);
    if (type == "logical scalar") return unless("l", type);
    if (type == "OrcaFactoryString scalar") return unless("t", "text");
    if (type == "OrcaFactoryString vector" && stranger.kind == 'c')
        return "element 1 must be text, got double scalar 2.";
    if (type == "OrcaFactoryString vector") return unless("s0", "a cell array of text or a text array");
    if (findEnum(type) == nullptr) return unless("0", type);
    if (type == fullName("DataLabelContentSeparator") && stranger.kind == 'e') return "";
    if (stranger.kind != 't') return unless("", type);
    std::vector<std::string> names;
    for (const auto& member : findEnum(type)->getMembers()) names.push_back(member.name);
    return "expected one of " + boost::join(names, ", ") + ", got \"no such\".";
}

TEST_F(Members, RefuseEveryWrongValueAndKeepTheirOwn)
{
    for (const auto* info : registry().getClasses()) {
        if (info->getOwnConstructors().empty()) continue;
        const auto object = info->construct({});
        for (const auto* property : info->getProperties()) {
            const auto place = property->getOwner() + "." + property->getName() + ": ";
            for (const auto& stranger : strangers()) {
                const auto refusal = refusalOf(*property, stranger);
                if (refusal.empty()) continue;
                const auto value = property->get(object);
                EXPECT_EQ(thrownText([&] { property->set(object, stranger.value); }), place + refusal);
                EXPECT_EQ(property->get(object), value);
            }
        }
    }
}

TEST_F(Members, TakeWholeNumbersInRangeOnly)
{
    constexpr double inf = INFINITY;
    const auto format = make("SolidFillFormat");
    const auto series = make("DataSeries");
    const struct {
        std::vector<HostArray> values;
        bool isUint32;
        bool isUint64;
    } cases[] = {
        {{0, -0.0, std::uint64_t{4294967295}, 4294967295.0}, true, true},
        {{std::uint64_t{4294967296}, 4294967296.0, 18446744073709549568.0, UINT64_MAX}, false, true},
        {{18446744073709551616.0, -1, 0.5, inf, -inf, std::nan("")}, false, false},
    };
    for (const auto& [values, isUint32, isUint64] : cases)
        for (const auto& value : values) {
            const auto written = thrownText([&] { orca::set(format, "Transparency", value); });
            const auto read = thrownText([&] { orca::call(series, "getPoint", {value}); });
            EXPECT_EQ(written == "nothing was thrown", isUint32) << written;
            EXPECT_EQ(read == "Data point index out of range.", isUint64) << read;
        }
}

TEST_F(Members, TakeMemberNamesZeroOrOneAndTextArrays)
{
    const auto border = make("SolidBorderFormat");
    orca::set(border, "CapType", u"Square");
    EXPECT_EQ(orca::get(border, "CapType"), make("SolidBorderCapType", {0}));
    EXPECT_THROW(HostArray(orca::EnumMember{findEnum(fullName("SolidBorderCapType")), 3}), orca::Error);
    const auto options = make("DataLabelContentOptions");
    orca::set(options, "ShowLeaderLines", 1);
    EXPECT_EQ(orca::get(options, "ShowLeaderLines"), HostArray(true));
    const auto set = make("DataSet", {HostArray::textArray({u"Q1", u"Q2"})});
    EXPECT_EQ(orca::get(set, "Categories"), HostArray::cells(1, 2, {u"Q1", u"Q2"}));
}

TEST_F(Members, ClearCategoriesByNothingButNoValueAndEmptyArrays)
{
    const auto full = HostArray::cells(1, 1, {u"Q1"});
    const auto set = make("DataSet", {full});
    for (const auto& none :
         {HostArray(), HostArray::matrix<double>(0, 0, {}), HostArray::matrix<double>(1, 0, {}),
          HostArray::cells(0, 0, {}), HostArray::textArray({})}) {
        orca::set(set, "Categories", full);
        orca::set(set, "Categories", none);
        EXPECT_EQ(orca::get(set, "Categories").getElementCount(), 0) << none.describe();
        EXPECT_EQ(orca::get(make("DataSet", {none}), "Categories").getElementCount(), 0) << none.describe();
    }
    orca::set(set, "Categories", full);
    const auto runs = orca::get(make("Paragraph"), "Content");
    for (const auto& other :
         {HostArray(u""), runs, HostArray::empty(orca::internal::makeInterned("some.Class"))}) {
        const auto expected =
            ": expected a cell array of text or a text array, got " + other.describe() + ".";
        EXPECT_EQ(thrownText([&] { orca::set(set, "Categories", other); }),
                  "quillon.chart.DataSet.Categories" + expected);
        EXPECT_EQ(orca::get(set, "Categories"), full);
        EXPECT_THROW(make("DataSet", {other}), orca::Error);
    }
}

TEST_F(Members, PutConstructorArgumentsInTheirPlace)
{
    const auto text = [](const HostArray& object, const char* property) {
        return *orca::get(object, property).getText();
    };
    const auto plot = make("PlotArea", {u"1", u"2", u"3", u"4"});
    EXPECT_EQ(text(plot, "X") + text(plot, "Y") + text(plot, "Height") + text(plot, "Width"), u"1234");
    const auto paragraph = make("Paragraph");
    EXPECT_EQ(orca::get(make("Title", {paragraph}), "Text"), paragraph);
    const auto run = make("Text");
    EXPECT_EQ(omGetArrayElement(orca::get(orca::get(make("Title", {run}), "Text"), "Content"), 0), run);
}

TEST_F(Members, AreRefusedWithASentence)
{
    const auto series = make("DataSeries");
    const auto longer = make("DataSeries");
    const auto set = make("DataSet");
    orca::call(longer, "appendPoint", {2.5});
    EXPECT_EQ(orca::call(set, "getSeries", {0}).describe(), "empty quillon.chart.DataSeries");
    orca::call(set, "appendSeries", {series});
    const std::pair<std::function<void()>, std::string> cases[] = {
        {[] { make("Tilte"); }, "there is no class \"~Tilte\"."},
        {[] { make("Chart"); }, "objects of class ~Chart cannot be constructed."},
        {[] { make("DataPoint", {u"x"}); }, "~DataPoint, argument 1: expected double scalar, got text."},
        {[] {
             make("PlotArea", {u"", 2, u"", u""});
         },
         "~PlotArea, argument 2: expected text, got double scalar 2."},
        {[] {
             make("Color", {u"", u""});
         },
         "~Color: no form takes (text, text); expected () or ($ scalar)."},
        {[] { make("TextBase", {2}); },
         "~TextBase: no form takes (double scalar 2); expected () or ($ scalar) or (~Color)."},
        {[] { make("SolidBorderCapType", {u"\x00e4"}); },
         "~SolidBorderCapType: expected one of Flat, Round, Square, got \"?\"."},
        {[] { make("SolidBorderCapType", {3}); },
         "~SolidBorderCapType: expected one of Flat, Round, Square, got 3."},
        {[] { make("SolidBorderCapType"); },
         "~SolidBorderCapType: expected one member name, or one uint32 scalar, got 0 arguments."},
        {[] {
             make("PieChartDataSeriesFormatOptions", {150, 400});
         },
         "Pie explosion percentage must be <= 100."},
        {[] {
             make("PieChartDataSeriesFormatOptions", {50, 400});
         },
         "First slice angle must be <= 360 degrees."},
        {[&] { orca::call(series, "appendPoint", {u"x"}); },
         "~DataSeries.appendPoint: no form takes (text); expected (double scalar) or (double scalar, double "
         "scalar) or (~DataPoint)."},
        {[&] { orca::call(series, "getPoint", {0.5}); },
         "~DataSeries.getPoint, argument 1: expected uint64 scalar, got double scalar 0.5."},
        {[&] { orca::call(longer, "getPoint", {0}); }, "Data point index out of range."},
        {[&] { orca::call(set, "appendSeries", {longer}); },
         "New series size 1 differs from existing series size 0"},
        {[&] { orca::call(set, "getSeries", {2}); },
         "vector::_M_range_check: __n (which is 1) >= this->size() (which is 1)"},
        {[&] { orca::call(set, "getSeries", {0}); },
         "vector::_M_range_check: __n (which is 18446744073709551615) >= this->size() (which is 1)"},
        {[&] { orca::call(series, "noSuch"); }, "~DataSeries has no method \"noSuch\"."},
        {[&] { orca::get(series, "name"); }, "~DataSeries has no property \"name\"."},
        {[] { orca::call(2.5, "getX"); }, "expected one object, got double scalar 2.5."},
        {[] { orca::call(HostArray(), "getX"); }, "expected one object, got empty."},
    };
    for (const auto& [action, sentence] : cases)
        EXPECT_EQ(thrownText<std::exception>(action), spellOut(sentence));
}

TEST_F(Members, KeepAColourInTheFormGiven)
{
    const auto color = make("Color");
    const auto after = [&](const HostArray& value) {
        orca::set(color, "Color", value);
        return color.getNative<Color>();
    };
    EXPECT_EQ(orca::get(color, "Color"), HostArray(u"white"));
    EXPECT_EQ(after(u"rgb(300,0,0)")->getText(), u"rgb(300,0,0)");
    for (const HostArray& value :
         {HostArray(), HostArray(2.5), HostArray(true), make("Title"), HostArray::matrix<double>(0, 0, {}),
          HostArray::matrix<double>(1, 0, {}), HostArray::matrix<double>(0, 1, {}),
          HostArray::matrix<double>(2, 2, {1, 0, 0, 1})})
        EXPECT_EQ(after(value)->getText(), u"rgb(300,0,0)") << value.describe();
    EXPECT_EQ(after(HostArray::row({0.5, 0.5, 0.5}))->getText(), u"808080");
    EXPECT_EQ(after(HostArray::row({2, 0, 0}))->getText(), u"FE0000");
    EXPECT_EQ(after(HostArray::matrix<std::uint32_t>(3, 1, {1, 0, 0}))->getText(), u"FF0000");
    EXPECT_EQ(thrownText([&] { orca::get(color, "Color"); }), "Invalid color");
    EXPECT_EQ(after(HostArray::row({1, 2}))->getText(), u"000000");
    EXPECT_EQ(thrownText([&] { orca::get(color, "Color"); }), "Invalid color");

    const auto fill = make("SolidFillFormat");
    const auto held = orca::get(fill, "Color");
    orca::set(held, "Color", HostArray::row({1, 0, 0}));
    orca::set(fill, "Color", u"rgb(0,128,255)");
    EXPECT_EQ(orca::get(fill, "Color"), held);
    EXPECT_TRUE(held.getNative<Color>()->isFromTriplet());
    // Read as "080FF" in pairs, since the first digit of "0080FF" is dropped.
    EXPECT_EQ(orca::get(held, "Color"), HostArray::row({8 / 255.0, 15 / 255.0, 15 / 255.0}));
}

}  // namespace
}  // namespace quillon::chart
