#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "support/Export.h"

namespace quillon::report {

/// What is refused, because no document needs it and a hostile file might: bytes, unless it says otherwise.
struct ArchiveLimits {
    std::size_t fileSize = std::size_t{1} << 30;
    std::size_t entryCount = 20'000;
    std::size_t partSize = std::size_t{1} << 30;
    std::size_t totalSize = std::size_t{2} << 30;
    /// An entry that unpacks to more than `freeSize` may be this many times as large as it is packed.
    std::size_t ratio = 250;
    std::size_t freeSize = std::size_t{32} << 20;
};

/// The content of an entry as it stands in a zip file.
struct PackedBytes {
    /// 0 for stored, 8 for deflated.
    std::uint16_t method = 0;
    std::uint32_t checksum = 0;
    std::size_t size = 0;
    std::string bytes = {};
};

/// 1 January 1980, the first day that the records of a zip file can name, at midnight.
inline constexpr std::uint32_t firstDay = 0x210000;

/// Deflates `bytes`, unless they are a zip file themselves.
/// Throws: std::runtime_error beyond 4 GB.
PackedBytes pack(std::string_view bytes);
/// The same as they are.
PackedBytes store(std::string_view bytes);
/// What was packed.
std::string unpack(const PackedBytes& packed);

/// Deflates content that comes piece by piece, so that it is never there as a whole.
class QUILLON_EXPORT Packer {
 public:
    Packer();
    ~Packer();
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    void append(std::string_view piece);
    /// The end. Throws: std::runtime_error beyond 4 GB.
    PackedBytes finish();

 private:
    struct Stream;
    void deflatePiece(std::string_view piece, int flush);

    std::unique_ptr<Stream> stream_;
    PackedBytes packed_;
};

/// A zip file that is read, and whose entries can be copied as they are. It keeps the bytes and never
/// changes; threads may share it. A library that hides where an entry's bytes lie could only rewrite them.
class Archive {
 public:
    struct Entry {
        std::string name;
        std::uint16_t flags;
        std::uint16_t method;
        std::uint32_t time;
        std::uint32_t checksum;
        std::size_t packedSize;
        std::size_t size;
        /// The record that stands before the content, and what follows up to the next one.
        std::size_t recordStart;
        std::size_t recordEnd;
        std::size_t contentStart;
        /// The entry's record in the directory, and in it the offset of `recordStart` with its width in
        /// bytes.
        std::string_view directoryRecord;
        std::size_t offsetPosition;
        int offsetWidth;
    };

    /// Throws: std::runtime_error with a sentence on what the file is instead, or what is wrong with it.
    explicit Archive(std::string bytes, const ArchiveLimits& limits = {});

    const std::string& getBytes() const { return bytes_; }
    const std::vector<Entry>& getEntries() const { return entries_; }
    std::string_view getComment() const { return comment_; }
    /// The content of an entry, unpacked at the first call and kept.
    /// Throws: std::runtime_error when it is damaged, encrypted or packed in an unknown way.
    const std::string& read(std::size_t index) const;

 private:
    struct Content {
        std::mutex mutex;
        bool isRead = false;
        std::string bytes;
    };

    void readDirectory(const ArchiveLimits& limits);
    void findRecords();

    std::string bytes_;
    std::string_view comment_;
    std::vector<Entry> entries_;
    std::unique_ptr<Content[]> contents_;
};

/// Writes a zip file, entry after entry.
class ArchiveWriter {
 public:
    /// Copies an entry with everything that belongs to it.
    void copy(const Archive& archive, const Archive::Entry& entry);
    /// Time: as in the records of a zip file.
    void add(const std::string& name, const PackedBytes& content, std::uint32_t time);
    /// Throws: std::runtime_error for more than the format can hold.
    std::string finish(std::string_view comment);

    void reserve(std::size_t size) { bytes_.reserve(size); }

 private:
    std::string bytes_;
    std::string directory_;
    std::size_t count_ = 0;
};

}  // namespace quillon::report
