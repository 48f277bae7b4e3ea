#include "orca/HostArray.h"

#include <gtest/gtest.h>

#include <cmath>

#include "orca/Error.h"
#include "orca/Member.h"

namespace orca {
namespace {

HostArray someObject()
{
    return std::make_shared<HostObject>(internal::makeInterned("test.Thing"));
}

TEST(HostArray, TellsShapeAndKind)
{
    const struct {
        HostArray value;
        std::size_t rows;
        std::size_t columns;
        const char* description;
    } cases[] = {
        {HostArray(), 0, 0, "empty"},
        {HostArray::empty(internal::makeInterned("test.Thing")), 0, 0, "empty test.Thing"},
        {-2.5, 1, 1, "double scalar -2.5"},
        {std::uint32_t{7}, 1, 1, "uint32 scalar 7"},
        {UINT64_MAX, 1, 1, "uint64 scalar 18446744073709551615"},
        {false, 1, 1, "logical scalar false"},
        {u"abc", 1, 3, "text"},
        {u"", 0, 0, "text"},
        {HostArray::textArray({u"a", u"b"}), 1, 2, "1x2 text array"},
        {HostArray::row({1, 2, 3}), 1, 3, "1x3 double matrix"},
        {HostArray::matrix<std::uint32_t>(2, 1, {1, 2}), 2, 1, "2x1 uint32 matrix"},
        {HostArray::matrix<std::uint64_t>(1, 1, {5}), 1, 1, "uint64 scalar 5"},
        {EnumMember(), 0, 0, "empty"},
        {HostArray::matrix<double>(0, 3, {}), 0, 3, "0x3 double matrix"},
        {HostArray::cells(2, 2, {1, u"b", true, HostArray()}), 2, 2, "2x2 cell array"},
        {omCreateORCAMatrix(1, 0, internal::makeInterned("test.Thing")), 1, 0, "1x0 test.Thing array"},
        {someObject(), 1, 1, "test.Thing"},
        {std::make_shared<HostObject>(internal::nullValue), 1, 1, "object without class name"},
    };
    for (const auto& [value, rows, columns, description] : cases) {
        EXPECT_EQ(value.describe(), description);
        EXPECT_EQ(value.getRowCount(), rows) << description;
        EXPECT_EQ(value.getColumnCount(), columns) << description;
    }
}

TEST(HostArray, RefusesElementsThatDoNotFill)
{
    EXPECT_THROW(HostArray::matrix<double>(2, 2, {1, 2, 3}), Error);
    EXPECT_THROW(HostArray::cells(1, 2, {1}), Error);
    EXPECT_THROW(HostArray::cells(3, 0, {1}), Error);
    // The product of these wraps around to the number of elements.
    EXPECT_THROW(HostArray::matrix<double>(std::size_t{1} << 63U, 2, {}), Error);
}

TEST(HostArray, ComparesValuesAndIdentifiesObjects)
{
    const auto object = someObject();
    EXPECT_EQ(HostArray(u"a"), HostArray(std::u16string(u"a")));
    EXPECT_FALSE(HostArray::cells(1, 2, {1, u"b"}) == HostArray::cells(2, 1, {1, u"b"}));
    EXPECT_FALSE(HostArray(1) == HostArray(std::uint32_t{1}));
    EXPECT_FALSE(HostArray(std::nan("")) == HostArray(std::nan("")));
    EXPECT_FALSE(someObject() == object);
}

TEST(HostArray, ChangesAnObjectArrayWithoutItsCopies)
{
    const auto name = internal::makeInterned("test.Thing");
    const auto object = someObject();
    auto array = omCreateORCAMatrix(1, 2, name);
    const auto copy = array;
    omSetArrayElement(array, 1, object);
    omSetClassOfHeterogeneousArray(array, name);
    EXPECT_EQ(omGetArrayElement(array, 1), object);
    EXPECT_EQ(omGetArrayElement(array, 0).describe(), "empty test.Thing");
    EXPECT_EQ(omGetArrayElement(copy, 1).describe(), "empty test.Thing");
    EXPECT_FALSE(copy.getObjectArray()->heterogeneous);
    EXPECT_EQ(array.getFirstObject(), nullptr);
    EXPECT_THROW(omSetArrayElement(array, 2, object), Error);
    EXPECT_THROW(omSetArrayElement(array, 0, 2.5), Error);
    EXPECT_THROW(omGetArrayElement(array, 2), Error);
    EXPECT_THROW(omGetArrayElement(HostArray(), 0), Error);
}

TEST(HostArray, LetsAnObjectStandAsAnArrayOfOne)
{
    HostArray array = someObject();
    const auto first = array;
    const auto other = someObject();
    omSetArrayElement(array, 0, other);
    EXPECT_EQ(omGetArrayElement(array, 0), other);
    EXPECT_EQ(omGetArrayElement(first, 0), first);
}

TEST(HostType, ReadsTypeStrings)
{
    using Shape = factory::HostTypeInfo::Shape;
    const auto vector = factory::parseHostType("test.Thing vector");
    EXPECT_EQ(vector.element, "test.Thing");
    EXPECT_EQ(vector.shape, Shape::Vector);
    EXPECT_EQ(factory::parseHostType("uint64 scalar").shape, Shape::Scalar);
    EXPECT_EQ(factory::parseHostType("test.Thing").shape, Shape::Object);
    EXPECT_EQ(factory::parseHostType("any").shape, Shape::Any);
    for (const char* text :
         {"", " ", "double", "double  scalar", "int8 scalar", "double matrix", "scalar", "any vector"})
        EXPECT_THROW(factory::parseHostType(text), Error) << text;
}

}  // namespace
}  // namespace orca
