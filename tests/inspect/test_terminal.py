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

    def plain(self, *arguments):
        """The lines on a terminal of 80 columns, without colours."""
        seen, _ = on_terminal(arguments, env={"NO_COLOR": "1"})
        return seen.replace("\r", "").splitlines()

    def test_tables_of_entries_fit_and_name_what_has_no_room(self):
        long = dict(name="ethernet-1/0/%d", blocks=((4, 1), (5, 0)))
        entries = [wire.entry((0, 0, 10, 100 + i), **{**long, "name": long["name"] % i}, **more)
                   for i, more in enumerate(({}, {"category": 9}, {"extra": wire.number(77, 1)}))]
        lists = self.file("list.pb", wire.entry_list(*entries))
        stream = self.file("entries.pbs", wire.delimited(*entries))
        for arguments in (("--type", "IntfEntryList", lists),
                          ("--type", "IntfEntry", "--delimited", stream)):
            lines = self.plain("show", *arguments)
            lines = [line for line in lines if not line.startswith("zorl2-inspect: ")]
            table = lines[:lines.index(next(line for line in lines if "no room for" in line)) + 1]
            self.assertLessEqual(max(map(len, table)), 80)
            heading = next(line for line in lines if line.startswith("ID "))
            for title in ("ID", "NAME", "CATEGORY", "SHUT BY", "STATE BY PROTOCOL"):
                self.assertIn(title, heading)
            # The category has a mark, so it stays; nothing disappears without a word.
            self.assertRegex("\n".join(lines), r" 9!! ")
            self.assertIn("no room for PARENT, TYPE, LINK, SPEED, MTU", table[-1])
            at = lines.index("    not kept: #77")
            self.assertIn("ethernet-1/0/2", lines[at - 1])
            self.assertIn("    intfCategory: unlisted value 9 (listed: 0 to 4), required by "
                          "IntfEntry", lines)
            self.assertIn("    [required]", lines)
        # Elsewhere a line may have any length.
        text = self.run_tool("show", "--type", "IntfEntryList", lists, status=1).text
        self.assertNotIn("no room", text)
        self.assertRegex(text, r"SPEED +MTU +SHUT BY +STATE BY PROTOCOL +PROBLEM\n")

    def test_columns_that_were_asked_for_are_all_there(self):
        path = self.file("list.pb", wire.entry_list(wire.entry(name="x" * 40, port=70000)))
        lines = self.plain("show", "--type", "IntfEntryList", "--columns",
                           "name,parent,category,link,speed,mtu,shut", path)
        self.assertIn("NAME", lines[2])
        self.assertEqual(lines[2].split()[1:6], ["PARENT", "CATEGORY", "LINK", "SPEED", "MTU"])
        self.assertIn("    not kept: generalInfo.bridge_port_number", lines)

    def test_the_client_of_a_list_is_wrapped(self):
        lines = self.plain("show", "--type", "IntfEntryList",
                           self.file("list.pb", wire.entry_list(wire.entry(), token="t" * 40)))
        self.assertLessEqual(max(map(len, lines)), 80)

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
