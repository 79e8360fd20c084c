"""A main application that corrects two words, written from docs/wire-formats.md alone.

It serves until SIGTERM, a minute at most, and prints its longest pause between two looks at the
request bits, in milliseconds. Folder and key offset must be unused: it takes nothing over.
"""
import ctypes
import glob
import os
import re
import select
import signal
import socket
import struct
import time

TOOL, TEXT = 880, 893
SIZES = {TOOL: 376, TEXT: 400, 896: 408, 897: 384, 899: 708}
IPC_CREAT, IPC_RMID, SECONDS_TO_LIVE = 0o1000, 0, 60
BigEndianWord = ctypes.c_uint32.__ctype_be__
REQUESTS, PUBLISH, TEXT_CHANGED, READY, SWITCHES, SCAN = 1, 6, 11, 42, 49, 54  # fields
SCAN_BIT, SPELLING, COMPLETION = 1 << 16, 0x2, 0x40
SERVER_PORT = "Q7T2M4K9W1.com.tallowmere.Quorvane.server"
OWN_PORT = "Q7T2M4K9W1.com.tallowmere.QorvInPortServer1"
ANNOUNCEMENT = ("quorvane-process 1\npid={0}\nserial=1:{0}\nname=Quorvane\nsignature=QVPX\n"
                "type=APPL\nbundle=com.tallowmere.quorvane\n")
INPUT_METHOD = "bundle=com.tallowmere.inputmethod.Quorvane\n"
CORRECTIONS = {b"teh": b"the", b"mistke": b"mistake"}
ENDED_WORD = re.compile(rb'(?:^|[ \r\t("])([A-Za-z]+)[ \r\t.,;:!?)"]$')

GREEDY = "GREEDY" in os.environ  # replaces more than there is, and says so only in the message
HELD_UP = "HELD_UP" in os.environ  # as by a busy machine, and trusting the bit alone

libc = ctypes.CDLL(None, use_errno=True)
libc.shmat.restype = ctypes.c_void_p


def segment_id(key, size=0, flags=0):
    offset = int(os.environ["QUORVANE_KEY_OFFSET"])
    return libc.shmget(key + offset, ctypes.c_size_t(size), flags)


def make_segment(key, size):
    """A new shared segment filled with zeros, as an array of bytes."""
    address = libc.shmat(segment_id(key, size, IPC_CREAT | 0o600), None, 0)
    if address == ctypes.c_void_p(-1).value:
        raise OSError(ctypes.get_errno(), "shared segment")
    ctypes.memset(address, 0, size)
    return (ctypes.c_ubyte * size).from_address(address)


def remove_segments():
    """Removes the segments and returns how many there were."""
    return sum(libc.shmctl(segment_id(key), IPC_RMID, None) == 0 for key in SIZES)


def path(name):
    return os.path.join(os.environ["QUORVANE_RUNTIME_DIR"], name)


class MainApplication:
    def __init__(self):
        self.ended = False
        segments = {key: make_segment(key, size) for key, size in SIZES.items()}
        self.text = segments[TEXT]
        self.numbers = (BigEndianWord * 2).from_buffer(self.text)  # cursor and length
        self.fields = (BigEndianWord * 77).from_buffer(segments[TOOL], 68)
        self.server = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        self.server.bind(path(SERVER_PORT))
        self.server.listen()
        self.sockets = [self.server]
        self.fields[PUBLISH] = self.fields[READY] = 1
        with open(os.open(path(".new"), os.O_WRONLY | os.O_CREAT, 0o600), "w") as file:
            file.write(ANNOUNCEMENT.format(os.getpid()))
        os.rename(path(".new"), path("%d.process" % os.getpid()))

    def end(self, *_):
        self.ended = True

    def run(self):
        longest, last = 0.0, time.monotonic()
        end = last + SECONDS_TO_LIVE
        while not self.ended and last < end:
            if self.fields[SCAN] & SCAN_BIT:
                self.scan(last + 0.06)
            elif self.fields[REQUESTS]:  # none of them concerns an application without windows
                self.fields[REQUESTS] = 0
            for ready in select.select(self.sockets, [], [], 0.001)[0]:
                self.serve(ready)
            longest, last = max(longest, time.monotonic() - last), time.monotonic()
        return longest

    def serve(self, ready):
        if ready is self.server:
            self.sockets.append(self.server.accept()[0])
            return
        request = ready.recv(24 + 8)
        if not request:
            self.sockets.remove(ready)
        elif request[7] == 1:
            ready.send(b"")

    def scan(self, deadline):
        fix = self.find_fix()
        port = fix and self.connect_input_method()
        if HELD_UP:
            deadline = self.await_next_scan() + 0.06
        if (port and self.fields[SCAN] & SCAN_BIT and time.monotonic() < deadline
                and (HELD_UP or self.typed() == fix[0])):
            self.send(port, *fix)
        self.fields[REQUESTS] &= ~SCAN_BIT
        self.fields[SCAN] &= ~SCAN_BIT

    def await_next_scan(self):
        """The bit that is set then belongs to another text than the one that was read."""
        end = time.monotonic() + 0.5
        for wanted in (0, SCAN_BIT):
            while self.fields[SCAN] & SCAN_BIT != wanted and time.monotonic() < end:
                time.sleep(0.0002)
        return time.monotonic()

    def typed(self):
        return bytes(self.text[8:8 + self.numbers[0]])

    def find_fix(self):
        """The session text before the caret, its part before the wrong word, and the new end."""
        cursor, length = self.numbers
        text = self.typed()
        word = ENDED_WORD.search(text)
        if (not word or not cursor <= length <= 384 or self.text[392] != text[-1]
                or self.fields[SWITCHES] & (SPELLING | COMPLETION) != SPELLING
                or word[1] not in CORRECTIONS):
            return None
        return text, text[:word.start(1)], CORRECTIONS[word[1]] + text[-1:]

    def connect_input_method(self):
        for name in glob.glob(path("*.process")):
            with open(name, encoding="ascii") as file:
                if file.read().endswith(INPUT_METHOD):
                    port = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
                    port.connect(path(OWN_PORT + os.path.basename(name).split(".")[0]))
                    return port
        return None

    def send(self, port, old, start, end):
        """Changes the session text, and has the input method change the document."""
        new, count = start + end, len(old) - len(start)
        if GREEDY:
            port.send(struct.pack(">III", 202, 0, count + 1000) + end)
            return
        self.text[8:8 + len(new)] = new
        self.numbers[0] = len(new)
        if len(new) != len(old):
            self.numbers[1] = len(new)
        self.fields[TEXT_CHANGED] = 1
        port.send(struct.pack(">III", 202, 0, count) + end.replace(b"\r", b"\n"))

    def close(self):
        os.unlink(path("%d.process" % os.getpid()))
        self.fields[READY] = self.fields[PUBLISH] = 0
        self.server.close()
        os.unlink(path(SERVER_PORT))
        remove_segments()


if __name__ == "__main__":
    main_application = MainApplication()
    signal.signal(signal.SIGTERM, main_application.end)
    print(round(1000 * main_application.run()))
    main_application.close()
