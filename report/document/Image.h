#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "report/document/Blocks.h"

namespace quillon::report {

/// What a picture file says of itself.
struct ImageInfo {
    /// "png" or "jpeg".
    const char* type;
    const char* contentType;
    /// English Metric Units, by its dots and its resolution; 96 dots an inch where it says none.
    std::int64_t width;
    std::int64_t height;
};

/// Reads the head of a PNG or JPEG file.
/// Throws: std::runtime_error for other bytes, and for a head that is damaged.
ImageInfo readImageInfo(const std::string& bytes);

/// Where a picture stands.
struct ImagePlace {
    /// Of the drawing; unique in the document.
    std::size_t number;
    std::u16string relationshipId;
    /// English Metric Units.
    std::int64_t textWidth;
};

/// Appends the drawing of a picture to a run.
void appendImage(xercesc::DOMElement* run, const ImageInfo& info, const ImageOptions& options,
                 const ImagePlace& place);

}  // namespace quillon::report
