#!/usr/bin/env -S python3 -B
"""Reads streams made of literal bytes: one exchange of each command, streams that go astray, and
every request and reply cut at every length; and what the simulated terminal, whose program is the
argument, replies. Needs tshark, but no right to capture."""

import os
import re
import socket
import subprocess
import sys
import tempfile

import pcap
import shark


def padded(text, width):
    return text.encode().ljust(width, b"\0").hex()


OK = "EAC5 000001 00"
DONE = "status 0 (success)"
USER = "00010203"  # 66051
RECORDS = ("00 000000" + padded("2024-07-01", 16) + padded("08:00:01", 16) + padded("Ann", 32)
           + padded("Büro", 32)
           + "01 000000" + padded("2024-07-02", 16) + padded("18:30:59", 16) + padded("Bo", 32)
           + "41" * 32)

# Name, request, its fields, reply, its fields, text of the Info column for the reply.
EXCHANGES = [
    ("getTofDistance", "EAC5 000001 00",
     {"command": "0x00", "magic": "0xeac5", "length": "1", "request": "1"},
     "EAC5 000002 0123", {"distance": "291", "length": "2", "request": "0"}, "2 bytes"),
    ("getPalmprintImage", "EAC5 000001 01", {}, "EAC5 05EEC0" + "11" * 388800,
     {"palmprint_image": "388800"}, "388800 bytes"),
    ("getPalmVeinImage", "EAC5 000001 02", {}, "EAC5 05EEC0" + "22" * 388800,
     {"vein_image": "388800"}, "388800 bytes"),
    ("getDualImages", "EAC5 000001 03", {}, "EAC5 0BDD80" + "33" * 777600,
     {"palmprint_image": "388800", "vein_image": "388800"}, "777600 bytes"),
    ("setMode", "EAC5 000002 04 03", {"mode": "3"},
     "EAC5 000001 02", {"status": "2"}, "status 2 (unknown error)"),
    ("startEnroll", "EAC5 000006 04 01" + USER, {"mode": "1", "user_id": "66051"},
     "EAC5 000001 18", {"status": "24"}, "status 24 (feature buffer full)"),
    ("startRemoteEnroll", "EAC5 000006 04 06" + USER, {"mode": "6", "user_id": "66051"},
     "EAC5 000001 01", {"status": "1"}, "status 1 (busy)"),
    ("getMode", "EAC5 000001 05", {}, "EAC5 000001 04", {"mode": "4"}, "1 byte"),
    ("getRtcTime", "EAC5 000001 06", {},
     "EAC5 000006 38 03 04 05 06 07", {"clock": "2026-03-04 05:06:07"}, "6 bytes"),
    ("setRtcTime", "EAC5 000007 07 37 0C 1F 17 3B 3A", {"clock": "2025-12-31 23:59:58"},
     OK, {"status": "0"}, DONE),
    ("setDebugAddress", "EAC5 000007 08 C0A80117 EAB6",
     {"debug_address": "192.168.1.23", "debug_port": "60086"}, OK, {}, DONE),
    ("setTofBias", "EAC5 000003 0A 03E3", {"tof_bias": "-5"}, OK, {}, DONE),
    ("getTofBias", "EAC5 000001 0B", {}, "EAC5 000002 07D0", {"tof_bias": "1000"}, "2 bytes"),
    ("getUserList", "EAC5 000001 10", {}, "EAC5 00000D 00" + b'{"user": 12}'.hex(),
     {"json": '{"user": 12}', "status": "0"}, DONE + ", 12 bytes"),
    ("getRemoteEnrollImages", "EAC5 000006 27" + USER + "04",
     {"user_id": "66051", "image_index": "4"}, "EAC5 0BDD81 00" + "44" * 777600,
     {"first_image": "388800", "second_image": "388800"}, DONE + ", 777600 bytes"),
    ("getRemoteFeatures", "EAC5 000005 28" + USER, {"user_id": "66051"},
     "EAC5 002801 00" + "55" * 10240, {"features": "10240"}, DONE + ", 10240 bytes"),
    ("importUserFeatures", "EAC5 000009 2A 00" + USER + "AABBCC",
     {"kind": "0", "user_id": "66051", "feature_file": "3"},
     "EAC5 000001 16", {"status": "22"}, "status 22 (feature buffer full)"),
    ("addUser",
     "EAC5 000049 30 01020304 0A0B0C0D" + padded("Ann\0left over", 32) + "42" * 32,
     {"user_id": "16909060", "card": "168496141", "user_name": "Ann", "department": "B" * 32},
     "EAC5 000001 14", {"status": "20"}, "status 20 (user ID exists)"),
    ("deleteUser", "EAC5 000005 31" + USER, {"user_id": "66051"},
     "EAC5 000001 15", {"status": "21"}, "status 21 (user ID does not exist)"),
    ("getEmptyUserId", "EAC5 000001 33", {},
     "EAC5 000005 00 00010000", {"user_id": "65536"}, DONE + ", 4 bytes"),
    ("deleteUserFeatures", "EAC5 000005 34" + USER, {"user_id": "66051"},
     "EAC5 000001 02", {"status": "2"}, "status 2 (wrong parameter)"),
    ("deleteMonthRecords", "EAC5 000004 41 07E8 07", {"year": "2024", "month": "7"}, OK, {}, DONE),
    ("getMonthRecords", "EAC5 000008 43 07E8 0C 00000BB8",
     {"year": "2024", "month": "12", "start_index": "3000"}, "EAC5 0000CB 00 0002" + RECORDS,
     {"record_count": "2", "record.type": ["0", "1"],
      "record.text1": ["2024-07-01", "2024-07-02"], "record.text2": ["08:00:01", "18:30:59"],
      "record.text3": ["Ann", "Bo"], "record.text4": ["Büro", "A" * 32]}, DONE + ", 202 bytes"),
    ("setSerialNumber", "EAC5 000011 50" + padded("SN-000000000001", 16),
     {"serial_number": "SN-000000000001"}, OK, {}, DONE),
    ("addQrCode",
     "EAC5 00022F 60" + padded("gate", 32) + "1417080E090500 15000A0B0C0D0E" + padded("QR-1", 512),
     {"qr_remark": "gate", "qr_start": "2023-08-14 09:05:00", "qr_end": "2100-10-11 12:13:14",
      "qr_data": "QR-1"},
     "EAC5 000001 1F", {"status": "31"}, "status 31 (duplicate QR code data)"),
    ("deleteQrCodeByRemark", "EAC5 000022 62 01" + padded("gate", 32),
     {"selector": "1", "key": "gate"},
     "EAC5 000001 20", {"status": "32"}, "status 32 (QR code does not exist)"),
    ("deleteQrCodeByData", "EAC5 000022 62 02" + "43" * 32, {"selector": "2", "key": "C" * 32},
     "EAC5 000001 1E", {"status": "30"}, "status 30 (unknown error)"),
]
EXCHANGES += [(name, "EAC5 000001" + code, {}, "EAC5 000003 00 7B7D", {"json": "{}"},
               DONE + ", 2 bytes")
              for code, name in (("16", "getUserConfig"), ("17", "getSystemInfo"),
                                 ("18", "getVendorConfig"), ("1A", "getOutputConfig"),
                                 ("40", "getRecordFileList"), ("63", "getQrCodeList"))]
