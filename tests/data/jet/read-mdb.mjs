// Prints the rows of one table of several databases as the npm package mdb-reader reads them:
//   node read-mdb.mjs FOLDER-OF-THE-PACKAGE TABLE FILE...
// Each file begins with a line "== FILE"; fields are separated by tabs, lines are rows.
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const [folder, table, ...files] = process.argv.slice(2);
const main = JSON.parse(readFileSync(join(folder, "package.json"), "utf8")).main;
const { default: MDBReader } = await import(pathToFileURL(join(folder, main)));

function show(value) {
  if (value === null || value === undefined) return "\\N";
  if (value instanceof Date) return value.toISOString().slice(0, 19).replace("T", " ");
  if (value instanceof Uint8Array) return Buffer.from(value).toString("hex").toUpperCase();
  if (typeof value === "boolean") return value ? "1" : "0";
  const text = String(value);
  return /^[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$/.test(text) ? "{" + text.toUpperCase() + "}" : text;
}

for (const file of files) {
  console.log("== " + file);
  try {
    const rows = new MDBReader(readFileSync(file)).getTable(table).getData();
    process.stdout.write(rows.map((row) => Object.values(row).map(show).join("\t") + "\n").join(""));
  } catch (error) {
    console.log("failed: " + error.message);
  }
}
