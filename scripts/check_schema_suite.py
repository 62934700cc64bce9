#!/usr/bin/env python3
"""Reads the schemas of the W3C XML Schema test suite, and compares with what the suite says of them.

  check_schema_suite.py <qzxml_read_schemas> <suite> [--list]

<qzxml_read_schemas> is the program of the tests; <suite> is a folder with cases.tsv (columns set,
group, schema_validity, schemas) and the files below xsdtests/, or with cases.tsv.xz and
files.tar.xz, which are unpacked for the time. With "environment" the suite is xsd-suite in the
folder that QZXML_CORPORA names, and where there is none the program ends with 77. Prints a table of the sets: how many
valid schemas were read and how many invalid ones refused. With --list, each group that differs, with
the first error. Ends with 1 if a valid schema is refused or the program fails.
"""

import argparse
import collections
import csv
import lzma
import os
import shutil
import subprocess
import sys
import tarfile
import tempfile


def read_groups(suite):
    groups = {}
    with open(os.path.join(suite, "cases.tsv"), encoding="utf-8") as table:
        for row in csv.DictReader(table, delimiter="\t"):
            if row["schemas"]:
                groups[row["set"], row["group"]] = (row["schema_validity"], row["schemas"])
    return groups


def run(program, suite, sets):
    """A result for each set: (errors, first error), or None where the program failed."""
    results, at = [], 0
    while at < len(sets):
        lines = "".join("\t".join(files) + "\n" for files in sets[at:])
        done = subprocess.run([program], input=lines, capture_output=True, text=True,
                              cwd=os.path.join(suite, "xsdtests"), check=False)
        found = done.stdout.splitlines()
        for line in found:
            errors, _, first = line.split("\t", 2)
            results.append((int(errors), first))
        at += len(found)
        if at < len(sets):  # it ended early: at this set
            print(f"failed with {done.returncode} on {sets[at]}:\n{done.stderr[-2000:]}")
            results.append(None)
            at += 1
    return results


def unpack(suite, folder):
    """The folder with the suite, unpacked where it is packed."""
    archive = os.path.join(suite, "files.tar.xz")
    if os.path.exists(os.path.join(suite, "cases.tsv")) or not os.path.exists(archive):
        return suite
    with tarfile.open(archive) as files:
        files.extractall(folder, filter="data") if hasattr(tarfile, "data_filter") else \
            files.extractall(folder)
    with lzma.open(os.path.join(suite, "cases.tsv.xz")) as packed:
        with open(os.path.join(folder, "cases.tsv"), "wb") as table:
            shutil.copyfileobj(packed, table)
    return folder


def find_suite(name):
    if name != "environment":
        return name
    suite = os.path.join(os.environ.get("QZXML_CORPORA", ""), "xsd-suite")
    if not os.path.isdir(suite):
        print("QZXML_CORPORA names no folder with xsd-suite")
        sys.exit(77)
    return suite


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("program")
    arguments.add_argument("suite")
    arguments.add_argument("--list", action="store_true")
    options = arguments.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        return check(unpack(find_suite(options.suite), folder), options)


def check(suite, options):
    groups = read_groups(suite)
    results = run(os.path.abspath(options.program), suite,
                  [schemas.split(";") for _, schemas in groups.values()])
    table = collections.defaultdict(collections.Counter)
    failures = 0
    for (key, (verdict, _)), result in zip(groups.items(), results):
        failures += result is None
        outcome = "failed" if result is None else "refused" if result[0] else "read"
        table[key[0]][verdict, outcome] += 1
        agrees = (verdict, outcome) in (("valid", "read"), ("invalid", "refused"))
        if options.list and verdict in ("valid", "invalid") and not agrees:
            print(f"{verdict} {outcome}: {key[0]} {key[1]}: {result[1] if result else ''}")
    total = collections.Counter()
    for counts in table.values():
        total.update(counts)
    table["all"] = total
    print(f"{'set':28}{'valid':>7}{'read':>7}{'':>8}{'invalid':>9}{'refused':>9}")
    for name, counts in table.items():
        valid = sum(n for (verdict, _), n in counts.items() if verdict == "valid")
        invalid = sum(n for (verdict, _), n in counts.items() if verdict == "invalid")
        read, refused = counts["valid", "read"], counts["invalid", "refused"]
        print(f"{name:28}{valid:7}{read:7}{100 * read / valid if valid else 100:7.1f}%"
              f"{invalid:9}{refused:9}{100 * refused / invalid if invalid else 100:7.1f}%")
    return 1 if failures or total["valid", "refused"] else 0


if __name__ == "__main__":
    sys.exit(main())
