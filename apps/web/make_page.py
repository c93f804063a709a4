#!/usr/bin/env python3
# Puts the page together: its pieces, the program compressed as text, and nothing that a browser would have to fetch.
import base64
import pathlib
import sys
import zlib


def main():
    folder, glue, wasm, version, target = sys.argv[1:]
    page = pathlib.Path(folder)

    def piece(name):
        return (page / name).read_text(encoding="utf-8")

    def script(text):
        if "</script" in text.lower():
            raise SystemExit("a script of the page holds the end of a script")
        return text

    def packed(content):
        return base64.b64encode(zlib.compress(content, 9)).decode("ascii")

    worker = pathlib.Path(glue).read_text(encoding="utf-8") + "\n" + piece("worker.js")
    code = "\n".join(piece(name) for name in ("texts.js", "kinds.js", "geometry.js", "lines.js", "plan.js", "page.js"))
    parts = {
        "@VERSION@": version,
        "@STYLE@": piece("style.css"),
        "@WORKER@": packed(worker.encode("utf-8")),
        "@WASM@": packed(pathlib.Path(wasm).read_bytes()),
        "@CODE@": script(code),
    }
    html = piece("page.html")
    for mark, text in parts.items():
        if html.count(mark) != 1:
            raise SystemExit(f"{mark} must stand once in page.html")
        html = html.replace(mark, text)
    size = len(html.encode("utf-8"))
    if size > 3_000_000:
        raise SystemExit(f"the page has {size} bytes; 3,000,000 are its limit")
    pathlib.Path(target).write_text(html, encoding="utf-8")
    print(f"{target}: {size} bytes")


main()