EXCHANGES += [(name, "EAC5 000003" + code + "7B7D", {"json": "{}"}, OK, {}, DONE)
              for code, name in (("15", "setUserConfig"), ("19", "setVendorConfig"),
                                 ("1B", "setOutputConfig"))]
EXCHANGES += [(name, "EAC5 000001" + code, {}, OK, {}, DONE)
              for code, name in (("0E", "clearUsers"), ("42", "clearRecords"),
                                 ("61", "clearQrCodes"), ("EF", "rebootDevice"))]

# Connections: segments (">" from the console, "<" from the terminal), then for each packet the
# command's name (None: unknown) and its remarks.
ODD_STREAMS = [
    ("bad magic", ["> EAC6 000001 05", "< EAC5 000001 04"],
     [(None, ["Not a packet"]), (None, ["Reply without request"])]),
    ("one wrong byte", ["> 00", "> EAC5 000001 05"], [(None, ["Not a packet"]), ("getMode", [])]),
    ("garbage behind a packet", ["> EAC5 000001 05", "< EAC5 000001 04 FFFF", "> EAC5 000001 06"],
     [("getMode", []), ("getMode", []), (None, ["Not a packet"]), ("getRtcTime", [])]),
    ("terminal speaks first", ["< EAC5 000001 00"], [(None, ["Reply without request"])]),
    ("two replies", ["> EAC5 000001 42", "< EAC5 000001 00", "< EAC5 000001 00"],
     [("clearRecords", []), ("clearRecords", []), (None, ["Reply without request"])]),
    ("request without command", ["> EAC5 000000", "< EAC5 000001 02"],
     [("request without command", ["No command"]), ("request without command", [])]),
    ("reply without status", ["> EAC5 000001 42", "< EAC5 000000"],
     [("clearRecords", []), ("clearRecords", ["No status"])]),
    ("unknown command", ["> EAC5 000003 99 0102", "< EAC5 000001 02"],
     [("unknown command 0x99", ["Unknown command"]), ("unknown command 0x99", [])]),
    ("unknown selector", ["> EAC5 000002 62 07"],
     [("deleteQrCode", ["Key takes 32 bytes, 0 left"])]),
    ("more than the command has", ["> EAC5 000002 05 01"],
     [("getMode", ["1 byte left over"])]),
    ("half a record", ["> EAC5 000008 43 07E8 01 00000000", "< EAC5 000006 00 0001 414243"],
     [("getMonthRecords", []),
      ("getMonthRecords", ["1 records are counted, 3 bytes of records came"])]),
    ("half a record count", ["> EAC5 000008 43 07E8 01 00000000", "< EAC5 000002 00 00"],
     [("getMonthRecords", []), ("getMonthRecords", ["Record count takes 2 bytes, 1 is left"])]),
    ("request in three segments", ["> EA", "> C50000", "> 030A03E3", "< EAC5", "< 0000", "< 0100"],
     [("setTofBias", []), ("setTofBias", [])]),
    ("two and a half requests in one segment",
     ["> EAC5 000001 05 EAC5 000001 06 EAC5", "> 000001 0B",
      "< EAC5 000001 01 EAC5 000006 38 03 04 05 06 07 EAC5 000002 03E8"],
     [("getMode", []),
      ("getRtcTime", ["The request in frame {0} has no reply yet"]),
      ("getTofBias", ["The request in frame {0} has no reply yet"]),
      ("getMode", []), ("getRtcTime", []), ("getTofBias", [])]),
    ("no JSON", ["> EAC5 000001 10", "< EAC5 000006 00 7B22FF0022"],
     [("getUserList", []), ("getUserList", [])]),
]

