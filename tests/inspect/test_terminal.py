"""Colours and progress, on a pseudo-terminal."""

import signal
import subprocess
import time
import unittest

import wire
from support import TOOL, ToolTest, on_terminal, position


class Terminal(ToolTest):
    def setUp(self):
        super().setUp()
        self.sample = self.file("entry.pb", wire.entry(port=70000))
        self.explain = ["explain", "--input", "wire", "--type", "IntfEntry", self.sample]

    def test_a_terminal_gets_colours(self):
        seen, status = on_terminal(self.explain)
        self.assertEqual(status, 0)
        self.assertIn("\x1b[33m<- narrowed", seen)
        self.assertIn("\x1b[0m", seen)

    def test_colours_change_nothing_but_colours(self):
        # Fixes the width of the terminal, because the layout depends on it.
        explain = [*self.explain, "--width", "0"]
        seen, _ = on_terminal(explain)
        plain = self.run_tool(*explain).text
        for code in ("0", "1", "2", "31", "32", "33", "34", "35", "36"):
            seen = seen.replace("\x1b[%sm" % code, "")
        self.assertEqual(seen.replace("\r\n", "\n"), plain)

    def test_a_pipe_gets_no_colours(self):
        self.assertNotIn("\x1b", self.run_tool(*self.explain).text)

    def test_no_color_is_respected_unless_empty(self):
        seen, _ = on_terminal(self.explain, env={"NO_COLOR": "1"})
        self.assertNotIn("\x1b", seen)
        seen, _ = on_terminal(self.explain, env={"NO_COLOR": ""})
        self.assertIn("\x1b[", seen)

    def test_a_dumb_terminal_gets_no_colours(self):
        seen, _ = on_terminal(self.explain, env={"TERM": "dumb"})
        self.assertNotIn("\x1b", seen)

    def test_types_and_diff_are_coloured_too(self):
        other = self.file("other.pb", wire.entry(port=1))
        seen, status = on_terminal(["diff", "--input", "wire", "--type", "IntfEntry", self.sample,
                                    other])
        self.assertEqual(status, 1)
        self.assertIn("\x1b[33m", seen)
        seen, _ = on_terminal(["types", "ProtocolType"])
        self.assertIn("\x1b[1mProtocolType", seen)

    def long_work(self):
        """A stream of which a part follows when the work has taken more than a second."""
        megabytes = wire.delimited(*[wire.entry()] * 20000)
        yield megabytes
        time.sleep(1.1)
        yield megabytes

    def test_long_work_shows_progress_and_removes_it(self):
        seen, status = on_terminal(["stats", "--type", "IntfEntry", "-"], self.long_work(),
                                   stdout_too=False)
        self.assertEqual(status, 0)
        self.assertRegex(seen, r"\r\x1b\[K\d+ records  \d+/s  \d+ s")
        self.assertTrue(seen.endswith("\r\x1b[K"), repr(seen[-60:]))

    def test_a_file_of_known_size_shows_a_bar(self):
        block = wire.delimited(*[wire.entry(shut=(3,) * 40)] * 2500)

        def pause(process):
            """Stops the process for more than a second while it reads."""
            while process.poll() is None and (position(process, path) or 0) < 4 << 20:
                pass
            process.send_signal(signal.SIGSTOP)
            time.sleep(1.1)
            process.send_signal(signal.SIGCONT)
            return ()

        # A process that has read a short file before it is stopped shows nothing.
        for count in (50, 100, 200, 400, 800):
            path = self.file("long.pbs", block * count)
            seen, status = on_terminal(["stats", "--type", "IntfEntry", path], pause,
                                       stdout_too=False)
            self.assertEqual(status, 0)
            if seen:
                break
        self.assertRegex(seen, r"\r\x1b\[K\[#+\.*\] +\d+ %  \d+ records  \d+/s  \d+ s left")

    def test_short_work_shows_no_progress(self):
        seen, _ = on_terminal(["stats", "--type", "IntfEntry", "-"],
                              [wire.delimited(wire.entry())], stdout_too=False)
        self.assertEqual(seen, "")

    def test_no_progress_without_a_terminal(self):
        process = subprocess.Popen([TOOL, "stats", "--type", "IntfEntry", "-"],
                                   stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE)
        for block in self.long_work():
            process.stdin.write(block)
        _, errors = process.communicate()
        self.assertEqual(errors, b"")


if __name__ == "__main__":
    unittest.main()
