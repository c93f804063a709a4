// The worker: one program upon one file system in memory. It answers one request at a time.
"use strict";

const kFolder = "/work";
let program = null;
let current = 0; // the request that runs
let errors = "";
let decoder = new TextDecoder();

async function inflate(base64) {
  const bytes = Uint8Array.from(atob(base64), (c) => c.charCodeAt(0));
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("deflate"));
  return new Response(stream).arrayBuffer();
}

// Notes stay; of the bar only its state is of use here.
function onText(bytes) {
  const text = decoder.decode(bytes, { stream: true });
  errors += text;
  const bars = text.match(/\r([^\r\n[]*) \[[= ]*\] (\d+) %/g);
  if (bars) {
    const [, title, percent] = bars[bars.length - 1].match(/\r([^\r\n[]*) \[[= ]*\] (\d+) %/);
    self.postMessage({ id: current, progress: Number(percent), title });
  }
}

function folderOf(path) {
  return path.slice(0, Math.max(path.lastIndexOf("/"), 0));
}

function run(words) {
  errors = "";
  decoder = new TextDecoder();
  const bytes = new TextEncoder().encode(words.map((word) => word.replaceAll("\0", "") + "\0").join(""));
  const at = program._malloc(bytes.length);
  program.HEAPU8.set(bytes, at);
  const code = program._fenmark_run(at, bytes.length);
  program._free(at);
  const from = program._fenmark_output();
  const out = new TextDecoder().decode(program.HEAPU8.slice(from, from + program._fenmark_output_size()));
  const notes = errors.replace(/\r[^\r\n[]* \[[= ]*\] \d+ %/g, "").replaceAll("\r\x1b[K", "");
  return { code, out, notes };
}

function read(path) {
  try {
    return program.FS.readFile(path);
  } catch {
    return null;
  }
}

function remove(path) {
  try {
    program.FS.unlink(path);
  } catch {
    // it was not there
  }
}

async function answer(request) {
  program?._fenmark_set_japanese(request.language === "ja" ? 1 : 0);
  if (request.wasm) {
    program = await createFenmark({ wasmBinary: await inflate(request.wasm), onFenmarkText: onText });
    program.FS.mkdirTree(kFolder);
    program.FS.chdir(kFolder);
    return {};
  }
  for (const path of request.remove ?? []) {
    remove(path);
  }
  for (const { path, bytes } of request.write ?? []) {
    program.FS.mkdirTree(kFolder + "/" + folderOf(path));
    program.FS.writeFile(path, bytes);
  }
  for (const folder of request.folders ?? []) {
    program.FS.mkdirTree(kFolder + "/" + folder);
  }
  const results = (request.run ?? []).map(run);
  const files = {};
  for (const path of request.read ?? []) {
    files[path] = read(path);
  }
  for (const path of request.removeAfter ?? []) {
    remove(path);
  }
  return { results, files };
}

let queue = Promise.resolve();
self.onmessage = ({ data }) => {
  queue = queue.then(async () => {
    current = data.id;
    try {
      self.postMessage({ id: data.id, answer: await answer(data) });
    } catch (error) {
      self.postMessage({ id: data.id, failure: String(error?.message ?? error), broken: error instanceof WebAssembly.RuntimeError });
    }
  });
};
