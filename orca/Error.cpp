#include "orca/Error.h"

#include <algorithm>
#include <array>

namespace orca {
namespace {

struct Row {
    ErrorId id;
    const char* identifier;
    const char* sentence;
};

/// Every error of the host system. %1, %2, ... are filled in where it is raised.
constexpr Row errorRows[] = {
    {ErrorId::AlreadyBound, "orca:alreadyBound",
     "an object of class %1 and its host object are bound only once."},
    {ErrorId::BadShape, "orca:badShape", "a value of %1 rows and %2 columns cannot have %3 elements."},
    {ErrorId::DuplicateClass, "orca:duplicateClass", "the class %1 is registered already."},
    {ErrorId::DuplicateNamespace, "orca:duplicateNamespace", "the namespace %1 is registered already."},
    {ErrorId::IndexOutOfRange, "orca:indexOutOfRange", "expected an index of 1 to %1, got %2."},
    {ErrorId::InvalidSelf, "orca:invalidSelf", "the object is gone, or of a class without this member."},
    {ErrorId::MustBeCellArray, "orca:mustBeCellArray",
     "expected a cell array of text or a text array, got %1."},
    {ErrorId::MustBeString, "orca:mustBeString", "element %1 must be text, got %2."},
    {ErrorId::NoConstructor, "orca:noConstructor", "objects of class %1 cannot be constructed."},
    {ErrorId::NoOverload, "orca:noOverload", "no form takes (%1); expected %2."},
    {ErrorId::NotHeterogeneous, "orca:notHeterogeneous", "arrays of class %1 cannot mix classes."},
    {ErrorId::NotOneObject, "orca:notOneObject", "expected one object, got %1."},
    {ErrorId::ReadOnly, "orca:readOnly", "the property is read-only."},
    {ErrorId::UnknownClass, "orca:unknownClass", "there is no class \"%1\"."},
    {ErrorId::UnknownHostType, "orca:unknownHostType", "there is no host type \"%1\"."},
    {ErrorId::UnknownMember, "orca:unknownMember", "expected one of %1, got %2."},
    {ErrorId::UnknownMethod, "orca:unknownMethod", "%1 has no method \"%2\"."},
    {ErrorId::UnknownProperty, "orca:unknownProperty", "%1 has no property \"%2\"."},
    {ErrorId::WrongType, "orca:wrongType", "expected %1, got %2."},
};

const Row& rowOf(ErrorId id)
{
    return *std::find_if(std::begin(errorRows), std::end(errorRows),
                         [id](const Row& row) { return row.id == id; });
}

std::string fill(std::string_view sentence, std::initializer_list<std::string_view> words)
{
    std::string result;
    for (std::size_t i = 0; i < sentence.size(); ++i) {
        if (sentence[i] == '%')
            result += words.begin()[sentence[++i] - '1'];
        else
            result += sentence[i];
    }
    return result;
}

}  // namespace

Error::Error(ErrorId id, std::initializer_list<std::string_view> words)
    : Error(fill(rowOf(id).sentence, words), id)
{
}

const char* Error::getIdentifier() const
{
    return rowOf(id_).identifier;
}

}  // namespace orca
