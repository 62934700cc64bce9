#!/usr/bin/env python3
"""Makes the tables that FacetCasesTest and XsdPatternCorpusTest read, out of a part of the W3C's XML
Schema test suite.

  make_cases.py CORPUS OUTPUT             all of them
  make_cases.py CORPUS OUTPUT --sample    the few hundred that are kept in tests/corpora/xsd
  make_cases.py --environment OUTPUT      of the folder that QZXML_CORPORA names, if there is one

CORPUS is a folder with facet_cases.py, which prints flat values as JSON, one a line, files.tar.xz and
cases.tsv.xz. OUTPUT gets facet-cases.tsv: set, case, built-in type, facets (name=value, one behind
the other), value, verdict; and patterns.tsv: pattern, the verdict on its schema. A backslash, a tab, a
line end and a semicolon are written \\\\, \\t, \\n, \\r and \\s.
"""

import json
import lzma
import os
import subprocess
import sys
import tarfile
import xml.etree.ElementTree

PATTERN = "{http://www.w3.org/2001/XMLSchema}pattern"
ESCAPES = {"\\": "\\\\", "\t": "\\t", "\n": "\\n", "\r": "\\r", ";": "\\s"}


def escaped(text):
    return "".join(ESCAPES.get(character, character) for character in text)


def facet_row(case):
    facets = ";".join("%s=%s" % (name, escaped(value))
                      for name, values in case["facets"].items() for value in values)
    return "\t".join([case["set"], case["case"], case["base"], facets, escaped(case["value"]),
                      "valid" if case["valid"] else "invalid"])


def facet_cases(corpus):
    script = os.path.join(corpus, "facet_cases.py")
    lines = subprocess.run([sys.executable, script, corpus], check=True, stdout=subprocess.PIPE,
                           stderr=subprocess.DEVNULL).stdout.decode("utf-8").split("\n")
    return [json.loads(line) for line in lines if line]


def facet_sample(cases):
    """The same few of each kind: by suite, type, facets and verdict, the shortest first."""
    taken = {}
    for case in sorted(cases, key=lambda c: (len(facet_row(c)), facet_row(c))):
        kind = (case["set"], case["base"], tuple(sorted(case["facets"])), case["valid"])
        most = 60 if case["set"] == "ms-regex" and case["base"] == "string" else 1
        if len(facet_row(case)) <= 240 and taken.setdefault(kind, 0) < most:
            taken[kind] += 1
            yield case


def patterns(corpus):
    """(pattern, verdict) of the schemas that are about patterns."""
    archive = tarfile.open(os.path.join(corpus, "files.tar.xz"), "r:xz")
    files = {m.name.split("/", 1)[1]: archive.extractfile(m).read() for m in archive if m.isfile()}
    found = set()
    with lzma.open(os.path.join(corpus, "cases.tsv.xz"), "rt", encoding="utf-8") as index:
        for line in list(index)[1:]:
            suite, _, verdict, schemas = line.rstrip("\n").split("\t")[:4]
            try:
                schema = xml.etree.ElementTree.fromstring(files[schemas.split(";")[0]])
            except (xml.etree.ElementTree.ParseError, KeyError):
                continue
            if suite == "ms-regex":
                found.update((escaped(p.get("value")), verdict) for p in schema.iter(PATTERN))
    return found


def write(path, heading, rows):
    with open(path, "w", encoding="utf-8", newline="\n") as table:
        table.write(heading + "\n")
        table.writelines(row + "\n" for row in sorted(rows))


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    corpus, output = sys.argv[1:3]
    if corpus == "--environment":
        corpus = os.path.join(os.environ.get("QZXML_CORPORA") or "none", "xsd-suite")
        if not os.path.isdir(corpus):
            return
    cases = facet_cases(corpus)
    texts = patterns(corpus)
    if "--sample" in sys.argv:
        cases = facet_sample(cases)
        texts = [(text, verdict) for text, verdict in texts if len(text) <= 80]
    os.makedirs(output, exist_ok=True)
    write(os.path.join(output, "facet-cases.tsv"), "set\tcase\ttype\tfacets\tvalue\tverdict",
          map(facet_row, cases))
    write(os.path.join(output, "patterns.tsv"), "pattern\tverdict", map("\t".join, texts))


if __name__ == "__main__":
    main()
