#!/usr/bin/env python3
"""Generates classes from schemas, compiles them and reads documents with them.

  check_schemas.py standards --tool build/release/tools/qzxml/qzxml --library build/release \\
      --corpora ../shared/corpora [--only gpx,junit] [--work DIR] [--table docs/schemas.md]
  check_schemas.py suite ... [--sample N] [--known FILE] [--start I] [--end J] [--groups GLOBS]
  check_schemas.py table suite.tsv [--known FILE]

standards: the schemas under standards/ with the documents of their cases.tsv: each valid one has to
be accepted and to be written with the same elements, attributes and values, through Fast Infoset and
JSON too. suite: the schemas of the W3C suite; each valid one generates and compiles or is refused
with a reason, and each instance is accepted or refused as the suite says. It leaves suite.tsv in the
work folder: set, group, kind, verdict and detail of each schema and instance. table: prints that file
as the tables of docs/schemas.md, by set and by the reasons of the known differences.

Without a folder of documents it ends with 77.

Prints a line for each schema and each document that is not as it should be, and a summary; ends with
1 when a valid standard document is not the same (standards), when something crashes, or when --known
does not tell of a difference (suite, table).
"""

import argparse
import collections
import concurrent.futures
import csv
import fnmatch
import glob
import io
import json
import lzma
import os
import re
import shutil
import subprocess
import sys
import tarfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
FLAGS = ["-std=c++17", "-O0", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Werror"]


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", **options)


class Kit:
    """Where the tool, the library and the work folder are, and the driver compiled once."""

    def __init__(self, options):
        self.options = options
        self.work = os.path.abspath(options.work)
        os.makedirs(self.work, exist_ok=True)
        self.compiler = (["ccache"] if shutil.which("ccache") else []) + ["g++"]
        library = os.path.abspath(options.library)
        found = glob.glob(os.path.join(library, "**", "libqzxml.so"), recursive=True) + glob.glob(
            os.path.join(library, "**", "libqzxml.a"), recursive=True)
        if not found:
            sys.exit("no libqzxml under " + library)
        self.library = min(found, key=len)  # tests install others deeper down
        self.defines = ["-DQZXML_STATIC"] if self.library.endswith(".a") else []
        self.driver = os.path.join(self.work, "RoundTrip.o")
        self.compile(os.path.join(ROOT, "tests/schemas/RoundTrip.cpp"), self.driver, [])

    def compile(self, source, target, includes):
        result = run(self.compiler + FLAGS + self.defines + ["-I" + ROOT] +
                     ["-I" + i for i in includes] + ["-c", source, "-o", target])
        if result.returncode != 0:
            raise RuntimeError("does not compile: " + source + "\n" + result.stdout[:4000])
        if result.stdout.strip():
            raise RuntimeError("warns: " + source + "\n" + result.stdout[:2000])

    def generate(self, schemas, folder, extra=()):
        """The output of the generator, and whether it made something."""
        shutil.rmtree(folder, ignore_errors=True)
        result = run([self.options.tool, "generate"] + list(schemas) + ["--output", folder] +
                     list(extra), timeout=300)
        return result.returncode, result.stdout

    def precompile(self):
        """The library's headers, so that thousands of small programs do not read them again."""
        header = os.path.join(self.work, "library.h")
        with open(header, "w") as out:
            for name in ("BoundClass", "BuiltInTypes", "EnumerationInfo", "ObjectCol",
                         "ObjectFactory", "ValueCol"):
                out.write('#include "qzxml/binding/%s.h"\n' % name)
            for name in ("AttributeCol", "Element", "ElementCol"):
                out.write('#include "qzxml/collections/%s.h"\n' % name)
            out.write("#include <vector>\n")
        result = run(["g++"] + FLAGS + self.defines + ["-I" + ROOT, "-x", "c++-header", header,
                      "-o", header + ".gch"])
        if result.returncode != 0:
            raise RuntimeError(result.stdout)
        return header

    def build(self, folder, pool=None, header=None):
        """Compiles what stands in a folder with a main program, and answers the program. With a
        header that is precompiled all of it is one source."""
        sources = sorted(glob.glob(os.path.join(folder, "**", "*.cpp"), recursive=True))
        roots = sorted(glob.glob(os.path.join(folder, "**", "Roots.h"), recursive=True))
        main = os.path.join(folder, "round_trip_main.cpp")
        makers = []
        with open(main, "w") as out:
            for root in roots:
                out.write('#include "%s"\n' % os.path.relpath(root, folder))
                with open(root) as text:
                    makers.append("&" + re.search(r"^namespace ([\w:]+) \{", text.read(),
                                                  re.M).group(1) + "::NewRoot")
            out.write('#include "tests/schemas/RoundTrip.h"\n\n'
                      "int main(int argc, char** argv) {\n"
                      "  return qztest::RunRoundTrip(argc, argv, {%s});\n}\n" % ", ".join(makers))
        sources = [s for s in sources if s != main]
        if header is not None:
            with open(main, "a") as out:
                for source in sources:
                    out.write('#include "%s"\n' % os.path.relpath(source, folder))
            program = os.path.join(folder, "round_trip")
            result = run(["g++"] + FLAGS + self.defines + ["-include", header, "-I" + ROOT,
                          "-I" + folder, main, self.driver, self.library, "-o", program,
                          "-Wl,-rpath," + os.path.dirname(self.library)] +
                         (["-lexpat", "-lpcre2-8", "-lz"] if self.defines else []))
            if result.returncode != 0:
                raise RuntimeError("does not compile\n" + result.stdout[:3000])
            return program
        sources += [main]
        objects = [s[:-4] + ".o" for s in sources]
        work = [(s, o, [folder]) for s, o in zip(sources, objects)]
        if pool is None:
            for item in work:
                self.compile(*item)
        else:
            for _ in pool.map(lambda item: self.compile(*item), work):
                pass
        program = os.path.join(folder, "round_trip")
        result = run(["g++", "-o", program] + objects + [self.driver, self.library,
                     "-Wl,-rpath," + os.path.dirname(self.library)] +
                     (["-lexpat", "-lpcre2-8", "-lz"] if self.defines else []))
        if result.returncode != 0:
            raise RuntimeError("does not link\n" + result.stdout[:3000])
        return program

    @staticmethod
    def read(program, documents, formats=False):
        """Rows (what, verdict, detail); a crash is a row of its own."""
        result = run([program] + (["--formats"] if formats else []) + list(documents), timeout=600)
        rows = [line.split("\t") for line in result.stdout.splitlines() if line.count("\t") == 2]
        if result.returncode != 0:
            rows.append([documents[-1], "crash", result.stdout[-500:].replace("\n", " ")])
        return rows


def standards(options):
    kit = Kit(options)
    base = os.path.join(options.corpora, "standards")
    by_schema = collections.defaultdict(list)
    with open(os.path.join(base, "cases.tsv"), newline="") as text:
        for row in csv.DictReader(text, delimiter="\t"):
            if row["schema"]:
                by_schema[(row["standard"], row["schema"])].append(row)
    failed = 0
    table = []
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for (standard, schema), rows in sorted(by_schema.items()):
            if options.only and standard not in options.only.split(","):
                continue
            folder = os.path.join(kit.work, standard + "-" + schema)
            paths = glob.glob(os.path.join(base, standard, "schema", "**", schema), recursive=True)
            extra = ["--catalog", os.path.join(base, "catalog.xml")]
            code, output = kit.generate(paths[:1], folder, extra)
            warnings = [line for line in output.splitlines() if line.strip()]
            if code != 0:
                print("%s/%s: not generated\n%s" % (standard, schema, output[:3000]))
                failed += 1
                table.append((standard, schema, "not generated", "", "", "", warnings))
                continue
            try:
                program = kit.build(folder, pool)
            except RuntimeError as e:
                print("%s/%s: %s" % (standard, schema, e))
                failed += 1
                table.append((standard, schema, "does not compile", "", "", "", warnings))
                continue
            counts = collections.Counter()
            for row in rows:
                document = os.path.join(base, row["file"])
                if row["xmllint"] not in ("valid", "invalid"):
                    continue
                for what, verdict, detail in kit.read(program, [document], formats=True):
                    if what == "formats":
                        counts["with mixed text"] += 1
                        continue
                    if what in ("fastinfoset", "json"):
                        counts[what + " " + verdict] += 1
                        if row["xmllint"] == "valid":
                            print("%s: %s %s: %s" % (row["file"], what, verdict, detail[:300]))
                            failed += what == "fastinfoset"
                        continue
                    counts[row["xmllint"] + " " + verdict] += 1
                    if row["xmllint"] == "valid" and verdict not in ("same", "reordered"):
                        print("%s: %s: %s" % (row["file"], verdict, detail[:400]))
                        failed += 1
                    elif row["xmllint"] == "invalid" and verdict != "refused":
                        print("%s: invalid, but %s" % (row["file"], verdict))
            classes = sum(open(f).read().count(": public ") for f in
                          glob.glob(os.path.join(folder, "**", "*.h"), recursive=True))
            print("%s/%s: %d classes, %d warnings, %s" % (
                standard, schema, classes, len(warnings),
                ", ".join("%s %d" % item for item in sorted(counts.items()))))
            sys.stdout.flush()
            table.append((standard, schema, "", classes, counts, "", warnings))
    if options.json:
        with open(options.json, "w") as out:
            json.dump([[str(c) if not isinstance(c, (dict, list)) else c for c in row]
                       for row in table], out, indent=1)
    return 1 if failed else 0


def suite_rows(corpora):
    path = os.path.join(corpora, "xsd-suite", "cases.tsv.xz")
    with lzma.open(path, "rt", encoding="utf-8") as text:
        return list(csv.DictReader(io.StringIO(text.read()), delimiter="\t",
                                   quoting=csv.QUOTE_NONE))


def suite(options):
    kit = Kit(options)
    files = os.path.join(kit.work, "files")
    if not os.path.isdir(files):
        with tarfile.open(os.path.join(options.corpora, "xsd-suite", "files.tar.xz")) as archive:
            archive.extractall(files)
    base = glob.glob(os.path.join(files, "*"))[0]
    header = kit.precompile()
    groups = collections.OrderedDict()
    for row in suite_rows(options.corpora):
        groups.setdefault((row["set"], row["group"]), []).append(row)
    names = [name for name, rows in groups.items()
             if rows[0]["schemas"] and rows[0]["schema_validity"] in ("valid", "invalid")]
    if options.sample:
        names = names[::max(1, len(names) // options.sample)]
    names = names[options.start:options.end]
    if options.groups:
        globs = options.groups.split(",")
        names = [n for n in names if any(fnmatch.fnmatchcase("/".join(n), g) for g in globs)]
    totals = collections.defaultdict(collections.Counter)
    crashed = 0
    known = Known(options.known)
    unknown = []
    log = open(os.path.join(kit.work, "suite.tsv"), "w")

    def one(name):
        rows = groups[name]
        folder = os.path.join(kit.work, "suite", re.sub(r"\W", "_", "-".join(name)))
        schemas = [os.path.join(base, s) for s in rows[0]["schemas"].split(";") if s]
        out = []
        try:
            code, output = kit.generate(schemas, folder)
        except subprocess.TimeoutExpired:
            return name, [("schema", "crash", "timeout")]
        if code < 0 or code > 2:
            return name, [("schema", "crash", output[-300:])]
        wanted = rows[0]["schema_validity"]
        if code != 0:
            verdict = "right" if wanted == "invalid" else "refused"
            return name, [("schema " + wanted, verdict, output.strip()[:300])]
        if wanted == "invalid":
            shutil.rmtree(folder, ignore_errors=True)
            return name, [("schema invalid", "accepted", "")]
        try:
            program = kit.build(folder, header=header)
            out.append(("schema valid", "right", ""))
        except RuntimeError as e:
            return name, [("schema valid", "does not compile", str(e)[:600])]
        for row in rows:
            if not row["instance"]:
                continue
            try:
                got = kit.read(program, [os.path.join(base, row["instance"])])
            except subprocess.TimeoutExpired:
                got = [(row["instance"], "crash", "timeout")]
            what, verdict, detail = got[-1]
            accepted = verdict in ("same", "reordered", "differs")
            right = accepted == (row["instance_validity"] == "valid")
            kind = "instance " + row["instance_validity"]
            if verdict == "crash":
                out.append((kind, "crash", row["instance"] + " " + detail))
            elif row["instance_validity"] not in ("valid", "invalid"):
                out.append((kind, "open", row["instance"] + " " + verdict))
            elif not right:
                out.append((kind, "wrong", row["instance"] + " " + verdict + " " + detail))
            elif verdict == "differs":
                out.append((kind, "differs", row["instance"] + " " + detail))
            else:
                out.append((kind, "right", row["instance"]))
        shutil.rmtree(folder, ignore_errors=True)
        return name, out

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for name, out in pool.map(one, names):
            for kind, verdict, detail in out:
                totals[name[0] + "\t" + kind][verdict] += 1
                totals["all\t" + kind][verdict] += 1
                crashed += verdict == "crash"
                if verdict not in ("right", "open") and not known.reason(name, verdict):
                    unknown.append("%s/%s: %s: %s: %s" % (name + (kind, verdict, detail[:300])))
                log.write("\t".join((name[0], name[1], kind, verdict,
                                     " ".join(detail.split())[:500])) + "\n")
            log.flush()
    log.close()
    for key in sorted(totals):
        counts = totals[key]
        total = sum(counts.values())
        good = counts["right"] + counts["differs"]
        print("%s\t%d of %d (%.1f %%)\t%s" % (key, good, total, 100.0 * good / total,
                                              dict(counts)))
    if options.known:
        for line in unknown:
            print(line)
        if not (options.sample or options.start or options.end or options.groups):
            for glob_of_groups in known.unused():
                print("no longer differs: " + glob_of_groups)
        return 1 if unknown else 0
    return 1 if crashed else 0


class Known:
    """The differences that are told of: a line for each glob of set/group, a tab and the reason. A
    crash is never one."""

    def __init__(self, path):
        self.reasons = {}
        self.used = set()
        if path:
            with open(path, encoding="utf-8") as text:
                self.reasons = dict(line.rstrip("\n").split("\t") for line in text if "\t" in line)

    def reason(self, name, verdict):
        for key, reason in self.reasons.items():
            if verdict != "crash" and fnmatch.fnmatchcase("/".join(name), key):
                self.used.add(key)
                return reason
        return None

    def unused(self):
        return [key for key in self.reasons if key not in self.used]


def table(options):
    known = Known(options.known)
    columns = ["schema valid", "schema invalid", "instance valid", "instance invalid"]
    sets = collections.OrderedDict()
    reasons = collections.Counter()
    untold = 0
    with open(options.rows, encoding="utf-8") as text:
        for line in text:
            name, group, kind, verdict, detail = line.rstrip("\n").split("\t")
            if kind not in columns:
                continue
            counts = sets.setdefault(name, collections.Counter())
            for row in (counts, sets.setdefault("", collections.Counter())):
                row[kind] += 1
                row[kind, "as told"] += verdict in ("right", "differs")
            if verdict == "right":
                continue
            reason = known.reason((name, group), verdict)
            reasons[reason or "not told of"] += 1
            untold += reason is None
            if options.known and reason is None:
                print("%s/%s: %s: %s: %s" % (name, group, kind, verdict, detail), file=sys.stderr)
    print("| Set | Valid schemas that compile | Invalid schemas refused | "
          "Valid documents accepted | Invalid documents refused | As the suite says |")
    print("|---|---:|---:|---:|---:|---:|")
    total = sets.pop("")
    for name, counts in sorted(sets.items()) + [("all", total)]:
        cells = ["%d of %d" % (counts[c, "as told"], counts[c]) if counts[c] else "" for c in columns]
        share = 100.0 * sum(counts[c, "as told"] for c in columns) / sum(counts[c] for c in columns)
        # Only what is wholly right is told as 100 %.
        print("| %s | %s | %.1f %% |" % (name, " | ".join(cells), int(share * 10) / 10))
    if options.known:
        print("\n| Rows | Why they differ |\n|---:|---|")
        for reason, count in sorted(reasons.items(), key=lambda item: (-item[1], item[0])):
            print("| %d | %s |" % (count, reason))
    return 1 if options.known and untold else 0


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("what", choices=["standards", "suite", "table"])
    parser.add_argument("rows", nargs="?", help="table: the suite.tsv that a run left")
    parser.add_argument("--tool")
    parser.add_argument("--library")
    parser.add_argument("--corpora", default=os.environ.get("QZXML_CORPORA"))
    parser.add_argument("--work", default="build/schemas")
    parser.add_argument("--only")
    parser.add_argument("--json")
    parser.add_argument("--sample", type=int)
    parser.add_argument("--known", help="suite: groups that may differ, with the reason; any other "
                        "difference ends with 1")
    parser.add_argument("--start", type=int)
    parser.add_argument("--end", type=int)
    parser.add_argument("--groups", help="suite: only these groups, globs of set/group with commas")
    parser.add_argument("--jobs", type=int, default=2)
    options = parser.parse_args()
    if options.what == "table":
        if not options.rows:
            parser.error("table needs the suite.tsv of a run")
        sys.exit(table(options))
    if not options.tool or not options.library:
        parser.error("name the tool and the library's folder with --tool and --library")
    if not options.corpora:
        print("name the folder of documents with --corpora or QZXML_CORPORA")
        sys.exit(77)
    options.tool = os.path.abspath(options.tool)
    sys.exit(standards(options) if options.what == "standards" else suite(options))


if __name__ == "__main__":
    main()
