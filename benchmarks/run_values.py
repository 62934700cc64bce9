#!/usr/bin/env python3
"""Builds the benchmarks, measures the values and writes their table into benchmarks/README.md.

usage: benchmarks/run_values.py [BUILD_FOLDER]     (build/benchmarks when not given)

Every ratio is made of two figures of the same run.
"""
import json
import os
import platform
import subprocess
import sys

import run

BEGIN, END = "<!-- values: begin -->", "<!-- values: end -->"
PLAIN = {  # kind: what it is measured against, reading and writing
    "i4": ("`from_chars`", "`to_chars`"),
    "r8": ("`from_chars`", "`to_chars`, 16 digits"),
    "decimal": ("`from_chars` of a double", "`to_chars` of a double"),
    "dateTime": ("`strptime`", "`strftime`"),
    "boolean": ("`==`", "a copy"),
    "base64 of 1 KB": ("a table, byte by byte", "a table, byte by byte"),
}


def measure(folder):
    """Nanoseconds by kind, direction and who, the median of fifteen repetitions taken in turn."""
    output = subprocess.run(
        [os.path.join(folder, "benchmarks", "value_benchmark"), "--benchmark_format=json",
         "--benchmark_min_time=0.05", "--benchmark_repetitions=15",
         "--benchmark_report_aggregates_only=true", "--benchmark_enable_random_interleaving=true"],
        check=True, stdout=subprocess.PIPE).stdout
    return {tuple(row["run_name"].split("/")): row["cpu_time"]
            for row in json.loads(output)["benchmarks"] if row.get("aggregate_name") == "median"}


def table(times):
    yield "| | `FromString`, ns | against, ns | ratio | `ToString`, ns | against, ns | ratio |"
    yield "|---|---:|---:|---:|---:|---:|---:|"
    for kind, against in PLAIN.items():
        cells = []
        for direction, what in zip(("read", "write"), against):
            mine, plain = times[kind, direction, "QzVariant"], times[kind, direction, "plain"]
            cells += ["%.1f" % mine, "%s: %.1f" % (what, plain), "**%.2f**" % (mine / plain)]
        yield "| %s | %s |" % (kind, " | ".join(cells))


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
