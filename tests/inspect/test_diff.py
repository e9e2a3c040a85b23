import json
import unittest

import wire
from support import ToolTest


class Diff(ToolTest):
    def diff(self, before, after, *options, status=1):
        a = self.file("a.pb", before)
        b = self.file("b.pb", after)
        return self.run_tool("diff", "--input", "wire", *options, a, b, status=status)

    def lists(self, before, after, *options, status=1):
        return self.diff(wire.entry_list(*before), wire.entry_list(*after), "--type",
                         "IntfEntryList", *options, status=status)

    def test_equal_captures_say_so(self):
        entries = [wire.entry(), wire.entry((0, 0, 0, 8))]
        done = self.lists(entries, entries, status=0)
        self.assertEqual(done.text, "no difference in 2 elements\n")

    def test_order_makes_no_difference(self):
        first = [wire.entry(shut=(3, 4), blocks=((4, 1), (5, 0))), wire.entry((0, 0, 0, 8))]
        second = [wire.entry((0, 0, 0, 8)), wire.entry(shut=(4, 3), blocks=((5, 0), (4, 1)))]
        self.lists(first, second, status=0)

    def test_a_change_log_names_what_was_added_removed_and_changed(self):
        before = [wire.entry((0, 0, 0, 7)), wire.entry((0, 0, 0, 8), name="gone"),
                  wire.entry((0, 0, 0, 9), name="same")]
        after = [wire.entry((0, 0, 0, 9), name="same"),
                 wire.entry((0, 0, 0, 7), operational=1, mtu=1500),
                 wire.entry((0, 0, 0, 10), name="new")]
        lines = self.lists(before, after).text.splitlines()
        self.assertEqual(lines[3:], [
            '~ 0.0.0.7 "ge-0/0/7": changed',
            "    ~ statusInfo.operationalStatus: UP -> DOWN",
            "    ~ physicalInfo.intf_mtu: 9216 -> 1500",
            '- 0.0.0.8 "gone": removed (ETHERNET, L2, IF_ADMIN_DOWN, UP, LINK_DOWN, shut by LACP)',
            '+ 0.0.0.10 "new": added (ETHERNET, L2, IF_ADMIN_DOWN, UP, LINK_DOWN, shut by LACP)',
            "",
            "1 added, 1 removed, 1 changed, 1 the same"])
        self.assertTrue(lines[0].startswith("--- ") and lines[0].endswith("a.pb (3 elements)"))

    def test_protocols_are_added_and_removed_by_name(self):
        text = self.lists([wire.entry(shut=(3,), blocks=((4, 1),))],
                          [wire.entry(shut=(5,), blocks=((4, 0), (12, 1)))]).text
        self.assertIn("    + shutdownProtos: ERPS\n", text)
        self.assertIn("    - shutdownProtos: LACP\n", text)
        self.assertIn("    ~ blockInfo[STP].state: BLOCK_STATE_BLOCK -> BLOCK_STATE_FORWARD\n", text)
        self.assertIn("    + blockInfo[BACKUPLINK]: { protocol: BACKUPLINK state: "
                      "BLOCK_STATE_BLOCK }\n", text)

    def test_presence_and_identifiers_are_told(self):
        text = self.lists([wire.entry(parent=None, port=5)],
                          [wire.entry(parent=(9, 8, 7, 6), port=None)]).text
        self.assertIn("    + parent: 9.8.7.6\n", text)
        self.assertIn("    - generalInfo.bridge_port_number: 5\n", text)
        text = self.lists([wire.entry(parent=(1, 2, 3, 4))], [wire.entry(parent=(9, 8, 7, 4))]).text
        self.assertIn("    ~ parent: 1.2.3.4 -> 9.8.7.4\n", text)
        self.assertEqual(text.count("~ parent"), 1)

    def test_unknown_fields_are_compared(self):
        text = self.lists([wire.entry(extra=wire.number(77, 5))],
                          [wire.entry(extra=wire.number(77, 6) + wire.text(78, "x"))]).text
        self.assertIn("    ~ #77: 5 -> 6\n", text)
        self.assertIn('    + #78: "x"\n', text)

    def test_the_client_of_a_list_is_compared(self):
        text = self.diff(wire.entry_list(token="a"), wire.entry_list(token="b"), "--type",
                         "IntfEntryList").text
        self.assertTrue(text.endswith("\n0 added, 0 removed, 0 changed, 0 the same\n"), text)
        self.assertIn('~ IntfEntryList: changed\n    ~ infoClient.token: "a" -> "b"\n', text)

    def test_duplicates_are_paired_in_their_order(self):
        text = self.lists([wire.entry(), wire.entry(mtu=1)], [wire.entry(), wire.entry(mtu=2)]).text
        self.assertIn('~ 0.0.0.7 (occurrence 2) "ge-0/0/7": changed', text)
        self.assertIn("    ~ physicalInfo.intf_mtu: 1 -> 2\n", text)

    def test_two_entries_are_compared(self):
        text = self.diff(wire.entry(), wire.entry(category=4), "--type", "IntfEntry").text
        self.assertIn("    ~ intfCategory: L2 -> VIRTUAL_IF\n", text)

    def test_streams_of_entries_are_paired_by_identifier(self):
        text = self.diff(wire.delimited(wire.entry(), wire.entry((1, 1, 1, 1))),
                         wire.delimited(wire.entry((1, 1, 1, 1), mtu=7)), "--type", "IntfEntry",
                         "--delimited").text
        self.assertIn("~ 1.1.1.1 ", text)
        self.assertIn("- 0.0.0.7 ", text)

    def test_state_signals_are_paired_by_identifier(self):
        text = self.diff(wire.shut_signal(3, ((0, 0, 0, 1), 1), ((0, 0, 0, 2), 1)),
                         wire.shut_signal(4, ((0, 0, 0, 2), 0)), "--type", "ShutStateSync").text
        self.assertIn("    ~ shutProtocol: LACP -> STP\n", text)
        self.assertIn("- 0.0.0.1: removed", text)
        self.assertIn("~ 0.0.0.2: changed\n    ~ state: true -> false\n", text)

    def test_a_signal_that_the_converters_reject_can_be_compared(self):
        text = self.diff(wire.shut_signal(10, ((1, 2, 3), 1)), wire.shut_signal(10, ((1, 2), 1)),
                         "--type", "ShutStateSync").text
        self.assertIn("- 1.2.3 (3 values): removed", text)

    def test_json_for_programs(self):
        done = self.lists([wire.entry(), wire.entry((0, 0, 0, 8))],
                          [wire.entry(operational=1, name='a"b'), wire.entry((0, 0, 0, 9))],
                          "--json")
        report = json.loads(done.text)
        self.assertFalse(report["equal"])
        self.assertEqual([report[k] for k in ("added", "removed", "changed", "same")], [1, 1, 1, 0])
        changed, removed, added = report["changes"]
        self.assertEqual((changed["element"], changed["name"]), ("0.0.0.7", 'a"b'))
        self.assertIn({"change": "changed", "path": "statusInfo.operationalStatus", "old": "UP",
                       "new": "DOWN"}, changed["fields"])
        self.assertEqual(removed["change"], "removed")
        self.assertEqual(added["value"]["zorid"]["value"], [0, 0, 0, 9])
        equal = json.loads(self.lists([wire.entry()], [wire.entry()], "--json", status=0).text)
        self.assertEqual((equal["equal"], equal["changes"]), (True, []))

    def test_names_that_are_no_text_stay_valid_json(self):
        done = self.lists([wire.entry(name=b"\xff\xfe")],
                          [wire.entry((0, 0, 0, 9), name=b"\xffx")], "--json")
        removed, added = json.loads(done.stdout.decode("utf-8"))["changes"]
        self.assertEqual((removed["name"], added["name"]), ("\ufffd\ufffd", "\ufffdx"))
        self.assertEqual(added["value"]["zorid"]["value"], [0, 0, 0, 9])

    def test_a_list_is_compared_with_a_single_entry(self):
        a = self.file("list.pb", wire.entry_list(wire.entry(), wire.entry((0, 0, 0, 8))))
        b = self.file("one.pb", wire.entry((0, 0, 0, 8), mtu=1))
        text = self.run_tool("diff", "--input", "wire", a, b, status=1).text
        self.assertIn("- 0.0.0.7 ", text)
        self.assertIn("    ~ physicalInfo.intf_mtu: 9216 -> 1\n", text)

    def test_bad_input_is_status_two(self):
        done = self.diff(wire.entry(), wire.entry()[:-3], "--type", "IntfEntry", status=2)
        self.assertIn("b.pb: ", done.errors)
        self.run_tool("diff", "--type", "Zorid", "/nonexistent", "/nonexistent", status=2)
        self.run_tool("diff", "--type", "Zorid", "-", "-", status=2)

    def test_different_types_are_not_compared(self):
        a = self.file("a.txt", "value: [1, 2, 3, 4]")
        b = self.file("b.txt", 'internal_caches: "x"')
        done = self.run_tool("diff", a, b, status=2)
        self.assertIn("expected Zorid as in", done.errors)


if __name__ == "__main__":
    unittest.main()
