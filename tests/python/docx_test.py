"""quillon.docx: charts in the packages of python-docx."""

import copy
import io
import re
import time
import unittest
import warnings

import docx
import openpyxl
from docx.enum.shape import WD_INLINE_SHAPE
from docx.opc.constants import RELATIONSHIP_TYPE
from docx.shared import Cm

from charts import make_chart
from quillon.chart import ColumnChart, from_dataframe
from quillon.docx import ChartWarning, add_chart, charts, fill
from quillon.report import Document


PICTURE = bytes.fromhex(
    "89504e470d0a1a0a0000000d494844520000000100000001080600000"
    "01f15c4890000000d49444154789c6360606060000000050001a5f645400000000049454e44ae426082"
)


def find_charts(part):
    """The chart parts that the drawings of a part show, in order."""
    ids = re.findall(rb'<c:chart [^>]*r:id="([^"]*)"', part.blob)
    return [part.related_parts[id.decode()] for id in ids]


def read_workbook(chart_part):
    sheet, = (relation.target_part for relation in chart_part.rels.values())
    return list(openpyxl.load_workbook(io.BytesIO(sheet.blob)).active.values)


class Adding(unittest.TestCase):
    def test_gives_a_document_a_chart_with_its_data(self):
        document = docx.Document()
        shape = add_chart(document, make_chart(), width=Cm(15), height="7.5cm", legend="top", alt_text='a "b" & c')
        self.assertEqual((shape.type, shape.width, shape.height), (WD_INLINE_SHAPE.CHART, Cm(15), Cm(7.5)))

        content = io.BytesIO()
        document.save(content)
        opened = docx.Document(content)
        self.assertEqual(len(opened.paragraphs), 1)
        self.assertIn(b'descr="a &quot;b&quot; &amp; c"', opened.part.blob)
        chart, = find_charts(opened.part)
        self.assertIn(b'<c:legendPos val="t"/>', chart.blob)
        self.assertIn(b'<c:externalData r:id="rId1">', chart.blob)
        self.assertEqual(chart.rels["rId1"].reltype, RELATIONSHIP_TYPE.PACKAGE)
        self.assertEqual(read_workbook(chart), [(None, "North"), ("Q", 1.5), ("Q", 2)])

    def test_writes_labels_that_are_read_on_the_colours_of_the_document(self):
        document = docx.Document()
        chart = make_chart([8, 9])
        for name in "ABC":
            chart.DataSet.add_series(name, [8, 9])
        add_chart(document, chart, stacking="normal", labels="value")
        part, = find_charts(document.part)
        # The fourth accent of its theme is a dark purple; ours is yellow.
        fourth = part.blob.split(b"<c:ser>")[4]
        self.assertRegex(fourth, rb"<c:dLbls>.*<c:txPr>.*<a:schemeClr val=\"bg1\"/>")

    def test_stands_where_it_is_put(self):
        document = docx.Document()
        paragraph = document.add_paragraph("before ")
        run = paragraph.add_run("in the run ")
        cell = document.add_table(1, 1).rows[0].cells[0]
        header = document.sections[0].header
        for value, target in enumerate((run, paragraph, cell, header)):
            add_chart(target, make_chart([value]))
        counts = [len(element.xpath(".//w:drawing")) for element in (run._r, paragraph._p, cell._tc, header._element)]
        self.assertEqual((counts, len(paragraph.runs)), ([1, 2, 1, 1], 3))
        charts = find_charts(document.part) + find_charts(header.part)
        self.assertEqual([read_workbook(chart)[1][1] for chart in charts], [0, 1, 2, 3])

    def test_leaves_the_document_alone_when_it_refuses(self):
        document = docx.Document()
        add_chart(document, make_chart())
        before = {part.partname: part.blob for part in document.part.package.iter_parts()}
        cases = [
            (document, "chart", {}, TypeError),
            ("document", make_chart(), {}, TypeError),
            (document, make_chart(), {"width": Cm(0)}, ValueError),
            (document, make_chart(), {"width": []}, TypeError),
            (document, make_chart([float("inf")]), {}, ValueError),
            (document, make_chart(colour="nonsense"), {}, ChartWarning),
        ]
        with warnings.catch_warnings():
            warnings.simplefilter("error")
            for target, chart, options, error in cases:
                self.assertRaises(error, add_chart, target, chart, **options)
        self.assertEqual({part.partname: part.blob for part in document.part.package.iter_parts()}, before)

    def test_goes_on_in_a_document_that_was_saved_and_beside_pictures(self):
        document = docx.Document()
        for _ in range(2):
            add_chart(document, make_chart())
            document.add_picture(io.BytesIO(PICTURE))
            content = io.BytesIO()
            document.save(content)
            document = docx.Document(content)
            add_chart(document, make_chart())
        numbers = [int(number) for number in re.findall(rb'<wp:docPr [^>]*\bid="(\d+)"', document.part.blob)]
        self.assertEqual((len(numbers), len(set(numbers))), (6, 6))
        self.assertLess(max(numbers), 2**31)
        charts = find_charts(document.part)
        self.assertEqual(len({chart.partname for chart in charts}), 4)
        self.assertEqual([read_workbook(chart)[1][1] for chart in charts], [1.5] * 4)

    def test_takes_as_long_for_each_of_many_charts(self):
        def measure(count):
            document, start = docx.Document(), time.process_time()
            for _ in range(count):
                add_chart(document.add_paragraph().add_run(), chart)
            return (time.process_time() - start) / count

        chart = make_chart()
        measure(20)
        self.assertLess(measure(800) / measure(100), 2.5)

    def test_warns_where_it_is_called(self):
        with self.assertWarnsRegex(ChartWarning, '"nonsense" is not a colour') as caught:
            add_chart(docx.Document(), make_chart(colour="nonsense"))
        self.assertEqual(caught.filename, __file__)

    def test_refuses_a_header_and_another_document_without_a_trace(self):
        document = docx.Document()
        header = document.sections[0].header
        self.assertRaises(TypeError, add_chart, header, "chart")
        self.assertTrue(header.is_linked_to_previous)
        self.assertRaisesRegex(TypeError, "of python-docx, got Document", add_chart, Document(), make_chart())


