"""Makes templates whose charts stand wherever a chart may: make_templates.py QUILLON_REPORT FOLDER

The charts are made by quillon-report, and moved to their places with python-docx.
"""

import copy
import subprocess
import sys
import tempfile
from pathlib import Path

import docx
from docx.opc.constants import RELATIONSHIP_TYPE
from docx.oxml import parse_xml
from docx.oxml.ns import nsmap, qn

nsmap.update({
    "mc": "http://schemas.openxmlformats.org/markup-compatibility/2006",
    "wps": "http://schemas.microsoft.com/office/word/2010/wordprocessingShape",
    "wpg": "http://schemas.microsoft.com/office/word/2010/wordprocessingGroup",
    "v": "urn:schemas-microsoft-com:vml",
})
NAMESPACES = " ".join(f'xmlns:{prefix}="{nsmap[prefix]}"'
                      for prefix in ("w", "wp", "a", "c", "r", "mc", "wps", "wpg", "v"))

# Kind, name and alternative text of each chart.
CHARTS = [
    ("column", "Revenue", ""), ("bar", "Chart 2", "{{costs}}"), ("pie", "Chart 3", "Shares"), ("line", "In a header", ""),
    ("line", "In a footer", ""), ("column", "Chart 6", ""), ("column", "Chart 7", ""), ("line", "In a box", ""),
    ("line", "In a group", ""), ("column", "Twice A", ""), ("column", "Same name", ""), ("column", "Same name", ""),
]


def make_charts(command, folder):
    table = folder / "table.csv"
    table.write_text("Month,North,South\nJan,1,4\nFeb,2,5\nMar,3,6\n")
    arguments = [command]
    for kind, name, _ in CHARTS:
        arguments += [table, "--type", kind, "--title", f"Title of {name}"]
        arguments += ["--columns", "North"] if kind == "pie" else []
    subprocess.run([*arguments, "-o", folder / "charts.docx"], check=True)
    return docx.Document(folder / "charts.docx")


def find(element, name):
    return element.find(f".//{qn(name)}")


def move_to_story(document, paragraph, story):
    """Headers and footers refer to charts themselves."""
    chart = find(paragraph, "c:chart")
    part = document.part.related_parts[chart.get(qn("r:id"))]
    del document.part.rels[chart.get(qn("r:id"))]
    chart.set(qn("r:id"), story.part.relate_to(part, RELATIONSHIP_TYPE.CHART))
    story.paragraphs[0]._p.append(paragraph.find(qn("w:r")))
    paragraph.getparent().remove(paragraph)


def move_to_cell(document, paragraph):
    cell = document.add_table(rows=1, cols=2).rows[0].cells[1]
    paragraph.addprevious(cell._tc.getparent().getparent())
    cell.paragraphs[0]._p.append(paragraph.find(qn("w:r")))
    paragraph.getparent().remove(paragraph)


def wrap_in_control(paragraph):
    control = parse_xml(f'<w:sdt {NAMESPACES}><w:sdtPr><w:alias w:val="The margin"/><w:tag w:val="margin"/></w:sdtPr>'
                        "<w:sdtContent/></w:sdt>")
    paragraph.addprevious(control)
    control[1].append(paragraph)


def mark(paragraph):
    paragraph.insert(0, parse_xml(f'<w:bookmarkStart {NAMESPACES} w:id="1" w:name="marked"/>'))
    paragraph.append(parse_xml(f'<w:bookmarkEnd {NAMESPACES} w:id="1"/>'))


def put_into_box(paragraph):
    """A text box is there twice: as a shape, and for older programs."""
    run = paragraph.find(qn("w:r"))
    box = parse_xml(f"""<w:r {NAMESPACES}><mc:AlternateContent><mc:Choice Requires="wps"><w:drawing>
        <wp:inline distT="0" distB="0" distL="0" distR="0"><wp:extent cx="5486400" cy="3200400"/>
        <wp:docPr id="101" name="Box"/><a:graphic>
        <a:graphicData uri="{nsmap['wps']}"><wps:wsp><wps:cNvSpPr txBox="1"/><wps:spPr><a:xfrm><a:off x="0" y="0"/>
        <a:ext cx="5486400" cy="3200400"/></a:xfrm><a:prstGeom prst="rect"><a:avLst/></a:prstGeom></wps:spPr>
        <wps:txbx><w:txbxContent><w:p/></w:txbxContent></wps:txbx><wps:bodyPr/></wps:wsp></a:graphicData></a:graphic>
        </wp:inline></w:drawing></mc:Choice><mc:Fallback><w:pict><v:shape id="box" style="width:432pt;height:252pt">
        <v:textbox><w:txbxContent><w:p/></w:txbxContent></v:textbox></v:shape></w:pict></mc:Fallback>
        </mc:AlternateContent></w:r>""")
    for content in box.iter(qn("w:txbxContent")):
        content[0].append(copy.deepcopy(run))
    paragraph.replace(run, box)


def put_into_group(paragraph):
    graphic = find(paragraph, "a:graphic")
    group = parse_xml(f"""<a:graphic {NAMESPACES}><a:graphicData uri="{nsmap['wpg']}"><wpg:wgp><wpg:cNvGrpSpPr/>
        <wpg:grpSpPr><a:xfrm><a:off x="0" y="0"/><a:ext cx="5486400" cy="3200400"/><a:chOff x="0" y="0"/>
        <a:chExt cx="5486400" cy="3200400"/></a:xfrm></wpg:grpSpPr><wpg:graphicFrame>
        <wpg:cNvPr id="102" name="Member of a group"/><wpg:cNvFrPr/><wpg:xfrm><a:off x="0" y="0"/>
        <a:ext cx="5486400" cy="3200400"/></wpg:xfrm></wpg:graphicFrame></wpg:wgp></a:graphicData></a:graphic>""")
    graphic.addprevious(group)
    find(group, "wpg:graphicFrame").append(graphic)


def repeat(paragraph):
    """A second drawing that shows the same part."""
    again = copy.deepcopy(paragraph)
    find(again, "wp:docPr").set("name", "Twice B")
    find(again, "wp:docPr").set("id", "103")
    paragraph.addnext(again)


def make_places(command, folder):
    document = make_charts(command, folder)
    paragraphs = [drawing.getparent().getparent() for drawing in document.element.body.iter(qn("w:drawing"))]
    for paragraph, (_, name, text) in zip(paragraphs, CHARTS):
        find(paragraph, "wp:docPr").set("name", name)
        find(paragraph, "wp:docPr").set("descr", text)
    section = document.sections[0]
    move_to_cell(document, paragraphs[2])
    move_to_story(document, paragraphs[3], section.header)
    move_to_story(document, paragraphs[4], section.footer)
    wrap_in_control(paragraphs[5])
    mark(paragraphs[6])
    put_into_box(paragraphs[7])
    put_into_group(paragraphs[8])
    repeat(paragraphs[9])
    document.save(folder / "places.docx")


if __name__ == "__main__":
    target = Path(sys.argv[2])
    target.mkdir(parents=True, exist_ok=True)
    # Tests that run side by side make them at once: each finds a whole file.
    with tempfile.TemporaryDirectory(dir=target) as folder:
        make_places(sys.argv[1], Path(folder))
        (Path(folder) / "places.docx").replace(target / "places.docx")
