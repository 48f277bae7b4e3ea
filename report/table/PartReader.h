#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct zip;

namespace quillon::report {

/// The parts of a package, read from memory.
class PartReader {
 public:
    /// `bytes` must outlive the reader. Throws: std::runtime_error when they are no package.
    explicit PartReader(std::string_view bytes);
    ~PartReader();
    PartReader(const PartReader&) = delete;
    PartReader& operator=(const PartReader&) = delete;

    bool hasPart(const std::string& name) const;
    /// Throws: std::runtime_error for a part that is missing, damaged, or has more than `most` bytes.
    std::string read(const std::string& name, std::uint64_t most) const;

 private:
    zip* archive_ = nullptr;
};

/// An attribute of an element, its name without prefix.
struct XmlAttribute {
    std::string name;
    std::string value;
};

/// What is heard of an XML text while it is read; names come without prefix.
class XmlListener {
 public:
    virtual ~XmlListener() = default;
    virtual void startElement(const std::string& name, const std::vector<XmlAttribute>& attributes) = 0;
    virtual void endElement(const std::string& name) = 0;
    /// May come in several pieces.
    virtual void addText(std::string_view text) = 0;
};

/// The value of an attribute; empty: there is none.
std::string getAttribute(const std::vector<XmlAttribute>& attributes, const char* name);

/// Reads an XML text. Nothing outside of it is opened. Throws: std::runtime_error for text that is not
/// well-formed, and what the listener throws.
void readXml(const std::string& bytes, XmlListener& listener);

}  // namespace quillon::report
