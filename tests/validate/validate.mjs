// Checks Word documents against the Office validator: node validate.mjs FILE...
// Prints every error, and exits 1 when there is one. All files share one process, because the validator takes
// seconds to start.
import { readFile } from "node:fs/promises";
import validate from "@ooxml-tools/validate";

const files = process.argv.slice(2);
let errors = 0;
for (const file of files)
    for (const { description, path } of await validate(new Uint8Array(await readFile(file)), "docx", "Microsoft365")) {
        ++errors;
        console.log(`${file}: ${path.partUri} ${path.xpath}: ${description}`);
    }
console.log(`${files.length} documents, ${errors} errors`);
// Without this the validator's timers keep the process alive for some seconds more.
process.exit(errors > 0 || files.length === 0 ? 1 : 0);