# Captures: time (ms) and content of each segment ("SYN" opens the connection again), then for each
# packet the command's name, the frame that it answers and its remarks in the second pass. The first
# segment is frame 3.
LOST_REPLIES = [
    ("slow reply",
     [(10, "> EAC5 000001 05"), (900, "> EAC5 000001 0B"), (902, "< EAC5 000001 04"),
      (903, "< EAC5 000002 03E9")],
     [("getMode", None, []), ("getTofBias", None, ["The request in frame 3 has no reply yet"]),
      ("getMode", "3", []), ("getTofBias", "4", [])]),
    ("slow list",
     [(10, "> EAC5 000001 63"), (1900, "> EAC5 000001 05"), (1902, "< EAC5 000003 00 7B7D")],
     [("getQrCodeList", None, []), ("getMode", None, ["The request in frame 3 has no reply yet"]),
      ("getQrCodeList", "3", [])]),
    ("two lost at once",
     [(10, "> EAC5 000001 05 EAC5 000001 06"), (1010, "> EAC5 000001 0B"),
      (1012, "< EAC5 000002 03E9")],
     [("getMode", None, ["No reply before frame 4"]),
      ("getRtcTime", None, ["The request in frame 3 has no reply yet", "No reply before frame 4"]),
      ("getTofBias", None, ["The request in frame 3 has no reply yet"]),
      ("getTofBias", "4", [])]),
    ("next request amid a reply",
     [(10, "> EAC5 000001 0B"), (500, "< EAC5 000002 03"), (1010, "> EAC5 000001 05"),
      (1011, "< E9"), (1012, "< EAC5 000001 04")],
     [("getTofBias", None, []), ("getMode", None, ["The request in frame 3 has no reply yet"]),
      ("getTofBias", "3", []), ("getMode", "5", [])]),
    ("same ports again",
     [(10, "> EAC5 000001 05"), (20, "SYN"), (30, "> EAC5 000001 0B"),
      (31, "< EAC5 000002 03E9")],
     [("getMode", None, ["No reply before frame 4"]), ("getTofBias", None, []),
      ("getTofBias", "6", [])]),
]


def add_exchange(connection, request, reply):
    """Returns the frames of the request and of the reply's last segment."""
    asked = connection.segment(True, request)
    for at in range(0, len(reply), 60000):
        answered = connection.segment(False, reply[at:at + 60000])
    return asked, answered


def check_fields(what, packet, expected, findings):
    lists = {name: value if isinstance(value, list) else [value]
             for name, value in expected.items()}
    findings.same(what, {name: packet.fields.get("quirel." + name) for name in lists}, lists)


