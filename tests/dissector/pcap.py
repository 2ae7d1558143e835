"""Writes a capture file from literal bytes: TCP connections between a console and a terminal."""

import struct

RAW_IP = 101
SYN, PUSH_ACK = 0x02, 0x18


class Connection:
    """A TCP connection; the sequence numbers of each direction continue from segment to segment."""

    def __init__(self, capture, console_port):
        self.capture = capture
        self.console_port = console_port
        first = 10000 * capture.connections  # sequence numbers differ between connections
        self.next = {True: first + 1000, False: first + 5000}
        self.segment(True, b"", SYN)
        self.segment(False, b"", SYN | 0x10)

    def segment(self, to_terminal, data, flags=PUSH_ACK, again=0, keep=None):
        """Adds a segment and returns its frame number. `again`: number of bytes that are retransmitted.
        `keep`: number of bytes in the capture."""
        ports = (self.console_port, self.capture.terminal_port)
        hosts = (b"\x0a\0\0\x01", b"\x0a\0\0\x02")
        if not to_terminal:
            ports, hosts = ports[::-1], hosts[::-1]
        sequence = self.next[to_terminal] - again
        tcp = struct.pack(">HHIIBBHHH", *ports, sequence, self.next[not to_terminal], 0x50, flags,
                          65535, 0, 0)
        ip = struct.pack(">BBHHHBBH4s4s", 0x45, 0, 40 + len(data), 0, 0, 64, 6, 0, *hosts)
        self.next[to_terminal] = sequence + len(data) + (1 if flags & SYN else 0)
        return self.capture.add(ip + tcp + data, None if keep is None else 40 + keep)

    def request(self, text):
        return self.segment(True, bytes.fromhex(text))

    def reply(self, text):
        return self.segment(False, bytes.fromhex(text))


class Capture:
    def __init__(self, path):
        self.terminal_port = 20086
        self.file = open(path, "wb")
        self.file.write(struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 262144, RAW_IP))
        self.frames = 0
        self.now = 0  # milliseconds
        self.connections = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.file.close()

    def add(self, packet, keep=None):
        """Adds a frame at `now`, a millisecond after the last one unless `now` is set."""
        kept = packet if keep is None else packet[:keep]
        self.file.write(struct.pack("<IIII", 1000 + self.now // 1000, self.now % 1000 * 1000,
                                    len(kept), len(packet)) + kept)
        self.now += 1
        self.frames += 1
        return self.frames

    def connect(self, port=None):
        self.connections += 1
        return Connection(self, port or 40000 + self.connections)
