#!/usr/bin/env -S python3 -B
"""Reads streams made of literal bytes: one exchange of each command, streams that go astray, and
every request and reply cut at every length. Needs tshark, but no right to capture."""

import os
import tempfile

import pcap
import shark


def padded(text, width):
    return text.encode().ljust(width, b"\0").hex()


OK = "EAC5 000001 00"
USER = "00010203"  # 66051
RECORDS = ("00 000000" + padded("2024-07-01", 16) + padded("08:00:01", 16) + padded("Ann", 32)
           + padded("Büro", 32)
           + "01 000000" + padded("2024-07-02", 16) + padded("18:30:59", 16) + padded("Bo", 32)
           + "41" * 32)

# Request, what it shows, reply, what it shows, what the Info column says of it.
EXCHANGES = [
    ("EAC5 000001 00", {"name": ["getTofDistance"], "command": ["0x00"], "magic": ["0xeac5"],
                        "length": ["1"], "request": ["1"]},
     "EAC5 000002 0123", {"distance": ["291"], "length": ["2"], "request": ["0"]},
     "getTofDistance reply, 2 bytes"),
    ("EAC5 000001 01", {"name": ["getPalmprintImage"]},
     "EAC5 05EEC0" + "11" * 388800, {"palmprint_image": ["388800"]},
     "getPalmprintImage reply, 388800 bytes"),
    ("EAC5 000001 02", {"name": ["getPalmVeinImage"]},
     "EAC5 05EEC0" + "22" * 388800, {"vein_image": ["388800"]},
     "getPalmVeinImage reply, 388800 bytes"),
    ("EAC5 000001 03", {"name": ["getDualImages"]},
     "EAC5 0BDD80" + "33" * 777600, {"palmprint_image": ["388800"], "vein_image": ["388800"]},
     "getDualImages reply, 777600 bytes"),
    ("EAC5 000002 04 03", {"name": ["setMode"], "mode": ["3"]},
     "EAC5 000001 02", {"status": ["2"]}, "setMode reply, status 2 (unknown error)"),
    ("EAC5 000006 04 01" + USER, {"name": ["startEnroll"], "mode": ["1"], "user_id": ["66051"]},
     "EAC5 000001 18", {"status": ["24"]}, "startEnroll reply, status 24 (feature buffer full)"),
    ("EAC5 000006 04 06" + USER, {"name": ["startRemoteEnroll"], "mode": ["6"],
                                  "user_id": ["66051"]},
     "EAC5 000001 01", {"status": ["1"]}, "startRemoteEnroll reply, status 1 (busy)"),
    ("EAC5 000001 05", {"name": ["getMode"]}, "EAC5 000001 04", {"mode": ["4"]},
     "getMode reply, 1 byte"),
    ("EAC5 000001 06", {"name": ["getRtcTime"]},
     "EAC5 000006 38 03 04 05 06 07", {"clock": ["2026-03-04 05:06:07"]},
     "getRtcTime reply, 6 bytes"),
    ("EAC5 000007 07 37 0C 1F 17 3B 3A", {"name": ["setRtcTime"],
                                          "clock": ["2025-12-31 23:59:58"]},
     OK, {"status": ["0"]}, "setRtcTime reply, status 0 (success)"),
    ("EAC5 000007 08 C0A80117 EAB6", {"name": ["setDebugAddress"],
                                      "debug_address": ["192.168.1.23"], "debug_port": ["60086"]},
     OK, {}, "setDebugAddress reply, status 0 (success)"),
    ("EAC5 000003 0A 03E3", {"name": ["setTofBias"], "tof_bias": ["-5"]},
     OK, {}, "setTofBias reply, status 0 (success)"),
    ("EAC5 000001 0B", {"name": ["getTofBias"]}, "EAC5 000002 07D0", {"tof_bias": ["1000"]},
     "getTofBias reply, 2 bytes"),
    ("EAC5 000001 0E", {"name": ["clearUsers"]}, OK, {}, "clearUsers reply, status 0 (success)"),
    ("EAC5 000001 10", {"name": ["getUserList"]},
     "EAC5 00000D 00" + b'{"user": 12}'.hex(), {"json": ['{"user": 12}'], "status": ["0"]},
     "getUserList reply, status 0 (success), 12 bytes"),
    ("EAC5 000008 15" + b'{"a":1}'.hex(), {"name": ["setUserConfig"], "json": ['{"a":1}']},
     OK, {}, "setUserConfig reply, status 0 (success)"),
    ("EAC5 000001 16", {"name": ["getUserConfig"]}, "EAC5 000003 00 7B7D", {"json": ["{}"]},
     "getUserConfig reply, status 0 (success), 2 bytes"),
    ("EAC5 000001 17", {"name": ["getSystemInfo"]}, "EAC5 000003 00 7B7D", {"json": ["{}"]},
     "getSystemInfo reply, status 0 (success), 2 bytes"),
    ("EAC5 000001 18", {"name": ["getVendorConfig"]}, "EAC5 000003 00 7B7D", {"json": ["{}"]},
     "getVendorConfig reply, status 0 (success), 2 bytes"),
    ("EAC5 000003 19 7B7D", {"name": ["setVendorConfig"], "json": ["{}"]},
     OK, {}, "setVendorConfig reply, status 0 (success)"),
    ("EAC5 000001 1A", {"name": ["getOutputConfig"]}, "EAC5 000003 00 7B7D", {"json": ["{}"]},
     "getOutputConfig reply, status 0 (success), 2 bytes"),
    ("EAC5 000003 1B 7B7D", {"name": ["setOutputConfig"], "json": ["{}"]},
     "EAC5 000001 09", {"status": ["9"]}, "setOutputConfig reply, status 9 (unknown error)"),
    ("EAC5 000006 27" + USER + "04", {"name": ["getRemoteEnrollImages"], "user_id": ["66051"],
                                      "image_index": ["4"]},
     "EAC5 0BDD81 00" + "44" * 777600, {"first_image": ["388800"], "second_image": ["388800"]},
     "getRemoteEnrollImages reply, status 0 (success), 777600 bytes"),
    ("EAC5 000005 28" + USER, {"name": ["getRemoteFeatures"], "user_id": ["66051"]},
     "EAC5 002801 00" + "55" * 10240, {"features": ["10240"]},
     "getRemoteFeatures reply, status 0 (success), 10240 bytes"),
    ("EAC5 000009 2A 00" + USER + "AABBCC", {"name": ["importUserFeatures"], "kind": ["0"],
                                             "user_id": ["66051"], "feature_file": ["3"]},
     "EAC5 000001 16", {"status": ["22"]},
     "importUserFeatures reply, status 22 (feature buffer full)"),
    ("EAC5 000049 30 01020304 0A0B0C0D" + padded("Ann\0left over", 32) + "42" * 32,
     {"name": ["addUser"], "user_id": ["16909060"], "card": ["168496141"], "user_name": ["Ann"],
      "department": ["BBBBBBBBBBBBBBBBBBBBBBBBBBBBBBBB"]},
     "EAC5 000001 14", {"status": ["20"]}, "addUser reply, status 20 (user ID exists)"),
    ("EAC5 000005 31" + USER, {"name": ["deleteUser"], "user_id": ["66051"]},
     "EAC5 000001 15", {"status": ["21"]}, "deleteUser reply, status 21 (user ID does not exist)"),
    ("EAC5 000001 33", {"name": ["getEmptyUserId"]},
     "EAC5 000005 00 00010000", {"user_id": ["65536"]},
     "getEmptyUserId reply, status 0 (success), 4 bytes"),
    ("EAC5 000005 34" + USER, {"name": ["deleteUserFeatures"], "user_id": ["66051"]},
     "EAC5 000001 02", {"status": ["2"]}, "deleteUserFeatures reply, status 2 (wrong parameter)"),
    ("EAC5 000001 40", {"name": ["getRecordFileList"]}, "EAC5 000003 00 7B7D", {"json": ["{}"]},
     "getRecordFileList reply, status 0 (success), 2 bytes"),
    ("EAC5 000004 41 07E8 07", {"name": ["deleteMonthRecords"], "year": ["2024"], "month": ["7"]},
     OK, {}, "deleteMonthRecords reply, status 0 (success)"),
    ("EAC5 000001 42", {"name": ["clearRecords"]}, OK, {},
     "clearRecords reply, status 0 (success)"),
    ("EAC5 000008 43 07E8 0C 00000BB8", {"name": ["getMonthRecords"], "year": ["2024"],
                                         "month": ["12"], "start_index": ["3000"]},
     "EAC5 0000CB 00 0002" + RECORDS,
     {"record_count": ["2"], "record.type": ["0", "1"],
      "record.text1": ["2024-07-01", "2024-07-02"], "record.text2": ["08:00:01", "18:30:59"],
      "record.text3": ["Ann", "Bo"],
      "record.text4": ["Büro", "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"]},
     "getMonthRecords reply, status 0 (success), 202 bytes"),
    ("EAC5 000011 50" + padded("SN-000000000001", 16), {"name": ["setSerialNumber"],
                                                        "serial_number": ["SN-000000000001"]},
     OK, {}, "setSerialNumber reply, status 0 (success)"),
    ("EAC5 00022F 60" + padded("gate", 32) + "1417080E090500 15000A0B0C0D0E"
     + padded("QR-1", 512),
     {"name": ["addQrCode"], "qr_remark": ["gate"], "qr_start": ["2023-08-14 09:05:00"],
      "qr_end": ["2100-10-11 12:13:14"], "qr_data": ["QR-1"]},
     "EAC5 000001 1F", {"status": ["31"]}, "addQrCode reply, status 31 (duplicate QR code data)"),
    ("EAC5 000001 61", {"name": ["clearQrCodes"]}, OK, {},
     "clearQrCodes reply, status 0 (success)"),
    ("EAC5 000022 62 01" + padded("gate", 32), {"name": ["deleteQrCodeByRemark"],
                                                "selector": ["1"], "key": ["gate"]},
     "EAC5 000001 20", {"status": ["32"]},
     "deleteQrCodeByRemark reply, status 32 (QR code does not exist)"),
    ("EAC5 000022 62 02" + "43" * 32, {"name": ["deleteQrCodeByData"], "selector": ["2"],
                                       "key": ["CCCCCCCCCCCCCCCCCCCCCCCCCCCCCCCC"]},
     "EAC5 000001 1E", {"status": ["30"]},
     "deleteQrCodeByData reply, status 30 (unknown error)"),
    ("EAC5 000001 63", {"name": ["getQrCodeList"]}, "EAC5 000003 00 7B7D", {"json": ["{}"]},
     "getQrCodeList reply, status 0 (success), 2 bytes"),
    ("EAC5 000001 EF", {"name": ["rebootDevice"]}, OK, {},
     "rebootDevice reply, status 0 (success)"),
]