def check_exchanges(folder, findings):
    path = os.path.join(folder, "exchanges.pcap")
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        frames = [add_exchange(connection, bytes.fromhex(request), bytes.fromhex(reply))
                  for _, request, _, reply, *_ in EXCHANGES]

    found = shark.packets(folder, path, "-2")
    findings.same("number of packets", len(found), 2 * len(EXCHANGES))
    expected = {}
    for i, (name, request, asked, reply, answered, info) in enumerate(EXCHANGES):
        question, answer = found[2 * i], found[2 * i + 1]
        findings.same(name + ": frames", (question.frame, answer.frame), frames[i])
        findings.same(name + ": sizes", (question.size, answer.size),
                      (len(bytes.fromhex(request)), len(bytes.fromhex(reply))))
        findings.same(name + ": remarks", question.expert + answer.expert, [])
        findings.same(name + ": time", float(answer.one("quirel.time")),
                      (frames[i][1] - frames[i][0]) / 1000)
        check_fields(name + ": request", question,
                     {"name": name, "answered_in": str(frames[i][1]), **asked}, findings)
        check_fields(name + ": reply", answer,
                     {"name": name, "reply_to": str(frames[i][0]), **answered}, findings)
        expected[frames[i][0]] = name
        expected[frames[i][1]] = f"{name} reply, {info}"
    lines = [line for packet in found for line in packet.lines]
    # The last line requires that Wireshark's JSON dissector was called.
    for line in ("Mode: local recognition (3)", "Command: 0x10 (getUserList)", "Type: Card (1)",
                 "Palm-vein image: 388800 bytes", "Selector: by data (2)", "Key: user"):
        findings.same(line, line in lines, True)
    for passes in ([], ["-2"]):
        findings.same(f"Info columns {passes}", shark.infos(folder, path, *passes), expected)


def converse(program):
    """Returns each request with the simulated terminal's reply."""
    with subprocess.Popen([program, "--port", "0"], stdout=subprocess.PIPE) as process:
        try:
            port = int(process.stdout.readline().decode().rsplit(":", 1)[1])
            with socket.create_connection(("127.0.0.1", port), 10) as console:
                stream = console.makefile("rb")
                for _, request, *_ in EXCHANGES:
                    console.sendall(bytes.fromhex(request))
                    head = stream.read(5)
                    yield bytes.fromhex(request), head + stream.read(int.from_bytes(head[2:], "big"))
        finally:
            process.kill()


def check_simulator(folder, findings):
    """Checks that terminal and dissector agree on the content of packets."""
    path = os.path.join(folder, "simulator.pcap")
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        for request, reply in converse(sys.argv[1]):
            add_exchange(connection, request, reply)
    findings.same("simulator", [(packet.one("quirel.name"), packet.expert)
                                for packet in shark.packets(folder, path)],
                  [(name, []) for name, *_ in EXCHANGES for _ in range(2)])


def check_odd_streams(folder, findings):
    path = os.path.join(folder, "odd.pcap")
    first_frames = []
    with pcap.Capture(path) as capture:
        for _, segments, _ in ODD_STREAMS:
            connection = capture.connect()
            first_frames.append([connection.segment(segment[0] == ">", bytes.fromhex(segment[1:]))
                                 for segment in segments][0])

    for passes in ([], ["-2"]):
        found = shark.packets(folder, path, *passes)
        for stream, (what, _, expected) in enumerate(ODD_STREAMS):
            seen = [(packet.one("quirel.name"), packet.expert)
                    for packet in found if packet.stream == stream]
            expected = [(name, [remark.format(first_frames[stream]) for remark in remarks])
                        for name, remarks in expected]
            findings.same(f"{what} {passes}", seen, expected)


def check_lost_replies(folder, findings):
    path = os.path.join(folder, "lost.pcap")
    for what, segments, expected in LOST_REPLIES:
        with pcap.Capture(path) as capture:
            connection = capture.connect(40001)
            for capture.now, segment in segments:
                if segment == "SYN":
                    connection = capture.connect(40001)
                else:
                    connection.segment(segment[0] == ">", bytes.fromhex(segment[1:]))
        # In a single pass a missing reply is not known when the request is shown.
        early = [(name, answers, [remark for remark in remarks if "before" not in remark])
                 for name, answers, remarks in expected]
        for passes, shown in (([], early), (["-2"], expected)):
            seen = [(packet.one("quirel.name"), packet.one("quirel.reply_to"), packet.expert)
                    for packet in shark.packets(folder, path, *passes)]
            findings.same(f"{what} {passes}", seen, shown)


def infos_of(folder, build, *options):
    """Returns the Info columns of the capture that `build` makes."""
    path = os.path.join(folder, "infos.pcap")
    with pcap.Capture(path) as capture:
        build(capture)
    return list(shark.infos(folder, path, *options).values())


