"""Shared by the tests of this folder: a user with folders of her own, and a recorder."""

import json
import os
import pathlib
import plistlib
import signal
import struct
import subprocess
import tempfile
import threading
import time

PATIENCE = 60


class Clock:
    """The simulated time of day of all programs of a user: runs fast and can jump (Preload.cpp)."""

    def __init__(self, path, speed=1.0):
        self.path = path
        self.base = time.time()
        self.speed = speed
        self.shift = 0.0
        self.jump(0)

    def jump(self, seconds):
        self.shift += seconds
        # The file is written in place, because the programs have it mapped.
        with open(self.path, "r+b" if self.path.exists() else "wb") as file:
            file.write(struct.pack("ddd", self.base, self.speed, self.shift))


class User:
    def __init__(self, program, preload=None, where=None):
        self.program = str(pathlib.Path(program).resolve())
        self.holder = tempfile.TemporaryDirectory(prefix="tidemark-", dir=where)
        self.root = pathlib.Path(self.holder.name).resolve()
        for name in ("run", "data", "config"):
            (self.root / name).mkdir(mode=0o700)
        self.journal = self.root / "data/Tidemark/journal.json"
        self.measurements = self.root / "data/Tidemark/storage-measurements.json"
        self.settings = self.root / "config/Tidemark/settings.json"
        self.environment = {
            "HOME": str(self.root),
            "LC_ALL": "C.UTF-8",
            "TZ": "UTC",
            "XDG_DATA_HOME": str(self.root / "data"),
            "XDG_CONFIG_HOME": str(self.root / "config"),
            "XDG_RUNTIME_DIR": str(self.root / "run"),
            # There is no system bus, so that the machine's services have no influence.
            "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/nonexistent",
        }
        if preload:
            self.environment["LD_PRELOAD"] = str(pathlib.Path(preload).resolve())

    def use_clock(self, speed=1.0):
        path = self.root / "clock"
        clock = Clock(path, speed)
        self.environment["TIDEMARK_TEST_CLOCK"] = str(path)
        return clock

    def command(self, *words, more=None, **options):
        return subprocess.run(
            [self.program, *words], env=self.environment | (more or {}), text=True,
            capture_output=True, timeout=PATIENCE, **options)

    def succeed(self, *words):
        done = self.command(*words)
        assert done.returncode == 0, (words, done.stdout, done.stderr)
        return done.stdout

    def document(self):
        return json.loads(self.journal.read_text())

    # Changes on the user's disk.

    def bundle(self, name, version):
        contents = self.root / f"Applications/{name}.app/Contents"
        contents.mkdir(parents=True, exist_ok=True)
        with open(contents / "Info.plist", "wb") as file:
            plistlib.dump({"CFBundleIdentifier": f"org.example.{name}", "CFBundleName": name,
                           "CFBundleShortVersionString": version, "CFBundleVersion": "1"}, file)

    def agent(self, label, program):
        folder = self.root / "LaunchAgents"
        folder.mkdir(exist_ok=True)
        with open(folder / f"{label}.plist", "wb") as file:
            plistlib.dump({"Label": label, "Program": program}, file)

    def grow(self, name, gigabytes):
        """Sets the size of a sparse file."""
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.touch()
        os.truncate(path, int(gigabytes * 1_000_000_000))


class Recorder:
    """A running recorder and its log. `words` is a command line to run instead of the user's
    program."""

    def __init__(self, user, more=None, words=None):
        self.process = subprocess.Popen(
            words or [user.program, "run"], env=user.environment | (more or {}), text=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
        self.lines = []
        self.changed = threading.Condition()
        self.reader = threading.Thread(target=self._read, daemon=True)
        self.reader.start()
        self.seen = 0

    def _read(self):
        for line in self.process.stderr:
            with self.changed:
                self.lines.append(line.rstrip())
                self.changed.notify_all()
        with self.changed:
            self.lines.append("(ended)")
            self.changed.notify_all()

    def wait_for(self, *texts, patience=PATIENCE):
        """Returns the next line that contains one of `texts`, skipping other lines."""
        deadline = time.monotonic() + patience
        with self.changed:
            while True:
                while self.seen < len(self.lines):
                    self.seen += 1
                    line = self.lines[self.seen - 1]
                    if any(text in line for text in texts):
                        return line
                    assert line != "(ended)", self.lines
                left = deadline - time.monotonic()
                assert left > 0, (texts, self.lines[-20:])
                self.changed.wait(left)

    def resident(self):
        with open(f"/proc/{self.process.pid}/status") as status:
            for line in status:
                if line.startswith("VmRSS:"):
                    return int(line.split()[1]) * 1024
        return 0

    def stop(self, how=signal.SIGTERM):
        self.process.send_signal(how)
        status = self.process.wait(PATIENCE)
        self.reader.join(PATIENCE)
        return status
