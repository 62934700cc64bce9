#!/usr/bin/env python3
"""Makes the tables that FacetCasesTest and XsdPatternCorpusTest read, out of a part of the W3C's XML
Schema test suite.

  make_cases.py CORPUS OUTPUT             all of them
  make_cases.py CORPUS OUTPUT --sample    the few hundred that are kept in tests/corpora/xsd
  make_cases.py --environment OUTPUT      of the folder that QZXML_CORPORA names, if there is one

CORPUS is a folder with facet_cases.py, which prints flat values as JSON, one a line, files.tar.xz and
cases.tsv.xz. OUTPUT gets facet-cases.tsv: set, case, type (a built-in one, "list(decimal)" or
"union(duration,decimal)"), facets (name=value, one behind the other), value, verdict; and patterns.tsv: pattern, the verdict on its schema. A backslash, a tab, a
line end and a semicolon are written \\\\, \\t, \\n, \\r and \\s.
"""

import json
import lzma
import os
import subprocess
import sys
import tarfile
import xml.etree.ElementTree

XS = "{http://www.w3.org/2001/XMLSchema}"
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


def list_cases(corpus):
    """The same of the lists and unions of built-in types, from the suites that are about these."""
    files, index = contents(corpus)
    for suite, _, schema_verdict, schemas, instance, verdict in index:
        if suite not in ("nist-list", "nist-union") or not instance or schema_verdict != "valid":
            continue
        schema = parsed(files, schemas.split(";")[0])
        document = parsed(files, instance)
        if schema is None or document is None or verdict not in ("valid", "invalid"):
            continue
        types = {t.get("name"): t for t in schema.findall(XS + "simpleType")}
        declared = [(d, t) for d in schema.iter(XS + "element") if d.find(XS + "simpleType") is None
                    for t in [types.get((d.get("type") or "").split(":")[-1])] if t is not None]
        values = [e.text or "" for e in document.iter() if not len(e)
                  and declared and e.tag.split("}")[-1] == declared[0][0].get("name")]
        if len(declared) != 1 or len(values) != 1:
            continue
        restriction = declared[0][1].find(XS + "restriction")
        base = restriction is not None and types.get(restriction.get("base", "").split(":")[-1])
        name = built_in(base) if base is not None and base is not False else None
        if name is not None:
            facets = {}
            for facet in restriction:
                if facet.get("value") is not None:
                    facets.setdefault(facet.tag[len(XS):], []).append(facet.get("value"))
            yield {"set": suite, "case": os.path.basename(instance), "base": name,
                   "facets": facets, "value": values[0], "valid": verdict == "valid"}


def built_in(declaration):
    """The name of a list or union of built-in types, or None."""
    of_list, of_union = declaration.find(XS + "list"), declaration.find(XS + "union")
    if of_list is not None and of_list.get("itemType"):
        return "list(%s)" % of_list.get("itemType").split(":")[-1]
    if of_union is not None and of_union.get("memberTypes"):
        return "union(%s)" % ",".join(t.split(":")[-1] for t in of_union.get("memberTypes").split())
    return None


def parsed(files, name):
    try:
        return xml.etree.ElementTree.fromstring(files[name])
    except (xml.etree.ElementTree.ParseError, KeyError):
        return None


def contents(corpus):
    """The files of the suite by name, and the rows of its index."""
    archive = tarfile.open(os.path.join(corpus, "files.tar.xz"), "r:xz")
    files = {m.name.split("/", 1)[1]: archive.extractfile(m).read() for m in archive if m.isfile()}
    with lzma.open(os.path.join(corpus, "cases.tsv.xz"), "rt", encoding="utf-8") as index:
        return files, [line.rstrip("\n").split("\t") for line in index][1:]


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
    files, index = contents(corpus)
    found = set()
    for suite, _, verdict, schemas in (row[:4] for row in index):
        schema = parsed(files, schemas.split(";")[0]) if suite == "ms-regex" else None
        if schema is not None:
            found.update((escaped(p.get("value")), verdict) for p in schema.iter(XS + "pattern"))
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
    cases = facet_cases(corpus) + list(list_cases(corpus))
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
