"""Streams that still grow: what has arrived appears at once, and Ctrl-C prints the result."""

import json
import os
import select
import signal
import subprocess
import time
import unittest

import wire
from support import PATIENCE, SANITIZED, TOOL, ToolTest, on_terminal, position

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
        """What the process has printed when the part has appeared in it."""
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
        # A record that arrives in two parts is no damage.
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
                ("roundtrip", 1, lambda report: self.assertEqual(report["records"], 2))):
            delimited = ["--delimited"] if command == "roundtrip" else []
            process = self.start(command, "--follow", *delimited, "--json", "--type", "IntfEntry",
                                 path)
            self.wait_until_read(process, path)
            process.send_signal(signal.SIGINT)
            check(json.loads(self.finish(process, status)))

    def test_stats_are_refreshed_on_a_terminal(self):
        # What arrives soon after a refresh is shown too, although nothing follows it.
        feed = [FIRST, r"\nrecords +1", SECOND, r"\nrecords +2"]
        seen, status = on_terminal(["stats", "--follow", "--type", "IntfEntry", "-"], feed)
        self.assertEqual(status, 0)
        screens = [screen for screen in seen.split("\x1b[H\x1b[2J") if screen]
        counted = [screen.split("\nrecords")[1].split()[0] for screen in screens]
        self.assertEqual(counted, ["1", "2", "2"])

    def test_only_a_stream_can_be_followed(self):
        self.rejected("show", "--follow", "--type", "IntfEntry", self.file("one.pb", wire.entry()),
                      parts=["--follow (expected a stream of wire bytes, with --delimited)"])


class Memory(ToolTest):
    @unittest.skipIf(SANITIZED, "needs the limit of the address space")
    def test_running_out_of_memory_is_one_line(self):
        path = self.file("huge.pb", wire.entry(name=b"\x01" * 1000000))
        failures = 0
        for megabytes in (16, 18, 20, 22, 24, 28, 36):
            for output in ("json", "text", "table", "native", "hex"):
                done = self.run_tool("show", "--input", "wire", "--type", "IntfEntry", "--output",
                                     output, path, megabytes=megabytes, status=None)
                if done.returncode == 0:
                    continue
                failures += 1
                self.assertEqual((done.returncode, done.errors),
                                 (2, "zorl2-inspect: out of memory\n"))
        self.assertGreater(failures, 0)

    @unittest.skipIf(SANITIZED, "AddressSanitizer keeps what is freed")
    def test_memory_does_not_grow_with_the_stream(self):
        block = wire.delimited(*[wire.entry((0, 0, 1, 300), extra=wire.number(77, 5))] * 250)
        for command in (["show"], ["show", "--json"], ["roundtrip"]):
            peaks = [self.peak_memory(*command, "--delimited", "--type", "IntfEntry",
                                      stream=[block] * count)[0] for count in (20, 200)]
            self.assertLess(peaks[1], peaks[0] + 2048, (command, peaks))


if __name__ == "__main__":
    unittest.main()
