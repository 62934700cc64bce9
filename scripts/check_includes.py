#!/usr/bin/env python3
"""Checks what the sources of the library include.

  check_includes.py <root>

Each rule is a function below with its reason. Prints one line for each offence and ends with 1 if
there is one.
"""

import os
import re
import sys

STANDARD = set(
    """algorithm any array atomic bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits clocale cmath codecvt complex condition_variable csetjmp csignal cstdarg cstddef cstdint
    cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem
    forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream
    iterator limits list locale map memory memory_resource mutex new numeric optional ostream queue
    random ratio regex scoped_allocator set shared_mutex sstream stack stdexcept streambuf string
    string_view strstream system_error thread tuple type_traits typeindex typeinfo unordered_map
    unordered_set utility valarray variant vector""".split())

# The one place of each third party's header.
THIRD_PARTY = {
    "expat.h": re.compile(r"qzxml/xml/ExpatReader\.cpp$"),
    "pcre2.h": re.compile(r"qzxml/serialization/[A-Za-z]+\.cpp$"),
    "zlib.h": re.compile(r"qzxml/runtime/QzZip\.cpp$"),
}

# From below to above; a header includes its own level and those below. The first match counts.
LEVELS = [
    ("platform", re.compile(r"qzxml/platform/")),
    ("runtime", re.compile(r"qzxml/runtime/(?!BinaryStream\.h$)")),
    # The stream of bytes holds a value of bytes.
    ("values", re.compile(r"qzxml/(values/|runtime/BinaryStream\.h$)")),
    ("xml", re.compile(r"qzxml/xml/")),
    ("object base", re.compile(
        r"qzxml/serialization/(EventSink|Messages|NamespaceAliasMap|NamespaceRules|Nillable"
        r"|PrimitiveRestrictions|SerializationContext|XmlObjectBase)\.h$")),
    ("collections", re.compile(r"qzxml/collections/")),
    ("serialization", re.compile(r"qzxml/serialization/")),
    ("formats and binding", re.compile(r"qzxml/(binding|json|fastinfoset)/")),
    ("QzXml.h", re.compile(r"qzxml/QzXml\.h$")),
]

INCLUDE = re.compile(r'^\s*#\s*include\s*(<([^>]+)>|"([^"]+)")')


def level(path):
    for number, (_, pattern) in enumerate(LEVELS):
        if pattern.match(path):
            return number
    return None


def read(root):
    """path -> list of (line number, included name, quoted?)"""
    files = {}
    for folder, _, names in os.walk(os.path.join(root, "qzxml")):
        for name in names:
            if not name.endswith((".h", ".cpp")):
                continue
            path = os.path.join(folder, name)
            includes = []
            with open(path, encoding="utf-8") as source:
                for number, line in enumerate(source, 1):
                    match = INCLUDE.match(line)
                    if match:
                        quoted = match.group(3) is not None
                        includes.append((number, match.group(3) or match.group(2), quoted))
            files[os.path.relpath(path, root).replace(os.sep, "/")] = includes
    return files


def unknown_headers(files):
    """One seam to the system: platform/ alone includes more than the standard library."""
    for path, includes in files.items():
        for number, name, quoted in includes:
            if quoted or name in STANDARD or path.startswith("qzxml/platform/"):
                continue
            place = THIRD_PARTY.get(name)
            if place is None:
                yield f"{path}:{number}: <{name}> is not of the standard library; use platform/"
            elif not place.match(path):
                yield f"{path}:{number}: <{name}> has its place in {place.pattern}"


def paths_from_root(files):
    """One spelling for each header: the path from the root."""
    for path, includes in files.items():
        for number, name, quoted in includes:
            if quoted and name not in files:
                yield f'{path}:{number}: "{name}" is no header of the library'


def upward(files):
    """Headers point downwards, so that each layer can be understood without those above it."""
    for path, includes in files.items():
        if not path.endswith(".h"):
            continue
        if level(path) is None:
            yield f"{path}:1: the folder has no place in the order of the layers"
            continue
        for number, name, quoted in includes:
            if quoted and level(name) is not None and level(name) > level(path):
                yield (f"{path}:{number}: {LEVELS[level(path)][0]} includes {name} of the layer "
                       f"{LEVELS[level(name)][0]} above it; declare the class instead")


def cycles(files):
    """No cycle among headers."""
    headers = {path: [name for _, name, quoted in includes if quoted and name in files]
               for path, includes in files.items() if path.endswith(".h")}
    done = set()

    def walk(path, trail):
        if path in trail:
            yield f"{path}:1: includes itself by {' > '.join(trail[trail.index(path):] + [path])}"
            return
        if path in done:
            return
        for name in headers.get(path, []):
            yield from walk(name, trail + [path])
        done.add(path)

    for path in sorted(headers):
        yield from walk(path, [])


def own_header_first(files):
    """A source that begins with its own header proves that the header stands alone."""
    for path, includes in files.items():
        own = path[:-4] + ".h"
        if path.endswith(".cpp") and own in files and (not includes or includes[0][1] != own):
            yield f'{path}:1: begins with another header than "{own}"'


RULES = [unknown_headers, paths_from_root, upward, cycles, own_header_first]


def offences(root):
    files = read(root)
    return [line for rule in RULES for line in rule(files)]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    found = offences(sys.argv[1])
    for line in found:
        print(line)
    count = len(read(sys.argv[1]))
    print(f"check_includes: {count} files, {len(found)} offences")
    return 1 if found or not count else 0


if __name__ == "__main__":
    sys.exit(main())
