#pragma once

#include <expat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/package/XmlSpans.h"

namespace quillon::report {

/// Fills an XmlSpans from what expat reports.
class XmlReader {
 public:
    XmlReader(XmlSpans& xml, XmlSpans::Defers defers);
    /// Throws: std::runtime_error that says what is wrong, and in which line.
    void read(std::string_view text);

 private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    void parse(std::string_view chunk, bool isLast);
    [[noreturn]] void fail(const std::string& problem) const;
    /// Ends the parsing from within a handler.
    void stop(const char* problem);
    void open(std::string_view name);
    void link(std::uint32_t index);
    void close();
    std::uint32_t intern(std::string_view name);

    static XmlReader& get(void* self) { return *static_cast<XmlReader*>(self); }
    static void start(void* self, const XML_Char* name, const XML_Char** attributes);
    static void end(void* self, const XML_Char* name);
    static void refuseDocumentType(void* self, const XML_Char* name, const XML_Char* system,
                                   const XML_Char* publicId, int hasSubset);
    static void checkDeclaration(void* self, const XML_Char* version, const XML_Char* encoding,
                                 int standalone);

    XmlSpans& xml_;
    XmlSpans::Defers defers_;
    std::unique_ptr<XML_ParserStruct, Free> parser_;
    std::string problem_;
    std::uint32_t depth_ = 0;
    /// Of the element whose content is passed over; 0 outside.
    std::uint32_t deferredDepth_ = 0;
    std::size_t count_ = 0;
    std::uint32_t current_ = XmlSpans::none;
    /// The last element of each depth under the current parents.
    std::vector<std::uint32_t> last_;
    std::unordered_map<std::string, std::uint32_t> ids_;
};

}  // namespace quillon::report
