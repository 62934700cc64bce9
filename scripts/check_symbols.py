#!/usr/bin/env python3
"""Checks what a shared library gives out: the names of QzXml and nothing else.

  check_symbols.py <library> [<nm>]

Instances of the standard library's templates are weak and may stay; anything else of another name
is an offence, and so is a library that gives out nothing.
"""

import re
import subprocess
import sys

GLOBAL_CLASSES = r"(CSmartPtr|CQZCriticalSection|CInstanceMonitor|CInstanceClass|CBase64)"
OWN = rf"(QzXmlLib16(Data)?::|{GLOBAL_CLASSES}\b)"
OWN_NAME = re.compile(rf"^{OWN}")
OWN_DATA = re.compile(
    rf"^(vtable for|VTT for|typeinfo for|typeinfo name for|construction vtable for|guard variable for"
    rf"|(non-)?virtual thunk to|covariant return thunk to) {OWN}")
# A template's instance begins with its result: "bool QzXmlLib16::detail::f<int>(int)".
OWN_INSTANCE = re.compile(rf"^[^(]* {OWN}[^(]*@")
ARGUMENTS = re.compile(r"<[^<>]*>")
WEAK = set("WVuwv")
LINKER = {"_init", "_fini", "_edata", "_end", "__bss_start"}


def own(name):
    if OWN_NAME.match(name) or OWN_DATA.match(name):
        return True
    without = name
    while ARGUMENTS.search(without):
        without = ARGUMENTS.sub("@", without)
    return bool(OWN_INSTANCE.match(without))


def offences(lines):
    """Lines of nm -DC --defined-only; gives the offending names and the count of ours."""
    found, count = [], 0
    for line in lines:
        match = re.match(r"^[0-9a-fA-F]*\s+(\S)\s+(.*)$", line)
        if not match:
            continue
        kind, name = match.groups()
        if own(name):
            count += 1
        elif kind not in WEAK and name not in LINKER:
            found.append(f"{kind} {name}")
    return found, count


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    nm = sys.argv[2] if len(sys.argv) == 3 else "nm"
    output = subprocess.run([nm, "-DC", "--defined-only", sys.argv[1]], check=True,
                            stdout=subprocess.PIPE, text=True).stdout
    found, count = offences(output.splitlines())
    for name in found:
        print(f"given out, and not a name of QzXml: {name}")
    print(f"check_symbols: {count} names of QzXml, {len(found)} offences")
    return 1 if found or not count else 0


if __name__ == "__main__":
    sys.exit(main())
