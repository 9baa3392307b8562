"""How long the recorder takes to answer while it is busy: shared by the benchmarks that load it."""

import pathlib
import socket
import struct
import threading
import time

# A request of a version that the recorder does not know: it is refused at once, so nothing but the wait for the event
# loop is measured.
REQUEST = b'{"version":0}'
PAUSE = 0.05


class ControlProbe:
    """Asks the recorder again and again while the probe is used as a context.

    `longest` is the longest answer, in seconds, without the time for which the recorder or this program was ready to
    run and other programs had the processors; `longest_by_clock` is the longest one with that time.
    """

    def __init__(self, process, runtime_folder):
        self.process = process
        self.socket = str(next(pathlib.Path(runtime_folder).rglob("*.socket")))
        self.longest = 0.0
        self.longest_by_clock = 0.0
        self.answers = 0
        self.ending = threading.Event()
        self.thread = threading.Thread(target=self.ask_again_and_again)

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *_):
        self.ending.set()
        self.thread.join()
        if not self.answers:
            raise RuntimeError("the recorder has not answered")

    def ask_again_and_again(self):
        while not self.ending.wait(PAUSE):
            kept, began = self.kept_waiting(), time.monotonic()
            self.ask()
            took = time.monotonic() - began
            self.longest = max(self.longest, took - (self.kept_waiting() - kept))
            self.longest_by_clock = max(self.longest_by_clock, took)
            self.answers += 1

    def kept_waiting(self):
        """Seconds for which the main thread of the recorder and this thread have waited for a
        processor so far."""
        files = (f"/proc/{self.process}/schedstat", "/proc/thread-self/schedstat")
        return sum(int(pathlib.Path(file).read_text().split()[1]) for file in files) / 1e9

    def ask(self):
        with socket.socket(socket.AF_UNIX) as connection:
            connection.settimeout(30)
            connection.connect(self.socket)
            connection.sendall(struct.pack(">I", len(REQUEST)) + REQUEST)
            if not connection.recv(1):
                raise RuntimeError("the recorder has not answered")
