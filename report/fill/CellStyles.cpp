#include "report/fill/CellStyles.h"

#include <algorithm>
#include <string_view>

#include "report/options/PlainNumber.h"
#include "report/package/Edits.h"
#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

/// Numbers below are formats that every workbook knows.
constexpr int firstOwnFormat = 164;

int readNumber(const XmlElement& element, std::string_view name)
{
    return readPlainNumber<int>(element.getAttribute(name).value_or("")).value_or(0);
}

/// The number of a format that the styles have; 0 when they have none such.
int findFormat(const XmlElement& formats, const std::string& code)
{
    for (const auto format : formats.getChildren())
        if (format.getAttribute("formatCode") == code) return readNumber(format, "numFmtId");
    return 0;
}

int findFreeFormat(const XmlElement& formats)
{
    int number = firstOwnFormat;
    for (const auto format : formats.getChildren())
        number = std::max(number, readNumber(format, "numFmtId") + 1);
    return number;
}

int countChildren(const XmlElement& list)
{
    int count = 0;
    for (auto child = list.getFirstChild(); child; child = child.getNext()) ++count;
    return count;
}

}  // namespace

int CellStyles::withFormat(int base, const std::string& numberFormat)
{
    if (numberFormat.empty() || numberFormat == "General" || !xml_) return base;
    const auto [at, isNew] = styles_.try_emplace({base, numberFormat}, base);
    if (isNew) at->second = addStyle(base, numberFormat);
    return at->second;
}

int CellStyles::addStyle(int base, const std::string& numberFormat)
{
    const auto list = xml_->getRoot().findChild("cellXfs");
    auto like = list.getFirstChild();
    for (int i = 0; i < base && like; ++i) like = like.getNext();
    if (!like || readNumber(like, "numFmtId") != 0) return base;
    Edits edits;
    edits.setAttribute(like, "numFmtId", std::to_string(addFormat(numberFormat)));
    edits.setAttribute(like, "applyNumberFormat", "1");
    newStyles_ += edits.apply(xml_->getText(), like.getOuter());
    return countChildren(list) + newStyleCount_++;
}

/// The number of a format, which is added where it is not there.
int CellStyles::addFormat(const std::string& numberFormat)
{
    const auto [at, isNew] = formats_.try_emplace(numberFormat, 0);
    if (!isNew) return at->second;
    const auto formats = xml_->getRoot().findChild("numFmts");
    at->second = findFormat(formats, numberFormat);
    if (at->second != 0) return at->second;
    at->second = findFreeFormat(formats) + newFormatCount_++;
    newFormats_ += "<" + std::string(xml_->getRoot().getPrefix()) + "numFmt numFmtId=\"" +
                   std::to_string(at->second) + "\" formatCode=\"" + escapeAttribute(numberFormat) + "\"/>";
    return at->second;
}

void CellStyles::save(Package& workbook) const
{
    if (newStyleCount_ == 0) return;
    const auto root = xml_->getRoot();
    const auto name = std::string(root.getPrefix()) + "numFmts";
    Edits edits;
    if (const auto formats = root.findChild("numFmts"); formats && newFormatCount_ > 0) {
        edits.append(formats, newFormats_);
        edits.setAttribute(formats, "count", std::to_string(readNumber(formats, "count") + newFormatCount_));
    } else if (newFormatCount_ > 0) {
        edits.insert(root.getInner().begin, "<" + name + " count=\"" + std::to_string(newFormatCount_) +
                                                "\">" + newFormats_ + "</" + name + ">");
    }
    const auto list = root.findChild("cellXfs");
    edits.append(list, newStyles_);
    edits.setAttribute(list, "count", std::to_string(countChildren(list) + newStyleCount_));
    workbook.setPart(xml_->getPart(), edits.apply(*xml_));
}

}  // namespace quillon::report
