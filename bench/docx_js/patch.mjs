// Fills the charts {{chart0}}, {{chart1}} ... of a document, each time anew from the bytes of the template, and prints
// the seconds that took: patch.mjs TEMPLATE TIMES CHARTS SERIES POINTS
import { readFile } from "node:fs/promises";
import { patchDocument } from "docx";
import { ChartDataPatch } from "docx/charts";

const [times, charts, series, points] = process.argv.slice(3).map(Number);
const template = await readFile(process.argv[2]);

function makePatch(time) {
    return new ChartDataPatch({
        categories: Array.from({ length: points }, (_, k) => `Month ${k + 1}`),
        series: Array.from({ length: series }, (_, i) => ({
            name: `Series ${i}`,
            values: Array.from({ length: points }, (_, k) => Math.round(1000 * Math.sin(0.1 * (k + i + time))) / 10),
        })),
    });
}

const start = performance.now();
let size = 0;
for (let time = 1; time <= times; ++time) {
    const patches = Object.fromEntries(Array.from({ length: charts }, (_, i) => [`chart${i}`, makePatch(time)]));
    size += (await patchDocument({ outputType: "nodebuffer", data: template, patches })).length;
}
console.log((performance.now() - start) / 1000, size);
