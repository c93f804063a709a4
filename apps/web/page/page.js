// The page: files in, the tree of an import, the plan with its rows, log, tables and downloads.
// Texts that come from files are shown as text only; nothing of them is ever read as markup.
"use strict";

const $ = (id) => document.getElementById(id);
const kMostListed = 200; // objects in the list; the filter finds the others
const kMostShown = 200_000; // objects; of larger drawings the alignments are shown
const kMostBytes = 700_000_000; // of one file
const kMostLines = 40; // of an object
const kLinesAround = 200; // lines of a file shown around the one asked for
const kBidirectional = /[\u202a-\u202e\u2066-\u2069]/g; // characters that would turn the text around them

let language = (navigator.language || "en").toLowerCase().startsWith("ja") ? "ja" : "en";
const word = (key) => kTexts[language][key];

// ---- small pieces of the document ----

function make(name, text, attributes = {}) {
  const element = document.createElement(name);
  if (text !== undefined && text !== null) {
    element.textContent = String(text).replace(kBidirectional, "\ufffd");
  }
  for (const [key, value] of Object.entries(attributes)) {
    element.setAttribute(key, value);
  }
  return element;
}

function button(text, action) {
  const element = make("button", text, { type: "button" });
  element.addEventListener("click", action);
  return element;
}

function tell(text, wrong = false) {
  $("status").textContent = text;
  $("status").classList.toggle("wrong", wrong);
}

// Columns are [title, value of a row, whether a number].
function table(columns, rows) {
  const element = make("table");
  const head = element.createTHead().insertRow();
  for (const [title] of columns) {
    head.append(make("th", title, { scope: "col" }));
  }
  const body = element.createTBody();
  for (const row of rows) {
    const line = body.insertRow();
    for (const [, value, isNumber] of columns) {
      line.append(make("td", value(row), isNumber ? { class: "number" } : {}));
    }
  }
  return element;
}

const metres = (value) => (typeof value === "number" && Number.isFinite(value) ? value.toFixed(3) : "");

function translate() {
  document.documentElement.lang = language;
  $("language").value = language;
  for (const element of document.querySelectorAll("[data-text]")) {
    element.textContent = word(element.dataset.text);
  }
  for (const element of document.querySelectorAll("[data-label]")) {
    element.setAttribute("aria-label", word(element.dataset.label));
    element.title = word(element.dataset.label);
  }
  const zone = $("zone").value;
  $("zone").replaceChildren(new Option(word("zoneNone"), ""), ...Array.from({ length: 19 }, (_, i) => new Option(String(i + 1), String(i + 1))));
  $("zone").value = zone;
}

// ---- the program in its worker ----

