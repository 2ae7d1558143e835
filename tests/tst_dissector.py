#!/usr/bin/env -S python3 -B
"""Decodes captures, which text2pcap makes from literal bytes, with the dissector in tshark."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

DISSECTOR = pathlib.Path(__file__).parent.parent / "tools/quirel.lua"
TEXT2PCAP = ["text2pcap", "-q", "-l", "101", "-t", "%S.%f", "-r", r"^(?<time>\S+) (?<data>\S+)$"]
TSHARK = ["tshark", "-n", "-X", f"lua_script:{DISSECTOR}", "-P", "-V", "-O", "quirel",
          "-o", 'gui.column.format:"Protocol","%p","Info","%i"']
# The headers of IP, with the size, and TCP, with ports, sequence number and flags.
HEADERS = ("4500{:04x}00000000400600007f0000017f000001"
           "{:04x}{:04x}{:08x}0000000050{:02x}ffff00000000")
FLAGS = {"<": 0x18, ">": 0x18, "S": 0x02}
PIECE = ".{1,120000}"  # An IP packet has less than 64 KiB.
# What the Info column says as well, and what test_whole_packets checks.
OMITTED = re.compile(r"\[|Magic:|Bytes behind|Command:|Status:|JavaScript|Object")
NOTHING = re.compile("(?!)")


def padded(text, width):
    return text.encode().ljust(width, b"\0").hex()


OK = "EAC5 000001 00"
DONE = "status 0 (success)"
USER = "00010203"  # 66051
RECORDS = ("00 000000" + padded("2024-07-01", 16) + padded("08:00:01", 16) + padded("Ann", 32)
           + padded("Büro", 32) + "01 000000" + padded("2024-07-02", 16) + padded("18:30:59", 16)
           + padded("Bo", 32) + "41" * 32)

# Request, what is shown for it, reply, what is shown for it behind the name.
EXCHANGES = [
    ("EAC5 000001 00", "getTofDistance", "EAC5 000002 0123", "2 bytes | Distance: 291"),
    ("EAC5 000001 01", "getPalmprintImage", "EAC5 05EEC0" + "11" * 388800,
     "388800 bytes | Palmprint image: 388800 bytes"),
    ("EAC5 000001 02", "getPalmVeinImage", "EAC5 05EEC0" + "22" * 388800,
     "388800 bytes | Palm-vein image: 388800 bytes"),
    ("EAC5 000001 03", "getDualImages", "EAC5 0BDD80" + "33" * 777600,
     "777600 bytes | Palmprint image: 388800 bytes | Palm-vein image: 388800 bytes"),
    ("EAC5 000002 04 03", "setMode | Mode: local recognition (3)",
     "EAC5 000001 02", "status 2 (unknown error)"),
    ("EAC5 000006 04 01" + USER, "startEnroll | Mode: local enrollment (1) | User ID: 66051",
     "EAC5 000001 18", "status 24 (feature buffer full)"),
    ("EAC5 000006 04 06" + USER, "startRemoteEnroll | Mode: remote enrollment (6) | User ID: 66051",
     "EAC5 000001 01", "status 1 (busy)"),
    ("EAC5 000001 05", "getMode", "EAC5 000001 04", "1 byte | Mode: remote recognition (4)"),
    ("EAC5 000001 06", "getRtcTime",
     "EAC5 000006 38 03 04 05 06 07", "6 bytes | Clock: 2026-03-04 05:06:07"),
    ("EAC5 000007 07 37 0C 1F 17 3B 3A", "setRtcTime | Clock: 2025-12-31 23:59:58", OK, DONE),
    ("EAC5 000007 08 C0A80117 EAB6",
     "setDebugAddress | Debug address: 192.168.1.23 | Debug port: 60086", OK, DONE),
    ("EAC5 000003 0A 03E3", "setTofBias | TOF bias: -5", OK, DONE),
    ("EAC5 000001 0B", "getTofBias", "EAC5 000002 07D0", "2 bytes | TOF bias: 1000"),
    ("EAC5 000001 0E", "clearUsers", OK, DONE),
    ("EAC5 000001 10", "getUserList", "EAC5 00000D 00" + b'{"user": 12}'.hex(), DONE
     + ', 12 bytes | JSON text: {"user": 12} | Member: user | Number value: 12 | Key: user'),
    *((f"EAC5 000003 {code} 7B7D", name + " | JSON text: {}", OK, DONE) for code, name in
      (("15", "setUserConfig"), ("19", "setVendorConfig"), ("1B", "setOutputConfig"))),
    *((f"EAC5 000001 {code}", name, "EAC5 000003 00 7B7D", DONE + ", 2 bytes | JSON text: {}")
      for code, name in (("16", "getUserConfig"), ("17", "getSystemInfo"),
                         ("18", "getVendorConfig"), ("1A", "getOutputConfig"),
                         ("40", "getRecordFileList"), ("63", "getQrCodeList"))),
    ("EAC5 000006 27" + USER + "04", "getRemoteEnrollImages | User ID: 66051 | Image index: 4",
     "EAC5 0BDD81 00" + "44" * 777600,
     DONE + ", 777600 bytes | First image: 388800 bytes | Second image: 388800 bytes"),
    ("EAC5 000005 28" + USER, "getRemoteFeatures | User ID: 66051",
     "EAC5 002801 00" + "55" * 10240, DONE + ", 10240 bytes | Feature block: 10240 bytes"),
    ("EAC5 000009 2A 00" + USER + "AABBCC",
     "importUserFeatures | Kind: 0 | User ID: 66051 | Feature file: 3 bytes",
     "EAC5 000001 16", "status 22 (feature buffer full)"),
    ("EAC5 000049 30 01020304 0A0B0C0D" + padded("Ann\0left over", 32) + "42" * 32,
     "addUser | User ID: 16909060 | Card number: 168496141 | User name: Ann | Department: "
     + "B" * 32, "EAC5 000001 14", "status 20 (user ID exists)"),
    ("EAC5 000005 31" + USER, "deleteUser | User ID: 66051",
     "EAC5 000001 15", "status 21 (user ID does not exist)"),
    ("EAC5 000001 33", "getEmptyUserId",
     "EAC5 000005 00 00010000", DONE + ", 4 bytes | User ID: 65536"),
    ("EAC5 000005 34" + USER, "deleteUserFeatures | User ID: 66051",
     "EAC5 000001 02", "status 2 (wrong parameter)"),
    ("EAC5 000004 41 07E8 07", "deleteMonthRecords | Year: 2024 | Month: 7", OK, DONE),
    ("EAC5 000001 42", "clearRecords", OK, DONE),
    ("EAC5 000008 43 07E8 0C 00000BB8",
     "getMonthRecords | Year: 2024 | Month: 12 | Start index: 3000",
     "EAC5 0000CB 00 0002" + RECORDS,
     DONE + ", 202 bytes | Record count: 2 | Record 0 | Type: Palm (0) | Text 1: 2024-07-01"
     " | Text 2: 08:00:01 | Text 3: Ann | Text 4: Büro | Record 1 | Type: Card (1)"
     " | Text 1: 2024-07-02 | Text 2: 18:30:59 | Text 3: Bo | Text 4: " + "A" * 32),
    ("EAC5 000011 50" + padded("SN-000000000001", 16),
     "setSerialNumber | Serial number: SN-000000000001", OK, DONE),
    ("EAC5 00022F 60" + padded("gate", 32) + "1417080E090500 15000A0B0C0D0E" + padded("QR-1", 512),
     "addQrCode | Remark: gate | Start time: 2023-08-14 09:05:00 | End time: 2100-10-11 12:13:14"
     " | QR data: QR-1", "EAC5 000001 1F", "status 31 (duplicate QR code data)"),
    ("EAC5 000001 61", "clearQrCodes", OK, DONE),
    ("EAC5 000022 62 01" + padded("gate", 32),
     "deleteQrCodeByRemark | Selector: by remark (1) | Key: gate",
     "EAC5 000001 20", "status 32 (QR code does not exist)"),
    ("EAC5 000022 62 02" + padded("QR-1", 32),
     "deleteQrCodeByData | Selector: by data (2) | Key: QR-1",
     "EAC5 000001 1E", "status 30 (unknown error)"),
    ("EAC5 000001 EF", "rebootDevice", OK, DONE),
]


def dialogue_of(request, question, reply, answer):
    name = question.split(" | ")[0]
    return [("> " + request, question), ("< " + reply, f"{name} reply, {answer}")]


# A dialogue is a list of segments, each with the Info column and the lines that are shown for it.
# ">" comes from the console, "<" from the terminal, "S" opens the connection again. The time in
# seconds comes first, or is a millisecond after the last one.
DIALOGUES = [
    *(dialogue_of(*exchange) for exchange in EXCHANGES),
    # No packet, and a reply without a request
    [("> EAC6 000001 05", "no packet, 6 bytes | Not a packet"),
     ("< EAC5 000001 04", "reply without request, 1 byte | Reply without request"),
     ("> EAC5 000001 05", "getMode"),
     ("< EAC5 000001 04 FFFF",
      "getMode reply, 1 byte; no packet, 2 bytes | Mode: remote recognition (4) | Not a packet")],
    # Bodies that are too short, too long or unknown
    [("> EAC5 000000", "request without command | No command"),
     ("< EAC5 000001 02", "request without command reply, status 2 (unknown error)"),
     ("> EAC5 000001 42", "clearRecords"),
     ("< EAC5 000000", "clearRecords reply, no status | No status"),
     ("> EAC5 000002 62 07", "deleteQrCode | Selector: Unknown (7) | Key takes 32 bytes, 0 left"),
     ("< EAC5 000001 02", "deleteQrCode reply, status 2 (wrong parameter)"),
     ("> EAC5 000002 05 01", "getMode | 1 byte left over"),
     ("< EAC5 000000", "getMode reply, 0 bytes | Mode takes 1 byte, 0 left"),
     ("> EAC5 000001 43", "getMonthRecords | Year takes 2 bytes, 0 left"),
     ("< EAC5 000006 00 0001 414243", "getMonthRecords reply, status 0 (success), 5 bytes"
      " | Record count: 1 | 1 records are counted, 3 bytes of records came"),
     ("> EAC5 000001 43", "getMonthRecords | Year takes 2 bytes, 0 left"),
     ("< EAC5 000002 00 00", "getMonthRecords reply, status 0 (success), 1 byte"
      " | Record count takes 2 bytes, 1 is left"),
     ("> EAC5 000003 99 0102", "unknown command 0x99 | Unknown command"),
     ("< EAC5 000001 02", "unknown command 0x99 reply, status 2 (unknown error)")],
    # Packets in several segments, and several packets in one segment
    [("> EA", ""), ("> C50000", ""), ("> 030A03E3", "setTofBias | TOF bias: -5"),
     ("< EAC5", ""), ("< 000001", ""), ("< 00", "setTofBias reply, status 0 (success)")],
    [("> EAC5 000001 05 EAC5 000001 0B EAC5",
      "getMode; getTofBias | The request in frame 1 has no reply yet"),
     ("> 000001 00", "getTofDistance | The request in frame 1 has no reply yet"),
     ("< EAC5 000001 01 EAC5 000002 07", "getMode reply, 1 byte | Mode: local enrollment (1)"),
     ("< D0 EAC5 000002 0010", "getTofBias reply, 2 bytes; getTofDistance reply, 2 bytes"
      " | TOF bias: 1000 | Distance: 16")],
    # Replies just before the timeout
    [("0.010 > EAC5 000001 05", "getMode"),
     ("0.900 > EAC5 000001 63", "getQrCodeList | The request in frame 1 has no reply yet"),
     ("< EAC5 000001 04", "getMode reply, 1 byte | Mode: remote recognition (4)"),
     ("2.790 > EAC5 000001 42", "clearRecords | The request in frame 2 has no reply yet"),
     ("< EAC5 000001 01", "getQrCodeList reply, status 1 (unknown error)")],
    # Two lost replies
    [("0.010 > EAC5 000001 05 EAC5 000001 06", "getMode; getRtcTime | No reply before frame 2"
      " | The request in frame 1 has no reply yet | No reply before frame 2"),
     ("1.010 > EAC5 000001 0B", "getTofBias | The request in frame 1 has no reply yet"),
     ("< EAC5 000002 07D0", "getTofBias reply, 2 bytes | TOF bias: 1000")],
    # A request amid a late reply
    [("0.010 > EAC5 000001 0B", "getTofBias"), ("0.500 < EAC5 000002 07", ""),
     ("1.010 > EAC5 000001 05", "getMode | The request in frame 1 has no reply yet"),
     ("< D0", "getTofBias reply, 2 bytes | TOF bias: 1000"),
     ("< EAC5 000001 04", "getMode reply, 1 byte | Mode: remote recognition (4)")],
    # The same ports again
    [("> EAC5 000001 05", "getMode | No reply before frame 2"), ("S", ""),
     ("> EAC5 000001 0B", "getTofBias"),
     ("< EAC5 000002 07D0", "getTofBias reply, 2 bytes | TOF bias: 1000")],
]


def segments_of(dialogue, console, terminal):
    """Yields the lines for text2pcap of each segment: the time and the bytes of its IP packets.
    `console` and `terminal` are the ports."""
    now, sequence = 0, {console: 1000, terminal: 5000}
    for segment, _ in dialogue:
        time, kind, data = re.fullmatch("([0-9.]*) ?([<>S]) ?(.*)", segment).groups()
        now = float(time or now + 0.001)
        source, target = (terminal, console) if kind == "<" else (console, terminal)
        if kind == "S":
            sequence[source] += 100000
        lines = []
        for piece in re.findall(PIECE, data.replace(" ", "")) or [""]:
            size = len(piece) // 2
            head = HEADERS.format(40 + size, source, target, sequence[source], FLAGS[kind])
            lines.append(f"{now:.3f} {head}{piece}\n")
            sequence[source] += size or 1
        yield lines


def tshark(lines, *options):
    """Returns what tshark prints for the packets: the columns and the dissector's tree of each."""
    with tempfile.TemporaryDirectory() as folder:
        text, capture = pathlib.Path(folder, "text"), pathlib.Path(folder, "capture")
        text.write_text("".join(lines), encoding="ascii")
        subprocess.run([*TEXT2PCAP, text, capture], check=True)
        environment = {"PATH": os.environ["PATH"], "HOME": folder, "LC_ALL": "C.UTF-8"}
        return subprocess.run([*TSHARK, "-r", capture, *options], env=environment, check=True,
                              encoding="utf-8", stdout=subprocess.PIPE).stdout


