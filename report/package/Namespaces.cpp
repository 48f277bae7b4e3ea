#include "report/package/Namespaces.h"

#include <algorithm>
#include <array>

namespace quillon::report {
namespace {

struct NamespaceRow {
    Ns ns;
    std::string_view transitional;
    std::string_view strict = {};
};

constexpr std::array<NamespaceRow, 23> namespaces = {{
    {Ns::Xml, "http://www.w3.org/XML/1998/namespace"},
    {Ns::Chart, "http://schemas.openxmlformats.org/drawingml/2006/chart",
     "http://purl.oclc.org/ooxml/drawingml/chart"},
    {Ns::Drawing, "http://schemas.openxmlformats.org/drawingml/2006/main",
     "http://purl.oclc.org/ooxml/drawingml/main"},
    {Ns::Word, "http://schemas.openxmlformats.org/wordprocessingml/2006/main",
     "http://purl.oclc.org/ooxml/wordprocessingml/main"},
    {Ns::WordDrawing, "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing",
     "http://purl.oclc.org/ooxml/drawingml/wordprocessingDrawing"},
    {Ns::Picture, "http://schemas.openxmlformats.org/drawingml/2006/picture",
     "http://purl.oclc.org/ooxml/drawingml/picture"},
    {Ns::Sheet, "http://schemas.openxmlformats.org/spreadsheetml/2006/main",
     "http://purl.oclc.org/ooxml/spreadsheetml/main"},
    {Ns::ChartDrawing, "http://schemas.openxmlformats.org/drawingml/2006/chartDrawing",
     "http://purl.oclc.org/ooxml/drawingml/chartDrawing"},
    {Ns::OfficeRelationships, "http://schemas.openxmlformats.org/officeDocument/2006/relationships",
     "http://purl.oclc.org/ooxml/officeDocument/relationships"},
    {Ns::PackageRelationships, "http://schemas.openxmlformats.org/package/2006/relationships"},
    {Ns::ContentTypes, "http://schemas.openxmlformats.org/package/2006/content-types"},
    {Ns::MarkupCompatibility, "http://schemas.openxmlformats.org/markup-compatibility/2006"},
    {Ns::Chart2007, "http://schemas.microsoft.com/office/drawing/2007/8/2/chart"},
    {Ns::Chart2012, "http://schemas.microsoft.com/office/drawing/2012/chart"},
    {Ns::Chart2014, "http://schemas.microsoft.com/office/drawing/2014/chart"},
    {Ns::ChartEx, "http://schemas.microsoft.com/office/drawing/2014/chartex"},
    {Ns::WordShape, "http://schemas.microsoft.com/office/word/2010/wordprocessingShape"},
    {Ns::WordGroup, "http://schemas.microsoft.com/office/word/2010/wordprocessingGroup"},
    {Ns::WordCanvas, "http://schemas.microsoft.com/office/word/2010/wordprocessingCanvas"},
    {Ns::Word2010, "http://schemas.microsoft.com/office/word/2010/wordml"},
    {Ns::Sheet2009, "http://schemas.microsoft.com/office/spreadsheetml/2009/9/main"},
    {Ns::Vml, "urn:schemas-microsoft-com:vml"},
    {Ns::Office, "urn:schemas-microsoft-com:office:office"},
}};

}  // namespace

Ns findNs(std::string_view uri)
{
    if (uri.empty()) return Ns::None;
    const auto* row = std::find_if(namespaces.begin(), namespaces.end(),
                                   [&](const auto& r) { return r.transitional == uri || r.strict == uri; });
    return row == namespaces.end() ? Ns::Other : row->ns;
}

bool isStrictUri(std::string_view uri)
{
    return !uri.empty() && std::any_of(namespaces.begin(), namespaces.end(),
                                       [&](const auto& row) { return row.strict == uri; });
}

std::string_view getUri(Ns ns, bool strict)
{
    const auto* row =
        std::find_if(namespaces.begin(), namespaces.end(), [&](const auto& r) { return r.ns == ns; });
    if (row == namespaces.end()) return {};
    return strict && !row->strict.empty() ? row->strict : row->transitional;
}

}  // namespace quillon::report
