#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/Export.h"

namespace orca {

/// What can go wrong between host and library; the identifiers and sentences stand in Error.cpp.
enum class ErrorId {
    AlreadyBound,
    BadShape,
    DuplicateClass,
    DuplicateNamespace,
    IndexOutOfRange,
    InvalidSelf,
    MustBeCellArray,
    MustBeString,
    NoConstructor,
    NoOverload,
    NotHeterogeneous,
    NotOneObject,
    ReadOnly,
    UnknownClass,
    UnknownHostType,
    UnknownMember,
    UnknownMethod,
    UnknownProperty,
    WrongType,
};

/// An error of the host system itself. Errors of the library's own classes pass through it unchanged.
class QUILLON_EXPORT Error : public std::runtime_error {
 public:
    Error(ErrorId id, std::initializer_list<std::string_view> words);

    ErrorId getId() const { return id_; }
    /// The identifier as text: "orca:wrongType".
    const char* getIdentifier() const;

    /// The same error with the place where it happened in front of its sentence.
    Error at(const std::string& place) const { return {place + ": " + what(), id_}; }

 private:
    Error(const std::string& sentence, ErrorId id) : std::runtime_error(sentence), id_(id) {}

    ErrorId id_;
};

}  // namespace orca