class Program {
  constructor() {
    this.next = 1;
    this.waiting = new Map();
    this.starts = 0;
    this.stops = 0;
  }
  async start() {
    this.starts += 1;
    const bytes = Uint8Array.from(atob($("worker").textContent), (c) => c.charCodeAt(0));
    const text = await new Response(new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"))).text();
    const url = URL.createObjectURL(new Blob([text], { type: "text/javascript" }));
    const worker = new Worker(url);
    this.worker = worker;
    worker.onmessage = ({ data }) => this.receive(data);
    worker.onerror = (event) => this.stop(event.message || word("failed"));
    this.ready = this.send({ wasm: $("wasm").textContent }).finally(() => URL.revokeObjectURL(url));
    return this.ready;
  }
  receive({ id, answer, failure, progress, broken }) {
    const waiting = this.waiting.get(id);
    if (!waiting) {
      return;
    }
    if (progress !== undefined) {
      waiting.onProgress?.(progress);
      return;
    }
    this.waiting.delete(id);
    if (broken) { // the next request starts a fresh one
      waiting.reject(new Error(failure));
      this.stop(failure);
      return;
    }
    failure === undefined ? waiting.resolve(answer) : waiting.reject(new Error(failure));
  }
  send(request, onProgress) {
    const id = this.next++;
    return new Promise((resolve, reject) => {
      this.waiting.set(id, { resolve, reject, onProgress });
      this.worker.postMessage({ ...request, id, language });
    });
  }
  // Waits for a worker that runs; what was stopped while it waited is refused as well.
  async running() {
    const stops = this.stops;
    this.begun ??= this.start();
    await this.begun;
    if (this.stops !== stops) {
      throw new Error(this.reason);
    }
  }
  async ask(request, onProgress) {
    await this.running();
    return this.send(request, onProgress);
  }
  // Ends whatever runs; what waits is refused with the reason.
  stop(reason) {
    this.worker?.terminate();
    this.begun = undefined;
    this.stops += 1;
    this.reason = reason;
    for (const { reject } of this.waiting.values()) {
      reject(new Error(reason));
    }
    this.waiting.clear();
  }
}

const program = new Program();
const errorText = (notes) => notes.trim().replace(/^fenmark: (error: )?/gm, "");

let working = false;
// Runs one piece of work with its bar; a second one does not start beside it.
async function work(task) {
  if (working) {
    return;
  }
  working = true;
  tell(word("working"));
  $("progress").removeAttribute("value");
  $("work").hidden = false;
  document.body.setAttribute("aria-busy", "true");
  try {
    await task();
  } catch (error) {
    tell(error.message || word("failed"), true);
  } finally {
    working = false;
    $("work").hidden = true;
    document.body.removeAttribute("aria-busy");
  }
}
const onProgress = (percent) => ($("progress").value = percent);

// ---- state ----

let inputs = []; // {name, path, content, preview, inWorker}; the content is a Blob
let sources = []; // the files that the drawing came from, for their lines
let drawing = null; // {name, content, inWorker}; the content is a Blob, which the browser keeps outside the page's memory
let info = null;
let objects = [];
let messages = []; // {file, line, text}
let logs = []; // {name, bytes}

const stem = (name) => name.replace(/\.[^.]*$/, "");
const drawingPath = () => `out/${drawing.name}`;

// Every request writes the drawing anew after the worker was ended, and only then.
async function askDrawing(request) {
  await program.running();
  if (drawing.inWorker !== program.starts) {
    request = { ...request, write: [{ path: drawingPath(), bytes: drawing.content }, ...(request.write ?? [])] };
  }
  const answer = await program.send(request, onProgress);
  drawing.inWorker = program.starts;
  return answer;
}

// ---- files in ----

// The files that the worker does not have yet.
async function unwritten() {
  await program.running();
  const files = inputs.filter((input) => input.inWorker !== program.starts);
  files.forEach((input) => (input.inWorker = program.starts));
  return files.map(({ path, content }) => ({ path, content }));
}

// A copy of a file in the browser's store, made piece by piece: it stays as it is when the file is changed on the disk.
async function stored(file) {
  const pieces = [];
  for (let from = 0; from < file.size; from += kBlock) {
    pieces.push(new Blob([await bytesOf(file, from, from + kBlock)]));
  }
  return new Blob(pieces);
}

async function take(files) {
  const list = [...files];
  const tooLarge = list.find((file) => file.size > kMostBytes);
  if (tooLarge) {
    tell(word("fileTooLarge") + tooLarge.name, true);
    return;
  }
  const existing = list.find((file) => /\.gpkg$/i.test(file.name));
  if (existing) {
    await work(() => openDrawing(existing));
    return;
  }
  await work(async () => {
    const taken = [];
    for (const [i, file] of list.entries()) {
      taken.push({ name: file.name, path: `in${i}/${file.name}`, content: await stored(file) });
    }
    const left = inputs.map(({ path }) => path);
    inputs = taken;
    $("encoding").value = "auto";
    await preview(left);
  });
}

// Leaves out the files of the paths given, which nobody needs any more.
async function preview(left = []) {
  const encoding = $("encoding").value;
  const answer = await program.ask({
    remove: left,
    offer: await unwritten(),
    run: inputs.map(({ path }) => ["preview", "--json", "--encoding", encoding, "--", path]),
  }, onProgress);
  $("hints").replaceChildren();
  let failed = "";
  answer.results.forEach((result, i) => {
    inputs[i].preview = result.code === 0 ? JSON.parse(result.out) : null;
    failed ||= result.code === 0 ? "" : withoutFolders(errorText(result.notes), inputs);
    for (const line of result.code === 0 ? result.notes.split("\n").filter(Boolean) : []) {
      $("hints").append(make("li", withoutFolders(line, inputs)));
    }
  });
  inputs = inputs.filter((input) => input.preview);
  $("import").hidden = inputs.length === 0;
  showTree();
  tell(failed || inputs.map((input) => input.name).join(", "), failed !== "");
}

function withoutFolders(text, files) {
  return files.reduce((line, { name, path }) => line.replaceAll(path, name), text);
}

function showTree() {
  const list = $("kinds-tree");
  list.replaceChildren();
  kImportKinds.forEach(([kind, count], i) => {
    const total = inputs.reduce((sum, input) => sum + count(input.preview), 0);
    const label = make("label");
    const box = make("input", null, { type: "checkbox", name: kind });
    box.checked = total > 0;
    box.disabled = total === 0;
    box.addEventListener("change", ticksChanged);
    label.append(box, ` ${word("rows")[i]} [${total}]`);
    const item = make("li", null, total === 0 ? { class: "none" } : {});
    item.append(label);
    list.append(item);
  });
  ticksChanged();
}

const ticks = () => [...$("kinds-tree").querySelectorAll("input")];
function ticksChanged() {
  const open = ticks().filter((box) => !box.disabled);
  const on = open.filter((box) => box.checked).length;
  $("all").checked = on > 0 && on === open.length;
  $("all").indeterminate = on > 0 && on < open.length;
  $("run").disabled = on === 0;
}

// ---- import ----

async function importFiles() {
  const appended = drawing && $("append").checked;
  const name = appended ? drawing.name : stem(inputs[0].name) + ".gpkg";
  const target = `out/${name}`;
  const words = ["import", "--drawing", target, "--encoding", $("encoding").value, "--positive-radius", $("radius").value];
  const chosen = ticks().filter((box) => box.checked).map((box) => box.name);
  if (chosen.length < ticks().filter((box) => !box.disabled).length) {
    words.push("--only", chosen.join(","));
  }
  if ($("zone").value) {
    words.push("--zone", $("zone").value);
  }
  for (const option of ["site", "shift", "point-layer", "ip-layer", "lot-layer", "stake-layer", "continuous-layer"]) {
    if ($(option).value !== "") {
      words.push(`--${option}=${$(option).value}`);
    }
  }
  words.push("--create-layers", "--", ...inputs.map(({ path }) => path));
  const logPaths = inputs.map(({ path }) => stem(path) + "_Input.log");
  // A failed import must leave the old drawing, so its content stays here until there is a new one.
  const answer = await program.ask({
    remove: [target, ...logPaths],
    folders: ["out"],
    write: appended ? [{ path: target, bytes: drawing.content }] : [],
    offer: await unwritten(),
    run: [words],
    read: logPaths,
    readLarge: [target],
  }, onProgress);
  const [result] = answer.results;
  if (result.code !== 0 || !answer.files[target]) {
    if (drawing) {
      drawing.inWorker = 0; // what the worker has is not it
    }
    throw new Error(withoutFolders(errorText(result.notes), inputs) || word("failed"));
  }
  drawing = { name, content: answer.files[target], inWorker: program.starts };
  sources = appended ? [...sources, ...inputs] : [...inputs];
  logs = [...(appended ? logs : []), ...inputs.map(({ name: file }, i) => ({ name: stem(file) + "_Input.log", bytes: answer.files[logPaths[i]] }))].filter((log) => log.bytes);
  messages = [...(appended ? messages : []), ...readMessages(result.notes)];
  await showDrawing();
  tell(`${word("done")}\n${withoutFolders(result.out, inputs).trim()}`);
}

async function openDrawing(file) {
  const before = drawing;
  drawing = { name: file.name, content: await stored(file), inWorker: 0 };
  try {
    messages = [];
    logs = [];
    sources = [];
    await showDrawing();
    tell(word("opened"));
  } catch (error) {
    drawing = before;
    if (drawing) {
      drawing.inWorker = 0;
    }
    throw error;
  }
}

// The lines of the program's notes: "file:line: text" are errors of records, all others are notes.
function readMessages(notes) {
  return notes.split("\n").filter((line) => line && !/^fenmark: note: (drawing|図面) /.test(line)).map((line) => {
    for (const input of inputs) {
      if (line.startsWith(input.path + ":")) {
        const rest = line.slice(input.path.length + 1);
        const found = rest.match(/^(\d+): (.*)$/s);
        return found ? { file: input, line: Number(found[1]), text: found[2] } : { file: input, line: 0, text: rest.trim() };
      }
    }
    return { file: null, line: 0, text: line };
  });
}

// ---- the drawing on the page ----

async function showDrawing() {
  const geo = "out/plan.geojson";
  const count = await objectCount();
  const large = count > kMostShown;
  // Of what is too large to show, the alignments are shown.
  const answer = await askDrawing({
    run: [
      ...(large ? [] : [["info", "--json", "--", drawingPath()]]),
      ["export", "--crs", "plane", "-q", ...(large ? ["--only", "alignments"] : []), "--", drawingPath(), geo],
    ],
    read: [geo],
    removeAfter: [geo],
  });
  for (const result of answer.results) {
    if (result.code !== 0) {
      throw new Error(errorText(result.notes).replaceAll(drawingPath(), drawing.name));
    }
  }
  objects = JSON.parse(new TextDecoder().decode(answer.files[geo])).features.map(objectOf);
  info = {
    alignments: large
      ? objects.map(({ name, properties }) => ({ name, start_station: properties.StartStation, length: properties.Length, elements: [] }))
      : JSON.parse(answer.results[0].out).sites.flatMap((site) => site.alignments),
  };
  $("too-large").hidden = !large;
  $("too-large").textContent = large ? word("tooLarge").replace("%", String(count)) : "";
  for (const id of ["drawing", "log", "tables", "downloads"]) {
    $(id).hidden = false;
  }
  $("append-label").hidden = false;
  plan.stations = [];
  plan.set(objects);
  showLayers();
  showObjects();
  showObject(null);
  await showLog();
  showTables();
  showDownloads();
  await showStations();
}

// Points and polylines, from the summary's lines; a drawing that cannot be read ends here.
async function objectCount() {
  const { results: [result] } = await askDrawing({ run: [["info", "--", drawingPath()]] });
  if (result.code !== 0) {
    throw new Error(errorText(result.notes).replaceAll(drawingPath(), drawing.name));
  }
  return [...result.out.matchAll(/^(?:points|polylines) +(\d+)/gm)].reduce((sum, [, number]) => sum + Number(number), 0);
}

function objectOf(feature) {
  const { geometry, properties } = feature;
  const ring = geometry?.type === "Polygon";
  const points = !geometry ? [] : geometry.type === "Point" ? [geometry.coordinates] : ring ? geometry.coordinates[0] : geometry.coordinates;
  return {
    id: feature.id,
    kind: properties.Type || "-",
    layer: properties.layer ?? "",
    name: properties.Name ?? "",
    properties,
    points,
    ring,
    box: points.length > 0 ? boxOf(points) : null,
  };
}

function showLayers() {
  const counts = new Map();
  for (const object of objects) {
    const key = object.kind + "\u0000" + object.layer;
    counts.set(key, (counts.get(key) ?? 0) + 1);
  }
  plan.hidden = new Set([...plan.hidden].filter((key) => counts.has(key)));
  $("layers").replaceChildren(...[...counts].map(([key, count]) => {
    const [kind, layer] = key.split("\u0000");
    const label = make("label");
    const box = make("input", null, { type: "checkbox" });
    box.checked = !plan.hidden.has(key);
    box.addEventListener("change", () => {
      box.checked ? plan.hidden.delete(key) : plan.hidden.add(key);
      plan.draw();
    });
    label.append(box, " ", make("span", `${kind} — ${layer} [${count}]`));
    const item = make("li");
    item.append(label);
    return item;
  }));
}

function showObjects() {
  const wanted = $("filter").value;
  const found = wanted === "" ? objects : objects.filter((object) => object.name.includes(wanted));
  const items = found.slice(0, kMostListed).map((object) => {
    const item = make("li");
    item.append(button(`${object.kind} ${object.name}`, () => {
      plan.reveal(object);
      showObject(object);
    }));
    return item;
  });
  if (found.length > kMostListed) {
    items.push(make("li", `… ${word("more200")} ${found.length - kMostListed}`));
  }
  $("objects").replaceChildren(...items);
}

async function showObject(object) {
  const panel = $("object");
  if (!object) {
    panel.replaceChildren(make("p", word("nothing")));
    return;
  }
  const titles = word("columns");
  const { properties } = object;
  const rows = [[titles.id, object.id], [titles.kind, object.kind], [titles.layer, object.layer], [titles.no, properties.No], [titles.name, object.name], [titles.file, properties.FileName], [titles.description, properties.Description], [titles.site, properties.Site], [titles.station, metres(properties.StartStation)], [titles.length, metres(properties.Length)]];
  if (object.points.length === 1) {
    const [x, y, z] = object.points[0];
    rows.push([titles.x, metres(y)], [titles.y, metres(x)], [titles.height, metres(z)]);
  }
  if (object.ring) {
    rows.push([titles.area, ringArea(object.points).toFixed(4)]);
  }
  const list = table([["", (row) => row[0]], ["", (row) => row[1]]], rows.filter(([, value]) => value !== undefined && value !== null && value !== ""));
  list.tHead.remove();
  panel.replaceChildren(list, make("h4", word("lines")));
  const lines = await linesOf(object);
  if (!list.isConnected) {
    return; // another object is shown meanwhile
  }
  if (!lines) {
    panel.append(make("p", word("noLines")));
    return;
  }
  panel.append(make("pre", lines.text), button(`${lines.input.name}:${lines.first}`, () => showSource(lines.input, lines.first, lines.last)));
}

// ---- lines of files ----

let sourceWanted = null; // what the list of lines is to show

// The name by which the browser decodes the bytes of a file as the program reads them.
async function decoderName(content) {
  const chosen = $("encoding").value;
  if (chosen === "utf-16" || chosen === "auto") {
    const [first, second] = await bytesOf(content, 0, 2);
    if ((first === 0xfe && second === 0xff) || (first === 0 && second > 0)) {
      return "utf-16be";
    }
    if ((first === 0xff && second === 0xfe) || (first > 0 && second === 0) || chosen === "utf-16") {
      return "utf-16le";
    }
  }
  return chosen === "utf-8" || (chosen === "auto" && (await isUtf8(content))) ? "utf-8" : "shift_jis";
}

function linesOfFile(input) {
  input.lines ??= decoderName(input.content).then((name) => Lines.of(input.content, name));
  return input.lines;
}

const fields = (line) => line.split(",").map((field) => field.trim());

// Which lines of which open file made an object: its first line by the number or the name of its row, and the last.
async function linesOf(object) {
  const { No: no, FileName: fileName } = object.properties;
  const { isAlignment, opens = "F00", ends = opens === "F00" ? "F99" : null, byName } = kindOf(object.kind);
  for (const input of sources) {
    if (!isAlignment && fileName && stem(input.name) !== stem(fileName) && input.name !== fileName) {
      continue;
    }
    const lines = await linesOfFile(input);
    const isNumber = (text) => !isAlignment && text === String(no);
    const at = opens === "F00" ? (line) => line[3] === object.name || isNumber(line[1]) : (line) => (byName ? line[1] === object.name : isNumber(line[1]));
    const first = await lines.find(opens, (text) => at(fields(text)));
    if (first > 0) {
      const last = ends ? (await lines.find(ends, undefined, first)) || lines.count : first;
      const shown = await lines.texts(first, Math.min(last, first + kMostLines - 1));
      return { input, first, last, text: shown.join("\n") };
    }
  }
  return null;
}

async function objectAtLine(input, number) {
  const [text = ""] = await (await linesOfFile(input)).texts(number, number);
  const words = fields(text);
  const made = Object.entries(kKinds).find(([, kind]) => kind.opens === words[0]);
  if (made) {
    const [type, { byName }] = made;
    return objects.find((object) => object.kind === type && (byName ? object.name : String(object.properties.No)) === words[1]);
  }
  return words[0] === "F00" ? objects.find((object) => object.name === words[3]) : undefined;
}

async function showSource(input, first, last = first) {
  const wanted = (sourceWanted = {});
  const from = Math.max(1, first - kLinesAround);
  const texts = await (await linesOfFile(input)).texts(from, last + kLinesAround);
  if (sourceWanted !== wanted) {
    return; // another file or line was asked for meanwhile
  }
  const items = texts.map((text, i) => {
    const number = from + i;
    const item = make("li", null, number >= first && number <= last ? { class: "chosen" } : {});
    item.append(make("span", number, { class: "number" }), make("span", text));
    return item;
  });
  $("source-name").textContent = input.name;
  $("source").replaceChildren(...items);
  const chosen = $("source").querySelector(".chosen");
  if (chosen) {
    $("source").scrollTop = chosen.offsetTop - $("source").offsetTop - 60;
  }
}

async function showLog() {
  const errors = messages.filter((message) => message.line > 0);
  const notes = messages.filter((message) => message.line === 0);
  $("error-count").textContent = errors.length > 0 ? `— ${word("errors")}: ${errors.length}` : sources.length > 0 ? `— ${word("noErrors")}` : "";
  const list = $("messages");
  list.replaceChildren();
  for (const message of errors) {
    const item = make("li", null, { class: "error" });
    item.append(button(`${message.file.name}:${message.line}: ${message.text}`, async () => {
      showSource(message.file, message.line);
      const object = await objectAtLine(message.file, message.line);
      if (object) {
        plan.reveal(object);
        showObject(object);
      }
    }));
    list.append(item);
  }
  for (const message of notes) {
    list.append(make("li", (message.file ? message.file.name + ": " : "") + message.text, { class: "plain" }));
  }
  sourceWanted = null;
  $("source").replaceChildren();
  $("source-name").textContent = "";
  if (sources.length > 0) {
    await showSource(errors[0]?.file ?? sources[0], errors[0]?.line ?? 1);
  }
}

// ---- tables ----

function showTables() {
  const titles = word("columns");
  $("elements").replaceChildren(...info.alignments.flatMap((alignment) => {
    let station = alignment.start_station;
    const rows = alignment.elements.map((element) => {
      const at = station;
      station += element.length;
      return { ...element, at };
    });
    const radius = (row) => (row.type === "R" ? metres(row.radius) : row.type === "A" ? `${row.start_radius === null ? "∞" : metres(row.start_radius)} → ${row.end_radius === null ? "∞" : metres(row.end_radius)}` : "");
    return [make("h3", alignment.name), table([
      [titles.type, (row) => word("elementTypes")[row.type] ?? row.type],
      [titles.station, (row) => metres(row.at), true],
      [titles.length, (row) => metres(row.length), true],
      [titles.radius, radius, true],
      [titles.x, (row) => metres(row.start[1]), true],
      [titles.y, (row) => metres(row.start[0]), true],
    ], rows)];
  }));
  for (const id of ["stake-alignment", "pointer-alignment"]) {
    const kept = $(id).value;
    $(id).replaceChildren(...info.alignments.map(({ name }) => new Option(name, name)));
    if (info.alignments.some(({ name }) => name === kept)) {
      $(id).value = kept;
    }
  }
  $("stakes").replaceChildren();
  $("lots").replaceChildren(table([
    [titles.no, (lot) => lot.properties.No, true],
    [titles.name, (lot) => lot.name],
    [titles.area, (lot) => (lot.ring ? ringArea(lot.points).toFixed(4) : word("open")), true],
  ], objects.filter((object) => kindOf(object.kind).isLot)));
}

function stakeWords(extra) {
  const words = ["stakes", ...extra];
  if ($("every").value !== "") {
    words.push(`--every=${$("every").value}`);
  }
  if ($("offsets").value !== "") {
    words.push(`--offset=${$("offsets").value.replaceAll(" ", "")}`);
  }
  if ($("main-points").checked) {
    words.push("--main-points");
  }
  return [...words, "--", drawingPath(), $("stake-alignment").value];
}

async function showStakes() {
  const { results: [result] } = await askDrawing({ run: [stakeWords(["--format", "json"])] });
  if (result.code !== 0) {
    throw new Error(errorText(result.notes));
  }
  const titles = word("columns");
  const { stakes } = JSON.parse(result.out);
  $("stakes").replaceChildren(table([
    [titles.name, (row) => row.name],
    [titles.station, (row) => metres(row.station), true],
    [titles.offset, (row) => metres(row.offset), true],
    [titles.x, (row) => metres(row.y), true],
    [titles.y, (row) => metres(row.x), true],
  ], stakes));
  tell("");
}

// The numbered stations of all alignments, for the plan.
async function showStations() {
  const names = info.alignments.filter((alignment) => alignment.length > 0 && alignment.length < 100_000).slice(0, 50);
  const { results } = await askDrawing({ run: names.map(({ name }) => ["stakes", "--format", "json", "--", drawingPath(), name]) });
  plan.stations = results.filter((result) => result.code === 0).flatMap((result) => JSON.parse(result.out).stakes).map(({ station_name: text, x, y }) => ({ text, x, y }));
  plan.draw();
}

// ---- downloads ----

function save(name, bytes) {
  const url = URL.createObjectURL(new Blob([bytes], { type: "application/octet-stream" }));
  const link = make("a", null, { href: url, download: name });
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

// Writes a file with a command and saves it; the notes of the command are listed.
async function download(extension, words) {
  const name = stem(drawing.name) + extension;
  const path = `export/${name}`;
  const { results: [result], files } = await askDrawing({ remove: [path], folders: ["export"], run: [words(path)], read: [path], removeAfter: [path] });
  const notes = errorText(result.notes).replaceAll(drawingPath(), drawing.name).replaceAll(path, name);
  if (result.code !== 0 || !files[path]) {
    throw new Error(notes || word("failed"));
  }
  save(name, files[path]);
  $("download-notes").replaceChildren(...notes.split("\n").filter(Boolean).map((line) => make("li", line)));
  tell(word("saved") + name);
}

const exported = (...options) => (path) => ["export", ...options, "--", drawingPath(), path];
const reported = (path) => ["report", ...logs.flatMap((log) => ["--log", `logs/${log.name}`]), "--", drawingPath(), path];

function showDownloads() {
  const zoned = (options) => (path) => exported(...options(), ...zoneWords())(path);
  const zoneWords = () => ($("zone").value ? ["--zone", $("zone").value] : []);
  const parts = [
    ["gpkg", "GeoPackage", () => save(drawing.name, drawing.content)],
    ["dxf", "DXF", () => download(".dxf", exported())],
    ["landxml", "LandXML", () => download(".xml", exported())],
    ["j-landxml", "J-LandXML", () => download("_J.xml", exported("--profile", "j-landxml"))],
    ["geojson", "GeoJSON", () => download(".geojson", zoned(() => []))],
    ["geojson-plane", "GeoJSON (m)", () => download("_plane.geojson", exported("--crs", "plane"))],
    ["kml", "KML", () => download(".kml", zoned(() => []))],
    ["csv", "CSV", () => download(".csv", exported())],
    ["sim", "SIMA", () => download("_out.sim", exported())],
    ["svg", "SVG", () => download(".svg", (path) => ["plot", "--", drawingPath(), path])],
    ["report", "HTML", () => downloadReport(".html")],
    ["report-csv", `${"CSV"} (${word("tables")})`, () => downloadReport("_report.csv")],
    ...logs.map((log, i) => [`log-${i}`, `${word("logFile")} ${log.name}`, () => save(log.name, log.bytes)]),
  ];
  $("download-buttons").replaceChildren(...parts.map(([id, title, action]) => {
    const element = button(title, () => work(async () => {
      await action();
      if (/^(gpkg|log)/.test(id)) {
        tell("");
      }
    }));
    element.id = `download-${id}`;
    return element;
  }));
}

async function downloadReport(extension) {
  await askDrawing({ write: logs.map((log) => ({ path: `logs/${log.name}`, bytes: log.bytes })) });
  await download(extension, reported);
}

// ---- the pointer ----

let pointerTimer = 0;
let locating = false;
function pointerAt(object, x, y) {
  const titles = word("columns");
  $("position").textContent = `${titles.x} ${y.toFixed(3)}  ${titles.y} ${x.toFixed(3)}${object ? `  ${object.kind} ${object.name}` : ""}`.replace(kBidirectional, "\ufffd");
  clearTimeout(pointerTimer);
  pointerTimer = setTimeout(() => locate(x, y), 120);
}

async function locate(x, y) {
  const name = $("pointer-alignment").value;
  if (working || locating || !name || !drawing) {
    return;
  }
  locating = true;
  try {
    const { results: [result] } = await askDrawing({ run: [["locate", "--json", "--", drawingPath(), name, String(x), String(y)]] });
    const at = result.code === 0 ? JSON.parse(result.out) : null;
    const titles = word("columns");
    $("located").textContent = at && at.station !== null ? `${name}: ${titles.station} ${metres(at.station)}  ${titles.offset} ${metres(at.offset)}` : "";
  } catch {
    $("located").textContent = "";
  } finally {
    locating = false;
  }
}

function showMeasure(points) {
  let distance = 0;
  for (let i = 1; i < points.length; ++i) {
    distance += Math.hypot(points[i][0] - points[i - 1][0], points[i][1] - points[i - 1][1]);
  }
  let text = `${word("distance")} ${distance.toFixed(3)} m`;
  if (points.length > 1) {
    const [a, b] = points.slice(-2);
    text += `  ${word("bearing")} ${bearingText(b[0] - a[0], b[1] - a[1])}`;
  }
  if (points.length > 2) {
    text += `  ${word("area")} ${ringArea([...points, points[0]]).toFixed(3)} m²`;
  }
  $("measured").textContent = points.length > 0 ? text : "";
}

const plan = new Plan($("plan"), { onHover: pointerAt, onPick: showObject, onMeasure: showMeasure });
const paint = plan.paint.bind(plan);
plan.paint = () => {
  paint();
  $("overflow").hidden = !plan.overflow;
};

// ---- listening ----

$("language").addEventListener("change", () => {
  language = $("language").value;
  translate();
  if (inputs.length > 0) {
    const off = new Set(ticks().filter((box) => !box.checked).map((box) => box.name));
    showTree();
    ticks().forEach((box) => (box.checked = !off.has(box.name)));
    ticksChanged();
  }
  if (info) {
    showObject(plan.selected);
    showObjects();
    showLog();
    showTables();
    showDownloads();
  }
  tell("");
});
$("input").addEventListener("change", async () => {
  await take($("input").files);
  $("input").value = "";
});
for (const name of ["dragenter", "dragover"]) {
  document.addEventListener(name, (event) => {
    event.preventDefault();
    $("drop").classList.add("over");
  });
}
document.addEventListener("dragleave", () => $("drop").classList.remove("over"));
document.addEventListener("drop", (event) => {
  event.preventDefault();
  $("drop").classList.remove("over");
  if (event.dataTransfer.files.length > 0) {
    take(event.dataTransfer.files);
  }
});
$("all").addEventListener("change", () => {
  ticks().filter((box) => !box.disabled).forEach((box) => (box.checked = $("all").checked));
  ticksChanged();
});
$("encoding").addEventListener("change", () => {
  inputs.forEach((input) => delete input.lines);
  work(() => preview());
});
$("import").addEventListener("submit", (event) => {
  event.preventDefault();
  work(importFiles);
});
$("cancel").addEventListener("click", () => program.stop(word("cancelled")));
$("fit").addEventListener("click", () => plan.fit());
$("in").addEventListener("click", () => plan.zoom(1.25));
$("out").addEventListener("click", () => plan.zoom(0.8));
$("names").addEventListener("change", () => {
  plan.names = $("names").checked;
  plan.draw();
});
$("stations").addEventListener("change", () => {
  plan.showStations = $("stations").checked;
  plan.draw();
});
$("measure").addEventListener("click", () => {
  plan.measuring = plan.measuring ? null : [];
  $("measure").setAttribute("aria-pressed", String(plan.measuring !== null));
  showMeasure([]);
  plan.draw();
});
$("filter").addEventListener("input", showObjects);
$("stakes-form").addEventListener("submit", (event) => {
  event.preventDefault();
  work(showStakes);
});
for (const format of ["csv", "sim"]) {
  $(`stakes-${format}`).addEventListener("click", () => work(() => download(`_stakes.${format}`, (path) => stakeWords(["--format", format, "--out", path]))));
}

translate();
tell(word("starting"));
program.begun = program.start();
program.begun.then(() => {
  document.body.dataset.ready = "yes";
  if (!working) {
    tell(word("ready"));
  }
}, (error) => tell(error.message, true));
