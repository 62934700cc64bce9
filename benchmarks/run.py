#!/usr/bin/env python3
"""Builds the benchmarks, runs them once and writes their table into benchmarks/README.md.

usage: benchmarks/run.py [BUILD_FOLDER]     (build/benchmarks when not given)

Every ratio is made of two figures of the same round, and is the median of three rounds: what makes
the machine slower for minutes is in both figures of a round, or in those of one round alone.
"""
import json
import os
import platform
import statistics
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
README = os.path.join(ROOT, "benchmarks", "README.md")
BEGIN, END = "<!-- table: begin -->", "<!-- table: end -->"
SIZES = (10000, 1000000, 10000000, 100000000)
LABELS = {10000: "10 KB", 1000000: "1 MB", 10000000: "10 MB", 100000000: "100 MB"}
ROUNDS = 3


def build(folder, targets=()):
    subprocess.run(["cmake", "-S", ROOT, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                    "-DQZXML_BUILD_BENCHMARKS=ON"], check=True, stdout=subprocess.DEVNULL)
    command = ["cmake", "--build", folder]
    for target in targets:
        command += ["--target", target]
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def write_between(begin, end, lines):
    """Puts the lines into the README, in the place of those between two marks."""
    with open(README, encoding="utf-8") as file:
        head, rest = file.read().split(begin)
    tail = rest.split(end)[1]
    with open(README, "w", encoding="utf-8") as file:
        file.write(head + begin + "\n" + "\n".join(lines) + "\n" + end + tail)


def lowest(output):
    """The rows of the shortest repetitions by name: whatever disturbs one makes it longer."""
    rows = {}
    for row in json.loads(output)["benchmarks"]:
        name = row["run_name"]
        if row["run_type"] == "iteration" and (
                name not in rows or row["cpu_time"] < rows[name]["cpu_time"]):
            rows[name] = row
    return rows


def measure(folder):
    """Milliseconds by benchmark and size, the shortest of fifteen repetitions taken in turn."""
    output = subprocess.run(
        [os.path.join(folder, "benchmarks", "order_benchmark"), "--benchmark_format=json",
         "--benchmark_min_time=0.2", "--benchmark_repetitions=15",
         "--benchmark_enable_random_interleaving=true"],
        check=True, stdout=subprocess.PIPE).stdout
    times = {}
    for run_name, row in lowest(output).items():
        name, size = run_name.split("/")[:2]
        times[name, int(size)] = row["cpu_time"]
    return times


def memory(folder, way, size):
    document = os.path.join(folder, "benchmarks", "orders-%d.xml" % size)
    output = subprocess.run([os.path.join(folder, "benchmarks", "order_memory"), way, document],
                            check=True, stdout=subprocess.PIPE, text=True).stdout
    return float(output.split()[-1])


def table(rounds, folder):
    yield "| | " + " | ".join(LABELS[s] for s in SIZES) + " |"
    yield "|---|" + "---:|" * len(SIZES)

    def row(label, value):
        return "| %s | %s |" % (label, " | ".join(value(s) for s in SIZES))

    def shortest(key, size):
        return min(times[key, size] for times in rounds)

    def ratio(key, to, size):
        return statistics.median(times[key, size] / times[to, size] for times in rounds)

    for key, label in (("ExpatAlone", "(a) Expat, empty handlers, ms"),
                       ("DocumentLoad", "(b) `CXmlDocument` load, ms"),
                       ("ReadIntoObjects", "(c) load and bind to objects, ms"),
                       ("WriteObjects", "(d) `ToXml`, ms"),
                       ("PugixmlSave", "(e) pugixml saves the same document, ms"),
                       ("CopyOfOutput", "(f) a copy of the output, ms")):
        yield row(label, lambda s, key=key: "%.3f" % shortest(key, s))
    yield row("**(b) / (a)**", lambda s: "%.2f" % ratio("DocumentLoad", "ExpatAlone", s))
    yield row("**(c) / (a)**", lambda s: "%.2f" % ratio("ReadIntoObjects", "ExpatAlone", s))
    yield row("**(e) / (d)**", lambda s: "%.2f" % ratio("PugixmlSave", "WriteObjects", s))
    yield row("(d) / (f)", lambda s: "%.1f" % ratio("WriteObjects", "CopyOfOutput", s))
    for way, label in (("document", "peak memory of (b), octets per octet"),
                       ("objects", "**peak memory of (c), octets per octet**")):
        yield row(label, lambda s, way=way: "%.2f" % memory(folder, way, s) if s >= 10**7 else "")


def main(arguments):
    folder = os.path.abspath(arguments[1]) if len(arguments) > 1 else os.path.join(ROOT, "build", "benchmarks")
    build(folder)
    lines = list(table([measure(folder) for _ in range(ROUNDS)], folder))
    lines += ["", "Measured on %s, %d processors." % (platform.machine(), os.cpu_count())]
    write_between(BEGIN, END, lines)
    print("\n".join(lines))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
