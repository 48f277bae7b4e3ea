#include <cmath>
#include <functional>

#include "chart/model/Color.h"
#include "orca/EnumClassInfo.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::HostArray;
using orca::factory::ClassInfo;
using orca::factory::EnumClass;
using orca::factory::OrcaMethod;
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

/// Calls `action` with an object of each class that can be constructed without arguments.
void forEachObject(const std::function<void(const HostArray&, const ClassInfo&)>& action)
{
    for (const auto* info : registry().getClasses()) {
        if (info->getOwnConstructors().empty()) continue;
        SCOPED_TRACE(info->getName());
        action(info->construct({}), *info);
    }
}

/// What reading gives after `value` was written. A text written to the colour of a format goes into the
/// colour object.
HostArray readBack(const HostArray& object, const PropertyImpl& property)
{
    const auto value = property.get(object);
    return property.getSetType().text == property.getType().text ? value : orca::get(value, "Color");
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
    forEachObject([&](const HostArray& object, const ClassInfo& info) {
        for (const auto* property : info.getProperties()) {
            if (!property->isWritable()) continue;
            SCOPED_TRACE(property->getName());
            for (const auto& value : samplesOf(property->getSetType().text)) {
                property->set(object, value);
                EXPECT_EQ(readBack(object, *property), value) << value.describe();
            }
            ++count;
        }
    });
    EXPECT_EQ(count, 63);
}

