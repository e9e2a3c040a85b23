"""skips_test.py SOURCE_DIR: scripts/run-tests reports each skipped test, and in CI fails on one that
is not listed."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(sys.argv.pop(1)).resolve()
PROJECT = """cmake_minimum_required(VERSION 3.22)
project(p NONE)
enable_testing()
add_test(NAME passes COMMAND sh -c "echo fine")
add_test(NAME skips COMMAND sh -c "echo SKIPPED: no network; exit 77")
set_tests_properties(skips PROPERTIES SKIP_RETURN_CODE 77)
add_test(NAME one_case_skips COMMAND sh -c "echo 'OK (skipped=2)'")
if(BROKEN)
  add_test(NAME fails COMMAND false)
  add_test(NAME not_built COMMAND ./not_built)
endif()
"""
PRESETS = """{"version": 3,
"configurePresets": [{"name": "p", "generator": "Ninja", "binaryDir": "${sourceDir}/build/p"}],
"testPresets": [{"name": "p", "configurePreset": "p"}]}
"""


class Skips(unittest.TestCase):
    def run_tests(self, allowed="", ci=True, broken=False):
        with tempfile.TemporaryDirectory() as folder:
            tree = Path(folder)
            for name, text in (("CMakeLists.txt", PROJECT), ("CMakePresets.json", PRESETS),
                               ("tests/allowed_skips.txt", allowed)):
                (tree / name).parent.mkdir(exist_ok=True)
                (tree / name).write_text(text)
            (tree / "scripts").mkdir()
            script = tree / "scripts/run-tests"
            script.write_text((SOURCE / "scripts/run-tests").read_text())
            subprocess.run(["cmake", "--preset", "p", f"-DBROKEN={broken}"], cwd=tree, check=True,
                           stdout=subprocess.DEVNULL)
            environment = {k: v for k, v in os.environ.items() if k != "CI"}
            if ci:
                environment["CI"] = "true"
            done = subprocess.run([sys.executable, script, "p"], text=True, env=environment,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return done.returncode, done.stdout.splitlines()

    LISTED = "skips | no network | why\none_case_skips | skipped=2 | why\n"

    def test_in_ci_a_skip_that_is_not_listed_fails(self):
        status, lines = self.run_tests()
        self.assertEqual((status, lines[-1]), (1, "1 passed, 2 failed, 0 skipped"))
        self.assertIn("skipped, which is not in tests/allowed_skips.txt: skips: no network", lines)
        self.assertIn("skipped, which is not in tests/allowed_skips.txt: one_case_skips: skipped=2",
                      lines)

    def test_outside_ci_a_skip_is_reported(self):
        status, lines = self.run_tests(ci=False)
        self.assertEqual((status, lines[-1]), (0, "1 passed, 0 failed, 2 skipped"))

    def test_a_listed_skip_does_not_fail(self):
        status, lines = self.run_tests(allowed=self.LISTED)
        self.assertEqual((status, lines[-1]), (0, "1 passed, 0 failed, 2 skipped"))
        self.assertIn("skipped: skips: no network", lines)

    def test_another_reason_is_not_the_listed_one(self):
        status, lines = self.run_tests(allowed=self.LISTED.replace("no network", "no memory"))
        self.assertEqual((status, lines[-1]), (1, "1 passed, 1 failed, 1 skipped"))

    def test_a_failure_fails(self):
        status, lines = self.run_tests(allowed=self.LISTED, broken=True)
        self.assertNotEqual(status, 0)
        self.assertEqual(lines[-1], "1 passed, 2 failed, 2 skipped")


unittest.main()
