#include "report/package/Archive.h"
#include "report/options/QuotedText.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <new>
#include <numeric>
#include <stdexcept>
#include <utility>

namespace quillon::report {
namespace {

constexpr std::string_view localSignature{"PK\x03\x04", 4};
constexpr std::string_view directorySignature{"PK\x01\x02", 4};
constexpr std::string_view endSignature{"PK\x05\x06", 4};
constexpr std::string_view wideEndSignature{"PK\x06\x06", 4};
constexpr std::string_view wideLocatorSignature{"PK\x06\x07", 4};

constexpr std::size_t localSize = 30;
constexpr std::size_t directorySize = 46;
constexpr std::size_t endSize = 22;
constexpr std::size_t wideLocatorSize = 20;
/// Where the 4 bytes of the offset stand in a record of the directory.
constexpr std::size_t offsetInDirectory = 42;
constexpr std::uint16_t wideField = 1;
/// Says that the number stands in a wider field elsewhere.
constexpr std::uint64_t elsewhere = 0xFFFFFFFF;
constexpr std::size_t countElsewhere = 0xFFFF;

constexpr std::uint16_t encryptedFlag = 1;
constexpr std::uint16_t stored = 0;
constexpr std::uint16_t deflated = 8;
constexpr std::uint16_t neededVersion = 20;
constexpr int fastestCompression = 1;
/// Of deflate: a window of 32 kB, without header or checksum.
constexpr int rawWindow = -15;

[[noreturn]] void failDamaged(const std::string& what)
{
    throw std::runtime_error("The file is damaged: " + what);
}

/// The number of `width` bytes, lowest first, at `at`.
std::uint64_t readNumber(std::string_view bytes, std::size_t at, std::size_t width)
{
    if (at > bytes.size() || width > bytes.size() - at) failDamaged("its directory leads past its end.");
    std::uint64_t number = 0;
    for (std::size_t i = width; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

void appendNumber(std::string& bytes, std::uint64_t number, std::size_t width)
{
    for (std::size_t i = 0; i < width; ++i) bytes += static_cast<char>(number >> (8 * i));
}

std::string_view slice(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at) failDamaged("its directory leads past its end.");
    return bytes.substr(at, size);
}

std::string quote(const std::string& name)
{
    return quoteText(name, 200);
}

struct Directory {
    std::uint64_t count;
    std::uint64_t start;
    std::string_view comment;
};

std::size_t findEnd(std::string_view bytes)
{
    if (bytes.size() >= endSize)
        for (auto at = bytes.rfind(endSignature, bytes.size() - endSize); at != std::string_view::npos;
             at = at == 0 ? std::string_view::npos : bytes.rfind(endSignature, at - 1))
            if (at + endSize + readNumber(bytes, at + 20, 2) <= bytes.size()) return at;
    throw std::runtime_error("The file is incomplete: the directory at the end of a zip file is missing.");
}

/// Numbers past 32 bits stand in a record of their own.
void widen(Directory& directory, std::string_view bytes, std::size_t end)
{
    if (end < wideLocatorSize) return;
    const auto locator = end - wideLocatorSize;
    if (bytes.substr(locator, 4) != wideLocatorSignature) return;
    const auto at = readNumber(bytes, locator + 8, 8);
    if (slice(bytes, at, 4) != wideEndSignature) failDamaged("its directory is not where it should be.");
    directory.count = readNumber(bytes, at + 32, 8);
    directory.start = readNumber(bytes, at + 48, 8);
}

Directory findDirectory(std::string_view bytes)
{
    const auto end = findEnd(bytes);
    if (readNumber(bytes, end + 4, 2) != readNumber(bytes, end + 6, 2))
        throw std::runtime_error("The file is one of several parts of a zip file; expected a whole one.");
    Directory directory{readNumber(bytes, end + 10, 2), readNumber(bytes, end + 16, 4),
                        bytes.substr(end + endSize, readNumber(bytes, end + 20, 2))};
    widen(directory, bytes, end);
    return directory;
}

/// Takes the numbers of an entry that do not fit 32 bits from its wide field.
void widen(Archive::Entry& entry, std::size_t nameEnd, std::size_t extraSize)
{
    const auto record = entry.directoryRecord;
    const auto end = nameEnd + extraSize;
    for (auto at = nameEnd; at + 4 <= end; at += 4 + readNumber(record, at + 2, 2)) {
        if (readNumber(record, at, 2) != wideField) continue;
        at += 4;
        for (auto* number : {&entry.size, &entry.packedSize, &entry.recordStart}) {
            if (*number != elsewhere) continue;
            *number = readNumber(record.substr(0, end), at, 8);
            if (number == &entry.recordStart) {
                entry.offsetPosition = at;
                entry.offsetWidth = 8;
            }
            at += 8;
        }
        return;
    }
}

Archive::Entry readEntry(std::string_view bytes, std::size_t at)
{
    if (slice(bytes, at, 4) != directorySignature) failDamaged("its directory is broken off.");
    const auto nameSize = readNumber(bytes, at + 28, 2);
    const auto extraSize = readNumber(bytes, at + 30, 2);
    const auto size = directorySize + nameSize + extraSize + readNumber(bytes, at + 32, 2);
    Archive::Entry entry{};
    entry.directoryRecord = slice(bytes, at, size);
    entry.name = entry.directoryRecord.substr(directorySize, nameSize);
    entry.flags = static_cast<std::uint16_t>(readNumber(bytes, at + 8, 2));
    entry.method = static_cast<std::uint16_t>(readNumber(bytes, at + 10, 2));
    entry.time = static_cast<std::uint32_t>(readNumber(bytes, at + 12, 4));
    entry.checksum = static_cast<std::uint32_t>(readNumber(bytes, at + 16, 4));
    entry.packedSize = readNumber(bytes, at + 20, 4);
    entry.size = readNumber(bytes, at + 24, 4);
    entry.recordStart = readNumber(bytes, at + offsetInDirectory, 4);
    entry.offsetPosition = offsetInDirectory;
    entry.offsetWidth = 4;
    widen(entry, directorySize + nameSize, extraSize);
    return entry;
}

void requireModestSize(const Archive::Entry& entry, const ArchiveLimits& limits)
{
    if (entry.size > limits.partSize)
        throw std::runtime_error("The file is too large: " + quote(entry.name) + " unpacks to more than " +
                                 std::to_string(limits.partSize >> 20) + " MB.");
    if (entry.size > limits.freeSize && entry.size / limits.ratio > entry.packedSize)
        throw std::runtime_error("The file is refused: " + quote(entry.name) + " unpacks to more than " +
                                 std::to_string(limits.ratio) + " times its size.");
}

/// A name that leads out of the folder into which someone may unpack the file.
bool leadsOutside(const std::string& name)
{
    if (name.starts_with('/') || name.starts_with('\\')) return true;
    for (std::size_t at = 0; at <= name.size();) {
        const auto end = std::min(name.find_first_of("/\\", at), name.size());
        if (name.compare(at, end - at, "..") == 0) return true;
        at = end + 1;
    }
    return false;
}

void requireModestName(const std::string& name)
{
    if (name.empty() || leadsOutside(name) || name.find('\0') != std::string::npos)
        throw std::runtime_error("The file is refused: its entry " + quote(name) +
                                 " leads outside of the file.");
}

/// Finds the content of an entry behind the record before it, which must agree with the directory.
void findContent(Archive::Entry& entry, std::string_view bytes)
{
    const auto at = entry.recordStart;
    const auto nameSize = readNumber(bytes, at + 26, 2);
    if (slice(bytes, at, 4) != localSignature || slice(bytes, at + localSize, nameSize) != entry.name)
        failDamaged(quote(entry.name) + " is not where its directory says.");
    entry.contentStart = at + localSize + nameSize + readNumber(bytes, at + 28, 2);
    static_cast<void>(slice(bytes, entry.contentStart, entry.packedSize));
}

/// A stream of zlib, ended with its scope.
template <int (*End)(z_stream*)>
struct Stream : z_stream {
    Stream() : z_stream{} {}
    ~Stream() { End(this); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;
};

void setBuffers(z_stream& stream, std::string_view from, std::string& to)
{
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(from.data()));
    stream.avail_in = static_cast<uInt>(from.size());
    stream.next_out = reinterpret_cast<Bytef*>(to.data());
    stream.avail_out = static_cast<uInt>(to.size());
}

std::string inflateBytes(std::string_view packed, std::size_t size)
{
    // One byte more, so that content longer than announced shows.
    std::string bytes(size + 1, '\0');
    Stream<inflateEnd> stream;
    if (inflateInit2(&stream, rawWindow) != Z_OK) throw std::bad_alloc();
    setBuffers(stream, packed, bytes);
    const int status = inflate(&stream, Z_FINISH);
    if (status == Z_MEM_ERROR) throw std::bad_alloc();
    if (status != Z_STREAM_END) return {};
    bytes.resize(stream.total_out);
    return bytes;
}

[[noreturn]] void failTooLarge()
{
    throw std::runtime_error("The document would be larger than 4 GB, which its format cannot hold.");
}

std::uint32_t makeChecksum(std::string_view bytes)
{
    return static_cast<std::uint32_t>(crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

std::string unpack(std::string_view bytes, const Archive::Entry& entry)
{
    if ((entry.flags & encryptedFlag) != 0)
        throw std::runtime_error("The file is protected with a password: " + quote(entry.name) +
                                 " is encrypted; save a copy without one.");
    const auto packed = bytes.substr(entry.contentStart, entry.packedSize);
    if (entry.method != stored && entry.method != deflated)
        throw std::runtime_error(quote(entry.name) + " is packed by method " + std::to_string(entry.method) +
                                 "; expected stored or deflated.");
    auto content = entry.method == stored ? std::string(packed) : inflateBytes(packed, entry.size);
    if (content.size() != entry.size || makeChecksum(content) != entry.checksum)
        failDamaged("the content of " + quote(entry.name) + " is not what was packed.");
    return content;
}

}  // namespace

/// A chunk is small: a buffer for the worst case would be as large as the content.
struct Packer::Stream : quillon::report::Stream<deflateEnd> {
    std::string chunk = std::string(0x4000, '\0');
};

Packer::Packer() : stream_(std::make_unique<Stream>())
{
    constexpr int memoryLevel = 8;
    if (deflateInit2(stream_.get(), fastestCompression, Z_DEFLATED, rawWindow, memoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
    packed_.method = deflated;
}

Packer::~Packer() = default;

void Packer::append(std::string_view piece)
{
    packed_.size += piece.size();
    packed_.checksum = static_cast<std::uint32_t>(
        crc32_z(packed_.checksum, reinterpret_cast<const Bytef*>(piece.data()), piece.size()));
    deflatePiece(piece, Z_NO_FLUSH);
}

PackedBytes Packer::finish()
{
    deflatePiece({}, Z_FINISH);
    if (packed_.size >= elsewhere) failTooLarge();
    return std::move(packed_);
}

void Packer::deflatePiece(std::string_view piece, int flush)
{
    auto& stream = *stream_;
    do {
        // The counters of a stream are narrower than a piece may be.
        const auto part = piece.substr(0, 1U << 30);
        setBuffers(stream, part, stream.chunk);
        const int status = deflate(&stream, flush);
        if (status != Z_OK && status != Z_BUF_ERROR && status != Z_STREAM_END) throw std::bad_alloc();
        packed_.bytes.append(stream.chunk, 0, stream.chunk.size() - stream.avail_out);
        piece.remove_prefix(part.size() - stream.avail_in);
    } while (stream.avail_out == 0 || !piece.empty());
}

PackedBytes pack(std::string_view bytes)
{
    if (bytes.size() >= elsewhere || bytes.starts_with(localSignature)) return store(bytes);
    Packer packer;
    packer.append(bytes);
    return packer.finish();
}

std::string unpack(const PackedBytes& packed)
{
    return packed.method == stored ? packed.bytes : inflateBytes(packed.bytes, packed.size);
}

PackedBytes store(std::string_view bytes)
{
    if (bytes.size() >= elsewhere) failTooLarge();
    return {stored, makeChecksum(bytes), bytes.size(), std::string(bytes)};
}

Archive::Archive(std::string bytes, const ArchiveLimits& limits) : bytes_(std::move(bytes))
{
    if (bytes_.size() > limits.fileSize)
        throw std::runtime_error("The file is too large: expected at most " +
                                 std::to_string(limits.fileSize >> 20) + " MB.");
    readDirectory(limits);
    findRecords();
    contents_ = std::make_unique<Content[]>(entries_.size());
}

void Archive::readDirectory(const ArchiveLimits& limits)
{
    const auto directory = findDirectory(bytes_);
    comment_ = directory.comment;
    if (directory.count > limits.entryCount)
        throw std::runtime_error("The file is refused: it has " + std::to_string(directory.count) +
                                 " entries; expected at most " + std::to_string(limits.entryCount) + ".");
    std::size_t total = 0;
    for (auto at = directory.start; entries_.size() < directory.count;) {
        auto entry = readEntry(bytes_, at);
        requireModestName(entry.name);
        requireModestSize(entry, limits);
        findContent(entry, bytes_);
        at += entry.directoryRecord.size();
        total += entry.size;
        entry.recordEnd = directory.start;
        entries_.push_back(std::move(entry));
    }
    if (total > limits.totalSize)
        throw std::runtime_error("The file is too large: it unpacks to more than " +
                                 std::to_string(limits.totalSize >> 20) + " MB.");
}

/// An entry reaches to the next one: what stands between them, such as sizes behind the content, is copied
/// with it.
void Archive::findRecords()
{
    std::vector<std::size_t> order(entries_.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::sort(order, {}, [this](auto index) { return entries_[index].recordStart; });
    for (std::size_t i = 0; i < order.size(); ++i) {
        auto& entry = entries_[order[i]];
        if (i + 1 < order.size()) entry.recordEnd = entries_[order[i + 1]].recordStart;
        if (entry.contentStart + entry.packedSize > entry.recordEnd)
            throw std::runtime_error("The file is refused: " + quote(entry.name) +
                                     " overlaps another entry.");
    }
}

const std::string& Archive::read(std::size_t index) const
{
    auto& content = contents_[index];
    const std::scoped_lock lock(content.mutex);
    if (!content.isRead) content.bytes = unpack(bytes_, entries_[index]);
    content.isRead = true;
    return content.bytes;
}

void ArchiveWriter::copy(const Archive& archive, const Archive::Entry& entry)
{
    std::string offset;
    appendNumber(offset, bytes_.size(), static_cast<std::size_t>(entry.offsetWidth));
    const auto at = directory_.size() + entry.offsetPosition;
    directory_ += entry.directoryRecord;
    directory_.replace(at, offset.size(), offset);
    bytes_.append(archive.getBytes(), entry.recordStart, entry.recordEnd - entry.recordStart);
    ++count_;
}

void ArchiveWriter::add(const std::string& name, const PackedBytes& content, std::uint32_t time)
{
    const auto isAscii =
        std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    constexpr std::uint16_t utf8Flag = 0x800;
    std::string record;
    appendNumber(record, neededVersion, 2);
    appendNumber(record, isAscii ? 0 : utf8Flag, 2);
    appendNumber(record, content.method, 2);
    appendNumber(record, time, 4);
    appendNumber(record, content.checksum, 4);
    appendNumber(record, content.bytes.size(), 4);
    appendNumber(record, content.size, 4);
    appendNumber(record, name.size(), 2);
    appendNumber(record, 0, 2);

    directory_ += directorySignature;
    appendNumber(directory_, neededVersion, 2);
    directory_ += record;
    // No comment, first disk, no attributes.
    directory_.append(10, '\0');
    appendNumber(directory_, bytes_.size(), 4);
    directory_ += name;

    bytes_ += localSignature;
    bytes_ += record;
    bytes_ += name;
    bytes_ += content.bytes;
    ++count_;
}

std::string ArchiveWriter::finish(std::string_view comment)
{
    const auto start = bytes_.size();
    if (start + directory_.size() >= elsewhere) failTooLarge();
    if (count_ >= countElsewhere)
        throw std::runtime_error(
            "The document would have more than 65,534 parts, which its format cannot hold.");
    bytes_ += directory_;
    bytes_ += endSignature;
    appendNumber(bytes_, 0, 4);
    appendNumber(bytes_, count_, 2);
    appendNumber(bytes_, count_, 2);
    appendNumber(bytes_, directory_.size(), 4);
    appendNumber(bytes_, start, 4);
    appendNumber(bytes_, comment.size(), 2);
    bytes_ += comment;
    return std::move(bytes_);
}

}  // namespace quillon::report
