#include <string>

#include "fuzz/Check.h"
#include "fuzz/Input.h"
#include "fuzz/PackageReader.h"
#include "report/package/Edits.h"
#include "report/package/Package.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

// Parts read as spans, and packages. What is read is compared with what expat sees; what is changed is read
// back.

namespace quillon::fuzz {
namespace {

using report::XmlElement;

void compare(const XmlElement& element, const XmlTree& tree)
{
    require(element.getName() == tree.name, "another name", tree.name);
    auto child = tree.children.begin();
    for (const auto& inner : element.getChildren()) {
        require(child != tree.children.end() && inner.getParent() == element, "children too many");
        compare(inner, *child++);
    }
    require(child == tree.children.end(), "children lost");
    if (tree.children.empty()) require(element.getText() == tree.text, "another text", tree.text);
    for (const auto& [name, value] : tree.attributes) {
        const auto read = element.getAttribute(name);
        require(!read || *read == value || name.find(':') != std::string::npos || tree.attributes.size() > 1,
                "another value", name);
    }
}

XmlElement takeElement(Input& input, XmlElement element)
{
    while (input.takeChance(2) && element.getFirstChild())
        for (element = element.getFirstChild(); input.takeChance(2) && element.getNext();)
            element = element.getNext();
    return element;
}

/// A change of one place, and the same place in the changed text.
void checkEdit(Input& input, const report::XmlSpans& xml)
{
    const auto text = input.takeUtf8();
    if (!isAccepted([&] { toUtf16(text); }) ||
        text.find_first_of(std::string("\x01\xEF\0", 3)) != std::string::npos)
        return;
    const auto element = takeElement(input, xml.getRoot());
    report::Edits edits;
    edits.setAttribute(element, "added", text);
    if (input.takeChance(2)) edits.setInner(element, report::escapeText(text));
    const auto changed = edits.apply(xml);
    const report::XmlSpans again(changed, "changed");
    readXml("changed", std::string(again.getText()));
    require(again.isStrict() == xml.isStrict(), "another dialect");
}

void checkSpans(Input& input, const std::string& bytes)
{
    isAccepted([&] {
        const report::XmlSpans xml(bytes, "part");
        compare(xml.getRoot(), readXml("part", std::string(xml.getText())));
        require(xml.encode(std::string(xml.getText())) == bytes, "other bytes without a change");
        checkEdit(input, xml);
    });
}

void readAll(const report::Package& package)
{
    for (const auto& name : package.getPartNames()) {
        isAccepted([&] { package.getPart(name); });
        isAccepted([&] { package.getContentType(name); });
        isAccepted([&] { package.getRelationships(name); });
    }
    isAccepted([&] { package.getRelationships(""); });
    isAccepted([&] { package.requireDocument(); });
    isAccepted([&] { package.isStrict(); });
    isAccepted([&] { package.isSigned(); });
}

void change(Input& input, report::Package& package)
{
    static const std::string names[] = {"word/document.xml", "word/charts/chart1.xml", "added.xml",
                                        "word/document.xml", "[Content_Types].xml"};
    const auto& name = input.pick(names);
    isAccepted([&] { package.addPart(package.findFreeName("added", ".xml"), "<a/>", "application/xml"); });
    isAccepted([&] {
        const auto id = package.addRelationship(name, "chart", "word/charts/chart1.xml");
        if (input.takeChance(2)) package.retarget(name, id, "package", "added.xml");
        if (input.takeChance(2))
            package.removeRelationships(name, [&](const auto& row) { return row.id == id; });
    });
    isAccepted([&] { package.setContentType(name, "text/plain"); });
    if (input.takeChance(2)) isAccepted([&] { package.removePart(name); });
    if (input.takeChance(4)) isAccepted([&] { package.removeLooseParts(); });
}

void checkPackage(Input& input, const std::string& bytes)
{
    isAccepted([&] {
        report::Package package(bytes);
        readAll(package);
        require(package.toBytes() == bytes, "other bytes without a change");
        change(input, package);
        const auto changed = package.toBytes();
        const report::Package again(changed);
        require(again.getPartNames() == package.getPartNames(), "other parts after a change");
        readAll(again);
    });
}

/// A package of which one part is the rest of the input.
// clang-format off: markup.
std::string makePackage(Input& input)
{
    Parts parts = {
        {"[Content_Types].xml",
         R"(<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default Extension="xml" ContentType="application/xml"/><Override PartName="/word/document.xml" ContentType="application/vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"/></Types>)"},
        {"_rels/.rels",
         R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"><Relationship Id="rId1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument" Target="word/document.xml"/></Relationships>)"},
        {"word/document.xml", "<document/>"},
        {"word/charts/chart1.xml", "<chart/>"},
        {"word/_rels/document.xml.rels",
         R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships"/>)"}};
    static const std::string changed[] = {"[Content_Types].xml", "_rels/.rels",
                                          "word/_rels/document.xml.rels", "word/document.xml"};
    const auto& name = input.pick(changed);
    parts[name] = input.takeRest();
    return writeParts(parts);
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    Input input(data, size);
    // What is changed is said in front, so that the bytes behind it can be a file.
    Input choices(data + 1, size > 9 ? 8 : 0);
    const auto kind = input.takeIndex(3);
    for (unsigned i = 0; i < 8; ++i) input.takeByte();
    if (kind == 0) checkSpans(choices, input.takeRest());
    if (kind == 1) checkPackage(choices, input.takeRest());
    if (kind == 2) checkPackage(choices, makePackage(input));
    return 0;
}