class Filling(unittest.TestCase):
    def open_template(self):
        made = Document()
        made.add_chart(ColumnChart(title="Revenue", data={"North": [1, 2]}))
        return docx.Document(io.BytesIO(made.to_bytes()))

    def test_gives_charts_new_data(self):
        document = self.open_template()
        document.add_paragraph("Added")
        self.assertEqual([(chart.title, chart.points) for chart in charts(document)], [("Revenue", 2)])
        report = fill(document, "Revenue", from_dataframe({"North": [7, 8, 9], "East": [4, 5, 6]}), title="July")
        self.assertEqual((report.points_before, report.points_after, [one.change for one in report.series]),
                         (2, 3, ["matched", "added"]))
        content = io.BytesIO()
        document.save(content)
        again = docx.Document(content)
        self.assertEqual([paragraph.text for paragraph in again.paragraphs][-1], "Added")
        part, = find_charts(again.part)
        self.assertIn(b"July", part.blob)
        self.assertEqual([row[1:] for row in read_workbook(part)], [("North", "East"), (7, 4), (8, 5), (9, 6)])
        self.assertEqual(charts(again)[0].series, ["North", "East"])
        self.assertEqual(charts(again)[0].alt_text, "Column chart: July; series North, East; values from 4 to 9")

    def test_gives_a_part_that_two_drawings_share_to_each(self):
        document = self.open_template()
        paragraph = document.paragraphs[0]._p
        paragraph.addnext(copy.deepcopy(paragraph))
        fill(document, "1", {"North": [5, 6]})
        first, second = find_charts(document.part)
        self.assertNotEqual(first.partname, second.partname)
        self.assertEqual([read_workbook(part)[1][1] for part in (first, second)], [5, 1])
        content = io.BytesIO()
        document.save(content)
        self.assertEqual(len(charts(docx.Document(content))), 2)

    def test_refuses_and_leaves_the_document(self):
        document = self.open_template()
        before = [part.blob for part in document.part.package.iter_parts()]
        with self.assertRaisesRegex(ValueError, 'There is no chart "Costs"'):
            fill(document, "Costs", {"North": [1]})
        self.assertEqual([part.blob for part in document.part.package.iter_parts()], before)
