#pragma once

#include <cstdint>
#include <string_view>

#include "support/Export.h"

namespace quillon::report {

/// The namespaces that documents with charts are made of, in either dialect.
enum class Ns : std::uint8_t {
    None,
    Other,
    Xml,
    Chart,
    Drawing,
    Word,
    WordDrawing,
    Picture,
    Sheet,
    ChartDrawing,
    OfficeRelationships,
    PackageRelationships,
    ContentTypes,
    MarkupCompatibility,
    Chart2007,
    Chart2012,
    Chart2014,
    ChartEx,
    WordShape,
    WordGroup,
    WordCanvas,
    Word2010,
    Sheet2009,
    Vml,
    Office,
};

/// The URI of a namespace; `strict` chooses the dialect where there are two.
QUILLON_EXPORT std::string_view getUri(Ns ns, bool strict = false);

/// The namespace that a URI of either dialect stands for.
Ns findNs(std::string_view uri);
/// Whether the URI is one of the strict dialect alone.
bool isStrictUri(std::string_view uri);

}  // namespace quillon::report
