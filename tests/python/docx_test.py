"""quillon.docx: charts in the packages of python-docx."""

import io
import re
import struct
import unittest
import zipfile
import zlib

import docx
import openpyxl
from docx.enum.shape import WD_INLINE_SHAPE
from docx.opc.constants import RELATIONSHIP_TYPE
from docx.shared import Cm

from quillon.chart import ColumnChart, DataSeries, DataSeriesShapeFormat, DataSet
from quillon.docx import ChartWarning, add_chart
from quillon.report import Document


def make_chart(values=(1.5, 2.0), colour=None):
    series = DataSeries("North")
    series.extend(values)
    if colour:
        series.Format = DataSeriesShapeFormat(colour)
    chart = ColumnChart()
    chart.DataSet = DataSet([f"Q{number}" for number in range(len(values))])
    chart.DataSet.appendSeries(series)
    return chart


def make_picture():
    """A PNG file of one pixel."""
    def chunk(name, data):
        return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))

    header = struct.pack(">IIBBBBB", 1, 1, 8, 0, 0, 0, 0)
    data = chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(b"\0\0")) + chunk(b"IEND", b"")
    return io.BytesIO(b"\x89PNG\r\n\x1a\n" + data)


def save(document):
    content = io.BytesIO()
    document.save(content)
    return content


def find_charts(part):
    """The chart parts that the drawings of a part show, in order."""
    ids = re.findall(rb'<c:chart [^>]*r:id="([^"]*)"', part.blob)
    return [part.related_parts[id.decode()] for id in ids]


def read_workbook(chart_part):
    sheet, = (relation.target_part for relation in chart_part.rels.values())
    return [row for row in openpyxl.load_workbook(io.BytesIO(sheet.blob)).active.iter_rows(values_only=True)]


class Adding(unittest.TestCase):
    def test_gives_a_document_a_chart_with_its_data(self):
        document = docx.Document()
        shape = add_chart(document, make_chart(), width=Cm(15), height="7.5cm", legend="top", alt_text='a "b" & c')
        self.assertEqual((shape.type, shape.width, shape.height), (WD_INLINE_SHAPE.CHART, Cm(15), Cm(7.5)))

        opened = docx.Document(save(document))
        self.assertEqual(len(opened.paragraphs), 1)
        self.assertEqual(opened.inline_shapes[0].type, WD_INLINE_SHAPE.CHART)
        self.assertIn(b'descr="a &quot;b&quot; &amp; c"', opened.part.blob)
        chart, = find_charts(opened.part)
        self.assertIn(b'<c:legendPos val="t"/>', chart.blob)
        self.assertIn(b'<c:externalData r:id="rId1">', chart.blob)
        self.assertEqual(chart.rels["rId1"].reltype, RELATIONSHIP_TYPE.PACKAGE)
        self.assertEqual(read_workbook(chart), [(None, "North"), ("Q0", 1.5), ("Q1", 2)])

    def test_stands_where_it_is_put(self):
        document = docx.Document()
        run = document.add_paragraph("before ").add_run("in the run ")
        cell = document.add_table(1, 1).rows[0].cells[0]
        header = document.sections[0].header
        for target in (run, document.paragraphs[0], cell, header):
            add_chart(target, make_chart())
        self.assertEqual(len(run._r.findall(docx.oxml.ns.qn("w:drawing"))), 1)
        self.assertEqual(len(document.paragraphs[0].runs), 3)
        self.assertEqual([len(find_charts(part)) for part in (document.part, header.part)], [3, 1])
        self.assertEqual(len(cell._element.xpath(".//w:drawing")), 1)

    def test_keeps_names_and_numbers_apart(self):
        document = docx.Document()
        document.add_picture(make_picture())
        add_chart(document, make_chart([1]))
        add_chart(document.sections[0].header, make_chart([2]))
        document = docx.Document(save(document))
        add_chart(document, make_chart([3]))
        document.add_picture(make_picture())
        add_chart(document, make_chart([4]), workbook=False)

        content = save(document)
        names = zipfile.ZipFile(content).namelist()
        self.assertEqual(len(names), len(set(names)))
        self.assertEqual(len([name for name in names if name.startswith("word/charts/chart")]), 4)
        opened = docx.Document(content)
        parts = (opened.part, opened.sections[0].header.part)
        numbers = [number for part in parts for number in re.findall(rb'<wp:docPr [^>]*\bid="(\d+)"', part.blob)]
        self.assertEqual((len(numbers), len(set(numbers))), (6, 6))
        charts = [chart for part in parts for chart in find_charts(part)]
        self.assertEqual([read_workbook(chart)[1][1] for chart in charts if chart.rels], [1, 3, 2])

    def test_leaves_the_document_alone_when_it_refuses(self):
        document = docx.Document()
        add_chart(document, make_chart())
        before = {part.partname: part.blob for part in document.part.package.iter_parts()}
        cases = [
            (lambda: add_chart(document, "chart"), TypeError),
            (lambda: add_chart("document", make_chart()), TypeError),
            (lambda: add_chart(document, make_chart(), width=Cm(0)), ValueError),
            (lambda: add_chart(document, make_chart(), width=[]), TypeError),
            (lambda: add_chart(document, make_chart(), legend="up"), ValueError),
            (lambda: add_chart(document, make_chart([float("inf")])), ValueError),
        ]
        for act, kind in cases:
            self.assertRaises(kind, act)
        self.assertEqual({part.partname: part.blob for part in document.part.package.iter_parts()}, before)

    def test_warns_where_it_is_called(self):
        with self.assertWarnsRegex(ChartWarning, '"nonsense" is no colour') as caught:
            add_chart(docx.Document(), make_chart(colour="nonsense"))
        self.assertEqual(caught.filename, __file__)

    def test_refuses_a_header_and_another_document_without_a_trace(self):
        document = docx.Document()
        header = document.sections[0].header
        self.assertRaises(TypeError, add_chart, header, "chart")
        self.assertTrue(header.is_linked_to_previous)
        self.assertRaisesRegex(TypeError, "of python-docx, got Document", add_chart, Document(), make_chart())


if __name__ == "__main__":
    unittest.main()
