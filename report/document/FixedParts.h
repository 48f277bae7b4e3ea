#pragma once

/// The parts of a package that start out the same in every document.
namespace quillon::report::parts {

extern const char* const styles;
/// Styles that a document has when it uses them.
extern const char* const furtherStyles;
extern const char* const settings;
extern const char* const theme;
extern const char* const extendedProperties;

}  // namespace quillon::report::parts
