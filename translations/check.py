#!/usr/bin/env -S python3 -B
"""Reads the translations for what neither compiler nor Qt's tools complain of: texts that lupdate
would add or drop, entries that are not finished, and translations that would break the console or
do not end like their source. Names each entry at fault and fails.

    check.py FILE.ts... -- LUPDATE OPTION...    in the folder from which LUPDATE finds the code; the
                                                names of the .ts files follow its options"""

import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

# The window decides by these captions what a click of their button does.
DISTINCT = [
    ("MainWindow", ["Palmprint Preview", "Palm Vein Preview", "palm vein preview", "Joint Preview",
                    "Stop Collecting", "stop collecting", "Get Palm Height"]),
    ("MainWindow", ["Connect", "Refresh Connect"]),
    ("MainWindow", ["Start Listening", "Stop Listening"]),
]
# How a text ends in the language, after what its source ends with.
ENDS = {"zh_CN": {".": "。", ":": "：", "：": "：", "?": "？"}}
ORDERED = "The placeholders keep their order."  # translators are told so


class Entry:
    def __init__(self, language, context, message):
        self.language = language
        self.key = tuple(part or "" for part in (context.findtext("name"),
                                                 message.findtext("source"),
                                                 message.findtext("comment")))
        self.source = self.key[1]
        self.ordered = ORDERED in message.findtext("extracomment", "")
        translation = message.find("translation")
        self.state = translation.get("type", "finished")
        self.text = "".join(translation.itertext())

    def __str__(self):
        context, source, comment = self.key
        return f"{context}: '{source}'" + (f" ({comment})" if comment else "")


def placeholders(entry, text):
    found = re.findall(r"%L?\d+|%L?n", text)
    return found if entry.ordered else sorted(found)


def has_new_blanks(source, text):
    return (text[:1].isspace() and not source[:1].isspace()
            or text[-1:].isspace() and not source[-1:].isspace())


def has_other_end(entry):
    ends = ENDS.get(entry.language, {})
    last, wanted = entry.text.rstrip()[-1:], ends.get(entry.source.rstrip()[-1:])
    return last != wanted if wanted else last in {*ends, *ends.values()}


RULES = [
    ("is not finished", lambda e: e.state == "unfinished"),
    ("is of a text that is gone", lambda e: e.state in ("vanished", "obsolete")),
    ("is empty", lambda e: not e.text.strip()),
    ("has other placeholders than its source, or in another order that matters",
     lambda e: placeholders(e, e.source) != placeholders(e, e.text)),
    ("begins or ends with a blank", lambda e: has_new_blanks(e.source, e.text)),
    ("does not end like its source", has_other_end),
]


def read(path):
    root = xml.parse(path).getroot()
    return [Entry(root.get("language"), context, message)
            for context in root.iter("context") for message in context.iter("message")]


def outdated(path, update):
    """What lupdate says, and what it makes other in a copy of the file."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / path.name
        copy.write_bytes(path.read_bytes())
        run = subprocess.run([*update, copy], capture_output=True, text=True)
        for line in (run.stdout + run.stderr).splitlines():
            yield f"lupdate: {line}"
        if run.returncode != 0:
            yield f"lupdate ended with {run.returncode}"
        if copy.read_bytes() == path.read_bytes():
            return
        yield "is not as lupdate writes it: run the target update-translations"
        here, there = ({e.key: e for e in read(file)} for file in (path, copy))
        yield from (f"{there[key]} is missing" for key in there.keys() - here.keys())
        yield from (f"{here[key]} is gone from the code" for key in here.keys() - there.keys())


def equal_captions(entries):
    texts = {entry.key: entry.text for entry in entries}
    for context, captions in DISTINCT:
        first = {}
        for caption in captions:
            text = texts.get((context, caption, ""))
            if text is None:
                yield f"{context}: '{caption}' is not there, but is compared with other captions"
            elif first.setdefault(text, caption) != caption:
                yield f"{context}: '{caption}' and '{first[text]}' are the same, '{text}'"


def faults(path, update):
    entries = read(path)
    yield from outdated(path, update)
    yield from (f"{entry} {fault}: '{entry.text}'"
                for entry in entries for fault, broken in RULES if broken(entry))
    yield from equal_captions(entries)


def main():
    split = sys.argv.index("--")
    paths, update = sys.argv[1:split], sys.argv[split + 1:]
    if not paths:
        sys.exit("no files")
    found = [f"{path}: {fault}" for path in paths for fault in faults(pathlib.Path(path), update)]
    for line in found:
        print(line)
    return 1 if found else 0


sys.exit(main())
