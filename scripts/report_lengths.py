#!/usr/bin/env python3
"""Reports the files of the library that have grown long, the longest first.

  report_lengths.py <root>

A header is meant to stay below 250 lines and a source below 600; at 900 a file is split along its
ideas. A report, no check: some files are lists and read well at any length.
"""

import os
import sys

LIMITS = {".h": 250, ".cpp": 600}


def lengths(root):
    for folder, _, names in os.walk(os.path.join(root, "qzxml")):
        for name in names:
            limit = LIMITS.get(os.path.splitext(name)[1])
            if limit is None:
                continue
            path = os.path.join(folder, name)
            with open(path, encoding="utf-8") as source:
                count = sum(1 for _ in source)
            if count >= limit:
                yield count, limit, os.path.relpath(path, root)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for count, limit, path in sorted(lengths(sys.argv[1]), reverse=True):
        print(f"{count:5} lines (meant: below {limit})  {path}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
