#!/usr/bin/env python3
"""Lint for Quickstep's help file (data/QStp.help).

The help file is read by the program's small tagged-text reader, which is not
an XML parser: it joins lines with nothing in between, knows no entities,
collects names and attribute parts into 80-character buffers and lets any
closing tag end the element it is in. This script reads the file with the same
rules (a line-for-line port of the reader's scanning) and checks that:

  - every CONTENTS row names, with PAGE, a PAGE element that exists,
  - every PAGE element is reachable from a row, and page names are unique,
  - names and attribute values stay under 80 characters, lines under 1000,
  - every tag starts and ends on one line (a line end inside a tag glues words),
  - the attributes the reader finds are the ones written in the file,
  - context keys (VIEW) are well formed and lead to one row only,
  - page text uses only the empty elements P and BR and does not run words
    together across line ends.

Usage: check_help.py [--views] [--page NAME] [FILE]
  --views      print every context key with the page it leads to
  --page NAME  print one page as plain text, breaks applied
Exit status: 0 when clean, 1 when an error was found, 2 on bad usage.
"""

import re
import sys
from pathlib import Path

NAME_LIMIT = 80  # the reader's name and attribute buffers
LINE_LIMIT = 1000  # the reader takes 1023 characters a line; stay well under
PAGE_BREAKS = ("P", "BR")


class Tag:
    def __init__(self, name=""):
        self.name = name
        self.contents = ""
        self.location = 0
        self.children = []
        self.modifiers = []  # (name, value) in the order read; names repeat

    def values(self, key):
        return [v for k, v in self.modifiers if k == key]


class Reader:
    """The help reader's scanning rules: ReadLine, Advance, NextTag,
    AddModifiers and FindTag."""

    def __init__(self, text):
        # fgets into a 1024-byte buffer: a longer line arrives in pieces
        self.pieces = []
        for line in text.splitlines(keepends=True):
            while len(line) > 1023:
                self.pieces.append(line[:1023])
                line = line[1023:]
            self.pieces.append(line[:-1] if line.endswith("\n") else line)
        self.Rewind()

    def Rewind(self):
        self.index = -1
        self.buffer = ""
        self.column = 0

    def ReadLine(self):
        if self.index + 1 >= len(self.pieces):
            return False
        self.index += 1
        self.buffer = self.pieces[self.index]
        self.column = 0
        return True

    def Advance(self):
        self.column += 1
        while self.column >= len(self.buffer):
            if not self.ReadLine():
                return False
        return True

    def Current(self):
        return self.buffer[self.column]

    def Lookahead(self):
        if self.column + 1 < len(self.buffer):
            return self.buffer[self.column + 1]
        return ""

    def Back(self):
        self.column -= 1

    def Mark(self):
        return (self.index, self.buffer, self.column)

    def Restore(self, mark):
        self.index, self.buffer, self.column = mark

    @staticmethod
    def SkipTag(name):
        return name in ("?xml", "!")

    def NextTag(self):
        """Answers (name, has_modifiers) or None at end of input."""
        name = None
        while self.Advance():
            c = self.Current()
            if name is None:
                if c == "<":
                    name = ""
                continue
            if c in " \t>":
                if self.SkipTag(name):
                    name = None
                    continue
                return name, c != ">"
            name += c
        return (name, False) if name else None

    def AddModifiers(self, tag):
        inValue = False
        quote = " "
        name = ""
        value = ""
        while self.Advance():
            c = self.Current()
            if c == ">":
                if inValue and value:
                    tag.modifiers.append((name, value))
                return
            if c in " \t" and not inValue:
                continue
            if c == "=":
                inValue = True
                if self.Lookahead() in ("'", '"'):
                    self.Advance()
                    quote = self.Current()
                continue
            if c == quote and value:
                tag.modifiers.append((name, value))
                name = value = ""
                inValue = False
                continue
            if inValue:
                value += c
            else:
                name += c

    def FindTag(self, wanted, tag):
        while True:
            found = self.NextTag()
            if found is None:
                return False
            name, hasModifiers = found
            if name != wanted:
                continue
            if hasModifiers:
                self.AddModifiers(tag)
            tag.name = name
            if not self.SkipTag(name):
                self._ReadContent(tag)
            tag.contents = tag.contents.rstrip(" ")
            return True

    def _ReadContent(self, tag):
        while self.Advance():
            c = self.Current()
            if c == "<" and self.Lookahead() == "/":
                self.Back()
                closing = self.NextTag()
                if closing is None or closing[0] != tag.name:
                    return
            elif c == "<":
                self.Back()
                mark = self.Mark()
                location = len(tag.contents)
                found = self.NextTag()
                if found is None:
                    return
                if found[0].endswith("/"):
                    child = Tag(found[0][:-1])
                else:
                    self.Restore(mark)
                    child = Tag()
                    self.FindTag(found[0], child)
                child.location = location
                tag.children.append(child)
            elif c in " \t":
                if tag.contents:
                    tag.contents += c
            else:
                tag.contents += c


