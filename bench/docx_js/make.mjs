// Makes one document and prints the seconds that took: make.mjs CHARTS SERIES POINTS
import { Document, Packer, Paragraph } from "docx";
import { ChartRun } from "docx/charts";

const [charts, series, points] = process.argv.slice(2).map(Number);

function makeChart() {
    return new ChartRun({
        type: "column",
        title: "Revenue by region",
        categories: Array.from({ length: points }, (_, k) => `Month ${k + 1}`),
        series: Array.from({ length: series }, (_, i) => ({
            name: `Series ${i}`,
            values: Array.from({ length: points }, (_, k) => Math.round(1000 * Math.sin(0.1 * (k + i))) / 10),
        })),
    });
}

const start = performance.now();
const children = Array.from({ length: charts }, () => new Paragraph({ children: [makeChart()] }));
const bytes = await Packer.toBuffer(new Document({ sections: [{ children }] }));
console.log((performance.now() - start) / 1000, bytes.length);
