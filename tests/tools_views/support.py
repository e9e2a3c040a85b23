"""Runs zorl2-inspect as a process, within bounds of memory and time."""

import os
import resource
import subprocess
import tempfile
import unittest

TOOL = os.environ["ZORL2_INSPECT"]
# Sanitizers reserve terabytes of address space and slow everything down.
SANITIZED = os.environ.get("ZORL2_SANITIZED") == "1"


def _limit(megabytes):
    if SANITIZED:
        return
    resource.setrlimit(resource.RLIMIT_AS, (megabytes << 20, megabytes << 20))


class ToolTest(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        self._folder = tempfile.TemporaryDirectory()
        self.addCleanup(self._folder.cleanup)

    def file(self, name, content):
        path = os.path.join(self._folder.name, name)
        with open(path, "wb") as out:
            out.write(content if isinstance(content, bytes) else content.encode())
        return path

    def run_tool(self, *arguments, given=b"", status=0, megabytes=512, seconds=60, env=None):
        """The finished process; its output as text. Checks the exit status and standard error:
        no crash, no sanitizer report, no stack trace."""
        done = subprocess.run(
            [TOOL, *arguments], input=given, capture_output=True,
            timeout=seconds * (10 if SANITIZED else 1), preexec_fn=lambda: _limit(megabytes),
            env=None if env is None else {**os.environ, **env})
        done.text = done.stdout.decode(errors="replace")
        done.errors = done.stderr.decode(errors="replace")
        self.assertIn(done.returncode, [0, 1, 2], done.errors[:2000])
        for line in done.errors.splitlines():
            self.assertTrue(line.startswith("zorl2-inspect: "), line)
        if status is not None:
            self.assertEqual(done.returncode, status, done.errors[:2000] + done.text[:2000])
        return done
