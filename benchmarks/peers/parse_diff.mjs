// The npm parsers of unified diffs, on the diff texts in the given files.
import { readFileSync } from "node:fs";
import { basename } from "node:path";
import { parse as diff2html } from "diff2html";
import gitdiffParser from "gitdiff-parser";
import parseDiff from "parse-diff";
import { measure } from "./measure.mjs";

const parsers = [
    ["npm diff2html", (text) => diff2html(text)],
    ["npm gitdiff-parser", (text) => (gitdiffParser.default ?? gitdiffParser).parse(text)],
    ["npm parse-diff", (text) => parseDiff(text)],
];

function countLines(parsed) {
    return parsed.flatMap((file) => file.blocks ?? file.hunks ?? file.chunks)
        .reduce((sum, hunk) => sum + (hunk.lines ?? hunk.changes).length, 0);
}

for (const file of process.argv.slice(2)) {
    const bytes = readFileSync(file);
    const workload = `ParseUnifiedDiff/${basename(file, ".diff")}`;
    for (const [name, parse] of parsers) {
        if (countLines(parse(bytes.toString("utf8"))) === 0) {
            throw new Error(`${name} found no lines in ${file}`);
        }
        // From bytes to records, like the parser that it is compared with.
        await measure(workload, name, bytes.length, () => parse(bytes.toString("utf8")));
    }
}
