"""What "roundtrip" finds."""

import json
import os
import unittest

import wire
from support import SAMPLES, ToolTest


class RoundTrip(ToolTest):
    def trip(self, content, *options, status=0):
        return self.run_tool("roundtrip", *options, self.file("input", content), status=status)

    def assert_differences(self, content, *lines, options=()):
        done = self.trip(content, *options, status=1)
        self.assertEqual(done.text.splitlines()[:-1], list(lines))
        self.assertIn("%d difference%s" % (len(lines), "" if len(lines) == 1 else "s"), done.text)

    def test_a_complete_entry_is_lossless(self):
        done = self.trip(wire.entry())
        self.assertIn("lossless", done.text)

    def test_every_sample_is_lossless(self):
        for name in sorted(os.listdir(SAMPLES)):
            if not name.endswith(".json"):
                continue
            with self.subTest(name):
                done = self.run_tool("roundtrip", os.path.join(SAMPLES, name))
                self.assertIn("lossless", done.text)

    def test_a_port_number_is_narrowed(self):
        self.assert_differences(
            wire.entry_list(wire.entry(), wire.entry(port=65536 + 7)),
            "intfEntry[1].generalInfo.bridge_port_number: 65543 -> 7 (narrowed)")

    def test_absent_fields_become_present(self):
        self.assert_differences(
            wire.entry(parent=None, port=None),
            "parent: (absent) -> 0.0.0.0 (defaulted)",
            "generalInfo.bridge_port_number: (absent) -> 0 (defaulted)")

    def test_a_malformed_identifier_becomes_zero(self):
        self.assert_differences(
            wire.entry(identifier=(1, 2, 3)),
            "zorid: 1.2.3 (3 values) -> 0.0.0.0 (replaced)")
        self.assert_differences(
            wire.entry(parent=(1, 2, 3, 4, 5)),
            "parent: 1.2.3.4.5 (5 values) -> 0.0.0.0 (replaced)")

    def test_a_value_above_an_octet_is_narrowed(self):
        self.assert_differences(wire.entry(identifier=(1, 2, 3, 260)),
                                "zorid: 1.2.3.260 -> 1.2.3.4 (narrowed)")

    def test_unknown_fields_are_dropped(self):
        self.assert_differences(wire.entry(extra=wire.number(50, 6)),
                                "#50: 6 -> (dropped) (unknown field)")
        self.assert_differences(wire.entry(extra=wire.number(7, 42)),
                                "#7: 42 -> (dropped) (unknown field)")

    def test_a_later_state_replaces_an_earlier_one(self):
        signal = wire.shut_signal(3, ((0, 0, 0, 2), 1), ((0, 0, 0, 1), 1), ((0, 0, 0, 2), 0))
        self.assert_differences(signal, "intfs[0]: 0.0.0.2 -> intfs[2] (replaced)",
                                options=("--type", "ShutStateSync"))

    def test_a_signal_comes_back_in_ascending_order(self):
        signal = wire.shut_signal(4, ((0, 0, 0, 2), True), ((0, 0, 0, 1), False))
        self.assert_differences(signal, "intfs: not ascending -> ascending (replaced)",
                                options=("--type", "BlockStateSync"))

    def test_absent_scalars_of_an_operation_become_present(self):
        member = wire.text(1, wire.zorid(0, 0, 0, 1)) + wire.text(2, wire.zorid(0, 0, 0, 2))
        self.assert_differences(
            member, "token: (absent) -> 0 (defaulted)",
            "collecting: (absent) -> false (defaulted)",
            "distributing: (absent) -> false (defaulted)",
            options=("--type", "LagMemberOperationProto"))

    def test_another_encoding_is_no_loss(self):
        unpacked = b"".join(wire.number(1, v) for v in (0, 0, 0, 7))
        done = self.trip(unpacked, "--type", "Zorid")
        self.assertIn("another encoding", done.text)

    def test_json_lists_the_differences(self):
        done = self.trip(wire.entry(port=70000, extra=wire.text(60, b'"\xff')), "--json", status=1)
        got = json.loads(done.text)
        self.assertEqual(got["lossless"], False)
        self.assertEqual(got["differences"][0], {
            "record": 1, "path": "generalInfo.bridge_port_number", "old": 70000, "new": 4464,
            "reason": "narrowed", "problem": None})
        done = self.trip(wire.entry(), "--json")
        self.assertEqual(json.loads(done.text)["differences"], [])

    def test_a_stream_names_the_record(self):
        good, lossy = wire.entry(), wire.entry(port=70000)
        stream = wire.delimited(good, lossy)
        done = self.trip(stream, "--delimited", "--type", "IntfEntry", status=1)
        offset = len(wire.varint(len(good)) + good + wire.varint(len(lossy)))
        self.assertIn("record 2, offset %#x: generalInfo.bridge_port_number" % offset, done.text)

    def test_a_message_without_native_record_says_so(self):
        done = self.trip(wire.number(1, 3), "--type", "LagLoadBalanceHashType")
        self.assertIn("no native record", done.text)

    def test_the_time_is_printed_on_request(self):
        done = self.trip(wire.entry(), "--time")
        self.assertRegex(done.text, r"1 native records?, \d+\.\d\d us each")
        report = json.loads(self.trip(wire.entry(), "--time", "--json").text)
        self.assertEqual(report["native_records"], 1)
        self.assertGreater(report["microseconds_each"], 0)


if __name__ == "__main__":
    unittest.main()
