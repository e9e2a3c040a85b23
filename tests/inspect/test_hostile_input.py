"""Damaged and hostile input: one clear line, status 2, no crash, bounded time and memory."""

import subprocess
import unittest

import wire
from support import TOOL, ToolTest


class HostileInput(ToolTest):
    def test_a_required_field_that_is_missing_is_named(self):
        bad = self.file("input", wire.entry_list(wire.entry(), wire.entry()[:-2]))
        for command in ("show", "roundtrip", "diff"):
            files = [bad, bad] if command == "diff" else [bad]
            self.rejected(command, "--strict", "--type", "IntfEntryList", *files, parts=[
                "input: offset 0x", "intfEntry[1].intfCategory: missing, required by IntfEntry "
                "[required]"])

    def test_a_length_of_four_gigabytes_is_rejected(self):
        claim = wire.varint(1 << 3 | 2) + wire.varint(2**32 - 1) + b"x"
        self.rejected("show", "--type", "Zorid", self.file("input", claim), parts=["offset 0x1"])
        stream = wire.varint(2**32) + b"x"
        self.rejected("show", "--strict", "--type", "Zorid", "--delimited",
                      self.file("input", stream),
                      parts=["record 1, offset 0x0"])

    def test_false_nested_lengths_are_rejected(self):
        bomb = b""
        for _ in range(2000):
            bomb = wire.text(2, bomb)
        for command in ("show", "roundtrip"):
            self.rejected(command, "--strict", "--type", "IntfEntryList", self.file("input", bomb),
                          parts=["input"])
        groups = bytes([0x0B] * 5000)
        self.rejected("show", "--type", "Zorid", self.file("input", groups), parts=["offset"])
        deep = '{"intfEntry":' * 50000
        self.rejected("show", "--type", "IntfEntryList", self.file("input", deep), parts=["line"])
        deep = "intfEntry {" * 50000
        self.rejected("show", "--type", "IntfEntryList", self.file("input", deep), parts=["line"])

    def test_a_million_identifier_values_are_counted(self):
        values = wire.zorid(*([1] * 1000000))
        error = self.rejected("show", "--strict", "--type", "Zorid", self.file("input", values),
                              parts=["value: 1000000 values (expected 4)"])
        self.assertLess(len(error), 200)
        long = wire.entry_list(wire.entry(identifier=[1] * 1000000))
        done = self.run_tool("roundtrip", "--type", "IntfEntryList", self.file("input", long),
                             status=1)
        self.assertIn("1.1.1.1.1.1.1.1... (1000000 values) -> 0.0.0.0 (replaced)", done.text)
        signal = wire.shut_signal(3, ([1] * 1000000, True))
        self.rejected("roundtrip", "--strict", "--type", "ShutStateSync",
                      self.file("input", signal),
                      parts=["intfs[0].zorid: 1000000 values (expected 4) [identifier.size]"])

    def test_a_stream_that_ends_inside_a_record_is_reported(self):
        good = wire.entry()
        stream = self.file("input", wire.delimited(good) + wire.delimited(good)[:20])
        self.rejected("roundtrip", "--strict", "--type", "IntfEntry", "--delimited", stream, parts=[
            "record 2, offset %#x: " % len(wire.delimited(good)), "bytes of a record"])

    def test_a_stream_read_as_one_message_gets_a_hint(self):
        good = wire.entry()
        stream = self.file("input", wire.delimited(good, good))
        self.rejected("show", "--type", "IntfEntry", stream, parts=["--delimited"])

    def test_a_file_name_cannot_forge_lines(self):
        name = self.path("a\nzorl2-inspect: all is well")
        self.rejected("show", name)

    def test_a_full_device_is_reported(self):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([TOOL, "snapshot", "--output", "text"], stdout=full,
                                  stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"standard output: cannot write: No space left", done.stderr)

    def test_a_file_that_cannot_be_written_is_reported(self):
        self.rejected("snapshot", self.path("absent/file"), parts=["absent/file", "No such file"])


if __name__ == "__main__":
    unittest.main()
