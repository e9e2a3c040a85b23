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
        entry = wire.entry(port=70000)
        self.assertEqual(got["differences"], [
            {"record": 1, "offset": 0, "path": "generalInfo.bridge_port_number",
             "field_offset": entry.index(wire.number(3, 70000)), "old": 70000, "new": 4464,
             "reason": "narrowed", "problem": None},
            {"record": 1, "offset": 0, "path": "#60", "field_offset": len(entry),
             "old": {"hex": "22 ff"}, "new": None, "reason": "unknown field", "problem": None}])
        self.assertEqual((got["file"], got["type"]), (self.path("input"), "IntfEntry"))
        done = self.trip(wire.entry(), "--json")
        self.assertEqual(json.loads(done.text)["differences"], [])

    def differences(self, content, *options, status=1):
        report = json.loads(self.trip(content, "--json", *options, status=status).text)
        return {difference["path"]: difference for difference in report["differences"]}

    def test_json_has_the_values_of_the_message_without_a_change(self):
        long = "x" * 5000
        content = wire.entry(identifier=(1, 2, 3), parent=(0, 0, 1, 300), port=None,
                             extra=wire.text(60, b"a\xff") + wire.text(61, long) +
                             wire.number(60, 1 << 63) + wire.text(60, "b"))
        done = self.trip(content, "--json", status=1)
        all_of = json.loads(done.text)["differences"]
        found = {difference["path"]: difference for difference in all_of}
        self.assertEqual(found["zorid"]["old"], {"value": [1, 2, 3]})
        self.assertEqual((found["parent"]["old"], found["parent"]["new"]), ("0.0.1.300", "0.0.1.44"))
        port = found["generalInfo.bridge_port_number"]
        self.assertEqual((port["old"], port["new"], port["field_offset"]), (None, 0, None))
        self.assertEqual(found["#61"]["old"], long)
        repeated = [difference for difference in all_of if difference["path"] == "#60"]
        self.assertEqual([one["old"] for one in repeated], [{"hex": "61 ff"}, 1 << 63, "b"])
        self.assertEqual([one["field_offset"] for one in repeated],
                         [content.index(wire.text(60, b"a\xff")),
                          content.index(wire.number(60, 1 << 63)),
                          content.index(wire.text(60, "b"))])
        self.assertIn("texts that are not UTF-8 become", done.errors)

    def test_json_has_unlisted_values_and_flags_as_they_are(self):
        found = self.differences(wire.entry(shut=(13, wire.LACP)))
        self.assertEqual((found["#7"]["old"], found["#7"]["field_offset"]),
                         (13, wire.entry(shut=(13, wire.LACP)).index(wire.number(7, 13))))
        member = wire.text(1, wire.zorid(0, 0, 0, 1)) + wire.text(2, wire.zorid(0, 0, 0, 2))
        found = self.differences(member, "--type", "LagMemberOperationProto")
        self.assertIs(found["collecting"]["new"], False)
        self.assertEqual(found["token"]["new"], 0)

    def test_json_of_a_signal_has_the_state_that_is_lost(self):
        signal = wire.shut_signal(3, ((0, 0, 0, 2), 1), ((0, 0, 0, 1), 1), ((0, 0, 0, 2), 0))
        found = self.differences(signal, "--type", "ShutStateSync")
        self.assertEqual((found["intfs[0]"]["old"], found["intfs[0]"]["new"]),
                         ({"zorid": "0.0.0.2", "state": True}, "intfs[2]"))
        self.assertEqual(found["intfs[0]"]["field_offset"], 2)
        signal = wire.shut_signal(4, ((0, 0, 0, 2), True), ((0, 0, 0, 1), False))
        found = self.differences(signal, "--type", "BlockStateSync")
        self.assertEqual((found["intfs"]["old"], found["intfs"]["new"]),
                         ("not ascending", "ascending"))
        self.assertEqual(found["intfs"]["field_offset"], 2)

    def test_json_of_an_identifier_is_dotted(self):
        found = self.differences(wire.zorid(0, 0, 1, 300), "--type", "Zorid")
        self.assertEqual((found["value"]["old"], found["value"]["new"]), ("0.0.1.300", "0.0.1.44"))

    def test_json_says_why_and_where_an_element_is_rejected(self):
        bad = wire.entry(category=9)
        content = wire.entry_list(wire.entry(), bad)
        found = self.differences(content)["intfEntry[1].intfCategory"]
        at = content.index(wire.number(9, 9))
        self.assertEqual((found["old"], found["field_offset"]), (9, at))
        self.assertEqual(found["problem"], {
            "record": None, "offset": at, "line": None, "column": None, "path": "intfEntry[1].intfCategory",
            "found": "unlisted value 9 (listed: 0 to 4), required by IntfEntry", "expected": None,
            "rule": "required"})
        signal = wire.shut_signal(wire.LACP, ((1, 2, 3), True))
        found = self.differences(signal, "--type", "ShutStateSync")["intfs[0].zorid"]
        self.assertEqual(found["old"], {"value": [1, 2, 3]})
        self.assertEqual([found["problem"][name] for name in ("found", "expected", "rule")],
                         ["3 values", "4", "identifier.size"])
        incomplete = wire.text(1, wire.zorid(0, 0, 0, 7)) + wire.text(3, wire.text(1, "x"))
        found = self.differences(wire.entry_list(incomplete), "--type", "IntfEntryList")
        missing = found["intfEntry[0].statusInfo"]
        self.assertEqual((missing["old"], missing["field_offset"]),
                         (None, wire.entry_list(incomplete).index(wire.text(2, incomplete))))

    def test_json_of_a_text_has_no_offsets(self):
        text = 'intfs { zorid { value: [0, 0, 1, 300] } state: true } shutProtocol: LACP'
        found = self.differences(text, "--type", "ShutStateSync")["intfs[0].zorid"]
        self.assertEqual((found["offset"], found["field_offset"], found["old"]),
                         (None, None, "0.0.1.300"))

    def test_damaged_records_are_differences_and_counted(self):
        damaged = wire.entry()[:-1] + b"\xff"
        stream = wire.delimited(wire.entry(), damaged, wire.entry(port=70000))
        second = len(wire.delimited(wire.entry(), damaged)) - len(damaged)
        options = ("--delimited", "--type", "IntfEntry")
        report = json.loads(self.trip(stream, "--json", *options, status=1).text)
        self.assertEqual([report[name] for name in ("records", "malformed", "rejected", "lossless")],
                         [3, 1, 0, False])
        found = report["differences"][0]
        self.assertEqual((found["record"], found["offset"], found["path"], found["reason"]),
                         (2, second, "intfCategory", "malformed"))
        self.assertEqual(found["problem"]["offset"], second + len(damaged) - 1)
        text = self.trip(stream, *options, status=1).text
        self.assertTrue(text.endswith(
            ": 1 difference in 1 record (2 records, 1 more malformed)\n"), text)

    def test_json_is_complete_also_if_an_error_ends_the_command(self):
        bad = wire.entry(category=9)
        for content, options, reason in (
                (wire.entry()[:-1] + b"\xff", (), "malformed"),
                (bad, ("--strict",), "rejected"),
                (wire.delimited(wire.entry(), bad, bad), ("--strict", "--delimited"), "rejected"),
                (wire.delimited(wire.entry())[:-1], ("--strict", "--delimited"), "malformed")):
            done = self.trip(content, "--input", "wire", "--type", "IntfEntry", "--json", *options,
                             status=2)
            report = json.loads(done.text)
            self.assertEqual([one["reason"] for one in report["differences"]], [reason])
            self.assertIs(report["lossless"], False)

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
