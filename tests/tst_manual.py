#!/usr/bin/env python3
"""Checks the manual: its links and pictures exist, it lists exactly the lines that the logs can show
and the keys of the configuration documents, and the simulated terminal accepts the options on the
pages.

tst_manual.py SOURCE_TREE SIMULATED_TERMINAL"""

import re
import subprocess
import sys
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

SOURCE, SIMULATOR = Path(sys.argv[1]).resolve(), sys.argv[2]
MANUAL = SOURCE / "docs/manual"
PAGES = sorted(SOURCE.glob("docs/**/*.md")) + [SOURCE / "README.md", SOURCE / "CONTRIBUTING.md"]

# A text in tr() is a log line unless it is within a call, a function or a table of one of these
# names. A new kind of caption needs a name here.
LOGGING = {"log", "append"}
CAPTIONS = re.compile("|".join((
    r"create\w+(?<!Act)", r"\w+Tip",  # functions that build a window or a tooltip
    "setWindowTitle", "setText", "setToolTip", "setAccessibleName", "setCaption", "captions",
    "setApplicationDescription",
    "QLabel", "QGroupBox", "QCheckBox", "label", "button", "addItem", "addAction",
    "choice", "codedChoice", "onOff", "closeOpen",  # items of a control
    "getText", "getInt", "warning", "about", "getOpenFileName", "getSaveFileName", "saveRaw",
    "ModeDescriptions", "SocketStates",
    "ModeNames", "types")))  # values of placeholders
# Captions in a table that contains log lines, too.
BUTTONS = {"Stop Collecting", "stop collecting"}

TOKEN = re.compile(r"""
    (?P<nothing> //[^\n]* | /\*.*?\*/ | '(?:[^'\\]|\\.)' | \b(?:const|override)\b )
  | (?P<text> (?: "(?:[^"\\\n]|\\.)*" \s* )+ )
  | (?P<name> [A-Za-z_]\w* )
  | (?P<sign> [=!]= | \S )""", re.VERBOSE | re.DOTALL)
TRANSLATED = {("tr", "("), ("QT_TR_NOOP", "("), ("QT_TRANSLATE_NOOP", ","), ("translate", ",")}

# The beginning of a block of a configuration document, or a key with its label.
CONFIG = re.compile(r"""(?:"(?P<block>[^"]+)"|nullptr),\s*\{\s*(?=\{)
  | \{(?:"(?P<key>[^"]+)"|(?P<constant>[A-Z]\w+)),\s*\{
      (?:[A-Z]\w*,[^}]*\},\s*tr\("(?P<label>[^"]+)"\)|\},\s*\{\})""", re.VERBOSE)


def translated_texts(code):
    """Yields each text in tr(), except texts that are only compared, with the names of the calls,
    functions and tables around it."""
    around, name, last, compared = [], "", "", False
    for match in TOKEN.finditer(code):
        kind, token = match.lastgroup, match.group()
        if kind == "nothing":
            continue
        if kind == "text" and around and (around[-1], last) in TRANSLATED and not compared:
            text = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', token))
            yield text.replace("\\n", "\n"), set(around[:-1])
        if kind == "name":
            name = token
        elif token in ("==", "!="):
            compared = True
        elif token in "({[":
            around.append(name)
            name = ""
        elif token in ")}]":
            name = around.pop()  # name of a function whose body may follow, or of a table
        elif token in ";,?:":
            name = ""
        compared = compared and token not in ";,?)&|"
        last = token


def is_line(text, around):
    if around & LOGGING:
        return True
    return text not in BUTTONS and text.rstrip()[-1:] not in (":", "：") and \
        not any(CAPTIONS.fullmatch(name) for name in around)


def code_texts():
    for room in ("app", "config", "dialogs", "link", "widgets"):
        for path in sorted((SOURCE / room).glob("*.cpp")) + sorted((SOURCE / room).glob("*.h")):
            yield from translated_texts(path.read_text(encoding="utf-8"))


def rows(page):
    """Yields the cells of each row of a page's tables, with the headings above it."""
    headings = {}
    for line in page.read_text(encoding="utf-8").splitlines():
        heading = re.match(r"(#+) (.*)", line)
        if heading:
            headings = {level: text for level, text in headings.items() if level < len(heading[1])}
            headings[len(heading[1])] = heading[2]
        elif line.startswith("|"):
            yield [cell.strip() for cell in line.strip("|").split(" | ")], headings


def quoted(text):
    found = re.search(r"`([^`]+)`", text or "")
    return found and found[1]


