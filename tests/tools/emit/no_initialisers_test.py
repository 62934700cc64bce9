#!/usr/bin/env python3
"""Compiles generated sources and looks that nothing in them is initialised at run time.

  no_initialisers_test.py <compiler> <root> <include folder> <source>...

A constant with a constructor that is no constant expression would leave a function _GLOBAL__sub_I.
"""
import os
import subprocess
import sys
import tempfile


def main():
    compiler, root, folder = sys.argv[1:4]
    bad = 0
    with tempfile.TemporaryDirectory() as scratch:
        target = os.path.join(scratch, "generated.o")
        for source in sys.argv[4:]:
            for level in ("-O0", "-O2"):
                subprocess.run([compiler, "-std=c++17", level, "-I" + root, "-I" + folder, "-c",
                                source, "-o", target], check=True)
                symbols = subprocess.run(["nm", target], check=True, stdout=subprocess.PIPE,
                                         text=True).stdout
                if "s_binding" not in symbols:
                    sys.exit("%s defines no class" % source)
                for line in symbols.splitlines():
                    if line.split()[-1].startswith("_GLOBAL__"):
                        print("%s at %s: %s" % (source, level, line))
                        bad += 1
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
