// Makes each chart of a JSON file in a document of its own, and prints the seconds that one takes as JSON:
// compare.mjs CASES FOLDER TIMES
import { readFile, writeFile } from "node:fs/promises";
import { Document, Packer, Paragraph } from "docx";
import { ChartRun } from "docx/charts";

const [path, folder, times] = process.argv.slice(2);

function makeDocument(options) {
    const children = [new Paragraph({ children: [new ChartRun(options)] })];
    return Packer.toBuffer(new Document({ sections: [{ children }] }));
}

const seconds = {};
for (const { name, theirs } of JSON.parse(await readFile(path, "utf8"))) {
    // The first rounds are for the compiler.
    for (let i = 0; i < times; ++i) await makeDocument(theirs);
    const start = performance.now();
    let bytes;
    for (let i = 0; i < times; ++i) bytes = await makeDocument(theirs);
    seconds[name] = (performance.now() - start) / 1000 / times;
    await writeFile(`${folder}/${name}-docx.docx`, bytes);
}
console.log(JSON.stringify(seconds));
