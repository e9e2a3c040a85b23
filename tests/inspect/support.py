"""Runs zorl2-inspect as a process, within bounds of memory and time."""

import fcntl
import os
import pty
import re
import resource
import select
import struct
import subprocess
import tempfile
import termios
import time
import unittest

TOOL = os.environ["ZORL2_INSPECT"]
SOURCE = os.environ["ZORL2_SOURCE_DIR"]
SAMPLES = os.path.join(SOURCE, "tools", "samples")
# Sanitizers reserve terabytes of address space and slow everything down.
SANITIZED = os.environ.get("ZORL2_SANITIZED") == "1"
# How many seconds an output may be late on a busy machine.
PATIENCE = 60


def limit_memory(megabytes):
    if SANITIZED:
        return
    resource.setrlimit(resource.RLIMIT_AS, (megabytes << 20, megabytes << 20))


def on_terminal(arguments, feed=None, env=None, stdout_too=True):
    """Runs the tool with its outputs on a pseudo-terminal. Returns the output and the exit status.
    feed yields bytes for standard input and patterns (str) that new output must match before feed
    continues. It may be a function that gets the process and returns such a feed."""
    master, slave = pty.openpty()
    environment = {k: v for k, v in os.environ.items() if k != "NO_COLOR"}
    environment.update({"TERM": "xterm", **(env or {})})
    process = subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE,
                               stdout=slave if stdout_too else subprocess.DEVNULL, stderr=slave,
                               env=environment)
    os.close(slave)
    if callable(feed):
        feed = feed(process)
    seen = b""

    def drain(wait):
        nonlocal seen
        while select.select([master], [], [], wait)[0]:
            try:
                got = os.read(master, 65536)
            except OSError:
                return False
            if not got:
                return False
            seen += got
        return True

    matched = 0
    for block in feed or ():
        if isinstance(block, str):
            end = time.monotonic() + PATIENCE
            while not (match := re.compile(block.encode()).search(seen, matched)):
                assert time.monotonic() < end, (block, seen)
                drain(0.05)
            matched = match.end()
            continue
        process.stdin.write(block)
        process.stdin.flush()
        drain(0)
    process.stdin.close()
    while drain(0.2) and process.poll() is None:
        pass
    drain(0)
    os.close(master)
    return seen.decode(errors="replace"), process.wait(PATIENCE)


def position(process, path):
    """How many bytes of the file the process has read; None while it has not opened the file."""
    folder = f"/proc/{process.pid}/fd"
    try:
        for name in os.listdir(folder):
            if os.readlink(os.path.join(folder, name)) == os.path.realpath(path):
                with open(f"/proc/{process.pid}/fdinfo/{name}") as info:
                    return int(info.readline().split()[1])
    except FileNotFoundError:
        pass  # closed in the meantime
    return None


class ToolTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.addCleanup(self._folder.cleanup)

    def path(self, name):
        return os.path.join(self._folder.name, name)

    def file(self, name, content):
        """Writes a file with the content, which is bytes or text. Returns its path."""
        with open(self.path(name), "wb") as out:
            out.write(content if isinstance(content, bytes) else content.encode())
        return self.path(name)

    def run_tool(self, *arguments, given=b"", status=0, megabytes=512, seconds=60, env=None):
        """Runs the tool. Returns the finished process with its output as text. Checks the exit status
        and standard error: no crash, no sanitizer report, no stack trace."""
        done = subprocess.run(
            [TOOL, *arguments], input=given, capture_output=True,
            timeout=seconds * (10 if SANITIZED else 1), preexec_fn=lambda: limit_memory(megabytes),
            env=None if env is None else {**os.environ, **env})
        done.text = done.stdout.decode(errors="replace")
        done.errors = done.stderr.decode(errors="replace")
        self.assertIn(done.returncode, [0, 1, 2], done.errors[:2000])
        for line in done.errors.splitlines():
            self.assertTrue(line.startswith("zorl2-inspect: "), line)
        if status is not None:
            self.assertEqual(done.returncode, status, done.errors[:2000] + done.text[:2000])
        return done

    def peak_memory(self, *arguments, stream):
        """The most memory, in kilobytes, that the tool has used when it has read the blocks of the
        stream from standard input; and its output."""
        out = self.path("out")
        with open(out, "wb") as output:
            process = subprocess.Popen([TOOL, *arguments, "-"], stdin=subprocess.PIPE, stdout=output)
        for block in stream:
            process.stdin.write(block)
        process.stdin.flush()
        unread = 1
        while unread > 0 and process.poll() is None:
            time.sleep(0.001)
            unread, = struct.unpack("i", fcntl.ioctl(process.stdin, termios.FIONREAD, bytes(4)))
        # The usage that wait4() gives begins with the size of this process.
        with open(f"/proc/{process.pid}/status") as status:
            peak = next(line for line in status if line.startswith("VmHWM:"))
        process.stdin.close()
        self.assertIn(process.wait(PATIENCE), (0, 1))
        with open(out, encoding="utf-8", errors="replace") as output:
            return int(peak.split()[1]), output.read()

    def assert_error(self, done, *parts):
        """Checks status 2 and one error line with all the parts. Only lines with the inferred type may
        precede it. Returns the error line."""
        self.assertEqual(done.returncode, 2, done.text[:2000] + done.errors[:2000])
        *notes, error = done.errors.splitlines()
        self.assertTrue(all(" inferred: " in note for note in notes), notes)
        for part in parts:
            self.assertIn(part, error)
        return error

    def rejected(self, *arguments, parts=(), **bounds):
        """Runs the tool, which must end with such an error. Returns the error line."""
        return self.assert_error(self.run_tool(*arguments, status=2, **bounds), *parts)
