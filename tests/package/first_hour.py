#!/usr/bin/env python3
"""Does what docs/getting-started.md tells, in an empty folder, against an installed package.

  first_hour.py <getting-started.md> <prefix> <folder>

Writes each file that the page shows under a line with its name, runs the commands of its sh block
with the prefix in the place of $HOME/qzxml, and compares what the last one prints with the text
block. Ends with 1 and says what is different.
"""

import os
import re
import shutil
import subprocess
import sys


def main():
    page, prefix, folder = sys.argv[1:]
    with open(page, encoding="utf-8") as text:
        text = text.read()
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    for name, content in re.findall(r"`([\w.]+)`:\n\n```\w+\n(.*?)```\n", text, re.S):
        with open(os.path.join(folder, name), "w", encoding="utf-8") as out:
            out.write(content)
    files = sorted(os.listdir(folder))
    if files != ["CMakeLists.txt", "main.cpp", "order.xml", "order.xsd"]:
        sys.exit("the page shows " + ", ".join(files))
    for name, most in (("CMakeLists.txt", 6), ("main.cpp", 10)):
        with open(os.path.join(folder, name), encoding="utf-8") as made:
            if len(made.read().splitlines()) > most:
                sys.exit(f"{name} has more than {most} lines")
    commands = re.search(r"```sh\n(.*?)```", text, re.S).group(1).splitlines()
    expected = re.search(r"```text\n(.*?)```", text, re.S).group(1)
    printed = ""
    for command in commands:
        result = subprocess.run(command.replace("$HOME/qzxml", prefix), shell=True, cwd=folder,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if result.returncode != 0:
            sys.exit("%s ended with %d:\n%s" % (command, result.returncode, result.stdout))
        printed = result.stdout
    if printed != expected:
        sys.exit("the page says\n%s\nbut the program prints\n%s" % (expected, printed))
    print("the first hour is as the page tells it")


if __name__ == "__main__":
    main()
