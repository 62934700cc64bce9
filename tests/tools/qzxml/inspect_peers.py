#!/usr/bin/env python3
"""What qzxml inspect tells against what Expat tells Python, and its listing of octets.

  inspect_peers.py <program> <folder>...

Of each XML document below the folders that Python can read: elements, attributes, depth, texts,
CDATA sections, comments, processing instructions, and namespaces with their prefixes. Of each Fast
Infoset document the rows of --octets, which have to be the octets of the file, one behind the
other; of one that is refused, up to where it is. Ends with 1 and says what is different.
"""

import os
import re
import subprocess
import sys
import xml.parsers.expat as expat

ROW = re.compile(r"([0-9a-f]{8})  ([0-9a-f]{2}(?: [0-9a-f]{2}){0,7})(?:  |$)")


class Counts:
    """What Expat finds in a document."""

    def __init__(self, path):
        self.told = dict.fromkeys(("elements", "attributes", "depth", "CDATA sections", "comments",
                                   "instructions"), 0)
        self.texts = self.octets = self.level = 0
        self.text, self.is_section, self.is_in_type = "", False, False
        self.namespaces = {}
        parser = expat.ParserCreate(namespace_separator="\1")
        parser.namespace_prefixes = True
        parser.StartElementHandler = self.start
        parser.EndElementHandler = self.end
        parser.StartNamespaceDeclHandler = lambda prefix, uri: self.name(uri or "", prefix or "")
        parser.CharacterDataHandler = self.characters
        parser.StartCdataSectionHandler = self.start_section
        parser.EndCdataSectionHandler = self.end_section
        parser.CommentHandler = lambda _: self.beside("comments")
        parser.ProcessingInstructionHandler = lambda *_: self.beside("instructions")
        parser.StartDoctypeDeclHandler = lambda *_: setattr(self, "is_in_type", True)
        parser.EndDoctypeDeclHandler = lambda: setattr(self, "is_in_type", False)
        with open(path, "rb") as file:
            parser.ParseFile(file)

    def name(self, uri, prefix):
        if uri:
            self.namespaces.setdefault(uri, set()).add(prefix)

    def qualified(self, name):
        uri, _, rest = name.rpartition("\1") if name.count("\1") < 2 else name.partition("\1")
        self.name(uri, rest.partition("\1")[2])

    def characters(self, text):
        self.text += text

    def end_text(self):
        if self.text.strip(" \t\r\n") or (self.is_section and self.text):
            self.texts += 1
            self.octets += len(self.text.encode())
        self.text = ""

    def start(self, name, attributes):
        self.end_text()
        self.level += 1
        self.told["elements"] += 1
        self.told["attributes"] += len(attributes)
        self.told["depth"] = max(self.told["depth"], self.level)
        for each in (name, *attributes):
            self.qualified(each)

    def end(self, _):
        self.end_text()
        self.level -= 1

    def start_section(self):
        self.end_text()
        self.told["CDATA sections"] += 1
        self.is_section = True

    def end_section(self):
        self.end_text()
        self.is_section = False

    def beside(self, what):
        if not self.is_in_type:
            self.end_text()
            self.told[what] += 1


def inspect(program, path, *options):
    return subprocess.run([program, "inspect", path, *options], capture_output=True, timeout=120)


def check_xml(program, path):
    """The differences as a text, "" for none; None where Python can not read the document."""
    try:
        counts = Counts(path)
    except (expat.ExpatError, LookupError, ValueError):
        return None
    result = inspect(program, path)
    if result.returncode != 0:
        return result.stderr.decode()
    told, namespaces = {}, {}
    for line in result.stdout.decode().splitlines():
        what, value = line[:24].strip(), line[24:]
        if what:
            told[what] = value
        else:
            uri, _, prefixes = value[:-1].rpartition(" (")
            namespaces[uri] = {"" if p == "the default" else p for p in prefixes.split(", ")}
    wanted = {what: str(count) for what, count in counts.told.items()}
    wanted["namespaces"] = str(len(counts.namespaces))
    wanted["size"] = f"{os.path.getsize(path)} octets"
    wanted["texts"] = f"{counts.texts}, {counts.octets} octet" + ("s" if counts.octets != 1 else "")
    wrong = [f"{what}: {told.get(what)} instead of {value}" for what, value in wanted.items()
             if told.get(what) != value]
    if namespaces != counts.namespaces:
        wrong.append(f"{namespaces} instead of {counts.namespaces}")
    return "; ".join(wrong)


def check_octets(program, path):
    with open(path, "rb") as file:
        octets = file.read()
    result = inspect(program, path, "--octets")
    at = 0
    for row in filter(None, map(ROW.match, result.stdout.decode().splitlines())):
        listed = bytes.fromhex(row.group(2))
        if int(row.group(1), 16) != at or octets[at:at + len(listed)] != listed:
            return f"at {at} stands {row.group(0)}"
        at += len(listed)
    if result.returncode == 0 and at != len(octets):
        return f"{at} octets are listed of {len(octets)}"
    if result.returncode != 0 and not re.search(r" at offset \d+\n$", result.stderr.decode()):
        return result.stderr.decode()
    return ""


def main():
    program, folders = sys.argv[1], sys.argv[2:]
    checked = {"XML": 0, "Fast Infoset": 0}
    failures = []
    for path in sorted(os.path.join(folder, name) for top in folders
                       for folder, _, names in os.walk(top) for name in names):
        if path.endswith((".xml", ".xsd", ".gpx", ".xlf", ".bpmn", ".musicxml")):
            kind, wrong = "XML", check_xml(program, path)
        elif path.endswith((".finf", ".fi")):
            kind, wrong = "Fast Infoset", check_octets(program, path)
        else:
            continue
        if wrong is None:
            continue
        checked[kind] += 1
        if wrong:
            failures.append(f"{path}: {wrong}")
    for failure in failures:
        print(failure)
    print(f"inspect: {checked}, {len(failures)} failures")
    sys.exit(1 if failures or not all(checked.values()) else 0)


main()