# A connection each: its segments, ">" from the console and "<" from the terminal; then, for each
# packet that is shown, the command's name (None: not known) and what is remarked on it.
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
    ("plain reply of nothing", ["> EAC5 000001 05", "< EAC5 000000"],
     [("getMode", []), ("getMode", ["Mode takes 1 byte, 0 left"])]),
    ("unknown command", ["> EAC5 000003 99 0102", "< EAC5 000001 02"],
     [("unknown command 0x99", ["Unknown command"]), ("unknown command 0x99", [])]),
    ("unknown selector", ["> EAC5 000002 62 07"],
     [("deleteQrCode", ["Key takes 32 bytes, 0 left"])]),
    ("truncated user", ["> EAC5 000007 30 00000001 0002"],
     [("addUser", ["Card number takes 4 bytes, 2 left"])]),
    ("enrollment without all of the user ID", ["> EAC5 000004 04 01 0000"],
     [("startEnroll", ["User ID takes 4 bytes, 2 left"])]),
    ("more than the command has", ["> EAC5 000004 05 010203"],
     [("getMode", ["3 bytes left over"])]),
    ("status in place of a picture", ["> EAC5 000001 01", "< EAC5 000001 01"],
     [("getPalmprintImage", []),
      ("getPalmprintImage", ["Palmprint image takes 388800 bytes, 1 left"])]),
    ("half a record", ["> EAC5 000008 43 07E8 01 00000000", "< EAC5 000006 00 0001 414243"],
     [("getMonthRecords", []),
      ("getMonthRecords", ["1 records are counted, 3 bytes of records came"])]),
    ("half a record count", ["> EAC5 000008 43 07E8 01 00000000", "< EAC5 000002 00 00"],
     [("getMonthRecords", []), ("getMonthRecords", ["Record count takes 2 bytes, 1 is left"])]),
    ("data behind a refusal", ["> EAC5 000001 33", "< EAC5 000005 01 00000007"],
     [("getEmptyUserId", []), ("getEmptyUserId", ["4 bytes left over"])]),
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

