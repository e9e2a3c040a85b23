"""The examples of --help, pasted into a shell."""

import os
import re
import signal
import subprocess
import unittest

from support import TOOL, ToolTest

# The exit status of each example: diff and stats report differences and bad records.
STATUS = {"snapshot": 0, "roundtrip": 0, "types": 0, "encode": 0, "diff": 1, "explain": 0,
          "stats": 1, "summary": 0, "show": 0}


class Help(ToolTest):
    def test_every_example_works_when_pasted(self):
        for command, expected in STATUS.items():
            text = self.run_tool(command, "--help").text
            example = re.search(r"^Examples?\b[^\n]*:\n((?:  .*\n?)+)", text, re.M)
            self.assertIsNotNone(example, text)
            self.assertIn("zorl2-inspect " + command, example[1])
            path = os.path.dirname(TOOL) + ":" + os.environ["PATH"]
            done = subprocess.run(["bash", "-euo", "pipefail", "-c", example[1]],
                                  cwd=self._folder.name, capture_output=True,
                                  env={**os.environ, "PATH": path})
            self.assertEqual(done.returncode, expected, (example[1], done.stderr))
            self.assertNotEqual(done.stdout, b"")

    def helps(self):
        """The text of --help, by command."""
        commands = re.findall(r"^  ([a-z]+) ", self.run_tool("--help").text, re.M)
        self.assertEqual(len(commands), 9)
        return {command: self.run_tool(command, "--help").text for command in commands}

    def test_help_fits_into_eighty_columns(self):
        for text in (self.run_tool("--help").text, *self.helps().values()):
            self.assertLessEqual(max(map(len, text.splitlines())), 80, text)

    def test_helps_are_alike(self):
        for command, text in self.helps().items():
            # Everything begins with a verb in the imperative.
            verbs = [text.split()[0]]
            for item in re.findall(r"^  ((?:-|[A-Z]+ ).*\n(?:    .*\n)*)", text, re.M):
                item = " ".join(item.split())
                name, body = re.match(r"(\S+(?: [A-Z]+)?) ([A-Z][a-z].*)", item).groups()
                verbs.append(body.split()[0])
                # An option says what it does, or what it is, if it is omitted.
                if name.startswith("-") and name != "-h,--help":
                    self.assertRegex(body, "default|omitted|Change nothing", (command, name))
            self.assertLessEqual(set(verbs), {
                "Change", "Compare", "Convert", "Count", "End", "Fit", "List", "Print", "Read",
                "Select", "Set", "Show", "Skip", "Summarise", "Turn", "Use", "Wait", "Write"})
            self.assertRegex(text, r"(?s)Exit status: 0 .*, 2\s.*\nExamples?\b.*:\n  ", command)

    def test_unknown_options_and_missing_files_are_one_line(self):
        for command in STATUS:
            done = self.run_tool(command, "--nonsense", status=2)
            self.assertEqual(len(done.errors.splitlines()), 1)
        for command in ("encode", "explain", "stats"):
            self.assertIn("/nonexistent: cannot open",
                          self.run_tool(command, "/nonexistent", status=2).errors)
            self.run_tool(command, "/", status=2)

    def test_a_misspelled_command_is_suggested(self):
        for word, suggestion in (("shwo", '"show"'), ("expalin", '"explain"'), ("dif", '"diff"'),
                                 ("Stats", '"stats"'), ("snapshto", '"snapshot"')):
            done = self.run_tool(word, "x", status=2)
            self.assertEqual(done.errors, 'zorl2-inspect: "%s": no command (expected %s)\n'
                             % (word, suggestion))
        self.assertIn("(expected one of ", self.run_tool("frobnicate", status=2).errors)

    def test_help_on_a_full_disk_is_an_error(self):
        for arguments in (["--help"], ["show", "--help"], ["--version"]):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([TOOL, *arguments], stdout=full, stderr=subprocess.PIPE)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertEqual(done.stderr, b"zorl2-inspect: standard output: cannot write: No "
                             b"space left on device\n")

    def test_a_full_disk_is_an_error(self):
        sample = self.file("id.txt", "value: [1, 2, 3, 4]")
        stream = self.file("ids.pbs", b"\x06\x0a\x04\x01\x02\x03\x04")
        for arguments in (["types"], ["encode", "--type", "Zorid", sample],
                          ["explain", "--type", "Zorid", sample],
                          ["diff", "--type", "Zorid", sample, sample],
                          ["stats", "--type", "Zorid", stream]):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([TOOL, *arguments], stdout=full, stderr=subprocess.PIPE)
            self.assertEqual(done.returncode, 2, arguments)
            self.assertIn(b"standard output: cannot write: No space left on device", done.stderr)

    def test_a_reader_that_leaves_ends_the_work_silently(self):
        path = self.file("huge.pb", b"\x0a\x80\x80\x80\x02" + bytes(4 << 20))
        process = subprocess.Popen([TOOL, "explain", "--input", "wire", "--type", "Zorid", path],
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        process.stdout.read(100)
        process.stdout.close()
        errors = process.stderr.read()
        process.stderr.close()
        # The shell sees the status of SIGPIPE, 141, as with other tools.
        self.assertEqual(process.wait(20), -signal.SIGPIPE)
        self.assertEqual(errors, b"")


if __name__ == "__main__":
    unittest.main()
