#include "report/command/ContentsFields.h"

#include <string_view>
#include <vector>

#include "report/package/Edits.h"

namespace quillon::report {
namespace {

/// Walks through the fields of a part, which may stand in each other, and removes the marks of tables of
/// contents around what they show.
class FieldWalk {
 public:
    explicit FieldWalk(Edits& edits) : edits_(edits) {}

    void visit(const XmlElement& element)
    {
        if (element.is(Ns::Word, "fldChar")) return addMark(element);
        if (element.is(Ns::Word, "instrText")) return addInstruction(element);
        for (const auto child : element.getChildren()) visit(child);
    }

 private:
    struct Field {
        std::string instruction = {};
        std::vector<Span> marks = {};
    };

    void addMark(const XmlElement& mark)
    {
        const auto type = mark.getAttribute(Ns::Word, "fldCharType").value_or("");
        if (type == "begin") open_.emplace_back();
        if (open_.empty()) return;
        open_.back().marks.push_back(mark.getOuter());
        if (type == "end") close();
    }

    void addInstruction(const XmlElement& instruction)
    {
        if (open_.empty()) return;
        open_.back().instruction += instruction.getText();
        open_.back().marks.push_back(instruction.getOuter());
    }

    void close()
    {
        const auto& [instruction, marks] = open_.back();
        const auto start = instruction.find_first_not_of(' ');
        if (start != std::string::npos && instruction.compare(start, 4, "TOC ") == 0)
            for (const auto mark : marks) edits_.remove(mark);
        open_.pop_back();
    }

    Edits& edits_;
    std::vector<Field> open_;
};

}  // namespace

void freePageNumbers(Package& document)
{
    const auto& name = document.getMainPart();
    const XmlSpans main(document.getPart(name), name);
    Edits edits;
    FieldWalk(edits).visit(main.getRoot());
    if (!edits.isEmpty()) document.setPart(name, edits.apply(main));
}

}  // namespace quillon::report