def Rows(tag, depth=0):
    for child in tag.children:
        yield child, depth
        yield from Rows(child, depth + 1)


def PageText(page):
    """The page as a reader that honours P and BR shows it."""
    out = []
    last = 0
    for child in page.children:
        out.append(page.contents[last : child.location].rstrip(" "))
        out.append("\n\n" if child.name == "P" else "\n")
        last = child.location
    out.append(page.contents[last:])
    return "".join(part.lstrip(" ") if i and out[i - 1].endswith("\n") else part
        for i, part in enumerate(out))


class Report:
    def __init__(self, path):
        self.path = path
        self.errors = 0

    def Error(self, message, line=None):
        self.errors += 1
        where = f"{self.path}:{line}: " if line else f"{self.path}: "
        print(where + message, file=sys.stderr)


def CheckRawLines(text, report):
    inComment = False
    for number, line in enumerate(text.split("\n"), 1):
        if len(line) >= LINE_LIMIT:
            report.Error(f"line of {len(line)} characters (limit {LINE_LIMIT})", number)
        if "\r" in line:
            report.Error("carriage return (the reader keeps it as text)", number)
        if inComment:
            if "<" in line:
                report.Error("'<' inside the comment", number)
            if ">" in line:
                inComment = False
            continue
        if line.startswith("<!") and ">" not in line:
            inComment = True
            continue
        if re.search(r"&[A-Za-z#][A-Za-z0-9]*;", line):
            report.Error("entity reference (the reader decodes none)", number)
        depth = 0
        for c in line:
            if c == "<":
                if depth:
                    report.Error("'<' inside a tag", number)
                depth = 1
            elif c == ">":
                depth = 0
        if depth:
            report.Error("tag not closed on its own line", number)
        for tagText in re.findall(r"<([^>]*)>", line):
            for value in re.findall(r'=\s*"([^"]*)"', tagText):
                if "=" in value:
                    report.Error(f"'=' inside the value \"{value}\"", number)
            stripped = re.sub(r'"[^"]*"', '""', tagText)
            if re.search(r"=\s*[^\s\"]", stripped):
                report.Error(f"unquoted attribute value in <{tagText}>", number)
            if re.search(r"\s/$", tagText):
                report.Error("empty element with a space before '/' (the reader "
                    "takes it for an open element)", number)


def CheckPageLineJoins(text, report):
    """The reader joins lines with nothing: a text line must end in a tag
    or the next must start with one, or words run together."""
    lines = text.split("\n")
    inPage = False
    for number, line in enumerate(lines, 1):
        if line.startswith("<PAGE "):
            inPage = True
            continue
        if line.startswith("</PAGE>"):
            inPage = False
            continue
        if not inPage or number >= len(lines):
            continue
        following = lines[number]
        if not line or following.startswith(("<", " ", "\t")) or not following:
            continue
        if line.endswith((" ", "\t")):
            continue
        if re.search(r" <(P|BR)/>$", line):
            continue
        report.Error("text line runs into the next one (end it with ' <P/>' or "
            "' <BR/>')", number)


