#!/usr/bin/env -S python3 -B
"""Captures a session with the simulated terminal on loopback and reads it. Argument: the simulated
terminal's program. Skipped where there is no tshark or no right to capture."""

import contextlib
import fcntl
import os
import select
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import termios
import time

import shark

PATIENCE = 10  # seconds for anything that takes a moment


def padded(text, width):
    return text.encode().ljust(width, b"\0").hex()


NEW_USER = "FFFFFF01"  # 4294967041
NO_USER = "FFFFFF02"
QR_CODE = padded("dissector", 32) + "1417080E090500 15000A0B0C0D0E" + padded("QR-DISSECTOR", 512)
ADD_USER = "EAC5 000049 30" + NEW_USER + "00000007" + padded("Ann", 32) + padded("Lab", 32)

# Request; name; the reply's status, None where it has none or either is right; some fields of the
# request; some fields of the reply. Where the clock is read it has run on since it was set.
SESSION = [
    ("EAC5 000001 00", "getTofDistance", None, {}, {}),
    ("EAC5 000001 01", "getPalmprintImage", None, {}, {"palmprint_image": "388800"}),
    ("EAC5 000001 02", "getPalmVeinImage", None, {}, {"vein_image": "388800"}),
    ("EAC5 000001 03", "getDualImages", None, {},
     {"palmprint_image": "388800", "vein_image": "388800"}),
    ("EAC5 000002 04 03", "setMode", 0, {"mode": "3"}, {}),
    ("EAC5 000001 05", "getMode", None, {}, {"mode": "3"}),
    ("EAC5 000007 07 3D 05 06 07 08 09", "setRtcTime", 0, {"clock": "2031-05-06 07:08:09"}, {}),
    ("EAC5 000001 06", "getRtcTime", None, {}, {"clock": "2031-05-06 07:0"}),
    ("EAC5 000007 08 00000000 0000", "setDebugAddress", 0,
     {"debug_address": "0.0.0.0", "debug_port": "0"}, {}),
    ("EAC5 000003 0A 03E3", "setTofBias", 0, {"tof_bias": "-5"}, {}),
    ("EAC5 000001 0B", "getTofBias", None, {}, {"tof_bias": "-5"}),
    ("EAC5 000001 10", "getUserList", 0, {}, {"json": "{"}),
    ("EAC5 000001 16", "getUserConfig", 0, {}, {"json": "{"}),
    ("EAC5 000003 15 7B7D", "setUserConfig", 0, {"json": "{}"}, {}),
    ("EAC5 000001 17", "getSystemInfo", 0, {}, {"json": "{"}),
    ("EAC5 000001 18", "getVendorConfig", 0, {}, {"json": "{"}),
    ("EAC5 000003 19 7B7D", "setVendorConfig", 0, {"json": "{}"}, {}),
    ("EAC5 000001 1A", "getOutputConfig", 0, {}, {"json": "{"}),
    ("EAC5 000003 1B 7B7D", "setOutputConfig", 0, {"json": "{}"}, {}),
    ("EAC5 000001 33", "getEmptyUserId", 0, {}, {}),
    (ADD_USER, "addUser", 0, {"user_id": "4294967041", "card": "7", "user_name": "Ann",
                              "department": "Lab"}, {}),
    (ADD_USER, "addUser", 20, {}, {}),
    ("EAC5 000005 34" + NO_USER, "deleteUserFeatures", 21, {"user_id": "4294967042"}, {}),
    ("EAC5 002806 2A 00" + NO_USER + "5A" * 10240, "importUserFeatures", 21,
     {"kind": "0", "user_id": "4294967042", "feature_file": "10240"}, {}),
    ("EAC5 000006 27" + NO_USER + "03", "getRemoteEnrollImages", 2, {"image_index": "3"}, {}),
    ("EAC5 000005 28" + NO_USER, "getRemoteFeatures", 2, {"user_id": "4294967042"}, {}),
    ("EAC5 000005 31" + NEW_USER, "deleteUser", 0, {"user_id": "4294967041"}, {}),
    ("EAC5 000005 31" + NEW_USER, "deleteUser", 21, {}, {}),
    ("EAC5 000006 04 01" + NO_USER, "startEnroll", 21, {"mode": "1", "user_id": "4294967042"}, {}),
    ("EAC5 000001 40", "getRecordFileList", 0, {}, {"json": "{"}),
    ("EAC5 000008 43 07CF 0C 00000005", "getMonthRecords", 0,
     {"year": "1999", "month": "12", "start_index": "5"}, {"record_count": "0"}),
    ("EAC5 000004 41 07CF 0C", "deleteMonthRecords", None, {"year": "1999", "month": "12"}, {}),
    ("EAC5 000001 42", "clearRecords", 0, {}, {}),
    ("EAC5 00022F 60" + QR_CODE, "addQrCode", 0,
     {"qr_remark": "dissector", "qr_start": "2023-08-14 09:05:00",
      "qr_end": "2100-10-11 12:13:14", "qr_data": "QR-DISSECTOR"}, {}),
    ("EAC5 00022F 60" + QR_CODE, "addQrCode", 31, {}, {}),
    ("EAC5 000001 63", "getQrCodeList", 0, {}, {"json": "{"}),
    ("EAC5 000022 62 01" + padded("dissector", 32), "deleteQrCodeByRemark", 0,
     {"selector": "1", "key": "dissector"}, {}),
    ("EAC5 000022 62 01" + padded("dissector", 32), "deleteQrCodeByRemark", 32, {}, {}),
    ("EAC5 000022 62 02" + padded("QR-DISSECTOR", 32), "deleteQrCodeByData", 32,
     {"selector": "2", "key": "QR-DISSECTOR"}, {}),
    ("EAC5 000001 61", "clearQrCodes", 0, {}, {}),
    ("EAC5 000011 50" + padded("DISSECTOR000001", 16), "setSerialNumber", 0,
     {"serial_number": "DISSECTOR000001"}, {}),
    ("EAC5 000001 7F", "unknown command 0x7f", 2, {}, {}),
    ("EAC5 000001 0E", "clearUsers", 0, {}, {}),
    # What may keep the terminal busy comes last.
    ("EAC5 000006 04 06" + NO_USER, "startRemoteEnroll", None,
     {"mode": "6", "user_id": "4294967042"}, {}),
    ("EAC5 000001 EF", "rebootDevice", 0, {}, {}),
]
IN_BYTES = "EAC5 000007 08 00000000 0000"  # a request whose bytes are sent one by one
JOINED = "EAC5 000001 05 EAC5 000001 0B"   # two requests sent at once


