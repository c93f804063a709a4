// The lines of a file, found in its bytes: only those that are shown become text, so that a large file is not held twice.
"use strict";

const kLineFeed = 10;
const kReturn = 13;

class Lines {
  // `encoding` is a name that TextDecoder knows.
  constructor(bytes, encoding) {
    // Line ends are single bytes in all encodings but UTF-16.
    const wide = encoding.startsWith("utf-16");
    this.bytes = wide ? new TextEncoder().encode(new TextDecoder(encoding).decode(bytes)) : bytes;
    this.decoder = new TextDecoder(wide ? "utf-8" : encoding);
    this.starts = [0];
    const all = this.bytes;
    for (let i = 0; i < all.length; ++i) {
      if (all[i] === kLineFeed || (all[i] === kReturn && all[i + 1] !== kLineFeed)) {
        this.starts.push(i + 1);
      }
    }
  }
  get count() {
    return this.starts.length;
  }
  // The text of a line, counted from 1, without its end; empty beyond the last.
  text(number) {
    const from = this.starts[number - 1];
    return from === undefined ? "" : this.decoder.decode(this.bytes.subarray(from, this.starts[number])).replace(/\r?\n$|\r$/, "");
  }
  // Whether a line begins with an ASCII code, behind blanks.
  begins(number, code) {
    let at = this.starts[number - 1];
    while (this.bytes[at] === 0x20 || this.bytes[at] === 0x09) {
      ++at;
    }
    for (let i = 0; i < code.length; ++i) {
      if (this.bytes[at + i] !== code.charCodeAt(i)) {
        return false;
      }
    }
    return true;
  }
  // The number of the first line with the code whose text satisfies the condition; 0 if there is none.
  find(code, condition) {
    for (let number = 1; number <= this.count; ++number) {
      if (this.begins(number, code) && condition(this.text(number))) {
        return number;
      }
    }
    return 0;
  }
}
