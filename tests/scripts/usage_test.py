"""usage_test.py SOURCE_DIR: every script prints a usage text for --help, rejects an argument that it
does not know, and changes nothing in either case."""
import os
import stat
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(sys.argv.pop(1)).resolve()
# Commands that a script runs first. A script that ignores its arguments would call one of them.
STUBS = ("apt-get", "cmake", "ctest", "ninja", "protoc", "sudo", "clang-format", "nm", "abidw")


def scripts():
    candidates = [*SOURCE.glob("scripts/*"), *SOURCE.glob("packaging/*"), SOURCE / ".ci/run"]
    return sorted(str(p.relative_to(SOURCE)) for p in candidates
                  if p.is_file() and os.access(p, os.X_OK))


def state(tree):
    """The size and the time of the last change of each file."""
    return {str(p): (status.st_size, status.st_ctime_ns)
            for p in tree.rglob("*") for status in (p.lstat(),) if stat.S_ISREG(status.st_mode)}


class Usage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.tree = Path(cls.folder.name) / "tree"
        subprocess.run([SOURCE / "tests/install/copy-tree.sh", SOURCE, cls.tree], check=True)
        stubs = Path(cls.folder.name) / "stubs"
        stubs.mkdir()
        for name in STUBS:
            stub = stubs / name
            stub.write_text('#!/bin/sh\necho "$0 was run" >&2\nexit 99\n')
            stub.chmod(0o755)
        cls.environment = {**os.environ, "PATH": f"{stubs}:{os.environ['PATH']}"}

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def run_script(self, script, argument):
        before = state(self.tree)
        done = subprocess.run([self.tree / script, argument], cwd=self.tree, text=True, timeout=60,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, env=self.environment)
        self.assertEqual(state(self.tree), before, f"{script} {argument} changed the tree")
        self.assertNotIn("was run", done.stderr, f"{script} {argument} began its work")
        return done

    def test_help(self):
        self.assertGreater(len(scripts()), 10)
        for script in scripts():
            with self.subTest(script=script):
                done = self.run_script(script, "--help")
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertRegex(done.stdout, r"(?m)^usage: ")
                self.assertIn("--help", done.stdout)
                self.assertIn(Path(script).name, done.stdout)

    def test_unknown_argument(self):
        for script in scripts():
            with self.subTest(script=script):
                done = self.run_script(script, "--rubbish")
                self.assertEqual((done.returncode, done.stdout), (2, ""))
                self.assertIn(Path(script).name, done.stderr)


unittest.main()