TEST_F(Members, RefuseEveryWriteToAReadOnlyProperty)
{
    forEachObject([](const HostArray& object, const ClassInfo& info) {
        for (const auto* property : info.getProperties()) {
            if (property->isWritable()) continue;
            const auto value = property->get(object);
            EXPECT_EQ(messageOf([&] { property->set(object, value); }),
                      property->getOwner() + "." + property->getName() + ": the property is read-only.");
            EXPECT_EQ(property->get(object), value);
        }
    });
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

constexpr auto accepted = "";

/// The end of the sentence with which a property of a host type refuses a value; empty when it takes it.
std::string refusalOf(const std::string& type, const Stranger& stranger)
{
    const auto unless = [&](const std::string& kinds, const std::string& expected) {
        if (kinds.find(stranger.kind) != std::string::npos) return std::string(accepted);
        return "expected " + expected + ", got " + stranger.name + ".";
    };
    if (type == "any") return accepted;
    if (type == "double scalar") return unless("n", type);
    if (type == "uint32 scalar") return unless("", type);
    if (type == "logical scalar") return unless("l", type);
    if (type == "OrcaFactoryString scalar") return unless("t", "text");
    if (type == "OrcaFactoryString vector" && stranger.kind == 'c') return "element 1 must be text.";
    if (type == "OrcaFactoryString vector") return unless("s0", "a cell array of text or a text array");
    if (findEnum(type) == nullptr) return unless("0", type);
    if (type == fullName("DataLabelContentSeparator") && stranger.kind == 'e') return accepted;
    if (stranger.kind != 't') return unless("", type);
    std::string members;
    for (const auto& member : findEnum(type)->getMembers())
        members += (members.empty() ? "" : ", ") + member.name;
    return "expected one of " + members + ", got \"no such\".";
}

TEST_F(Members, RefuseEveryWrongTypeAndKeepTheirValue)
{
    forEachObject([&](const HostArray& object, const ClassInfo& info) {
        for (const auto* property : info.getProperties()) {
            if (!property->isWritable()) continue;
            const auto place = property->getOwner() + "." + property->getName() + ": ";
            for (const auto& stranger : strangers()) {
                const auto refusal = refusalOf(property->getSetType().text, stranger);
                if (refusal == accepted) continue;
                const auto value = property->get(object);
                EXPECT_EQ(messageOf([&] { property->set(object, stranger.value); }), place + refusal);
                EXPECT_EQ(property->get(object), value);
            }
        }
    });
}

TEST_F(Members, TakeWholeNumbersInRangeOnly)
{
    const auto format = make("SolidFillFormat");
    const auto series = make("DataSeries");
    constexpr double inf = INFINITY;
    const struct {
        HostArray value;
        bool isUint32;
        bool isUint64;
    } cases[] = {
        {0, true, true},
        {std::uint64_t{4294967295}, true, true},
        {4294967295.0, true, true},
        {4294967296.0, false, true},
        {18446744073709549568.0, false, true},
        {18446744073709551616.0, false, false},
        {UINT64_MAX, false, true},
        {-0.0, true, true},
        {-1, false, false},
        {0.5, false, false},
        {inf, false, false},
        {-inf, false, false},
        {std::nan(""), false, false},
    };
    for (const auto& [value, isUint32, isUint64] : cases) {
        const auto written = messageOf([&, &v = value] { orca::set(format, "Transparency", v); });
        const auto read = messageOf([&, &v = value] { orca::call(series, "getPoint", {v}); });
        EXPECT_EQ(written == "no error", isUint32) << written;
        EXPECT_EQ(read == "Data point index out of range.", isUint64) << read;
    }
}

TEST_F(Members, TakeMemberNamesAndZeroOrOne)
{
    const auto border = make("SolidBorderFormat");
    orca::set(border, "CapType", u"Square");
    EXPECT_EQ(orca::get(border, "CapType"), make("SolidBorderCapType", {0}));
    EXPECT_NE(messageOf([&] { orca::set(border, "CapType", u"square"); }), "no error");

    const auto options = make("DataLabelContentOptions");
    orca::set(options, "ShowLeaderLines", 1);
    EXPECT_EQ(orca::get(options, "ShowLeaderLines"), HostArray(true));
    EXPECT_NE(messageOf([&] { orca::set(options, "ShowLeaderLines", 2); }), "no error");

    const auto set = make("DataSet", {HostArray::textArray({u"Q1", u"Q2"})});
    EXPECT_EQ(orca::get(set, "Categories"), HostArray::cells(1, 2, {u"Q1", u"Q2"}));
    EXPECT_EQ(messageOf([&] {
                  orca::set(set, "Categories", HostArray::cells(1, 3, {u"a", u"b", 3}));
              }),
              "quillon.chart.DataSet.Categories: element 3 must be text.");
}

TEST_F(Members, PutConstructorArgumentsInTheirPlace)
{
    const auto text = [](const HostArray& object, const char* property) {
        return *orca::get(object, property).getText();
    };
    const auto area = make("ElementArea", {u"2in", u"3in"});
    EXPECT_EQ(text(area, "Height") + u" " + text(area, "Width"), u"2in 3in");
    const auto plot = make("PlotArea", {u"1", u"2", u"3", u"4"});
    EXPECT_EQ(text(plot, "X") + text(plot, "Y") + text(plot, "Height") + text(plot, "Width"), u"1234");
    const auto format = make("DataPointShapeFormat", {u"red", u"blue"});
    EXPECT_EQ(text(orca::get(orca::get(format, "Fill"), "Color"), "Color"), u"red");
    EXPECT_EQ(text(orca::get(orca::get(format, "Border"), "Color"), "Color"), u"blue");
    const auto options = make("PieChartDataSeriesFormatOptions", {100, 360});
    EXPECT_EQ(orca::get(options, "PieExplosion"), HostArray(std::uint32_t{100}));
    EXPECT_EQ(orca::get(options, "FirstSliceAngle"), HostArray(std::uint32_t{360}));
    const auto paragraph = make("Paragraph", {u""});
    EXPECT_EQ(orca::get(paragraph, "Content").getElementCount(), 1);
    EXPECT_EQ(orca::get(make("Title", {paragraph}), "Text"), paragraph);
    const auto run = make("Text");
    EXPECT_EQ(omGetArrayElement(orca::get(orca::get(make("Title", {run}), "Text"), "Content"), 0), run);
}

TEST_F(Members, FailWithASentenceThatTellsWhereAndWhat)
{
    const auto series = make("DataSeries", {u"North"});
    const auto emptySet = make("DataSet");
    const auto set = make("DataSet");
    orca::call(set, "appendSeries", {series});
    const auto longer = make("DataSeries");
    orca::call(longer, "appendPoint", {2.5});
    const struct {
        std::function<void()> action;
        const char* sentence;
    } cases[] = {
        {[] { make("Tilte"); }, "there is no class \"quillon.chart.Tilte\"."},
        {[] { make("Chart"); }, "objects of class quillon.chart.Chart cannot be constructed."},
        {[] { make("DataPoint", {u"x"}); },
         "quillon.chart.DataPoint, argument 1: expected double scalar, got text."},
        {[] {
             make("PlotArea", {u"1", 2, u"3", u"4"});
         },
         "quillon.chart.PlotArea, argument 2: expected text, got double scalar 2."},
        {[] { make("TextBase", {2.5}); },
         "quillon.chart.TextBase: no form takes (double scalar 2.5); expected () or (OrcaFactoryString "
         "scalar) or "
         "(quillon.chart.Color)."},
        {[] {
             make("Color", {u"a", u"b"});
         },
         "quillon.chart.Color: no form takes (text, text); expected () or (OrcaFactoryString scalar)."},
        {[] { make("SolidBorderCapType", {u"Big\x00e4"}); },
         "quillon.chart.SolidBorderCapType: expected one of Flat, Round, Square, got \"Big?\"."},
        {[] { make("SolidBorderCapType", {3}); },
         "quillon.chart.SolidBorderCapType: expected one of Flat, Round, Square, got 3."},
        {[] { make("SolidBorderCapType"); },
         "quillon.chart.SolidBorderCapType: expected one member name, or one uint32 scalar, got 0 "
         "arguments."},
        {[] {
             make("PieChartDataSeriesFormatOptions", {150, 400});
         },
         "Pie explosion percentage must be <= 100."},
        {[] {
             make("PieChartDataSeriesFormatOptions", {50, 400});
         },
         "First slice angle must be <= 360 degrees."},
        {[] { make("PieChartDataSeriesFormatOptions", {-1}); },
         "quillon.chart.PieChartDataSeriesFormatOptions, argument 1: expected uint32 scalar, got double "
         "scalar -1."},
        {[&] { orca::call(series, "appendPoint", {u"x"}); },
         "quillon.chart.DataSeries.appendPoint: no form takes (text); expected (double scalar) or (double "
         "scalar, "
         "double scalar) or (quillon.chart.DataPoint)."},
        {[&] { orca::call(series, "getPoint", {0.5}); },
         "quillon.chart.DataSeries.getPoint, argument 1: expected uint64 scalar, got double scalar 0.5."},
        {[&] { orca::call(series, "getPoint", {1}); }, "Data point index out of range."},
        {[&] { orca::call(longer, "getPoint", {0}); }, "Data point index out of range."},
        {[&] { orca::call(set, "appendSeries", {longer}); },
         "New series size 1 differs from existing series size 0"},
        {[&] { orca::call(set, "getSeries", {2}); },
         "vector::_M_range_check: __n (which is 1) >= this->size() (which is 1)"},
        {[&] { orca::call(set, "getSeries", {0}); },
         "vector::_M_range_check: __n (which is 18446744073709551615) >= this->size() (which is 1)"},
        {[&] { orca::call(series, "noSuch"); }, "quillon.chart.DataSeries has no method \"noSuch\"."},
        {[&] { orca::get(series, "name"); }, "quillon.chart.DataSeries has no property \"name\"."},
        {[&] { orca::set(series, "", 1); }, "quillon.chart.DataSeries has no property \"\"."},
        {[] { orca::get(2.5, "Name"); }, "expected one object, got double scalar 2.5."},
        {[] { orca::get(HostArray(), "Name"); }, "expected one object, got empty."},
    };
    for (const auto& [action, sentence] : cases) EXPECT_EQ(messageOf(action), sentence);
    for (const double index : {0, 1, 7})
        EXPECT_EQ(orca::call(emptySet, "getSeries", {index}).describe(), "empty quillon.chart.DataSeries");
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
    for (const HostArray& value : {HostArray(), HostArray(2.5), HostArray(true), make("Title"),
                                   HostArray::matrix(0, 0, std::vector<double>())})
        EXPECT_EQ(after(value)->getText(), u"rgb(300,0,0)") << value.describe();
    EXPECT_EQ(after(HostArray::row({0.5, 0.5, 0.5}))->getText(), u"808080");
    EXPECT_EQ(after(HostArray::row({2, 0, 0}))->getText(), u"FE0000");
    EXPECT_EQ(after(HostArray::matrix<std::uint32_t>(3, 1, {1, 0, 0}))->getText(), u"FF0000");
    EXPECT_EQ(messageOf([&] { orca::get(color, "Color"); }), "Invalid color");
    EXPECT_EQ(after(HostArray::row({1, 2}))->getText(), u"000000");
    EXPECT_EQ(messageOf([&] { orca::get(color, "Color"); }), "Invalid color");

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
