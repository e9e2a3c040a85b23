"""Damaged and hostile input: one clear line, status 2, no crash, bounded time and memory."""
import unittest

import tool_test
from tool_test import ToolTest, block, entry, entry_list, number, shut_sync, varint, zorid


class HostileTest(ToolTest):
    def test_every_truncation_of_a_list_is_told_with_its_offset(self):
        whole = entry_list(entry())
        for length in range(1, len(whole)):
            # Only where the last entry begins does the rest make a whole list.
            if whole[:length] == entry_list():
                continue
            with self.subTest(length):
                status = self.run_tool("roundtrip", "--type", "IntfEntryList",
                                       self.file(whole[:length]))
                self.assert_error(status, "input")
                self.assertTrue("offset " in self.err or "required field" in self.err, self.err)

    def test_every_truncation_without_a_type_is_told_too(self):
        whole = entry()
        for length in range(1, len(whole) - 2):
            with self.subTest(length):
                status = self.run_tool("show", self.file(whole[:length]))
                if status != 0:  # a prefix may be a whole message of another type
                    self.assert_error(status, "input")

    def test_every_flipped_byte_gives_a_result_or_an_error(self):
        whole = entry_list(entry())
        for at in range(len(whole)):
            damaged = bytearray(whole)
            damaged[at] ^= 0xFF
            with self.subTest(at):
                status = self.run_tool("roundtrip", "--type", "IntfEntryList",
                                       self.file(bytes(damaged)))
                self.assertIn(status, (0, 1, 2))
                if status == 2:
                    self.assert_error(status, "input")

    def test_a_required_field_that_is_missing_is_named(self):
        bad = entry_list(entry(), entry().replace(number(9, 3), b""))
        for command in ("show", "roundtrip"):
            status = self.run_tool(command, "--type", "IntfEntryList", self.file(bad))
            self.assert_error(status, "intfEntry[1].intfCategory", "required field")

    def test_a_length_of_four_gigabytes_is_refused(self):
        claim = varint(1 << 3 | 2) + varint(2**32 - 1) + b"x"
        self.assert_error(self.run_tool("show", "--type", "Zorid", self.file(claim)), "offset 1")
        stream = varint(2**32) + b"x"
        status = self.run_tool("show", "--type", "Zorid", "--delimited", self.file(stream))
        self.assert_error(status, "record 1 at offset 0")

    def test_nested_lengths_that_lie_are_refused(self):
        bomb = b""
        for _ in range(2000):
            bomb = block(2, bomb)
        for command in ("show", "roundtrip"):
            status = self.run_tool(command, "--type", "IntfEntryList", self.file(bomb))
            self.assert_error(status, "input")
        groups = bytes([0x0B] * 5000)
        self.assert_error(self.run_tool("show", "--type", "Zorid", self.file(groups)), "offset")
        deep = '{"intfEntry":' * 50000
        self.assert_error(self.run_tool("show", "--type", "IntfEntryList", self.file(deep)), "line")
        deep = "intfEntry {" * 50000
        self.assert_error(self.run_tool("show", "--type", "IntfEntryList", self.file(deep)), "line")

    def test_a_million_identifier_values_are_taken_in_their_stride(self):
        values = zorid(*([1] * 1000000))
        self.assertEqual(self.run_tool("show", "--type", "Zorid", self.file(values)), 0, self.err)
        self.assertIn("1000000 values", self.out)
        self.assertLess(len(self.out), 2000)
        long = entry_list(entry().replace(block(1, zorid(0, 0, 0, 7)), block(1, values), 1))
        status = self.run_tool("roundtrip", "--type", "IntfEntryList", self.file(long))
        self.assertEqual(status, 1, self.err)
        self.assertIn("malformed identifier became zero", self.out)
        signal = shut_sync(3, ([1] * 1000000, True))
        status = self.run_tool("roundtrip", "--type", "ShutStateSync", self.file(signal))
        self.assert_error(status, "intfs[0].zorid", "found 1000000")

    def test_a_stream_that_ends_inside_a_record_is_told(self):
        good = entry()
        stream = varint(len(good)) + good + varint(len(good)) + good[:20]
        status = self.run_tool("roundtrip", "--type", "IntfEntry", "--delimited", self.file(stream))
        self.assert_error(status, "record 2", "offset")

    def test_a_stream_read_as_one_message_gets_a_hint(self):
        good = entry()
        stream = (varint(len(good)) + good) * 2
        status = self.run_tool("show", "--type", "IntfEntry", self.file(stream))
        self.assert_error(status, "--delimited")

    def test_a_file_name_cannot_forge_lines(self):
        name = self.path("a\nzorl2-inspect: all is well")
        self.assert_error(self.run_tool("show", name))

    def test_a_full_device_is_told(self):
        with open("/dev/full", "wb") as full:
            import subprocess
            done = subprocess.run([tool_test.TOOL, "snapshot", "--output", "text"], stdout=full,
                                  stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn(b"standard output: cannot write: No space left", done.stderr)

    def test_a_file_that_cannot_be_written_is_told(self):
        self.assert_error(self.run_tool("snapshot", self.path("absent/file")), "absent/file",
                          "No such file")


if __name__ == "__main__":
    tool_test.main()
