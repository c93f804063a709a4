// The lines of a file, read from the browser's store as they are asked for: a large file is held neither as text nor as bytes.
"use strict";

const kLineFeed = 10;
const kReturn = 13;
const kBlock = 1 << 20; // bytes that are read at once; a block holds whole lines

// Where lines begin in some bytes; behind a last line end begins one more.
function lineStarts(bytes) {
  const starts = [0];
  for (let i = 0; i < bytes.length; ++i) {
    if (bytes[i] === kLineFeed || (bytes[i] === kReturn && bytes[i + 1] !== kLineFeed)) {
      starts.push(i + 1);
    }
  }
  return starts;
}

// Whether a line begins with an ASCII code, behind blanks.
function beginsWith(line, code) {
  let at = 0;
  while (line[at] === 0x20 || line[at] === 0x09) {
    ++at;
  }
  for (let i = 0; i < code.length; ++i) {
    if (line[at + i] !== code.charCodeAt(i)) {
      return false;
    }
  }
  return true;
}

const bytesOf = async (content, from, to) => new Uint8Array(await content.slice(from, to).arrayBuffer());

// Whether a file has characters beyond ASCII, and all of them are UTF-8.
async function isUtf8(content) {
  const decoder = new TextDecoder("utf-8", { fatal: true });
  let beyond = false;
  try {
    for (let from = 0; from < content.size; from += kBlock) {
      const bytes = await bytesOf(content, from, from + kBlock);
      beyond ||= bytes.some((byte) => byte >= 0x80);
      decoder.decode(bytes, { stream: true });
    }
    decoder.decode();
    return beyond;
  } catch {
    return false;
  }
}

// UTF-16 as UTF-8, because line ends are single bytes in all other encodings.
async function narrowed(content, encoding) {
  const decoder = new TextDecoder(encoding);
  const encoder = new TextEncoder();
  const pieces = [];
  for (let from = 0; from < content.size; from += kBlock) {
    pieces.push(new Blob([encoder.encode(decoder.decode(await bytesOf(content, from, from + kBlock), { stream: true }))]));
  }
  return new Blob([...pieces, encoder.encode(decoder.decode())]);
}

class Lines {
  // The lines of a Blob; `encoding` is a name that TextDecoder knows.
  static async of(content, encoding) {
    const wide = encoding.startsWith("utf-16");
    const lines = new Lines();
    lines.content = wide ? await narrowed(content, encoding) : content;
    lines.decoder = new TextDecoder(wide ? "utf-8" : encoding);
    lines.blocks = []; // {from, to, first}: bytes, and the number of the first line
    lines.count = 0;
    let size = kBlock;
    for (let from = 0; from < lines.content.size || lines.count === 0;) {
      const bytes = await bytesOf(lines.content, from, from + size);
      const starts = lineStarts(bytes);
      if (from + bytes.length < lines.content.size) {
        if (starts.at(-1) === bytes.length) {
          starts.pop(); // a line feed may follow
        }
        if (starts.length === 1) {
          size *= 2; // a line longer than that
          continue;
        }
        const to = from + starts.pop(); // the line begun here opens the next block
        lines.add(from, to, starts.length);
        from = to;
      } else {
        lines.add(from, lines.content.size, starts.length);
        from = lines.content.size;
      }
      size = kBlock;
    }
    return lines;
  }
  add(from, to, count) {
    this.blocks.push({ from, to, first: this.count + 1 });
    this.count += count;
  }
  // The blocks that hold lines from one number to another. The last block read is kept.
  async *blocksOf(from, to) {
    for (const [i, block] of this.blocks.entries()) {
      const next = this.blocks[i + 1]?.first ?? this.count + 1;
      if (block.first > to || next <= from) {
        continue;
      }
      if (this.kept?.block !== block) {
        const bytes = await bytesOf(this.content, block.from, block.to);
        this.kept = { block, bytes, starts: lineStarts(bytes) };
      }
      const { bytes, starts } = this.kept;
      const bytesAt = (number) => bytes.subarray(starts[number - block.first], starts[number - block.first + 1]);
      yield { from: Math.max(from, block.first), to: Math.min(to, next - 1), bytesAt };
    }
  }
  decode(line) {
    return this.decoder.decode(line).replace(/\r?\n$|\r$/, "");
  }
  // The texts of the lines from one number to another, counted from 1, without their ends; none beyond the last.
  async texts(from, to) {
    const found = [];
    for await (const block of this.blocksOf(from, to)) {
      for (let number = block.from; number <= block.to; ++number) {
        found.push(this.decode(block.bytesAt(number)));
      }
    }
    return found;
  }
  // The number of the first line, from a number on, with the code whose text satisfies the condition; 0 if there is none.
  async find(code, condition = () => true, from = 1) {
    for await (const block of this.blocksOf(from, this.count)) {
      for (let number = block.from; number <= block.to; ++number) {
        const line = block.bytesAt(number);
        if (beginsWith(line, code) && condition(this.decode(line))) {
          return number;
        }
      }
    }
    return 0;
  }
}
