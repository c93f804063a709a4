// The worker: one program upon one file system in memory. It answers one request at a time.
"use strict";

const kFolder = "/browser"; // drawings keep the path of a file that was imported
const kLargeFile = 1 << 24; // bytes
const kStep = 1 << 23; // bytes by which a large file grows, and pieces in which it is read
const kPiece = 1 << 20; // bytes of a file that is read from the browser's store
const kReadFailure = 29; // EIO of the program's system
const kMostFile = 2 ** 31; // bytes
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

// Lets large files grow in place where the browser can resize a buffer. Otherwise each growth copies the file, and several
// copies of a drawing lie in memory until they are collected.
function growInPlace(files) {
  const copying = files.expandFileStorage;
  files.expandFileStorage = (node, size) => {
    const { contents } = node;
    if (size <= (contents?.length ?? 0)) {
      return;
    }
    if (size < kLargeFile || size > kMostFile || !ArrayBuffer.prototype.resize) {
      copying(node, size);
      return;
    }
    const room = Math.min(Math.ceil(size / kStep) * kStep, kMostFile);
    if (contents?.buffer?.resizable) {
      contents.buffer.resize(room);
      return;
    }
    const grown = new Uint8Array(new ArrayBuffer(room, { maxByteLength: kMostFile })); // its length follows the buffer's
    if (node.usedBytes > 0) {
      grown.set(contents.subarray(0, node.usedBytes));
    }
    node.contents = grown;
  };
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

// A file as a Blob: large ones then lie in the browser's store, and are not copied from here to the page.
function readLarge(path) {
  try {
    const { node } = program.FS.lookupPath(path);
    const pieces = [];
    const piece = new Uint8Array(Math.min(kStep, node.usedBytes)); // one for all, as each would wait for its collection
    for (let from = 0; from < node.usedBytes; from += kStep) {
      const part = node.contents.subarray(from, Math.min(from + kStep, node.usedBytes));
      piece.set(part);
      pieces.push(new Blob([piece.subarray(0, part.length)]));
    }
    return new Blob(pieces);
  } catch {
    return null;
  }
}

// A file that is only read stays in the browser's store; pieces of it come as they are asked for.
function offer(path, content) {
  program.FS.mkdirTree(kFolder + "/" + folderOf(path));
  program.FS.writeFile(path, "");
  const { node } = program.FS.lookupPath(path);
  const reader = new FileReaderSync();
  let from = 0;
  let piece = new Uint8Array(0);
  node.usedBytes = content.size;
  node.stream_ops = {
    ...node.stream_ops,
    read(stream, buffer, offset, length, position) {
      if (position >= content.size) {
        return 0;
      }
      if (position < from || position >= from + piece.length) {
        from = position;
        try {
          piece = new Uint8Array(reader.readAsArrayBuffer(content.slice(from, from + kPiece)));
        } catch {
          throw new program.FS.ErrnoError(kReadFailure);
        }
      }
      const part = piece.subarray(position - from, position - from + length);
      buffer.set(part, offset);
      return part.length;
    },
  };
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
    growInPlace(program.FS.filesystems.MEMFS);
    program.FS.mkdirTree(kFolder);
    program.FS.chdir(kFolder);
    return {};
  }
  for (const path of request.remove ?? []) {
    remove(path);
  }
  for (const { path, bytes } of request.write ?? []) {
    program.FS.mkdirTree(kFolder + "/" + folderOf(path));
    const content = bytes instanceof Blob ? new Uint8Array(await bytes.arrayBuffer()) : bytes;
    program.FS.writeFile(path, content, { canOwn: true });
  }
  for (const { path, content } of request.offer ?? []) {
    offer(path, content);
  }
  for (const folder of request.folders ?? []) {
    program.FS.mkdirTree(kFolder + "/" + folder);
  }
  const results = (request.run ?? []).map(run);
  const files = {};
  for (const path of request.read ?? []) {
    files[path] = read(path);
  }
  for (const path of request.readLarge ?? []) {
    files[path] = readLarge(path);
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
      const result = await answer(data);
      const moved = Object.values(result.files ?? {}).filter((file) => file instanceof Uint8Array).map((file) => file.buffer);
      self.postMessage({ id: data.id, answer: result }, moved);
    } catch (error) {
      self.postMessage({ id: data.id, failure: String(error?.message ?? error), broken: error instanceof WebAssembly.RuntimeError });
    }
  });
};
