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

    def test_equal_captures_are_reported_as_equal(self):
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
        self.assertRegex(lines[0], "^--- .*a.pb$")
        self.assertRegex(lines[1], "^[+]{3} .*b.pb$")

    def test_changes_have_the_order_of_the_larger_capture(self):
        few = [wire.entry((0, 0, 0, n)) for n in (9, 7, 8)]
        many = [wire.entry((0, 0, 0, n), mtu=1) for n in (5, 9, 6, 4)]
        self.assertEqual(self.changes(few, many),
                         ["+ 0.0.0.5", "~ 0.0.0.9", "+ 0.0.0.6", "+ 0.0.0.4", "- 0.0.0.7",
                          "- 0.0.0.8"])
        self.assertEqual(self.changes(many, few),
                         ["- 0.0.0.5", "~ 0.0.0.9", "- 0.0.0.6", "- 0.0.0.4", "+ 0.0.0.7",
                          "+ 0.0.0.8"])

    def changes(self, before, after):
        return [" ".join(line.split()[:2]) for line in self.lists(before, after).text.splitlines()
                if line[:2] in ("+ ", "- ", "~ ")]

    def test_a_pipe_is_compared_with_a_file(self):
        path = self.file("a.pb", wire.delimited(wire.entry(), wire.entry((0, 0, 0, 8))))
        given = wire.delimited(*[wire.entry((0, 0, 0, 8), mtu=1)] * 3)
        options = ["--delimited", "--type", "IntfEntry"]
        text = self.run_tool("diff", *options, path, "-", given=given, status=1).text
        self.assertTrue(text.endswith("\n2 added, 1 removed, 1 changed, 0 the same\n"), text)
        text = self.run_tool("diff", *options, "-", path, given=given, status=1).text
        self.assertTrue(text.endswith("\n1 added, 2 removed, 1 changed, 0 the same\n"), text)
        self.assertIn('- 0.0.0.8 (occurrence 3) "ge-0/0/7": removed', text)

    def test_protocols_are_added_and_removed_by_name(self):
        text = self.lists([wire.entry(shut=(3,), blocks=((4, 1),))],
                          [wire.entry(shut=(5,), blocks=((4, 0), (12, 1)))]).text
        self.assertIn("    + shutdownProtos: ERPS\n", text)
        self.assertIn("    - shutdownProtos: LACP\n", text)
        self.assertIn("    ~ blockInfo[STP].state: BLOCK_STATE_BLOCK -> BLOCK_STATE_FORWARD\n", text)
        self.assertIn("    + blockInfo[BACKUPLINK]: { protocol: BACKUPLINK state: "
                      "BLOCK_STATE_BLOCK }\n", text)

    def test_changes_of_presence_and_identifiers_are_shown(self):
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
        added, changed, removed = sorted(report["changes"], key=lambda change: change["change"])
        self.assertEqual((changed["element"], changed["name"]), ("0.0.0.7", 'a"b'))
        self.assertIn({"change": "changed", "path": "statusInfo.operationalStatus", "old": "UP",
                       "new": "DOWN"}, changed["fields"])
        self.assertEqual(removed["change"], "removed")
        self.assertEqual(added["value"]["zorid"], "0.0.0.9")
        equal = json.loads(self.lists([wire.entry()], [wire.entry()], "--json", status=0).text)
        self.assertEqual((equal["equal"], equal["changes"]), (True, []))

    def test_elements_that_do_not_convert_are_marked_before_and_after(self):
        bad, good = wire.entry(category=9), wire.entry(mtu=1400)
        reason = ("intfCategory: unlisted value 9 (listed: 0 to 4), required by IntfEntry "
                  "[required]")
        for before, after, marks in ((bad, good, "  !! before: " + reason),
                                     (good, bad, "  !! " + reason),
                                     (bad, wire.entry(category=9, mtu=1),
                                      "  !! %s  !! before: %s" % (reason, reason))):
            text = self.lists([before], [after]).text
            self.assertIn('~ 0.0.0.7 "ge-0/0/7": changed%s\n' % marks, text)
            change, = json.loads(self.lists([before], [after], "--json").text)["changes"]
            for element, name in ((before, "rejected_before"), (after, "rejected_after")):
                self.assertEqual(change[name] is not None, wire.number(9, 9) in element, name)
        problem = json.loads(self.lists([bad], [], "--json").text)["changes"][0]["rejected_before"]
        self.assertEqual((problem["path"], problem["rule"]), ("intfCategory", "required"))

    def test_states_that_reject_their_signal_are_marked(self):
        signals = [wire.shut_signal(3, ((1, 2, 3), state)) for state in (0, 1)]
        text = self.diff(*signals, "--type", "ShutStateSync").text
        mark = "!! zorid: 3 values (expected 4) [identifier.size]"
        self.assertIn("~ 1.2.3 (3 values): changed  %s  %s\n" % (
            mark, mark.replace("!!", "!! before:")), text)

    def test_names_that_are_no_text_stay_valid_json(self):
        done = self.lists([wire.entry(name=b"\xff\xfe")],
                          [wire.entry((0, 0, 0, 9), name=b"\xffx")], "--json")
        changes = json.loads(done.stdout.decode("utf-8"))["changes"]
        removed, added = sorted(changes, key=lambda change: change["change"], reverse=True)
        self.assertEqual((removed["name"], added["name"]), ({"hex": "ff fe"}, {"hex": "ff 78"}))
        self.assertIn("texts that are not UTF-8 become", done.errors)
        self.assertEqual(added["value"]["zorid"], "0.0.0.9")

    def audit(self, before, after, *options):
        return self.diff(wire.text(1, before), wire.text(1, after), "--type", "AuditInfo", *options)

    def test_long_texts_are_compared_by_lines(self):
        lines = ["entry %d of the cache" % i for i in range(100)]
        changed = lines[:]
        changed[41] = "another entry"
        del changed[70]
        changed.append("the last one")
        done = self.audit("\n".join(lines) + "\n", "\n".join(changed) + "\n")
        self.assertEqual([line.strip() for line in done.text.splitlines()[4:10]], [
            "~ internal_caches: 2190 -> 2173 bytes",
            '- line 42: "entry 41 of the cache\\n"',
            '+ line 42: "another entry\\n"',
            '- line 71: "entry 70 of the cache\\n"',
            '+ line 100: "the last one\\n"',
            ""])

    def test_long_lines_show_the_part_that_differs(self):
        same = "x" * 5000
        done = self.audit(same + "old" + same, same + "new" + same)
        old, new = done.text.splitlines()[5:7]
        self.assertIn('- line 1: ..."' + "x" * 40 + "oldx", old)
        self.assertIn('+ line 1: ..."' + "x" * 40 + "newx", new)
        self.assertLess(len(old), 300)
        # A difference in length only, at the very end; and in characters of several bytes.
        done = self.audit(same, same + "y")
        self.assertIn('"' + "x" * 40 + '"\n', done.text)
        self.assertIn('"' + "x" * 40 + 'y"\n', done.text)
        done = self.audit("\u00e4" * 300, "\u00e4" * 299 + "\u00f6")
        self.assertIn("\u00e4\u00f6", done.text)
        self.assertNotIn("\\x", done.text)

    def test_old_and_new_are_never_shown_as_equal(self):
        long = tuple(range(12))
        pairs = ((wire.entry(parent=long), wire.entry(parent=long[:-1] + (99,))),
                 (wire.entry(extra=wire.text(77, b"z" * 300 + b"1")),
                  wire.entry(extra=wire.text(77, b"z" * 300 + b"2"))))
        for before, after in pairs:
            text = self.diff(before, after, "--type", "IntfEntry").text
            for line in text.splitlines():
                if " -> " in line:
                    old, new = line.split(": ", 1)[1].split(" -> ")
                    self.assertNotEqual(old, new)
            shown = [line.strip()[2:] for line in text.splitlines() if " line 1: " in line]
            self.assertEqual(len(set(shown)), len(shown))
            self.assertIn("99" if before is pairs[0][0] else "z2", text)

    def test_json_is_never_shortened(self):
        before, after = "a" * 5000 + "1", "a" * 5000 + "2"
        report = json.loads(self.audit(before, after, "--json").text)
        self.assertEqual(report["changes"][0]["fields"], [
            {"change": "changed", "path": "internal_caches", "old": before, "new": after}])

    def test_json_values_have_their_types(self):
        done = self.lists([wire.entry(parent=None, mtu=1, extra=wire.number(77, 5))],
                          [wire.entry(parent=(1, 2, 3, 4), mtu=2, shut=(), name=b"\xff",
                                      extra=wire.number(77, 6))], "--json")
        fields = {f["path"]: (f["old"], f["new"])
                  for f in json.loads(done.text)["changes"][0]["fields"]}
        self.assertEqual(fields, {
            "parent": (None, "1.2.3.4"), "physicalInfo.intf_mtu": (1, 2),
            "generalInfo.intf_name": ("ge-0/0/7", {"hex": "ff"}),
            "shutdownProtos": ("LACP", None), "#77": (5, 6)})

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
