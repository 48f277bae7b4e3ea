#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

namespace quillon::report {

/// An entry of a zip file that a test makes byte for byte, with whatever lies it wants to tell.
struct RawEntry {
    std::string name = {};
    std::string content = {};
    /// Fields of the directory; the record before the content gets them with the sizes behind it left out.
    std::string extra = {};
    /// Sizes and checksum follow the content, as those who write to a pipe do it.
    bool hasDescriptor = false;
    /// Sizes and offset stand in a wide field.
    bool isWide = false;
    /// What the directory says instead of the truth.
    std::uint64_t announcedSize = UINT64_MAX;
    std::uint64_t announcedOffset = UINT64_MAX;
    std::uint16_t method = 0;
    std::uint16_t flags = 0;
};

class RawZip {
 public:
    explicit RawZip(const std::vector<RawEntry>& entries, const std::string& comment = "")
    {
        for (const auto& entry : entries) add(entry);
        const auto start = bytes_.size();
        bytes_ += directory_ + "PK\x05\x06" + number(0, 4) + number(entries.size(), 2) +
                  number(entries.size(), 2) + number(directory_.size(), 4) + number(start, 4) +
                  number(comment.size(), 2) + comment;
    }
    const std::string& getBytes() const { return bytes_; }

    static std::string number(std::uint64_t value, int width)
    {
        std::string bytes;
        for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i));
        return bytes;
    }

 private:
    void add(const RawEntry& entry)
    {
        const auto offset = entry.announcedOffset == UINT64_MAX ? bytes_.size() : entry.announcedOffset;
        const auto size = entry.announcedSize == UINT64_MAX ? entry.content.size() : entry.announcedSize;
        const auto sum = crc32(0, reinterpret_cast<const Bytef*>(entry.content.data()),
                               static_cast<uInt>(entry.content.size()));
        const auto sums = number(sum, 4) + number(entry.content.size(), 4) + number(size, 4);
        const auto flags = static_cast<std::uint16_t>(entry.flags | (entry.hasDescriptor ? 8 : 0));
        const auto head = number(45, 2) + number(flags, 2) + number(entry.method, 2) + number(0x58215A5A, 4);
        bytes_ += "PK\x03\x04" + head + (entry.hasDescriptor ? std::string(12, '\0') : sums) +
                  number(entry.name.size(), 2) + number(0, 2) + entry.name + entry.content;
        if (entry.hasDescriptor) bytes_ += "PK\x07\x08" + sums;

        auto extra = entry.extra;
        if (entry.isWide)
            extra += number(1, 2) + number(24, 2) + number(size, 8) + number(entry.content.size(), 8) +
                     number(offset, 8);
        const auto all = std::string(4, '\xFF');
        directory_ += "PK\x01\x02" + number(45, 2) + head +
                      (entry.isWide ? number(sum, 4) + all + all : sums) + number(entry.name.size(), 2) +
                      number(extra.size(), 2) + number(2, 2) + number(0, 2) + number(0, 2) +
                      number(0x81A40000, 4) + (entry.isWide ? all : number(offset, 4)) + entry.name + extra +
                      "ok";
    }

    std::string bytes_;
    std::string directory_;
};

}  // namespace quillon::report
