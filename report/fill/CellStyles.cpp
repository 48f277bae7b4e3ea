#include "report/fill/CellStyles.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "report/package/XmlSpans.h"

namespace quillon::report {
namespace {

/// Numbers below are formats that every workbook knows.
constexpr int firstOwnFormat = 164;

int readNumber(const XmlElement& element, std::string_view name)
{
    int number = 0;
    const auto text = element.getAttribute(name).value_or("");
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

int findFreeFormat(const XmlElement& formats)
{
    int number = firstOwnFormat;
    for (const auto format : formats.getChildren())
        number = std::max(number, readNumber(format, "numFmtId") + 1);
    return number;
}

/// The number of a format, which is added where it is not there.
int addNumberFormat(const XmlElement& styles, const std::string& code, Edits& edits)
{
    const std::string prefix(styles.getPrefix());
    const auto formats = styles.findChild("numFmts");
    for (const auto format : formats.getChildren())
        if (format.getAttribute("formatCode") == code) return readNumber(format, "numFmtId");
    const auto number = findFreeFormat(formats);
    const auto row = "<" + prefix + "numFmt numFmtId=\"" + std::to_string(number) + "\" formatCode=\"" +
                     escapeAttribute(code) + "\"/>";
    if (formats) {
        edits.append(formats, row);
        edits.setAttribute(formats, "count", std::to_string(readNumber(formats, "count") + 1));
    } else {
        edits.insert(styles.getInner().begin,
                     "<" + prefix + "numFmts count=\"1\">" + row + "</" + prefix + "numFmts>");
    }
    return number;
}

}  // namespace

CellStyles::CellStyles(Package& workbook) : workbook_(workbook)
{
    for (const auto& relationship : workbook.getRelationships(workbook.getMainPart()))
        if (relationship.getKind() == "styles" && workbook.hasPart(relationship.target))
            part_ = relationship.target;
}

int CellStyles::withFormat(int base, const std::string& numberFormat)
{
    if (numberFormat.empty() || numberFormat == "General" || part_.empty()) return base;
    const auto [at, isNew] = made_.try_emplace({base, numberFormat}, base);
    if (isNew) at->second = addFormat(base, numberFormat);
    return at->second;
}

int CellStyles::addFormat(int base, const std::string& numberFormat)
{
    const XmlSpans xml(workbook_.getPart(part_), part_);
    const auto list = xml.getRoot().findChild("cellXfs");
    int count = 0;
    XmlElement like;
    for (const auto style : list.getChildren())
        if (count++ == std::max(base, 0)) like = style;
    if (!like || readNumber(like, "numFmtId") != 0) return base;

    Edits edits;
    const auto format = addNumberFormat(xml.getRoot(), numberFormat, edits);
    const auto source = std::string(like.getSource());
    const XmlSpans copy(source, part_);
    Edits changes;
    changes.setAttribute(copy.getRoot(), "numFmtId", std::to_string(format));
    changes.setAttribute(copy.getRoot(), "applyNumberFormat", "1");
    edits.append(list, changes.apply(copy));
    edits.setAttribute(list, "count", std::to_string(count + 1));
    workbook_.setPart(part_, edits.apply(xml));
    return count;
}

}  // namespace quillon::report
