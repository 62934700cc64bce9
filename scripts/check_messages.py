#!/usr/bin/env python3
"""Checks the catalogue of messages, docs/errors.md, against the sources and the tests.

  check_messages.py <root>

A message is every text in qzxml/ with a blank between words that is neither a condition (in
QZ_ASSERT, QZ_ASSERT_TEXT, static_assert) nor a piece of XML (it begins with "<" or a blank).
Each must stand
- in the first column of a table of docs/errors.md, as a code span (a line end as \\n, a vertical
  bar as \\|), with its exception in the second, and
- in a text of tests/, whole, with any text for its placeholders. A message that no test can provoke
  says so in the catalogue: its row holds the words "Not provoked:" with the reason.
And no row of the catalogue may tell of a message that is not there any more.
"""

import os
import re
import sys

TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
    |(?P<raw>\b(?:u8|[uUL])?R"(?P<mark>[^()\\\s]{0,16})\((?P<inside>.*?)\)(?P=mark)")
    |(?P<string>(?:\b(?:u8|[uUL]))?"(?P<text>(?:[^"\\\n]|\\.)*)")
    |(?P<char>(?:\b(?:u8|[uUL]))?'(?:[^'\\\n]|\\.)+')
    |(?P<word>[A-Za-z_][A-Za-z_0-9]*)
    |(?P<number>\.?[0-9](?:[eEpP][+-]|'?[A-Za-z0-9_.])*)
    |(?P<directive>(?<![^\n])[ \t]*\#[^\n]*(?:\\\n[^\n]*)*)
    |(?P<other>\S)""", re.VERBOSE | re.DOTALL)
SIMPLE_ESCAPES = {"n": "\n", "t": "\t", "r": "\r", "0": "\0", "a": "\a", "b": "\b", "f": "\f",
                  "v": "\v"}
ESCAPE = re.compile(r"\\(?:x([0-9a-fA-F]+)|([0-7]{1,3})|u([0-9a-fA-F]{4})|(.))", re.DOTALL)
PLACEHOLDER = re.compile(r"%(?:%|[-+ #0]*[0-9*]*(?:\.[0-9*]+)?(?:hh|h|ll|l|z|j|t)?[a-zA-Z])")
EXCEPTION = re.compile(r"^CQz[A-Za-z]*Exception$")
CONDITIONS = {"QZ_ASSERT", "QZ_ASSERT_TEXT", "static_assert"}
OPEN, CLOSE = "([{", ")]}"


def unescape(text):
    def replace(match):
        hexadecimal, octal, unicode, simple = match.groups()
        if hexadecimal:
            return chr(int(hexadecimal, 16))
        if octal and octal != "0":
            return chr(int(octal, 8))
        if unicode:
            return chr(int(unicode, 16))
        return SIMPLE_ESCAPES.get(simple or octal, simple)
    return ESCAPE.sub(replace, text)


def tokens(code):
    """(kind, text, line); strings that stand beside each other are one."""
    result = []
    line, last = 1, 0
    for match in TOKEN.finditer(code):
        line += code.count("\n", last, match.start())
        last = match.start()
        kind = match.lastgroup
        if match.group("comment") is not None:
            continue
        if match.group("directive") is not None:
            # Macros are read as code; other directives say nothing.
            if re.match(r"\s*#\s*define\b", match.group(0)):
                body = re.sub(r"^\s*#\s*define\s+\w+(\([^)]*\))?", "", match.group(0))
                result += [(k, t, line) for k, t, _ in tokens(body.replace("\\\n", " "))]
            continue
        if match.group("raw") is not None:
            kind, text = "string", match.group("inside")
        elif match.group("string") is not None:
            kind, text = "string", unescape(match.group("text"))
        else:
            kind = next(k for k in ("char", "word", "number", "other") if match.group(k) is not None)
            text = match.group(0)
        if kind == "string" and result and result[-1][0] == "string":
            result[-1] = ("string", result[-1][1] + text, result[-1][2])
        else:
            result.append((kind, text, line))
    return result


def source_files(root, folder):
    for path, folders, names in os.walk(os.path.join(root, folder)):
        folders.sort()
        for name in sorted(names):
            if name.endswith((".h", ".cpp")):
                path_from_root = os.path.relpath(os.path.join(path, name), root)
                with open(os.path.join(path, name), encoding="utf-8") as source:
                    yield path_from_root.replace(os.sep, "/"), source.read()


def behind(stream, start):
    """The index behind the parenthesis that opens at start."""
    depth = 0
    for index in range(start, len(stream)):
        if stream[index][0] == "other":
            depth += (stream[index][1] in OPEN) - (stream[index][1] in CLOSE)
            if depth == 0:
                return index + 1
    return len(stream)


def messages(files):
    """message -> (the place where it first stands, the exception that it is given to or None)"""
    found = {}
    for path, code in files:
        stream = tokens(code)
        index, exception = 0, None
        while index < len(stream):
            kind, text, line = stream[index]
            if kind == "word" and text in CONDITIONS:
                index = behind(stream, index + 1)
                continue
            if kind == "word" and EXCEPTION.match(text):
                exception = text
            elif kind == "other" and text in ";{}":
                exception = None
            elif kind == "string" and re.match(r"[^<\s].*?\s+\S", text, re.DOTALL):
                found.setdefault(text, (f"{path}:{line}", exception))
            index += 1
    return found


def test_texts(files):
    """The texts of the tests; what is added between two texts by + is written as one NUL."""
    for _, code in files:
        stream = tokens(code)
        index = 0
        while index < len(stream):
            if stream[index][0] != "string":
                index += 1
                continue
            text = stream[index][1]
            yield text
            index += 1
            depth, joined = 0, 0
            at = index
            while at < len(stream):
                kind, word, _ = stream[at]
                if kind == "string" and depth == 0 and joined:
                    text += "\0" + word
                    index = at + 1
                elif kind == "other" and word == "+" and depth == 0:
                    joined += 1
                elif kind == "other" and word in OPEN:
                    depth += 1
                elif kind == "other" and word in CLOSE:
                    depth -= 1
                    if depth < 0 and not (at + 1 < len(stream) and stream[at + 1][1] == "+"):
                        break
                    depth = max(depth, 0)
                elif kind == "other" and word in ",;" and depth == 0:
                    break
                if not joined and depth == 0 and word not in CLOSE:
                    break
                at += 1
            if joined:
                yield text


def pattern(message):
    """What a text that this message made looks like."""
    parts, last = [], 0
    for match in PLACEHOLDER.finditer(message):
        parts.append(re.escape(message[last:match.start()]))
        parts.append("%" if match.group(0) == "%%" else ".*?")
        last = match.end()
    parts.append(re.escape(message[last:]))
    return re.compile("".join(parts), re.DOTALL)


def catalogue(text):
    """code span of the first column -> (its row, line number)"""
    rows = {}
    for number, line in enumerate(text.splitlines(), 1):
        match = re.match(r"^\| (`+)(.*?)\1 \|", line)
        if match:
            rows[match.group(2)] = (line, number)
    return rows


def written(message):
    """A message as the catalogue writes it."""
    return (message.replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t")
            .replace("|", "\\|"))


def offences(sources, tests, document):
    found = messages(sources)
    rows = catalogue(document)
    texts = "\1".join(sorted(set(test_texts(tests)), key=len))
    lines = []
    for message, (place, exception) in found.items():
        row = rows.get(written(message))
        if row is None:
            lines.append(f"{place}: not in docs/errors.md: {written(message)}")
        elif exception is not None and f"| `{exception}` |" not in row[0]:
            lines.append(f"{place}: thrown as {exception}, not so in docs/errors.md: "
                         f"{written(message)}")
        if row is not None and "Not provoked:" in row[0]:
            continue
        whole = pattern(message).pattern.replace(".*?", "[^\\x01]*?")
        if not re.search(whole, texts):
            lines.append(f"{place}: in no test: {written(message)}")
    known = {written(message) for message in found}
    for text, (_, number) in rows.items():
        if text not in known:
            lines.append(f"docs/errors.md:{number}: no such message: {text}")
    return found, lines


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    root = sys.argv[1]
    with open(os.path.join(root, "docs", "errors.md"), encoding="utf-8") as document:
        found, lines = offences(list(source_files(root, "qzxml")), list(source_files(root, "tests")),
                                document.read())
    for line in lines:
        print(line)
    print(f"check_messages: {len(found)} messages, {len(lines)} offences")
    return 1 if lines or not found else 0


if __name__ == "__main__":
    sys.exit(main())
