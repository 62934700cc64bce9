#!/usr/bin/env python3
"""Writes a document of 1 GB while it grows, looks whether it is whole, and writes the highest
resident size of the writing process into benchmarks/README.md. Fails at 64 MB and above.

usage: benchmarks/large_file.py [BUILD_FOLDER] [FOLDER]

FOLDER takes the file, which is removed again; the folder for temporary files when not given. The
file has to fit there.
"""
import os
import subprocess
import sys
import tempfile
import time
import xml.parsers.expat

import run

OCTETS, MOST = 10**9, 64 * 10**6
BEGIN, END = "<!-- large file: begin -->", "<!-- large file: end -->"


def count_orders(path):
    """The orders of a well-formed document whose orders are numbered from 1 on."""
    count = 0

    def start(name, attributes):
        nonlocal count
        if name == "Order":
            count += 1
            if attributes["id"] != str(count):
                raise ValueError("order %d is numbered %s" % (count, attributes["id"]))

    parser = xml.parsers.expat.ParserCreate()
    parser.StartElementHandler = start
    with open(path, "rb") as file:
        parser.ParseFile(file)
    return count


def main(arguments):
    folder = os.path.abspath(arguments[1]) if len(arguments) > 1 else os.path.join(
        run.ROOT, "build", "benchmarks")
    run.build(folder, ["large_file", "qzxml_benchmark_data"])
    benchmarks = os.path.join(folder, "benchmarks")
    with tempfile.TemporaryDirectory(dir=arguments[2] if len(arguments) > 2 else None) as scratch:
        path = os.path.join(scratch, "large.xml")
        begin = time.monotonic()
        octets, peak = map(int, subprocess.run(
            [os.path.join(benchmarks, "large_file"), "pieces", str(OCTETS),
             os.path.join(benchmarks, "orders-%d.xml" % run.SIZES[0]), path],
            check=True, stdout=subprocess.PIPE).stdout.split())
        seconds = time.monotonic() - begin
        orders = count_orders(path)
    line = "%.2f GB, %d orders, in %.0f s: at most **%.1f MB** resident." % (
        octets / 1e9, orders, seconds, peak / 1e6)
    run.write_between(BEGIN, END, [line])
    print(line)
    return 0 if octets >= OCTETS and peak < MOST else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv))