def check_repeated_segment(folder, findings):
    """Checks that a retransmitted request counts once and that connections are kept apart."""
    def build(capture):
        first, second = capture.connect(), capture.connect()
        first.request("EAC5 000001 05")
        first.segment(True, bytes.fromhex("EAC5 000001 05"), again=6)
        second.request("EAC5 000001 0B")
        first.reply("EAC5 000001 03")
        first.request("EAC5 000001 42")
        second.reply("EAC5 000002 03E9")
        first.reply("EAC5 000001 00")
    findings.same("repeated segment", infos_of(folder, build), [
        "getMode", "getTofBias", "getMode reply, 1 byte", "clearRecords",
        "getTofBias reply, 2 bytes", "clearRecords reply, status 0 (success)"])


def check_shared_segment(folder, findings):
    """Checks a segment with the end of one packet and two more."""
    def build(capture):
        connection = capture.connect()
        connection.request("EAC5 000001 06 EAC5 000001 0B EAC5 000001 00")
        connection.reply("EAC5 000006 38 03 04")
        connection.reply("05 06 07 EAC5 000002 03E8 EAC5 000002 0010")
    for passes in ([], ["-2"]):
        findings.same(f"shared segment {passes}", infos_of(folder, build, *passes), [
            "getRtcTime; getTofBias; getTofDistance",
            "getRtcTime reply, 6 bytes; getTofBias reply, 2 bytes; getTofDistance reply, 2 bytes"])


def check_many_waiting(folder, findings):
    """Checks requests that are all sent before the first reply."""
    names = ["getMode", "getTofBias"] * 5000
    path = os.path.join(folder, "waiting.pcap")
    with pcap.Capture(path) as capture:
        add_exchange(capture.connect(), bytes.fromhex("EAC5 000001 05 EAC5 000001 0B" * 5000),
                     bytes.fromhex("EAC5 000001 03 EAC5 000002 03E9" * 5000))
    shown = shark.tshark(folder, path, "-T", "fields", "-e", "quirel.name")
    findings.same("many waiting", re.findall(r"\w+", shown) == names * 2, True)


def check_ports(folder, findings):
    """Checks another port, set by preference or by Decode As."""
    def build(capture):
        capture.terminal_port = 50505
        capture.connect().request("EAC5 000001 0B")
    for options, expected in ((["-o", "quirel.port:50505"], ["getTofBias"]),
                              (["-d", "tcp.port==50505,quirel"], ["getTofBias"]), ([], [])):
        findings.same(f"ports {options}", infos_of(folder, build, *options), expected)


def check_half_captured(folder, findings):
    """Checks packets that were captured in part."""
    def build(capture):
        for keep in range(1, 8):
            capture.connect().segment(True, bytes.fromhex("EAC5 000003 0A 03E3"), keep=keep)
        connection = capture.connect()
        connection.request("EAC5 000001 0B")
        connection.segment(False, bytes.fromhex("EAC5 000002 03E9"), keep=6)
    findings.same("half captured", infos_of(folder, build), ["incomplete packet"] * 4 + [
        "request without command", "setTofBias", "setTofBias",
        "getTofBias", "getTofBias reply, 2 bytes"])


def check_every_length(folder, findings):
    """Checks each request and each reply at every shorter length."""
    path = os.path.join(folder, "lengths.pcap")
    sent = 0
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        for _, request, _, reply, *_ in EXCHANGES:
            asked, answered = (bytes.fromhex(packet)[5:135] for packet in (request, reply))
            for bodies in ([(asked[:cut], answered) for cut in range(len(asked) + 1)]
                           + [(asked, answered[:cut]) for cut in range(len(answered) + 1)]):
                for is_request, body in zip((True, False), bodies):
                    head = b"\xEA\xC5" + len(body).to_bytes(3, "big")
                    connection.segment(is_request, head + body)
                    sent += 1
    # Every run of tshark also fails on an error of the script.
    for passes in ([], ["-2"]):
        text = shark.tshark(folder, path, "-V", "-J", "quirel", *passes)
        findings.same(f"packets of every length {passes}", text.count("\nQuirel, "), sent)


def main():
    findings = shark.Findings()
    with tempfile.TemporaryDirectory() as folder:
        for check in (check_exchanges, check_simulator, check_odd_streams,
                      check_lost_replies, check_repeated_segment, check_shared_segment,
                      check_many_waiting, check_ports, check_half_captured, check_every_length):
            check(folder, findings)
    findings.finish()


if __name__ == "__main__":
    main()