def Check(path, showViews=False, showPage=None):
    report = Report(path)
    text = Path(path).read_text(encoding="utf-8")
    CheckRawLines(text, report)
    CheckPageLineJoins(text, report)

    reader = Reader(text)
    contents = Tag()
    if not reader.FindTag("CONTENTS", contents):
        report.Error("no CONTENTS element")
        return report.errors

    pages = {}
    reader.Rewind()
    while True:
        page = Tag()
        if not reader.FindTag("PAGE", page):
            break
        names = page.values("NAME")
        if len(names) != 1:
            report.Error(f"PAGE with {len(names)} NAME attributes")
            continue
        if names[0] in pages:
            report.Error(f"PAGE {names[0]} defined twice (the first one wins)")
        pages.setdefault(names[0], page)
        for child in page.children:
            if child.name not in PAGE_BREAKS or child.contents or child.children:
                report.Error(f"page {names[0]}: element {child.name} (only empty "
                    "P and BR are known)")
        glued = re.search(r"\w[.,;:!?][A-Z]", page.contents)
        if glued:
            report.Error(f"page {names[0]}: words run together near "
                f"'{page.contents[glued.start() - 10 : glued.end() + 10]}'")

    viewOwners = {}
    reached = set()
    counts = {"PAGE": 0, "VIEW": 0}
    for row, depth in Rows(contents):
        if row.name in ("PAGE", "CONTENTS") or not row.name:
            report.Error(f"contents row named '{row.name}'")
        label = row.contents
        if not label:
            report.Error("contents row without a label")
        if len(row.name) >= NAME_LIMIT:
            report.Error(f"row name too long: {row.name}")
        for key, value in row.modifiers:
            if len(key) >= NAME_LIMIT or len(value) >= NAME_LIMIT:
                report.Error(f"row '{label}': attribute of {len(value)} characters")
            if key not in counts:
                report.Error(f"row '{label}': unknown attribute {key}")
            else:
                counts[key] += 1
        pageNames = row.values("PAGE")
        if len(pageNames) > 1:
            report.Error(f"row '{label}': more than one PAGE")
        for name in pageNames[:1]:
            if name not in pages:
                report.Error(f"row '{label}': PAGE {name} does not exist")
            reached.add(name)
        for key in row.values("VIEW"):
            parts = key.split("/")
            if len(parts) < 2 or any(not p or p != p.strip() for p in parts):
                report.Error(f"row '{label}': malformed context key '{key}'")
            if key in viewOwners:
                report.Error(f"context key '{key}' leads to two rows "
                    f"('{viewOwners[key][0]}' wins)")
            else:
                viewOwners[key] = (label, pageNames[0] if pageNames else "")

    for name in pages:
        if len(name) >= NAME_LIMIT:
            report.Error(f"page name too long: {name}")
        if name not in reached:
            report.Error(f"PAGE {name} is reached from no contents row")

    for key, count in counts.items():
        written = len(re.findall(r"\b" + key + r'="', text.split("<CONTENTS>", 1)[-1]
            .split("</CONTENTS>", 1)[0]))
        if written != count:
            report.Error(f"{written} {key} attributes written in CONTENTS, "
                f"the reader finds {count}")

    if showViews:
        for key, (label, page) in viewOwners.items():
            print(f"{key}\t{page}")
    if showPage is not None:
        if showPage in pages:
            print(PageText(pages[showPage]))
        else:
            report.Error(f"no page {showPage}")
    return report.errors


def main(argv):
    args = argv[1:]
    showViews = "--views" in args
    args = [a for a in args if a != "--views"]
    showPage = None
    if "--page" in args:
        at = args.index("--page")
        if at + 1 >= len(args):
            print(__doc__, file=sys.stderr)
            return 2
        showPage = args[at + 1]
        del args[at : at + 2]
    if len(args) > 1 or any(a.startswith("-") for a in args):
        print(__doc__, file=sys.stderr)
        return 2
    path = args[0] if args else str(Path(__file__).resolve().parent.parent / "data"
        / "QStp.help")
    errors = Check(path, showViews, showPage)
    if errors:
        print(f"{path}: {errors} problem(s)", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
