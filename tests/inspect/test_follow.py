"""Streams that still grow: what has arrived appears at once, and Ctrl-C prints the result."""

import json
import os
import select
import signal
import subprocess
import time
import unittest

import wire
from support import PATIENCE, TOOL, ToolTest, on_terminal, position

FIRST, SECOND = wire.delimited(wire.entry((0, 0, 0, 7))), wire.delimited(wire.entry((0, 0, 0, 8)))


class Follow(ToolTest):
    def start(self, *arguments):
        process = subprocess.Popen([TOOL, *arguments], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.addCleanup(process.kill)
        for stream in (process.stdout, process.stderr):
            self.addCleanup(stream.close)
        return process

    def wait_for(self, process, part, seen=b""):
        """Waits until the output contains the part. Returns the output."""
        end = time.monotonic() + PATIENCE
        while part not in seen:
            left = end - time.monotonic()
            self.assertGreater(left, 0, seen)
            if select.select([process.stdout], [], [], left)[0]:
                got = os.read(process.stdout.fileno(), 65536)
                self.assertNotEqual(got, b"", seen)
                seen += got
        return seen

    def finish(self, process, status):
        out, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, status, errors)
        return out

    def wait_until_read(self, process, path):
        """Returns when the process has read the file to its end and can be interrupted."""
        end = time.monotonic() + PATIENCE
        while position(process, path) != os.path.getsize(path):
            self.assertLess(time.monotonic(), end, "the file was not read")
            self.assertIsNone(process.poll())
            time.sleep(0.01)

    def grow(self, path, content):
        with open(path, "ab") as stream:
            stream.write(content)

    def test_a_pipe_gets_each_record_when_it_arrives(self):
        for options, parts in ((("--json",), (b'"0.0.0.7"', b'"0.0.0.8"')), ((), (b"0.0.0.7 ", b"0.0.0.8 "))):
            process = self.start("show", "--delimited", "--type", "IntfEntry", *options, "-")
            process.stdin.write(FIRST)
            process.stdin.flush()
            seen = self.wait_for(process, parts[0])
            process.stdin.write(SECOND)
            process.stdin.flush()
            seen = self.wait_for(process, parts[1], seen)
            self.finish(process, 0)
            # One heading, although the rows were printed one by one.
            self.assertEqual(seen.count(b"PARENT"), 0 if options else 1)

    def test_a_record_of_few_bytes_does_not_wait_for_the_next(self):
        process = self.start("show", "--delimited", "--json", "--type", "AuditInfo", "-")
        process.stdin.write(wire.delimited(b""))
        process.stdin.flush()
        self.wait_for(process, b"\n")
        process.stdin.close()
        process.stdin = None
        self.finish(process, 0)

    def test_a_growing_file_is_followed_until_ctrl_c(self):
        path = self.file("growing.pbs", FIRST)
        process = self.start("show", "--follow", "--delimited", "--json", "--type", "IntfEntry",
                             path)
        seen = self.wait_for(process, b'"0.0.0.7"')
        # A record that arrives in two parts is not damaged.
        self.grow(path, SECOND[:9])
        self.wait_until_read(process, path)
        self.grow(path, SECOND[9:])
        self.wait_for(process, b'"0.0.0.8"', seen)
        self.grow(path, FIRST[:9])
        self.wait_until_read(process, path)
        process.send_signal(signal.SIGINT)
        self.finish(process, 0)

    def test_the_results_so_far_are_printed_after_ctrl_c(self):
        path = self.file("growing.pbs", FIRST + wire.delimited(wire.entry(port=70000)))
        for command, status, check in (
                ("stats", 0, lambda report: self.assertEqual(report["records"], 2)),
                ("summary", 0, lambda report: self.assertEqual(report["entries"], 2)),
                ("roundtrip", 1, lambda report: self.assertEqual(report["records"], 2))):
            delimited = [] if command == "stats" else ["--delimited"]
            process = self.start(command, "--follow", *delimited, "--json", "--type", "IntfEntry",
                                 path)
            self.wait_until_read(process, path)
            process.send_signal(signal.SIGINT)
            check(json.loads(self.finish(process, status)))

    def test_reports_are_refreshed_on_a_terminal(self):
        # What arrives soon after a refresh is shown too, although nothing follows it.
        for command, count in ((["stats"], r"\nrecords +%d\r"),
                               (["summary", "--delimited"], r"IntfEntry, .* in %d record")):
            feed = [FIRST, count % 1, SECOND, count % 2]
            seen, status = on_terminal([*command, "--follow", "--type", "IntfEntry", "-"], feed)
            self.assertEqual(status, 0)
            screens = [screen for screen in seen.split("\x1b[H\x1b[2J") if screen]
            self.assertEqual(len(screens), 3, seen)
            self.assertEqual(screens[2].split("seconds")[0], screens[1].split("seconds")[0])

    def test_only_a_stream_can_be_followed(self):
        self.rejected("show", "--follow", "--type", "IntfEntry", self.file("one.pb", wire.entry()),
                      parts=["--follow (expected a stream of wire bytes or of JSON, with --delimited)"])


if __name__ == "__main__":
    unittest.main()
