#!/usr/bin/env python3
"""Builds the benchmarks, measures bytes, files, compression and JSON, and writes their table into
benchmarks/README.md.

usage: benchmarks/run_output.py [BUILD_FOLDER]     (build/benchmarks when not given)

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
    "ReadFastInfoset/AsText": "(q) `FromXmlStream` of (o)",
    "ReadFastInfoset/Suggested": "(r) `FromXmlStream` of (p)",
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
    ("**(p) / (a)**", ("FastInfoset/Suggested",), ("Text",)),
    ("**(l) / (r)**", ("ReadXml",), ("ReadFastInfoset/Suggested",)),
)


def measure(folder):
    """Milliseconds by benchmark and size, the median of five repetitions taken in turn."""
    output = subprocess.run(
        [os.path.join(folder, "benchmarks", "output_benchmark"), "--benchmark_format=json",
         "--benchmark_min_time=0.1", "--benchmark_repetitions=5",
         "--benchmark_report_aggregates_only=true", "--benchmark_enable_random_interleaving=true"],
        check=True, stdout=subprocess.PIPE).stdout
    times = {}
    for row in json.loads(output)["benchmarks"]:
        if row.get("aggregate_name") == "median":
            name, size = re.match(r"(.*?)/(\d+)", row["run_name"]).groups()
            times[name, int(size)] = row["cpu_time"]
    return times


def table(times):
    yield "| | " + " | ".join(run.LABELS[s] for s in SIZES) + " |"
    yield "|---|" + "---:|" * len(SIZES)
    for name, label in LABELS.items():
        yield "| %s, ms | %s |" % (label, " | ".join("%.3f" % times[name, s] for s in SIZES))
    for label, over, under in RATIOS:
        yield "| %s | %s |" % (label, " | ".join(
            "%.2f" % (sum(times[n, s] for n in over) / sum(times[n, s] for n in under))
            for s in SIZES))


def main(arguments):
    folder = os.path.abspath(arguments[1]) if len(arguments) > 1 else os.path.join(
        run.ROOT, "build", "benchmarks")
    run.build(folder)
    lines = list(table(measure(folder)))
    lines += ["", "Measured on %s, %d processors." % (platform.machine(), os.cpu_count())]
    run.write_between(BEGIN, END, lines)
    print("\n".join(lines))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
