#!/usr/bin/env python3
"""Reports how much of the library its tests ran, file by file, the least covered first.

  report_coverage.py <build folder of the preset coverage> [<part of a path> ...]

With a part of a path the lines that were not run are named, too.
"""

import json
import os
import subprocess
import sys


def counts(build):
    """path -> {line: times run}"""
    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
    library = os.path.realpath(os.path.join(root, "qzxml")) + os.sep
    result = {}
    for folder, _, names in os.walk(build):
        for name in names:
            if not name.endswith(".gcda"):
                continue
            answer = subprocess.run(
                ["gcov", "--json-format", "--stdout", os.path.join(folder, name)], check=True,
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, cwd=build, text=True)
            for document in answer.stdout.splitlines():
                for file in json.loads(document)["files"]:
                    path = os.path.realpath(os.path.join(build, file["file"]))
                    if not path.startswith(library):
                        continue
                    lines = result.setdefault(path[len(library):], {})
                    for line in file["lines"]:
                        number = line["line_number"]
                        lines[number] = lines.get(number, 0) + line["count"]
    return result


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    result = counts(os.path.abspath(sys.argv[1]))
    if not result:
        sys.exit("report_coverage: no test of a coverage build was run here.")
    rows = []
    for path, lines in result.items():
        missed = sorted(number for number, count in lines.items() if count == 0)
        rows.append((1 - len(missed) / len(lines), path, len(lines), missed))
    for share, path, total, missed in sorted(rows):
        print(f"{share:7.1%} of {total:5} lines  {path}")
        if missed and any(part in path for part in sys.argv[2:]):
            print("        not run:", ", ".join(map(str, missed)))
    total = sum(row[2] for row in rows)
    missed = sum(len(row[3]) for row in rows)
    print(f"{1 - missed / total:7.1%} of {total:5} lines in all")
    return 0


if __name__ == "__main__":
    sys.exit(main())
