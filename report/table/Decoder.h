#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "report/table/InputFile.h"

namespace quillon::report {

/// A text file as UTF-8, block by block, whatever its encoding. A byte-order mark is left out.
class Decoder {
 public:
    /// Reads from the start of `file`. An empty `encoding` is UTF-8, or UTF-16 where a byte-order mark or the
    /// zero bytes of the first letters show it. Throws: std::runtime_error for an encoding that nobody knows,
    /// or in which the file is not.
    Decoder(InputFile& file, const std::string& encoding);
    ~Decoder();
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    /// The next part of the text; empty at the end. UTF-8 is handed on as it is, well-formed or not.
    /// Throws: std::runtime_error that names the line for bytes that the encoding does not have, and zero
    /// bytes.
    std::string_view read();
    /// Bytes of the file that are read.
    std::uint64_t getDone() const { return done_; }

 private:
    struct Conversion;

    void convert(std::string_view bytes);
    [[noreturn]] void refuseByte(unsigned char byte) const;
    void requireZeros() const;
    void requireNoZero() const;

    InputFile& file_;
    std::string encoding_;
    std::unique_ptr<Conversion> conversion_;
    std::string block_;
    std::string text_;
    std::size_t markLength_ = 0;
    std::uint64_t done_ = 0;
    std::size_t line_ = 1;
};

}  // namespace quillon::report
