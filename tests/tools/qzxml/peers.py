#!/usr/bin/env python3
"""What Python's own parsers make of the output of qzxml: JSON, XML and gzip.

  peers.py <program> <corpora>

Each document becomes JSON with each measure of round trip and indent, which the module json has to
read with the members that ElementTree finds in the XML; and gzip, which the module gzip expands.
Documents that Python compressed are read back.
"""

import gzip
import json
import os
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
import zlib

failures = []


def run(program, arguments, octets):
    done = subprocess.run([program, *arguments], input=octets, capture_output=True, timeout=60)
    if done.returncode != 0:
        failures.append(f"{arguments}: {done.returncode} {done.stderr.decode()}")
    return done.stdout


def tree(element):
    """(name, attributes, children) with the text of elements that have no children."""
    children = [tree(child) for child in element]
    return (element.tag, dict(element.attrib), children or (element.text or ""))


def pairs(text):
    return json.loads(text, object_pairs_hook=lambda members: ("object", members))


def local(name):
    return name.rpartition("}")[2]


def count(value):
    """The elements that a value of JSON stands for, with round trip marked."""
    if isinstance(value, list):
        return sum(count(item) for item in value)
    if isinstance(value, tuple):
        members = [item for name, item in value[1] if not name.startswith(("@", "#"))]
        return 1 + sum(count(item) for item in members)
    return 1


def check(program, path):
    with open(path, "rb") as file:
        octets = file.read()
    root = ElementTree.fromstring(octets)
    elements = sum(1 for _ in root.iter())
    for measure, indent in (("full", "2"), ("marked", "0")):
        text = run(program, ["convert", "-", "-", "--to", "json", "--round-trip", measure,
                             "--indent", indent], octets)
        document = pairs(text)
        (name, value), = document[1]
        if name.rpartition(":")[2] != local(root.tag):
            failures.append(f"{path}: root {name}")
        if count(value) != elements:
            failures.append(f"{path}: {count(value)} elements instead of {elements}")
    pairs(run(program, ["convert", "-", "-", "--to", "json", "--round-trip", "none"], octets))
    compressed = run(program, ["convert", "-", "-", "--gzip"], octets)
    if tree(ElementTree.fromstring(gzip.decompress(compressed))) != tree(root):
        failures.append(f"{path}: not the same behind gzip")
    for again in (gzip.compress(octets), zlib.compress(octets)):
        out = run(program, ["convert", "-", "-"], again)
        if tree(ElementTree.fromstring(out)) != tree(root):
            failures.append(f"{path}: not the same from compressed input")


def main():
    program, corpora = sys.argv[1:]
    folder = os.path.join(corpora, "finf", "peer")
    paths = [os.path.join(folder, name) for name in sorted(os.listdir(folder))
             if name.endswith(".xml")]
    paths.append(os.path.join(corpora, "finf", "x891-annex", "UBL-example.xml"))
    for path in paths:
        check(program, path)
    for failure in failures:
        print(failure)
    print(f"peers: {len(paths)} documents, {len(failures)} failures")
    sys.exit(1 if failures or not paths else 0)


main()