def decode(dialogues, *options, port=20086):
    """Returns what tshark prints for the last packet of each segment of each dialogue."""
    frames = [list(segments_of(dialogue, 40001 + i, port)) for i, dialogue in enumerate(dialogues)]
    text = tshark([line for segments in frames for lines in segments for line in lines], *options)
    assert "Lua Error" not in text, text[text.index("Lua Error"):][:1000]
    printed = iter(re.split(r"^(?=.*\nFrame \d+:)", text, flags=re.MULTILINE)[1:])
    return [[[next(printed) for _ in lines][-1] for lines in segments] for segments in frames]


def shown(printed, first=1, omitted=OMITTED):
    """Returns the Info column and the lines of a frame; frames are counted from `first` on."""
    if not printed.startswith("Quirel "):
        return ""
    printed = re.sub(r"\[Expert Info \(.*?\): (.*)\]", r"\1", printed.removeprefix("Quirel "))
    printed = re.sub(r"(?<=frame )\d+", lambda frame: str(int(frame[0]) - first + 1), printed)
    info, *lines = printed.splitlines()
    tree = (line.strip() for line in lines if line.startswith(" "))
    return " | ".join([info, *(line for line in tree if not omitted.match(line))])


class Dissector(unittest.TestCase):
    maxDiff = None

    def test_dialogues(self):
        for dialogue, frames in zip(DIALOGUES, decode(DIALOGUES, "-2")):
            first = int(re.search(r"^Frame (\d+)", frames[0], re.MULTILINE)[1])
            with self.subTest(dialogue[0][0]):
                self.assertEqual([shown(frame, first) for frame in frames],
                                 [expected for _, expected in dialogue])

    def test_single_pass_and_another_port(self):
        decoded = decode(DIALOGUES, "-o", "quirel.port:50505", port=50505)
        self.assertEqual(
            [[shown(frame).split(" | ")[0] for frame in frames] for frames in decoded],
            [[expected.split(" | ")[0] for _, expected in dialogue] for dialogue in DIALOGUES])

    def test_whole_packets(self):
        frames, = decode([dialogue_of("EAC5 000001 42", "", OK, "")], "-2")
        self.assertEqual(
            [shown(frame, omitted=NOTHING) for frame in frames],
            ["clearRecords | Magic: 0xeac5 | Bytes behind the head: 1 | [Request: True] | [Command"
             " name: clearRecords] | [Answered in frame: 2] | Command: 0x42 (clearRecords)",
             "clearRecords reply, status 0 (success) | Magic: 0xeac5 | Bytes behind the head: 1"
             " | [Request: False] | [Command name: clearRecords] | [Reply to request in frame: 1]"
             " | [Time since request: 0.001000000 seconds] | Status: 0 (success)"])


if __name__ == "__main__":
    unittest.main()
