#!/usr/bin/env python3
"""Measures what generated classes cost to make and to compile, beside those of a peer, and writes
the table into benchmarks/README.md.

usage: benchmarks/run_generator.py TOOL [--types N] [--most M] [--work FOLDER] [--print]

TOOL is the program qzxml. The peer is the Debian package xsdcxx with libxerces-c-dev, which nothing
but this script needs; its classes read and write (cxx-tree --generate-serialization), as ours do.
Both are compiled by g++ -O2, one source after the other; times are those of the processor, user and
system, and sizes those of the object files without debug information. The schema of N types is
split by both into sources of about 2,000 lines at most. With --most, so many sources of each, evenly
spread, stand for all of them: the peer takes an hour for the whole.
"""
import argparse
import glob
import math
import os
import platform
import resource
import shutil
import subprocess
import sys

import run

BEGIN, END = "<!-- generator: begin -->", "<!-- generator: end -->"
HERE = os.path.dirname(os.path.abspath(__file__))
LINES = 2000
FLAGS = ["-std=c++17", "-O2", "-c"]


def processor_time(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def count_lines(paths):
    counts = []
    for path in paths:
        with open(path, encoding="utf-8", errors="replace") as text:
            counts.append(sum(1 for _ in text))
    return counts


class Ours:
    name = "qzxml"

    def __init__(self, tool):
        self.tool = tool

    def generate(self, schema, folder, _):
        return processor_time([self.tool, "generate", schema, "--output", folder])

    @staticmethod
    def includes(folder):
        return ["-I" + run.ROOT, "-I" + folder]


class Peer:
    name = "xsdcxx"
    COMMAND = ["xsdcxx", "cxx-tree", "--std", "c++11", "--generate-serialization"]

    def generate(self, schema, folder, split):
        time = processor_time(self.COMMAND + ["--output-dir", folder, schema])
        if not split:
            return time
        # It divides the types evenly; its first and last source hold what belongs to none.
        parts = math.ceil(sum(count_lines(glob.glob(os.path.join(folder, "*.cxx")))) / LINES)
        shutil.rmtree(folder)
        os.makedirs(folder)
        return processor_time(
            self.COMMAND + ["--parts", str(parts), "--output-dir", folder, schema])

    @staticmethod
    def includes(folder):
        return ["-I" + folder]


def measure(maker, schema, folder, split, most):
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    row = {"generate": min(maker.generate(schema, folder, split) for _ in range(1 if split else 5))}
    sources = sorted(glob.glob(os.path.join(folder, "**", "*.c*"), recursive=True))
    headers = glob.glob(os.path.join(folder, "**", "*.h*"), recursive=True)
    lines = count_lines(sources)
    row.update(sources=len(sources), longest=max(lines),
               lines=sum(lines) + sum(count_lines(headers)), compile=0.0, size=0)
    # Of a great many sources some, evenly spread, stand for all.
    step = max(1, math.ceil(len(sources) / most)) if most else 1
    measured = sources[step // 2::step]
    for number, source in enumerate(measured):
        target = os.path.join(folder, "object%d.o" % number)
        row["compile"] += processor_time(
            ["g++"] + FLAGS + maker.includes(folder) + [source, "-o", target])
        row["size"] += os.path.getsize(target)
        os.remove(target)
    row["compile"] *= len(sources) / len(measured)
    row["size"] *= len(sources) / len(measured)
    print("%s: %s" % (maker.name, row), file=sys.stderr)
    return row


def table(rows):
    yield ("| | made in, s | sources | longest, lines | all, lines | compiled in, s | objects, KB "
           "| compiled, ratio | objects, ratio |")
    yield "|---|---:|---:|---:|---:|---:|---:|---:|---:|"
    for title, ours, peer in rows:
        for name, row in (("`qzxml generate`", ours), ("`xsdcxx`", peer)):
            ratios = ("**%.2f** | **%.2f**" % (ours["compile"] / peer["compile"],
                                               ours["size"] / peer["size"])
                      if row is ours else " | ")
            yield "| %s, %s | %.2f | %d | %d | %d | %.1f | %.0f | %s |" % (
                title, name, row["generate"], row["sources"], row["longest"], row["lines"],
                row["compile"], row["size"] / 1000, ratios)


def main():
    options = argparse.ArgumentParser(description=__doc__,
                                      formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("tool")
    options.add_argument("--types", type=int, default=1000)
    options.add_argument("--most", type=int, default=0, help="compile so many sources, not all")
    options.add_argument("--work", default="build/generator-benchmark")
    options.add_argument("--print", action="store_true", help="write nothing")
    options = options.parse_args()
    if shutil.which("xsdcxx") is None:
        sys.exit("the peer is not there: install xsdcxx and libxerces-c-dev")
    work = os.path.abspath(options.work)
    os.makedirs(work, exist_ok=True)
    types = os.path.join(work, "types.xsd")
    subprocess.run([sys.executable, os.path.join(HERE, "make_types.py"), str(options.types), types],
                   check=True)
    tool = os.path.abspath(options.tool)
    rows = []
    for title, schema, split in (("orders.xsd", os.path.join(HERE, "orders.xsd"), False),
                                 ("%d types" % options.types, types, True)):
        rows.append([title] + [
            measure(maker, schema, os.path.join(work, maker.name), split, options.most)
            for maker in (Ours(tool), Peer())])
    lines = list(table(rows)) + ["", "Measured on %s, %d processors, g++ %s." % (
        platform.machine(), os.cpu_count(),
        subprocess.run(["g++", "-dumpfullversion"], check=True, stdout=subprocess.PIPE,
                       text=True).stdout.strip())]
    if options.most:
        lines[-1] += " Of the %d types, %d sources of each stand for all." % (
            options.types, options.most)
    if not options.print:
        run.write_between(BEGIN, END, lines)
    print("\n".join(lines))
    return 0


if __name__ == "__main__":
    sys.exit(main())
