#!/usr/bin/env python3
"""Compares the desk's texts with their translation in a Qt Linguist file, which must have all of them and no other.

check_translations.py TEXTS.cpp... TRANSLATION.ts
"""
import re
import sys
import xml.etree.ElementTree as ElementTree

PIECE = r'"(?:[^"\\]|\\.)*"'
ENTRY = re.compile(r'Entry\{\s*(?:Work)?Text::(\w+),\s*QT_TRANSLATE_NOOP3\(\s*"desk",\s*((?:%s\s*)+),\s*"(\w+)"\s*\)\s*\}' % PIECE)


def text_of(literals):
    pieces = re.findall(PIECE, literals)
    plain = "".join(piece[1:-1] for piece in pieces)
    return plain.replace(r"\n", "\n").replace(r"\"", '"').replace("\\\\", "\\")


def places(text):
    return sorted(set(re.findall(r"%\d", text)))


def main(*paths):
    *texts_paths, translation_path = paths
    problems, entries = [], []
    for texts_path in texts_paths:
        with open(texts_path, encoding="utf-8") as file:
            found = ENTRY.findall(file.read())
        with open(texts_path.replace(".cpp", ".h"), encoding="utf-8") as file:
            names = re.findall(r"^    (\w+),$", file.read(), re.MULTILINE)
        if [name for name, _, _ in found] != names:
            problems.append(f"{texts_path}: the texts and their names differ, or stand in another order")
        entries += found
    messages = {}
    for message in ElementTree.parse(translation_path).getroot().iter("message"):
        translation = message.find("translation")
        key = (message.findtext("comment"), message.findtext("source"))
        messages[key] = None if translation.get("type") else (translation.text or "")
    for name, literals, comment in entries:
        source = text_of(literals)
        if comment != name:
            problems.append(f"{name}: its comment is {comment}")
        if (name, source) not in messages:
            problems.append(f"{name}: no translation of {source!r}")
            continue
        translation = messages.pop((name, source))
        if not translation:
            problems.append(f"{name}: its translation is not finished")
        elif places(translation) != places(source):
            problems.append(f"{name}: {places(translation)} in the translation, {places(source)} in the text")
    problems += [f"{comment}: translated, but no text" for comment, _ in messages]
    for problem in problems:
        print(f"{translation_path}: {problem}", file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
