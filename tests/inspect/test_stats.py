import json
import unittest

import wire
from support import SANITIZED, ToolTest


class Stats(ToolTest):
    def report(self, stream, *options, status=0, type_name="IntfEntry"):
        done = self.run_tool("stats", "--json", "--type", type_name, *options, "-", given=stream,
                             status=status)
        return json.loads(done.text)

    def problems(self, report):
        names = ("offset", "path", "found", "expected", "rule")
        return [tuple(bad["problem"][name] for name in names) for bad in report["bad"]]

    def test_entries_are_counted_by_their_values(self):
        stream = wire.delimited(
            wire.entry(category=0, shut=(3, 4), blocks=((4, 1), (12, 0))),
            wire.entry(category=0, shut=(3,), blocks=(), operational=1),
            wire.entry(category=3, shut=(), blocks=((4, 1),), speed=11))
        counts = self.report(stream)["counts"]
        self.assertEqual(counts["entries"],
                         {"entries": 3, "shut by a protocol": 2, "blocked by a protocol": 2})
        self.assertEqual(counts["entries by category"], {"L1": 2, "L2_SUB_IF": 1})
        self.assertEqual(counts["entries by type"], {"ETHERNET": 3})
        self.assertEqual(counts["operational status"], {"UP": 2, "DOWN": 1})
        self.assertEqual(counts["entries by speed class"], {"SPEED_10_GBS": 2, "SPEED_10_TBS": 1})
        self.assertEqual(counts["shut down by"], {"LACP": 2, "STP": 1})
        self.assertEqual(counts["blocked by"], {"STP": 2})
        self.assertEqual(counts["forwarding for"], {"BACKUPLINK": 1})
        self.assertNotIn("changed by the conversion to native", counts)

    def test_sizes_and_rates_are_reported(self):
        records = [wire.zorid(1, 2, 3, 4), wire.zorid(1, 2, 3, 400)]
        report = self.report(wire.delimited(*records), type_name="Zorid")
        self.assertEqual((report["records"], report["good"], report["bytes"]), (2, 2, 13))
        self.assertEqual((report["smallest"], report["mean"], report["largest"]), (6, 6.5, 7))
        self.assertEqual(report["sizes"], [{"from": 4, "to": 7, "records": 2}])
        self.assertGreater(report["conversions_per_second"], 0)

    def test_what_the_conversion_changes_is_counted(self):
        stream = wire.delimited(
            wire.entry(parent=None), wire.entry(port=None), wire.entry(port=65536),
            wire.entry((1, 2, 3)), wire.entry((1, 2, 3, 256)), wire.entry(extra=wire.number(77, 1)),
            wire.entry(shut=(99,)))
        self.assertEqual(self.report(stream)["counts"]["changed by the conversion to native"], {
            "parent defaulted": 1, "generalInfo.bridge_port_number defaulted": 1,
            "generalInfo.bridge_port_number narrowed": 1, "zorid replaced": 1,
            "zorid narrowed": 1, "unknown field": 2})
        counts = self.report(wire.delimited(wire.entry_list(wire.entry(), wire.entry(port=65536))),
                             type_name="IntfEntryList")["counts"]
        self.assertEqual(counts["changed by the conversion to native"],
                         {"intfEntry.generalInfo.bridge_port_number narrowed": 1})

    def test_lists_indications_signals_and_clients_are_counted(self):
        counts = self.report(wire.delimited(wire.entry_list(wire.entry(), wire.entry())),
                             type_name="IntfEntryList")["counts"]
        self.assertEqual((counts["entries"]["entries"], counts["clients"]["clients"]), (2, 1))
        indication = wire.number(1, 1) + wire.number(2, 2) + wire.text(3, wire.entry())
        counts = self.report(wire.delimited(indication), type_name="IntfIndication")["counts"]
        self.assertEqual(counts["indications"], {"DEL": 1})
        counts = self.report(wire.delimited(wire.shut_signal(3, ((1, 2, 3, 4), 1), ((1, 2, 3, 5), 0))),
                             type_name="ShutStateSync")["counts"]
        self.assertEqual(counts["signals"],
                         {"signals": 1, "interfaces": 2, "interfaces shut or blocked": 1})
        self.assertEqual(counts["protocols of signals"], {"LACP": 1})
        counts = self.report(wire.delimited(wire.lag_member()),
                             type_name="LagMemberOperationProto")["counts"]
        self.assertEqual(counts["operations"], {"operations": 1, "collecting": 1})

    def test_a_message_without_native_record_is_parsed_only(self):
        report = self.report(wire.delimited(wire.text(1, "caches")), type_name="AuditInfo")
        self.assertEqual((report["good"], report["conversions_per_second"]), (1, 0))

    def test_malformed_records_are_listed_with_their_offsets_and_the_rest_is_read(self):
        good = wire.entry()
        damaged = good[:20] + b"\xff" * 11 + good[31:]
        stream = wire.delimited(good, damaged, good, good[:8], good)
        report = self.report(stream, status=1)
        self.assertEqual([report[k] for k in ("records", "good", "malformed", "incomplete")],
                         [5, 3, 1, 1])
        size = len(wire.delimited(good))
        self.assertEqual([(bad["record"], bad["offset"], bad["outcome"]) for bad in report["bad"]],
                         [(2, size + 2, "malformed"), (4, 3 * size + 1, "incomplete")])
        first, second = (bad["problem"] for bad in report["bad"])
        self.assertRegex(first["path"], "^generalInfo")
        self.assertGreater(first["offset"], size + 2)
        self.assertLess(first["offset"], 2 * size)
        self.assertIsNone(first["rule"])
        self.assertEqual(second, {
            "record": None, "offset": 3 * size + 1, "line": None, "column": None,
            "path": "generalInfo", "found": "missing, required by IntfEntry", "expected": None,
            "rule": "required"})

    def test_a_record_that_would_terminate_the_process_is_rejected(self):
        stream = wire.delimited(
            wire.shut_signal(3, ((1, 2, 3, 4), 1), ((1, 2, 3), 1)), wire.shut_signal(10),
            wire.shut_signal(11), wire.shut_signal(0, ((), 0)), wire.shut_signal(3))
        for type_name, field in (("ShutStateSync", "shut"), ("BlockStateSync", "block")):
            report = self.report(stream, status=1, type_name=type_name)
            self.assertEqual((report["rejected"], report["good"]), (4, 1))
            protocol = field + "Protocol"
            expected = "a protocol of a state signal"
            self.assertEqual(self.problems(report), [
                (0x11, "intfs[1].zorid", "3 values", "4", "identifier.size"),
                (0x1b, protocol, "L1_PROTO", expected, "protocol.unlisted"),
                (0x1e, protocol, "L2_PROTO", expected, "protocol.unlisted"),
                (0x25, "intfs[0].zorid", "0 values", "4", "identifier.size")])
            text = self.run_tool("stats", "--type", type_name, "-", given=stream, status=1).text
            self.assertIn(": rejected: offset 0x1b: %s: L1_PROTO (expected %s) "
                          "[protocol.unlisted]\n" % (protocol, expected), text)

    def test_rejected_operations_say_why(self):
        stream = wire.delimited(wire.lag_member(lag=(1, 2)), wire.text(1, wire.zorid(1, 2, 3, 4)))
        report = self.report(stream, status=1, type_name="LagMemberOperationProto")
        self.assertEqual(self.problems(report), [
            (0x1, "lag", "2 values", "4", "identifier.size"),
            (0x14, "member", "missing", "4 values", "identifier.missing")])

    def test_a_cut_stream_is_reported_with_its_offset_after_the_report(self):
        stream = wire.delimited(wire.entry(), wire.entry())
        done = self.run_tool("stats", "--type", "IntfEntry", "-", given=stream[:-5], status=1)
        second = len(stream) // 2
        self.assertIn("offset %#x: %d bytes (expected %d bytes of a record)" % (
            second, len(wire.entry()) - 5, len(wire.entry())), done.errors)
        self.assertRegex(done.text, r"\n  good +1\n")
        broken = self.report(stream[:-5], status=1)["broken"]
        self.assertEqual((broken["offset"], broken["expected"]),
                         (second, "%d bytes of a record" % len(wire.entry())))

    def test_a_record_beyond_the_limit_is_skipped(self):
        stream = wire.delimited(wire.zorid(1, 2, 3, 4), bytes(5000), wire.zorid(1, 2, 3, 5))
        report = self.report(stream, "--longest", "4000", status=1, type_name="Zorid")
        self.assertEqual((report["good"], report["malformed"]), (2, 1))
        self.assertEqual(self.problems(report),
                         [(0x7, None, "5000 bytes", "at most 4000 bytes", None)])

    def test_the_list_of_bad_records_is_limited(self):
        stream = wire.delimited(*[b"\xff"] * 50)
        report = self.report(stream, "--list", "3", status=1, type_name="Zorid")
        self.assertEqual((len(report["bad"]), report["unlisted"]), (3, 47))
        text = self.run_tool("stats", "--type", "Zorid", "-", given=stream, status=1).text
        self.assertIn("and 30 more that are not good", text)

    def test_the_type_is_inferred_from_the_first_record(self):
        done = self.run_tool("stats", "-", given=wire.delimited(wire.entry(), wire.entry()))
        self.assertRegex(done.errors, r"type IntfEntry inferred: .* \(first record\)\n")

    def test_every_type_is_counted_by_its_fields(self):
        stream = wire.delimited(wire.flags(4, 1), wire.flags(4, 0), wire.flags(5, 1))
        counts = self.report(stream, type_name="BlockInfo")["counts"]
        self.assertEqual(counts["messages"], {"BlockInfo": 3})
        self.assertEqual(counts["BlockInfo.protocol"], {"STP": 2, "ERPS": 1})
        hold = wire.text(1, wire.text(1, wire.zorid(0, 0, 0, 1)) + wire.number(2, 900))
        counts = self.report(wire.delimited(hold + hold), type_name="HoldTimeConfig")["counts"]
        self.assertEqual(counts["messages"], {"HoldTimeConfig": 1, "HoldTimeInstance": 2})

    def test_an_empty_stream_has_no_records(self):
        report = self.report(b"")
        self.assertEqual(report["records"], 0)
        self.assertEqual([report[name] for name in ("smallest", "mean", "largest", "broken")],
                         [None] * 4)

    def test_memory_does_not_grow_with_the_stream(self):
        if SANITIZED:
            self.skipTest("AddressSanitizer keeps what is freed, so memory says nothing there")
        few, many = 10000, 500000
        block = wire.delimited(*[wire.entry((0, 0, i // 250, i % 250)) for i in range(1000)])
        peaks = []
        for count in (few, many):
            peak, report = self.peak_memory("stats", "--type", "IntfEntry",
                                            stream=[block] * (count // 1000))
            self.assertIn("%s\n" % format(count, ","), report)
            peaks.append(peak)
        self.assertLess(peaks[1], peaks[0] + 1024, "kilobytes: %s" % peaks)
        self.assertLess(peaks[1], 64 * 1024)


if __name__ == "__main__":
    unittest.main()
