"""Runs the dissector in tshark on a capture file."""

import os
import shutil
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

SKIPPED = 77
DISSECTOR = os.path.join(os.path.dirname(__file__), "..", "..", "tools", "quirel.lua")


class Packet:
    """A packet of the protocol: its frame and the values of its fields."""

    def __init__(self, frame, stream, element):
        self.frame = frame
        self.stream = stream
        self.fields = {}  # name -> values, as display filters see them
        self.lines = []  # lines as Wireshark shows them
        self.size = int(element.get("size"))
        for field in element.iter("field"):
            self.fields.setdefault(field.get("name"), []).append(field.get("show"))
            self.lines.append(field.get("showname") or field.get("show"))
        self.expert = self.fields.get("_ws.expert.message", [])

    def one(self, name):
        """Returns the only value of a field, or None."""
        values = self.fields.get(name, [None])
        assert len(values) == 1, f"frame {self.frame}: {name} has the values {values}"
        return values[0]


def skip(reason):
    print("SKIPPED:", reason)
    sys.exit(SKIPPED)


def need(program):
    found = shutil.which(program)
    if not found:
        skip(f"{program} is not installed")
    return found


def environment(folder):
    """Returns an environment without the user's settings, which writes to the test's folder only."""
    return dict(os.environ, HOME=folder, XDG_CONFIG_HOME=folder, WIRESHARK_CONFIG_DIR=folder,
                TMPDIR=folder, LC_ALL="C.UTF-8")


def tshark(folder, capture, *arguments):
    command = [need("tshark"), "-n", "-X", "lua_script:" + DISSECTOR, "-r", capture, *arguments]
    done = subprocess.run(command, capture_output=True, env=environment(folder), timeout=50)
    complaints = [line for line in done.stderr.decode().splitlines()
                  if line and not line.startswith("Running as user")]
    assert done.returncode == 0 and not complaints, f"tshark: {done.returncode} {complaints}"
    text = done.stdout.decode("utf-8", "replace")
    for trouble in ("Lua Error", "_ws.malformed", "Malformed Packet", "Dissector bug"):
        assert trouble not in text, trouble + ": " + text[max(0, text.find(trouble) - 200):][:600]
    return text


def packets(folder, capture, *arguments):
    """Returns all packets of the protocol in order."""
    text = tshark(folder, capture, "-T", "pdml", *arguments)
    found = []
    for frame in ElementTree.fromstring(text).iter("packet"):
        number = int(frame.find("proto[@name='geninfo']/field[@name='num']").get("show"))
        stream = frame.find("proto[@name='tcp']/field[@name='tcp.stream']")
        found += [Packet(number, int(stream.get("show")), element)
                  for element in frame.findall("proto[@name='quirel']")]
    return found


def infos(folder, capture, *arguments):
    """Returns the number and Info column of each frame with the protocol."""
    text = tshark(folder, capture, "-Y", "quirel", "-T", "fields", "-e", "frame.number",
                  "-e", "_ws.col.Info", *arguments)
    return {int(number): info
            for number, info in (line.split("\t", 1) for line in text.splitlines())}


class Findings:
    """Compares values, prints the differences and counts them."""

    def __init__(self):
        self.compared = 0
        self.wrong = 0

    def same(self, what, actual, expected):
        self.compared += 1
        if actual != expected:
            self.wrong += 1
            print(f"FAIL: {what}\n   actual:   {actual!r}\n   expected: {expected!r}")

    def finish(self):
        print(f"{self.compared} comparisons, {self.wrong} wrong")
        sys.exit(1 if self.wrong or not self.compared else 0)
