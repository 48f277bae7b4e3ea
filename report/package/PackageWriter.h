#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Package.h"
#include "report/package/Zip.h"

namespace quillon::report {

namespace content_type {
inline constexpr auto mainDocument =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml";
inline constexpr auto styles = "application/vnd.openxmlformats-officedocument.wordprocessingml.styles+xml";
inline constexpr auto settings =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.settings+xml";
inline constexpr auto numbering =
    "application/vnd.openxmlformats-officedocument.wordprocessingml.numbering+xml";
inline constexpr auto header = "application/vnd.openxmlformats-officedocument.wordprocessingml.header+xml";
inline constexpr auto footer = "application/vnd.openxmlformats-officedocument.wordprocessingml.footer+xml";
inline constexpr auto theme = "application/vnd.openxmlformats-officedocument.theme+xml";
inline constexpr auto chart = "application/vnd.openxmlformats-officedocument.drawingml.chart+xml";
inline constexpr auto workbook = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet";
inline constexpr auto png = "image/png";
inline constexpr auto jpeg = "image/jpeg";
inline constexpr auto coreProperties = "application/vnd.openxmlformats-package.core-properties+xml";
inline constexpr auto extendedProperties =
    "application/vnd.openxmlformats-officedocument.extended-properties+xml";
}  // namespace content_type

/// What the parts of a document are written to: a new package, or one that exists. Parts have their full
/// names, "word/charts/chart1.xml".
class PartTarget {
 public:
    PartTarget() = default;
    PartTarget(const PartTarget&) = delete;
    PartTarget& operator=(const PartTarget&) = delete;
    virtual ~PartTarget() = default;

    /// The first of prefix1suffix, prefix2suffix ... that no part has.
    virtual std::string findFreeName(const std::string& prefix, const std::string& suffix) = 0;
    /// Adds a part, or puts it in the place of the one that has its name.
    virtual void addPart(const std::string& name, std::string bytes, const char* contentType) = 0;
    /// Relates the part `from`, or for an empty name the package, to the part `to`, and returns the
    /// relationship's id. Kind: the last word of its type, "chart".
    virtual std::string relate(const std::string& from, const char* kind, const std::string& to) = 0;
    /// The same for an address outside the package.
    virtual std::string relateOutside(const std::string& from, const char* kind,
                                      const std::string& address) = 0;
    /// The package, a zip file. The times in it are fixed, so that equal parts give equal bytes.
    virtual std::string toBytes() = 0;
};

/// A new package.
class PackageWriter final : public PartTarget {
 public:
    std::string findFreeName(const std::string& prefix, const std::string& suffix) override;
    void addPart(const std::string& name, std::string bytes, const char* contentType) override;
    std::string relate(const std::string& from, const char* kind, const std::string& to) override;
    std::string relateOutside(const std::string& from, const char* kind, const std::string& address) override;
    std::string toBytes() override;

 private:
    struct TypedPart {
        Part part;
        const char* contentType;
    };

    std::string makeContentTypes() const;

    std::vector<TypedPart> parts_;
    std::map<std::string, std::size_t> freeNumbers_;
    std::map<std::string, std::vector<Relationship>> relationships_;
};

/// A package that exists, a document that new ones look like.
class PackageExtender final : public PartTarget {
 public:
    explicit PackageExtender(Package package) : package_(std::move(package)) {}

    std::string findFreeName(const std::string& prefix, const std::string& suffix) override;
    void addPart(const std::string& name, std::string bytes, const char* contentType) override;
    std::string relate(const std::string& from, const char* kind, const std::string& to) override;
    std::string relateOutside(const std::string& from, const char* kind, const std::string& address) override;
    std::string toBytes() override { return package_.toBytes(); }

 private:
    Package package_;
};

}  // namespace quillon::report
