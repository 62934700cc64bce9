#!/usr/bin/env python3
"""Makes the hostile inputs of the corpora, XML and Fast Infoset, and holds the probe against what is
told of each: the verdict, the seconds and the memory beyond the input, with a stack of 1 MiB. The
seconds are those of the processor, so that nothing depends on what else the machine does.

usage: run_hostile.py PROBE FOLDER [--sanitized]

A probe with sanitizers gets ten times the seconds, and its memory is not looked at.

Does nothing (exit code 77) where QZXML_CORPORA names no folder with the generator.
"""
import csv
import os
import resource
import subprocess
import sys

STACK = 1 << 20


def make(folder):
    corpora = os.environ.get("QZXML_CORPORA", "")
    source = os.path.join(corpora, "hostile")
    if not corpora or not os.path.exists(os.path.join(source, "make_hostile.py")):
        return False
    sys.dont_write_bytecode = True
    sys.path.insert(0, source)
    import hostile_lib
    import make_hostile
    make_hostile.xml()
    make_hostile.fi()
    hostile_lib.write(folder)
    return True


def limit():
    resource.setrlimit(resource.RLIMIT_STACK, (STACK, STACK))


def run(probe, file, seconds):
    """The probe's word, its exit code, its seconds and its highest resident MiB."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    process = subprocess.Popen([probe, file], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                               preexec_fn=limit)
    try:
        out, err = process.communicate(timeout=max(60, 4 * seconds))
    except subprocess.TimeoutExpired:
        process.kill()
        out, err = process.communicate()
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    took = usage.ru_utime + usage.ru_stime - before.ru_utime - before.ru_stime
    word = out.decode("utf-8", "replace").split(" ")[0].strip()
    return word, process.returncode, took, usage.ru_maxrss / 1024.0, err


def check(row, folder, probe, sanitized):
    name, verdict = row["file"], row["verdict"]
    seconds, mib = float(row["seconds"]) * (10 if sanitized else 1), float(row["mib"])
    word, code, took, peak, err = run(probe, os.path.join(folder, name), seconds)
    problems = []
    if code != 0 or word not in ("loads", "fails", "refused"):
        problems.append("exit code %d %s" % (code, err.decode("utf-8", "replace")[-400:]))
    elif verdict == "loads" and word not in ("loads", "refused"):
        problems.append("does not load")
    elif verdict == "fails" and word != "fails":
        problems.append("loads")
    if took > seconds:
        problems.append("took %.1f s of %.0f" % (took, seconds))
    # The high-water mark is that of the largest child so far, so it is looked at when it rises.
    if not sanitized and peak > check.highest and peak > mib + int(row["octets"]) / 2**20:
        problems.append("needed %.0f MiB of %.0f" % (peak, mib))
    check.highest = max(check.highest, peak)
    return problems


check.highest = 0.0


def main(arguments):
    probe, folder = arguments[1], arguments[2]
    if not make(folder):
        print("QZXML_CORPORA names no folder with the generator")
        return 77
    with open(os.path.join(folder, "expected.tsv"), encoding="utf-8") as table:
        rows = list(csv.DictReader(table, delimiter="\t", quoting=csv.QUOTE_NONE))
    bad = 0
    for row in rows:
        problems = check(row, folder, probe, "--sanitized" in arguments)
        bad += 1 if problems else 0
        for problem in problems:
            print("%s (%s): %s" % (row["file"], row["verdict"], problem))
    print("%d cases, %d not as told" % (len(rows), bad))
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
