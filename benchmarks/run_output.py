#!/usr/bin/env python3
"""Builds the benchmarks, measures bytes, files, compression, JSON and Fast Infoset, and writes their
tables, of times and of sizes, into benchmarks/README.md.

usage: benchmarks/run_output.py [--sizes] [BUILD_FOLDER]     (build/benchmarks when not given)

With --sizes it writes the table of sizes alone, which does not depend on the machine.

Every ratio is made of figures of the same run.
"""
import json
import os
import platform
import re
import subprocess
import sys

import run

BEGIN, END = "<!-- output: begin -->", "<!-- output: end -->"
SIZES_BEGIN, SIZES_END = "<!-- sizes: begin -->", "<!-- sizes: end -->"
SIZES = run.SIZES[:3]
LABELS = {
    "Text": "(a) `ToXml`",
    "Copy": "(b) a copy of its bytes",
    "Stream": "(c) `ToXmlStream`, UTF-8",
    "FilePlain": "(d) the bytes written into a file",
    "FileWhole": "(e) `ToXmlFile`",
    "FileInPieces": "(f) `ToXmlFile` with `AsyncToXmlFile`",
    "GZipByZLib": "(g) zlib alone, level 1, gzip",
    "GZip": "(h) `CQzZip::Compress`",
    "ExpandByZLib": "(i) zlib alone, into room of the right size",
    "Expand": "(j) `CQzZip::Decompress`",
    "Json": "(k) `ToJson`",
    "ReadXml": "(l) `FromXmlStream`",
    "JsonToXmlText": "(m) JSON into XML text",
    "ReadJson": "(n) `FromJson`",
    "FastInfoset/AsText": "(o) `ToFastInfosetStream`, values as text",
    "FastInfoset/Suggested": "(p) `ToFastInfosetStream`, suggested values",
    "FastInfoset/Vocabulary": "(q) `ToFastInfosetStream`, suggested values and a vocabulary",
    "ReadFastInfoset/AsText": "(r) `FromXmlStream` of (o)",
    "ReadFastInfoset/Suggested": "(s) `FromXmlStream` of (p)",
    "ReadFastInfoset/Vocabulary": "(t) `FromXmlStream` of (q)",
}
RATIOS = (
    ("**(c) / ((a) + (b))**", ("Stream",), ("Text", "Copy")),
    ("(e) / ((c) + (d))", ("FileWhole",), ("Stream", "FilePlain")),
    ("(f) / ((c) + (d))", ("FileInPieces",), ("Stream", "FilePlain")),
    ("**(h) / (g)**", ("GZip",), ("GZipByZLib",)),
    ("(j) / (i)", ("Expand",), ("ExpandByZLib",)),
    ("(k) / (a)", ("Json",), ("Text",)),
    ("(n) / ((l) + (m))", ("ReadJson",), ("ReadXml", "JsonToXmlText")),
    ("(n) / (l)", ("ReadJson",), ("ReadXml",)),
    ("(o) / (a)", ("FastInfoset/AsText",), ("Text",)),
    ("**(p) / (a)**", ("FastInfoset/Suggested",), ("Text",)),
    ("(q) / (a)", ("FastInfoset/Vocabulary",), ("Text",)),
    ("(l) / (r)", ("ReadXml",), ("ReadFastInfoset/AsText",)),
    ("**(l) / (s)**", ("ReadXml",), ("ReadFastInfoset/Suggested",)),
    ("(l) / (t)", ("ReadXml",), ("ReadFastInfoset/Vocabulary",)),
)
DOCUMENTS = {
    "Text": "XML, indented by two blanks",
    "TextUnformatted": "XML in one line",
    "Json": "JSON, indented",
    "FastInfoset/AsText": "Fast Infoset, values as text",
    "FastInfoset/Suggested": "Fast Infoset, suggested values",
    "FastInfoset/Vocabulary": "Fast Infoset, suggested values and a vocabulary",
}
WHOLE = "Text"  # what the other documents are parts of


def measure(folder, *options):
    """The rows of the shortest of fifteen repetitions, taken in turn, by benchmark and size."""
    output = subprocess.run(
        [os.path.join(folder, "benchmarks", "output_benchmark"), "--benchmark_format=json",
         *options],
        check=True, stdout=subprocess.PIPE).stdout
    rows = {}
    for run_name, row in run.lowest(output).items():
        name, size = re.match(r"(.*?)/(\d+)", run_name).groups()
        rows[name, int(size)] = row
    return rows


def header():
    yield "| | " + " | ".join(run.LABELS[s] for s in SIZES) + " |"
    yield "|---|" + "---:|" * len(SIZES)


def table(rows):
    """Milliseconds, and their ratios."""
    times = {key: row["cpu_time"] for key, row in rows.items()}
    yield from header()
    for name, label in LABELS.items():
        yield "| %s, ms | %s |" % (label, " | ".join("%.3f" % times[name, s] for s in SIZES))
    for label, over, under in RATIOS:
        yield "| %s | %s |" % (label, " | ".join(
            "%.2f" % (sum(times[n, s] for n in over) / sum(times[n, s] for n in under))
            for s in SIZES))


def sizes(rows):
    """Octets, and the part of the XML that they are."""
    yield from header()
    for counter, suffix in (("octets", ""), ("gzip", ", gzip")):
        for name, label in DOCUMENTS.items():
            yield "| %s%s | %s |" % (label, suffix, " | ".join(
                "%d (%.2f)" % (rows[name, s][counter],
                               rows[name, s][counter] / rows[WHOLE, s]["octets"])
                for s in SIZES))


def main(arguments):
    only_sizes = "--sizes" in arguments
    folders = [a for a in arguments[1:] if a != "--sizes"]
    folder = os.path.abspath(folders[0]) if folders else os.path.join(
        run.ROOT, "build", "benchmarks")
    run.build(folder)
    if only_sizes:
        rows = measure(folder, "--benchmark_min_time=0.001", "--benchmark_repetitions=2",
                       "--benchmark_filter=^(Text|TextUnformatted|Json|FastInfoset)/")
    else:
        rows = measure(folder, "--benchmark_min_time=0.1", "--benchmark_repetitions=15",
                       "--benchmark_enable_random_interleaving=true")
        lines = list(table(rows))
        lines += ["", "Measured on %s, %d processors." % (platform.machine(), os.cpu_count())]
        run.write_between(BEGIN, END, lines)
        print("\n".join(lines) + "\n")
    lines = list(sizes(rows))
    run.write_between(SIZES_BEGIN, SIZES_END, lines)
    print("\n".join(lines))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
