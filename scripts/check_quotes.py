#!/usr/bin/env python3
"""Checks that the code that the documents quote stands in the programs, line by line.

A quotation is a fenced block behind a line <!-- quote: FILE -->; white space in front of all of its
lines is not compared.
"""
import glob
import os
import re
import sys
import textwrap

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
QUOTE = re.compile(r"<!-- quote: (\S+) -->\n+```\w*\n(.*?)```", re.S)


def squeezed(text):
    return "\n".join(line.strip() for line in text.strip().splitlines())


def main():
    bad = seen = 0
    for document in [os.path.join(ROOT, "README.md")] + glob.glob(os.path.join(ROOT, "docs", "*.md")):
        with open(document, encoding="utf-8") as file:
            text = file.read()
        for source, quoted in QUOTE.findall(text):
            seen += 1
            with open(os.path.join(ROOT, source), encoding="utf-8") as file:
                if squeezed(quoted) not in squeezed(file.read()):
                    bad += 1
                    print("%s quotes %s with other words:\n%s" % (
                        os.path.relpath(document, ROOT), source, textwrap.indent(quoted, "  ")))
    print("%d quotations, %d not as in the programs" % (seen, bad))
    return 1 if bad or not seen else 0


if __name__ == "__main__":
    sys.exit(main())