def wait_until(what, condition):
    deadline = time.monotonic() + PATIENCE
    while not condition():
        assert time.monotonic() < deadline, "in vain: " + what
        time.sleep(0.01)


@contextlib.contextmanager
def terminal(program):
    """The simulated terminal; yields its port."""
    process = subprocess.Popen([program, "--port", "0"], stdout=subprocess.PIPE)
    try:
        assert select.select([process.stdout], [], [], PATIENCE)[0], "no word from the terminal"
        greeting = process.stdout.readline().decode()
        assert greeting.startswith("Listening on 127.0.0.1:"), greeting
        yield int(greeting.rsplit(":", 1)[1])
    finally:
        process.kill()
        process.wait()
        process.stdout.close()


class Recording:
    """A capture on loopback. Datagrams that the test sends to itself tell how far it has come."""

    def __init__(self, folder, port):
        self.path = os.path.join(folder, "session.pcapng")
        self.marker = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.marker.bind(("127.0.0.1", 0))
        loopback = "lo0" if sys.platform == "darwin" else "lo"
        capture_filter = f"tcp port {port} or udp port {self.marker.getsockname()[1]}"
        try:
            self.process = subprocess.Popen(
                [shark.need("dumpcap"), "-q", "-i", loopback, "-B", "32", "-f", capture_filter,
                 "-w", self.path],
                stderr=subprocess.PIPE, env=shark.environment(folder))
        except PermissionError as error:
            shark.skip(f"no right to capture: {error}")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.marker.close()
        self.process.kill()
        self.process.wait()
        self.process.stderr.close()

    def holds(self, mark):
        if self.process.poll() is not None:
            self.explain_end()
        self.marker.sendto(mark, self.marker.getsockname())
        if not os.path.exists(self.path):
            return False
        with open(self.path, "rb") as file:
            return mark in file.read()

    def explain_end(self):
        said = self.process.stderr.read().decode()
        for reason in ("permission", "Operation not permitted", "There are no interfaces"):
            if reason in said:
                shark.skip("no right to capture: " + " ".join(said.split()))
        raise AssertionError("dumpcap ended: " + said)

    def await_mark(self, mark):
        wait_until("to find the mark in the capture", lambda: self.holds(mark))

    def finish(self):
        """Everything up to the mark is in the file then."""
        self.await_mark(b"the session is over")
        self.process.send_signal(signal.SIGINT)
        self.process.wait(PATIENCE)
        return self.path