# A capture each: when a segment comes (ms) and what it is, "SYN" opens the same ports anew; then,
# for each packet, the command's name, the frame that it answers and what is remarked on it, by one
# that has seen the whole capture. The first segment is frame 3.
LOST_REPLIES = [
    ("lost reply",
     [(10, "> EAC5 000001 05"), (1010, "> EAC5 000001 0B"), (1012, "< EAC5 000002 03E9")],
     [("getMode", None, ["No reply before frame 4"]),
      ("getTofBias", None, ["The request in frame 3 has no reply yet"]),
      ("getTofBias", "4", [])]),
    ("slow reply",
     [(10, "> EAC5 000001 05"), (900, "> EAC5 000001 0B"), (902, "< EAC5 000001 04"),
      (903, "< EAC5 000002 03E9")],
     [("getMode", None, []), ("getTofBias", None, ["The request in frame 3 has no reply yet"]),
      ("getMode", "3", []), ("getTofBias", "4", [])]),
    ("slow list",
     [(10, "> EAC5 000001 63"), (1900, "> EAC5 000001 05"), (1902, "< EAC5 000003 00 7B7D")],
     [("getQrCodeList", None, []), ("getMode", None, ["The request in frame 3 has no reply yet"]),
      ("getQrCodeList", "3", [])]),
    ("lost list",
     [(10, "> EAC5 000001 63"), (2010, "> EAC5 000001 05"), (2011, "< EAC5 000001 04")],
     [("getQrCodeList", None, ["No reply before frame 4"]),
      ("getMode", None, ["The request in frame 3 has no reply yet"]), ("getMode", "4", [])]),
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


def own_fields(packet):
    """What a packet shows of its own, but for what depends on its place in the capture."""
    return {name[len("quirel."):]: values for name, values in packet.fields.items()
            if name.startswith("quirel.")}


def check_exchanges(folder, findings):
    path = os.path.join(folder, "exchanges.pcap")
    frames = []
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        for request, _, reply, _, _ in EXCHANGES:
            asked = connection.request(request)
            data = bytes.fromhex(reply)
            for at in range(0, len(data), 60000):
                answered = connection.segment(False, data[at:at + 60000])
            frames.append((asked, answered))

    found = shark.packets(folder, path, "-2")
    findings.same("number of packets", len(found), 2 * len(EXCHANGES))
    for i, (request, asked, reply, answered, info) in enumerate(EXCHANGES):
        name = asked["name"]
        question, answer = found[2 * i], found[2 * i + 1]
        what = f"{name[0]}, {info}"
        findings.same(what + ": frames", (question.frame, answer.frame), frames[i])
        findings.same(what + ": sizes", (question.size, answer.size),
                      (len(bytes.fromhex(request)), len(bytes.fromhex(reply))))
        findings.same(what + ": remarks", question.expert + answer.expert, [])
        shown = own_fields(question)
        findings.same(what + ": request", {key: shown.get(key) for key in asked}, asked)
        findings.same(what + ": answered in", shown.get("answered_in"), [str(frames[i][1])])
        shown = own_fields(answer)
        findings.same(what + ": reply", {key: shown.get(key) for key in answered}, answered)
        findings.same(what + ": reply to", shown.get("reply_to"), [str(frames[i][0])])
        findings.same(what + ": time", float(shown.get("time", ["nan"])[0]),
                      (frames[i][1] - frames[i][0]) / 1000)
        findings.same(what + ": name", shown.get("name"), name)

    expected = {}
    for (asked, answered), (*_, info) in zip(frames, EXCHANGES):
        expected[asked] = info.split(" reply", 1)[0]  # the request's is the command's name
        expected[answered] = info
    for passes in ([], ["-2"]):
        findings.same(f"Info columns {passes}", shark.infos(folder, path, *passes), expected)


def check_words(folder, findings):
    """Lines as a reader sees them, in the exchanges' capture."""
    packets = shark.packets(folder, os.path.join(folder, "exchanges.pcap"))
    lines = [line for packet in packets for line in packet.lines]
    for line in ("Mode: local recognition (3)", "Mode: local enrollment (1)",
                 "Mode: remote enrollment (6)", "Mode: remote recognition (4)",
                 "Command: 0x10 (getUserList)", "Status: 20 (user ID exists)",
                 "Status: 0 (success)", "Palm-vein image: 388800 bytes", "Type: Card (1)",
                 "Selector: by data (2)", "TOF bias: -5", "Debug address: 192.168.1.23"):
        findings.same(line, line in lines, True)
    # Wireshark's own JSON dissector took the document apart.
    findings.same("JSON key", "Key: user" in lines, True)


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
        # Read once, a request is shown before it is known that no reply comes.
        early = [(name, answers, [remark for remark in remarks if "before" not in remark])
                 for name, answers, remarks in expected]
        for passes, shown in (([], early), (["-2"], expected)):
            seen = [(packet.one("quirel.name"), packet.one("quirel.reply_to"), packet.expert)
                    for packet in shark.packets(folder, path, *passes)]
            findings.same(f"{what} {passes}", seen, shown)


def check_repeated_segment(folder, findings):
    """A retransmitted request is no second one; a connection of its own has its own requests."""
    path = os.path.join(folder, "repeated.pcap")
    with pcap.Capture(path) as capture:
        first, second = capture.connect(), capture.connect()
        first.request("EAC5 000001 05")
        first.segment(True, bytes.fromhex("EAC5 000001 05"), again=6)
        second.request("EAC5 000001 0B")
        first.reply("EAC5 000001 03")
        first.request("EAC5 000001 42")
        second.reply("EAC5 000002 03E9")
        first.reply("EAC5 000001 00")
    said = shark.infos(folder, path)
    findings.same("repeated segment", list(said.values()), [
        "getMode", "getTofBias", "getMode reply, 1 byte", "clearRecords",
        "getTofBias reply, 2 bytes", "clearRecords reply, status 0 (success)"])


def check_shared_segment(folder, findings):
    """A segment that ends one packet and holds two more."""
    path = os.path.join(folder, "shared.pcap")
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        connection.request("EAC5 000001 06 EAC5 000001 0B EAC5 000001 00")
        connection.reply("EAC5 000006 38 03 04")
        last = connection.reply("05 06 07 EAC5 000002 03E8 EAC5 000002 0010")
    for passes in ([], ["-2"]):
        findings.same(f"shared segment, Info {passes}", shark.infos(folder, path, *passes), {
            3: "getRtcTime; getTofBias; getTofDistance",
            last: "getRtcTime reply, 6 bytes; getTofBias reply, 2 bytes; "
                  "getTofDistance reply, 2 bytes"})
        names = [packet.one("quirel.name") for packet in shark.packets(folder, path, *passes)]
        findings.same(f"shared segment {passes}", names,
                      ["getRtcTime", "getTofBias", "getTofDistance"] * 2)


def check_ports(folder, findings):
    """A terminal that listens elsewhere is found by preference or by Decode As."""
    path = os.path.join(folder, "port.pcap")
    with pcap.Capture(path, terminal_port=50505) as capture:
        connection = capture.connect()
        connection.request("EAC5 000001 0B")
        connection.reply("EAC5 000002 03E9")
    for options, expected in ((["-o", "quirel.port:50505"], "getTofBias reply, 2 bytes"),
                              (["-d", "tcp.port==50505,quirel"], "getTofBias reply, 2 bytes"),
                              ([], None)):
        findings.same(f"ports {options}", shark.infos(folder, path, *options).get(4), expected)


def check_half_captured(folder, findings):
    """Packets of which the capture holds only the beginning."""
    path = os.path.join(folder, "half.pcap")
    request, reply = bytes.fromhex("EAC5 000003 0A 03E3"), bytes.fromhex("EAC5 000002 03E9")
    with pcap.Capture(path) as capture:
        for keep in range(1, len(request)):
            connection = capture.connect()
            connection.segment(True, request, keep=keep)
        connection = capture.connect()
        connection.request("EAC5 000001 0B")
        connection.segment(False, reply, keep=6)
    said = shark.infos(folder, path)
    findings.same("half captured", list(said.values()), [
        "incomplete packet", "incomplete packet", "incomplete packet", "incomplete packet",
        "request without command", "setTofBias", "setTofBias",
        "getTofBias", "getTofBias reply, 2 bytes"])


def check_without_reassembly(folder, findings):
    path = os.path.join(folder, "apart.pcap")
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        for part in ("EA", "C50000", "030A03E3", "EAC5 000003 0A", "03E3", "EAC5 000001 05"):
            connection.request(part)
    said = shark.infos(folder, path, "-o", "tcp.desegment_tcp_streams:false")
    findings.same("without reassembly", list(said.values()), [
        "incomplete packet", "no packet, 3 bytes", "no packet, 4 bytes", "setTofBias",
        "no packet, 2 bytes", "getMode"])


def check_every_length(folder, findings):
    """Each request and each reply, declared and sent one byte shorter and shorter."""
    path = os.path.join(folder, "lengths.pcap")
    sent = 0
    with pcap.Capture(path) as capture:
        connection = capture.connect()
        for request, _, reply, _, _ in EXCHANGES:
            bodies = [bytes.fromhex(packet)[5:] for packet in (request, reply)]
            lengths = [range(min(len(body), 130) + 1) for body in bodies]
            for cut_request in [None, *lengths[0]]:
                for cut_reply in [None] if cut_request is not None else lengths[1]:
                    for is_request, body, cut in ((True, bodies[0], cut_request),
                                                  (False, bodies[1][:130], cut_reply)):
                        part = body[:cut]
                        connection.segment(is_request, b"\xEA\xC5" + len(part).to_bytes(3, "big")
                                           + part)
                        sent += 1
    # That nothing in it is an error of the script is checked for every run of tshark.
    for passes in ([], ["-2"]):
        text = shark.tshark(folder, path, "-V", "-J", "quirel", *passes)
        findings.same(f"packets of every length {passes}", text.count("\nQuirel, "), sent)


def main():
    findings = shark.Findings()
    with tempfile.TemporaryDirectory() as folder:
        for check in (check_exchanges, check_words, check_odd_streams, check_lost_replies,
                      check_repeated_segment, check_shared_segment, check_ports,
                      check_half_captured, check_without_reassembly, check_every_length):
            check(folder, findings)
    findings.finish()


if __name__ == "__main__":
    main()
