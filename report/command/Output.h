#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon::report {

/// Where a document goes.
struct Output {
    /// "-" is standard output; a name that ends in ".pdf" gets a PDF.
    std::string path;
    /// Whether a file that nobody may write, and the document that is filled, may be replaced.
    bool force = false;

    bool isStandard() const { return path == "-"; }

    /// Refuses to replace a document that is filled, unless forced. Throws: std::runtime_error.
    void requireOtherThanTemplate(const std::string& document) const;
    /// Refuses to replace a file that the document is made from: an author who forgets the name of the
    /// document must not lose a table for it. Throws: std::runtime_error.
    void requireOther(const std::string& input) const;
    /// Refuses a name by which word processors do not open a document that is made, and not filled: .docm.
    /// Throws: std::runtime_error.
    void requireNameOfNew() const;
    /// Throws: std::runtime_error for a target that is write-protected, unless forced, for a name that
    /// promises another kind of file, and for a PDF where LibreOffice is missing.
    void requireWritable() const;
    /// Writes a document, or a PDF of it. Throws: std::runtime_error, FileError.
    void write(std::string_view document) const;
    /// Writes bytes as they are.
    void writePlain(std::string_view bytes) const;
    /// Refuses to replace a file at all, unless forced: it may have been changed by hand.
    /// Throws: std::runtime_error.
    void requireNew() const;
    /// The part of requireWritable that is for every file.
    void requireUnprotected() const;
};

}  // namespace quillon::report
