"""What "roundtrip" finds."""
import json
import os
import unittest

import tool_test
from tool_test import SAMPLES, ToolTest, block, entry, entry_list, number, shut_sync, varint, zorid


class RoundTripTest(ToolTest):
    def trip(self, content, *options):
        return self.run_tool("roundtrip", *options, self.file(content))

    def assert_differences(self, content, *lines, options=()):
        self.assertEqual(self.trip(content, *options), 1, self.out + self.err)
        self.assertEqual(self.out.splitlines()[:-1], list(lines))
        self.assertIn("%d difference%s" % (len(lines), "" if len(lines) == 1 else "s"), self.out)

    def test_a_complete_entry_is_lossless(self):
        self.assertEqual(self.trip(entry()), 0, self.err)
        self.assertIn("lossless", self.out)

    def test_every_sample_is_lossless(self):
        for name in sorted(os.listdir(SAMPLES)):
            if not name.endswith(".json"):
                continue
            with self.subTest(name):
                self.assertEqual(self.run_tool("roundtrip", os.path.join(SAMPLES, name)), 0)
                self.assertIn("lossless", self.out)

    def test_a_port_number_is_narrowed(self):
        self.assert_differences(
            entry_list(entry(), entry(port=65536 + 7)),
            "intfEntry[1].generalInfo.bridge_port_number: 65543 -> 7 (narrowed to 16 bits)")

    def test_absent_fields_become_present(self):
        self.assert_differences(
            entry(parent=None, port=None),
            "parent: (absent) -> 0.0.0.0 (absent became present)",
            "generalInfo.bridge_port_number: (absent) -> 0 (absent became present)")

    def test_a_malformed_identifier_becomes_zero(self):
        self.assert_differences(
            entry(own=(1, 2, 3)),
            "zorid: 1.2.3 (3 values) -> 0.0.0.0 (malformed identifier became zero)")
        self.assert_differences(
            entry(parent=(1, 2, 3, 4, 5)),
            "parent: 1.2.3.4.5 (5 values) -> 0.0.0.0 (malformed identifier became zero)")

    def test_a_value_above_an_octet_is_narrowed(self):
        self.assert_differences(entry(own=(1, 2, 3, 260)),
                                "zorid: 1.2.3.260 -> 1.2.3.4 (narrowed to 8 bits each)")

    def test_unknown_fields_are_dropped(self):
        self.assert_differences(entry(more=number(50, 6)),
                                "#50: varint 6 -> (dropped) (unknown field dropped)")
        self.assert_differences(
            entry(more=number(7, 42)),
            "#7: varint 42 -> (dropped) (unknown field dropped; shutdownProtos: ProtocolType does "
            "not list 42)")

    def test_a_later_state_replaces_an_earlier_one(self):
        signal = shut_sync(3, ((0, 0, 0, 2), True), ((0, 0, 0, 1), True), ((0, 0, 0, 2), False))
        self.assert_differences(
            signal,
            "intfs[0]: 0.0.0.2 -> (dropped) (replaced by intfs[2], a later state of the same "
            "interface)", options=("--type", "ShutStateSync"))

    def test_a_signal_comes_back_in_ascending_order(self):
        signal = shut_sync(4, ((0, 0, 0, 2), True), ((0, 0, 0, 1), False))
        self.assert_differences(
            signal, "intfs: another order -> ascending identifiers (the record keeps them in "
            "ascending order)", options=("--type", "BlockStateSync"))

    def test_absent_scalars_of_an_operation_become_present(self):
        member = block(1, zorid(0, 0, 0, 1)) + block(2, zorid(0, 0, 0, 2))
        self.assert_differences(
            member, "token: (absent) -> 0 (absent became present)",
            "collecting: (absent) -> false (absent became present)",
            "distributing: (absent) -> false (absent became present)",
            options=("--type", "LagMemberOperationProto"))

    def test_another_encoding_is_no_loss(self):
        unpacked = b"".join(number(1, v) for v in (0, 0, 0, 7))
        self.assertEqual(self.trip(unpacked, "--type", "Zorid"), 0)
        self.assertIn("another encoding", self.out)

    def test_json_lists_the_differences(self):
        self.assertEqual(self.trip(entry(port=70000, more=block(60, b'"\xff')), "--json"), 1)
        got = json.loads(self.out)
        self.assertEqual(got["lossless"], False)
        self.assertEqual(got["differences"][0], {
            "record": 1, "path": "generalInfo.bridge_port_number", "old": "70000", "new": "4464",
            "reason": "narrowed to 16 bits"})
        self.assertEqual(self.trip(entry(), "--json"), 0)
        self.assertEqual(json.loads(self.out)["differences"], [])

    def test_a_stream_names_the_record(self):
        good, lossy = entry(), entry(port=70000)
        stream = varint(len(good)) + good + varint(len(lossy)) + lossy
        self.assertEqual(self.trip(stream, "--delimited", "--type", "IntfEntry"), 1)
        offset = len(varint(len(good)) + good + varint(len(lossy)))
        self.assertIn("record 2 at offset %d: generalInfo.bridge_port_number" % offset, self.out)

    def test_a_message_without_native_record_says_so(self):
        self.assertEqual(self.trip(number(1, 3), "--type", "LagLoadBalanceHashType"), 0)
        self.assertIn("no native record", self.out)

    def test_time_is_told_when_asked_for(self):
        self.assertEqual(self.trip(entry(), "--time"), 0)
        self.assertRegex(self.out, r"1 native records?, \d+\.\d\d us each")


if __name__ == "__main__":
    tool_test.main()
