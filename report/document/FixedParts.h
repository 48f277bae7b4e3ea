#pragma once

/// The parts of a package that are the same in every document.
namespace quillon::report::parts {

extern const char* const styles;
extern const char* const settings;
extern const char* const theme;
extern const char* const coreProperties;
extern const char* const extendedProperties;

}  // namespace quillon::report::parts