class Client:
    def __init__(self, port):
        self.socket = socket.create_connection(("127.0.0.1", port), PATIENCE)
        self.socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.socket.close()

    def receive(self, size):
        data = bytearray()
        while len(data) < size:
            piece = self.socket.recv(size - len(data))
            assert piece, f"the terminal closed the connection after {bytes(data)!r}"
            data += piece
        return bytes(data)

    def reply(self):
        head = self.receive(5)
        return head + self.receive(int.from_bytes(head[2:], "big"))

    def ask(self, text):
        self.socket.sendall(bytes.fromhex(text))
        return self.reply()

    def ask_in_bytes(self, text):
        """A byte leaves when the one before it was acknowledged: a segment each."""
        for byte in bytes.fromhex(text):
            self.socket.sendall(bytes([byte]))
            wait_until("to be acknowledged", lambda: not self.unacknowledged())
        return self.reply()

    def unacknowledged(self):
        return struct.unpack("i", fcntl.ioctl(self.socket, termios.TIOCOUTQ, b"\0" * 4))[0]


def hold_session(port):
    with Client(port) as client:
        client.ask_in_bytes(IN_BYTES)
        client.socket.sendall(bytes.fromhex(JOINED))
        client.reply()
        client.reply()
        return [client.ask(request) for request, *_ in SESSION]


def check_pieces(packets, findings):
    """The request sent byte by byte, then the two sent at once."""
    findings.same("names of pieces", [packet.one("quirel.name") for packet in packets],
                  ["setDebugAddress", "setDebugAddress", "getMode", "getTofBias", "getMode",
                   "getTofBias"])
    findings.same("joined", packets[2].frame, packets[3].frame)
    findings.same("matched", [packet.one("quirel.reply_to") for packet in packets[4:]],
                  [str(packets[2].frame)] * 2)
    findings.same("debug address in pieces", packets[0].one("quirel.debug_address"), "0.0.0.0")


def check_exchange(row, reply, question, answer, findings):
    request, name, status, asked, answered = row
    shown_status = answer.one("quirel.status")
    findings.same(name + ": frames", (question.one("quirel.answered_in"),
                                      answer.one("quirel.reply_to")),
                  (str(answer.frame), str(question.frame)))
    findings.same(name + ": sizes", (question.size, answer.size),
                  (len(bytes.fromhex(request)), len(reply)))
    if status is not None:
        findings.same(name + ": status", shown_status, str(status))
    elif shown_status is not None:
        findings.same(name + ": status as it came", shown_status, str(reply[5]))
    for packet, expected in ((question, asked), (answer, answered)):
        for field, value in expected.items():
            shown = packet.one("quirel." + field)
            if field in ("json", "clock") and packet is answer:
                shown = shown and shown[:len(value)]
            findings.same(f"{name}: {field}", shown, value)
    remarks = ["Unknown command"] if name.startswith("unknown") else []
    findings.same(name + ": remarks", question.expert + answer.expert, remarks)


def check_big_replies(folder, path, options, findings):
    """Pictures come in many segments and are one packet each."""
    text = shark.tshark(folder, path, *options, "-Y", "quirel.palmprint_image || quirel.vein_image",
                        "-T", "fields", "-e", "tcp.reassembled.length")
    findings.same("reassembled pictures", text.split(), ["388805", "388805", "777605"])
    text = shark.tshark(folder, path, *options, "-Y", "quirel.request == 1", "-T", "fields", "-e",
                        "tcp.segment.count")
    findings.same("segments of the first request", text.split("\n")[0], "12")


def check_infos(folder, path, options, findings):
    said = list(shark.infos(folder, path, *options).values())
    for info in ("getDualImages", "getDualImages reply, 777600 bytes", "getMode; getTofBias",
                 "addUser reply, status 20 (user ID exists)",
                 "getRemoteFeatures reply, status 2 (wrong parameter)",
                 "getMonthRecords reply, status 0 (success), 2 bytes",
                 "deleteQrCodeByData reply, status 32 (QR code does not exist)"):
        findings.same("Info: " + info, info in said, True)


def check_capture(folder, path, options, replies, findings):
    packets = shark.packets(folder, path, *options, "-2")
    findings.same("names in order",
                  [(packet.one("quirel.name"), packet.one("quirel.request"))
                   for packet in packets[6:]],
                  [pair for row in SESSION for pair in ((row[1], "1"), (row[1], "0"))])
    if findings.wrong:
        return
    check_pieces(packets[:6], findings)
    for i, (row, reply) in enumerate(zip(SESSION, replies)):
        check_exchange(row, reply, packets[6 + 2 * i], packets[7 + 2 * i], findings)
    check_big_replies(folder, path, options, findings)
    check_infos(folder, path, options, findings)


def main():
    shark.need("tshark")
    findings = shark.Findings()
    with tempfile.TemporaryDirectory() as folder, terminal(sys.argv[1]) as port:
        with Recording(folder, port) as recording:
            recording.await_mark(b"the capture is ready")
            replies = hold_session(port)
            path = recording.finish()
        check_capture(folder, path, ["-o", f"quirel.port:{port}"], replies, findings)
    findings.finish()


if __name__ == "__main__":
    main()