def pieces_of_code(page):
    """Yields the lines of a page's code blocks and its inline code."""
    text = page.read_text(encoding="utf-8")
    for block in re.findall(r"^```.*?\n(.*?)^```", text, re.MULTILINE | re.DOTALL):
        yield from block.splitlines()
    yield from re.findall(r"`([^`\n]+)`", re.sub(r"^```.*?^```", "", text, flags=re.M | re.S))


def anchors(page):
    """Returns the anchors of a page's headings, as Markdown renderers generate them."""
    text = re.sub(r"^```.*?^```", "", page.read_text(encoding="utf-8"), flags=re.M | re.S)
    headings = re.findall(r"^#+ (.*)", text, re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def simulator(*arguments):
    return subprocess.run([SIMULATOR, *arguments], stdin=subprocess.DEVNULL, capture_output=True,
                          text=True, timeout=20, check=False)


class Manual(unittest.TestCase):
    def test_links_lead_somewhere(self):
        shown = set()
        for page in PAGES:
            text = re.sub(r"^```.*?^```", "", page.read_text(encoding="utf-8"), flags=re.M | re.S)
            for target in re.findall(r"\]\(([^)\s]+)\)", text):
                if "://" in target:
                    continue
                path, _, anchor = target.partition("#")
                with self.subTest(page=str(page.relative_to(SOURCE)), link=target):
                    to = (page.parent / path).resolve() if path else page
                    self.assertTrue(to.exists(), "leads to no file")
                    self.assertTrue(not anchor or anchor in anchors(to), "leads to no heading")
                    shown.add(to)
        pictures = set((SOURCE / "docs/pictures").resolve().iterdir())
        self.assertEqual(pictures - shown, set(), "pictures that no page shows")

    def test_each_line_of_a_log_has_an_entry(self):
        lines = {text for text, around in code_texts() if is_line(text, around)}
        entries = {quoted(cells[0]) for cells, _ in rows(MANUAL / "log-messages.md")} - {None}
        self.assertEqual(lines - entries, set(), "lines without an entry in log-messages.md; if a "
                         "text is a caption, its kind is missing in CAPTIONS of this test")
        self.assertEqual(entries - lines, set(), "entries for lines that do not exist")

    def test_the_code_is_read_as_lupdate_reads_it(self):
        texts = {text for text, _ in code_texts()}
        forms = {text for form in SOURCE.glob("dialogs/*.ui")
                 for text in re.findall("<string>(.*?)</string>", form.read_text(encoding="utf-8"))}
        for path in SOURCE.glob("translations/*.ts"):
            known = {source.text for source in ElementTree.parse(path).iter("source")}
            self.assertEqual(known - texts - forms, set(), f"in {path.name}, but not in the code")

    def test_each_key_of_a_document_has_a_row(self):
        keys = []
        for path in sorted(SOURCE.glob("config/*cfgdlg.cpp")):
            code = path.read_text(encoding="utf-8")
            file = re.search(r'fileName = QStringLiteral\("/(.*?)"\)', code)[1]
            for found in CONFIG.finditer(code):
                key = found["key"]
                if found["constant"]:
                    key = re.search(found["constant"] + r'\[\] = "(.*?)"', code)[1]
                if key:
                    keys.append((file, block, key, found["label"]))
                else:
                    block = found["block"]
        told = [(quoted(headings.get(2)), quoted(headings.get(3)), *map(quoted, cells[:2]))
                for cells, headings in rows(MANUAL / "vendor.md")
                if str(quoted(headings.get(2))).endswith(".cfg") and quoted(cells[0])]
        self.assertCountEqual(told, keys)

    def test_the_simulated_terminal_understands(self):
        known = set(re.findall(r"--[a-z-]+", simulator("--help").stdout))
        for page in PAGES:
            for code in pieces_of_code(page):
                call = re.search(r"(?:quirel-simulator\"?|\./run) (.*)|^(--.*)", code)
                if not call:
                    continue
                arguments = call[1] or call[2]
                with self.subTest(page=str(page.relative_to(SOURCE)), code=code):
                    options = set(re.findall(r"(?<!\S)--[a-z-]+", arguments))
                    self.assertEqual(options - known, set(), "no such options")
                    for fault in re.findall(r"--fault ([a-z0][^\s;`]+)", arguments):
                        run = simulator("--port", "0", "--end-with-input", "--fault", fault)
                        self.assertEqual(run.returncode, 0, run.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
