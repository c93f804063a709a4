#!/usr/bin/env python3
"""Compares what the add-in module exports with the lists kept in the repository.

check_module_exports.py MODULE LIST ALIGNMENT_LIST

LIST has the entry points, the members of CTreeListCtrl and the splitter, without their arguments; ALIGNMENT_LIST has the
functions of the alignment library. No symbol may be unique in the process: such a one keeps the module loaded for ever.
"""

import re
import subprocess
import sys


def names(path):
    with open(path, encoding="utf-8") as file:
        return {line.strip() for line in file if line.strip() and not line.startswith("#")}


def main():
    module, own, alignment = sys.argv[1:]
    text = subprocess.run(["nm", "-DC", "--defined-only", module], capture_output=True, text=True, check=True).stdout
    exported, unique = set(), set()
    for line in text.splitlines():
        _, kind, name = line.split(" ", 2)
        name = re.sub(r"\(.*", "", name)
        exported.add(name)
        if kind == "u":
            unique.add(name)
    wanted = names(own) | names(alignment)
    for name in sorted(unique):
        print(f"unique in the process: {name}")
    for name in sorted(wanted - exported):
        print(f"listed and not exported: {name}")
    for name in sorted(exported - wanted):
        print(f"exported and not listed: {name}")
    if unique or wanted != exported:
        return 1
    print(f"{len(exported)} names, as listed")
    return 0


if __name__ == "__main__":
    sys.exit(main())
