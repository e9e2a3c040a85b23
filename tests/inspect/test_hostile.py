"""Hostile input: every command gives a verdict within bounds of memory and time."""

import random
import unittest

import wire
from support import SANITIZED, ToolTest

TYPES = {
    "IntfEntry": wire.entry(extra=wire.number(77, 5)),
    "IntfEntryList": wire.entry_list(wire.entry(), wire.entry((0, 0, 0, 8))),
    "ShutStateSync": wire.shut_signal(3, ((1, 2, 3, 4), 1), ((1, 2, 3, 5), 0)),
    "LagMemberOperationProto": wire.lag_member(),
}


class Hostile(ToolTest):
    def explain(self, type_name, content, **bounds):
        return self.run_tool("explain", "--input", "wire", "--type", type_name, "-", given=content,
                             **bounds)

    def test_every_truncation_of_a_sample_is_explained_and_judged(self):
        for type_name, sample in TYPES.items():
            step = 7 if SANITIZED else 1
            for size in range(0, len(sample), step):
                done = self.explain(type_name, sample[:size], status=None)
                if done.returncode == 2:
                    self.assertIn("(expected ", done.errors)
                elif done.returncode == 1:
                    self.assertRegex(done.text.splitlines()[-1], r"^rejected: .* \[[a-z.]+\]$")

    def test_a_truncated_entry_never_passes(self):
        sample = wire.entry()
        for size in range(0, len(sample), 5):
            done = self.explain("IntfEntry", sample[:size], status=None)
            self.assertIn(done.returncode, (1, 2))

    def test_every_truncation_of_a_stream_gets_a_report(self):
        stream = wire.delimited(wire.entry(), wire.entry((0, 0, 0, 8)))
        ends = {0, len(stream) // 2, len(stream)}
        for size in range(0, len(stream) + 1, 7 if SANITIZED else 1):
            done = self.run_tool("stats", "--type", "IntfEntry", "-", given=stream[:size],
                                 status=0 if size in ends else 1)
            self.assertIn("records", done.text)

    def test_flipped_bytes_are_survived(self):
        source = random.Random(5)
        for type_name, sample in TYPES.items():
            for _ in range(10 if SANITIZED else 60):
                damaged = bytearray(sample)
                for _ in range(source.randint(1, 4)):
                    damaged[source.randrange(len(damaged))] = source.randrange(256)
                self.explain(type_name, bytes(damaged), status=None)
                path = self.file("damaged.pb", bytes(damaged))
                self.run_tool("diff", "--input", "wire", "--type", type_name, path, path,
                              status=None)

    def test_streams_of_noise_are_survived(self):
        source = random.Random(6)
        for _ in range(5 if SANITIZED else 40):
            noise = source.randbytes(source.randrange(400))
            for type_name in TYPES:
                stream = wire.delimited(noise, TYPES[type_name], noise[::-1])
                self.run_tool("stats", "--type", type_name, "-", given=stream, status=None)
                self.run_tool("stats", "--type", type_name, "-", given=noise, status=None)

    def test_nested_groups_stop_at_the_limit_of_the_runtime(self):
        bomb = wire.varint(50 << 3 | 3) * 1000000
        done = self.explain("IntfEntry", bomb, status=2, megabytes=256, seconds=20)
        self.assertIn("at most 100 levels of nesting", done.errors)
        self.assertLess(len(done.text.splitlines()), 300)

    def test_a_hundred_levels_are_walked(self):
        nest = wire.varint(50 << 3 | 3) * 100 + wire.varint(50 << 3 | 4) * 100
        self.explain("AuditInfo", nest, status=0)
        self.explain("AuditInfo", wire.varint(50 << 3 | 3) + nest + wire.varint(50 << 3 | 4),
                     status=2)

    def test_nested_lengths_are_no_bomb(self):
        bomb = b""
        for _ in range(2000):
            bomb = wire.text(2, bomb)
        self.explain("IntfEntryList", bomb, status=1, megabytes=256)
        done = self.run_tool("stats", "--type", "IntfEntryList", "-",
                             given=wire.delimited(bomb, bomb), status=1, megabytes=256)
        self.assertRegex(done.text, r"\n  (malformed|incomplete) +2\n")

    def test_false_lengths_of_four_gigabytes_cost_nothing(self):
        for claim in (0xFFFFFFFF, 0x80000000, 0x7FFFFFFF, 1 << 34):
            message = b"\x0a" + wire.varint(claim) + b"\x01\x02"
            done = self.explain("IntfEntry", message, status=2, megabytes=256)
            self.assertIn("offset 0x1: zorid: ", done.errors)
            done = self.run_tool("stats", "--type", "IntfEntry", "-",
                                 given=wire.varint(claim) + b"\x01\x02", status=1, megabytes=256)
            self.assertIn("2 bytes (expected %d bytes of a record)" % claim, done.errors)
        done = self.run_tool("stats", "--type", "Zorid", "-", given=b"\xff" * 9 + b"\x01", status=1)
        self.assertIn("a varint of more than five bytes", done.errors)

    def test_a_million_identifier_values_take_bounded_memory(self):
        huge = wire.text(1, bytes(1000000))
        content = wire.text(1, huge) + wire.entry()[len(wire.text(1, wire.zorid(0, 0, 0, 7))):]
        done = self.explain("IntfEntry", content, megabytes=256, seconds=60)
        self.assertIn("0.0.0.0.0.0.0.0... (1000000 values) becomes 0.0.0.0", done.text)
        self.assertIn("zorid.value[999999]", done.text)
        stream = wire.delimited(content, wire.entry())
        done = self.run_tool("stats", "--type", "IntfEntry", "-", given=stream, megabytes=256)
        self.assertRegex(done.text, r"zorid replaced +1\n")
        path = self.file("huge.pb", content)
        self.run_tool("diff", "--input", "wire", "--type", "IntfEntry", path, path, megabytes=256)
        signal = wire.number(1, 3) + wire.text(2, wire.text(1, huge) + wire.number(2, 1))
        self.run_tool("stats", "--type", "ShutStateSync", "-", given=wire.delimited(signal),
                      status=1, megabytes=256)

    def test_a_million_interfaces_and_long_lists_end_in_time(self):
        many = 20000 if SANITIZED else 100000

        def states(state):
            return [((0, i >> 16, i >> 8 & 255, i & 255), state(i)) for i in range(many)]

        signal = wire.shut_signal(3, *states(lambda i: i & 1))
        self.run_tool("stats", "--type", "ShutStateSync", "-", given=wire.delimited(signal))
        a = self.file("a.pb", signal)
        b = self.file("b.pb", wire.shut_signal(3, *states(lambda i: 0)))
        done = self.run_tool("diff", "--input", "wire", "--type", "ShutStateSync", a, b, status=1)
        self.assertIn("%d changed" % (many // 2), done.text)
        a = self.file("a.pb", wire.entry(blocks=((4, 1),) * many, shut=(3,) * many))
        b = self.file("b.pb", wire.entry(blocks=((4, 0),) * many, shut=(4,) * many))
        self.run_tool("diff", "--input", "wire", "--type", "IntfEntry", a, b, status=1)

    def test_unknown_fields_in_masses_are_walked(self):
        content = wire.entry(extra=wire.number(77, 1) * 200000)
        self.explain("IntfEntry", content, megabytes=256)


class DamagedFiles(ToolTest):
    def test_every_truncation_of_a_list_is_reported_with_its_offset(self):
        whole = wire.entry_list(wire.entry())
        for length in range(1, len(whole)):
            # Without its last entry the list is whole again.
            if whole[:length] == wire.entry_list():
                continue
            with self.subTest(length):
                path = self.file("input", whole[:length])
                self.rejected("roundtrip", "--strict", "--input", "wire", "--type",
                              "IntfEntryList", path,
                              parts=["input: offset 0x"])

    def test_every_truncation_without_a_type_is_reported_too(self):
        whole = wire.entry()
        for length in range(1, len(whole) - 2):
            with self.subTest(length):
                done = self.run_tool("show", self.file("input", whole[:length]), status=None)
                if done.returncode == 2:  # a prefix may be a message of another type
                    self.assert_error(done, "input")

    def test_every_flipped_byte_gives_a_result_or_an_error(self):
        whole = wire.entry_list(wire.entry())
        for at in range(len(whole)):
            damaged = bytearray(whole)
            damaged[at] ^= 0xFF
            with self.subTest(at):
                path = self.file("input", bytes(damaged))
                done = self.run_tool("roundtrip", "--type", "IntfEntryList", path, status=None)
                if done.returncode == 2:
                    self.assert_error(done, "input")


if __name__ == "__main__":
    unittest.main()
