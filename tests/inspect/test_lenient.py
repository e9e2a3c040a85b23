"""Messages that are damaged or do not convert: what can be read is shown, what is wrong is marked."""

import json
import os
import unittest

import wire
from support import SANITIZED, ToolTest

# Without its last field, intfCategory.
INCOMPLETE = wire.entry()[:-2]
MISSING = "intfCategory: missing, required by IntfEntry [required]"
# The type of the interface is the unlisted value 17.
UNLISTED = wire.entry().replace(wire.type_info(), wire.number(1, 17) + wire.type_info()[2:])


class Lenient(ToolTest):
    def tool(self, command, content, *options, status=1, type_name="IntfEntryList"):
        path = self.file("input", content)
        return self.run_tool(command, "--input", "wire", "--type", type_name, *options, path,
                             status=status)

    def test_an_entry_without_a_field_leaves_the_others_in_the_table(self):
        done = self.tool("show", wire.entry_list(wire.entry((0, 0, 0, 8), name="good"), INCOMPLETE))
        rows = [line for line in done.text.splitlines() if line.startswith("0.0.0.")]
        self.assertEqual([row.split()[0] for row in rows], ["0.0.0.8", "0.0.0.7"])
        self.assertNotIn("missing", rows[0])
        self.assertTrue(rows[1].endswith("  " + MISSING), rows[1])
        self.assertRegex(done.text, r"intfEntry\[1\]\.intfCategory +missing, required by IntfEntry")
        self.assertRegex(done.errors, r"offset 0x[0-9a-f]+: intfEntry\[1\]\." + MISSING.replace(
            "[", r"\[").replace("]", r"\]"))

    def test_an_unlisted_value_is_shown_and_marked_in_its_cell(self):
        done = self.tool("show", wire.entry_list(UNLISTED))
        self.assertRegex(done.text, r"\n0\.0\.0\.7 .* 17!! .*unlisted value 17")
        self.assertIn("\n!! the conversion to native fails because of this value\n", done.text)

    def test_conditions_select_before_anything_is_marked(self):
        content = wire.entry_list(wire.entry((0, 0, 0, 8)), UNLISTED, INCOMPLETE)
        done = self.tool("show", content, "--where", "id=0.0.0.8", status=0)
        self.assertNotIn("PROBLEM", done.text)
        self.assertEqual(done.errors, "")
        done = self.tool("show", content, "--where", "id=0.0.0.7", "--where", "category=L2")
        place = "intfEntry[1].typeInfo.interfaceType"
        self.assertIn("\n%s  unlisted value 17" % place, done.text)
        self.assertIn(": %s: unlisted value 17" % place, done.errors)
        self.assertEqual(done.errors.count("\n"), 1)

    def test_chosen_columns_have_marks_and_problems(self):
        content = (wire.entry(port=70000), UNLISTED)
        for type_name, form, given in (("IntfEntryList", (), wire.entry_list(*content)),
                                       ("IntfEntry", ("--delimited",), wire.delimited(*content))):
            with self.subTest(type_name):
                lines = self.tool("show", given, *form, "--columns", "type,mtu",
                                  type_name=type_name).text.splitlines()
                start = next(i for i, line in enumerate(lines) if line.startswith("TYPE "))
                self.assertEqual(lines[start].split(), ["TYPE", "MTU", "PROBLEM"])
                self.assertRegex(lines[start + 2], r"^17!! +9216  typeInfo\.interfaceType: unlisted")
                self.assertRegex(lines[start + 1], r"^ethernet +9216  not kept: generalInfo\.bridge")
                self.assertTrue(lines[start + 3].startswith("!! "))

    def test_chosen_columns_of_lists_in_a_stream_hide_nothing(self):
        lists = (wire.entry_list(wire.entry(), wire.entry(port=70000)) + wire.number(99, 5),
                 wire.entry_list(wire.entry(extra=wire.number(99, 6))) + wire.text(50, "hidden"),
                 wire.text(2, wire.entry()))
        done = self.tool("show", wire.delimited(*lists), "--delimited", "--columns", "id,name")
        for row in (r"#50 +unknown field +1 +2 +\"hidden\" +\(dropped\)",
                    r"#99 +unknown field +1 +1 +5 ", r"intfEntry\.#99 +unknown field +1 +2 +6 ",
                    r"intfEntry\.generalInfo\.bridge_port_number +narrowed +1 +1 +70000 +4464",
                    r" +3  infoClient +missing, required by IntfEntryList \[required\]"):
            self.assertRegex(done.text, r"\n" + row)
        signals = [wire.shut_signal(wire.LACP, ((0, 0, 1, 300), True)) + wire.number(9, 1),
                   wire.shut_signal(wire.L1_PROTO, ((0, 0, 1, 3), True))]
        done = self.tool("show", wire.delimited(*signals), "--delimited", "--columns",
                         "id,state", type_name="ShutStateSync")
        for row in (r"intfs\.zorid +narrowed +1 +1 +0\.0\.1\.300 +0\.0\.1\.44",
                    r"#9 +unknown field +1 +1 +1 ",
                    r" +2  shutProtocol +L1_PROTO \(expected a protocol"):
            self.assertRegex(done.text, r"\n" + row)

    def test_unknown_fields_of_entries_that_do_not_convert_are_shown(self):
        bad = wire.entry(category=9, extra=wire.number(77, 5))
        for content, options in ((wire.delimited(bad), ()),
                                 (wire.delimited(bad), ("--columns", "id"))):
            done = self.tool("show", content, "--delimited", *options, type_name="IntfEntry")
            self.assertRegex(done.text, r"\n#77 +unknown field +1 +1 +5 ")

    def test_a_damaged_list_is_shown_up_to_the_damage(self):
        entries = [wire.entry((0, 0, 0, i), name="ge-%d" % i, shut=()) for i in range(1, 6)]
        cut = wire.entry_list(*entries)[:-60]
        for options in ((), ("--columns", "id,name")):
            done = self.tool("show", cut, *options, status=2)
            self.assertIn("IntfEntryList from %s, up to the damage" % self.path("input"), done.text)
            self.assertEqual([line.split()[0] for line in done.text.splitlines()
                              if line.startswith("0.0.0.")], ["0.0.0.%d" % i for i in range(1, 6)])
            self.assertRegex(done.errors.splitlines()[-1], r"offset 0x[0-9a-f]+: intfEntry\[4\]")
        done = self.tool("show", cut, "--where", "id=0.0.0.2", status=2)
        self.assertIn("0.0.0.2 ", done.text)
        self.assertNotIn("0.0.0.3 ", done.text)
        # A program would take a part for the whole.
        for options in (("--json",), ("--output", "hex"), ("--strict",)):
            self.assertEqual(self.tool("show", cut, *options, status=2).text, "")
        done = self.tool("summary", cut, status=2)
        self.assertRegex(done.text, r"IntfEntryList, 5 entries\n")
        self.assertRegex(done.text, r"\nmalformed 1: offset 0x")
        # The other files are shown, too.
        good = self.file("good.pb", wire.entry_list(wire.entry((0, 0, 0, 9))))
        done = self.run_tool("show", "--type", "IntfEntryList", self.file("cut.pb", cut), good,
                             status=2)
        self.assertIn("0.0.0.9 ", done.text)

    def test_forms_without_a_conversion_have_everything(self):
        content = wire.entry_list(wire.entry(), INCOMPLETE)
        got = json.loads(self.tool("show", content, "--json").text)
        self.assertEqual(len(got["intfEntry"]), 2)
        self.assertEqual(self.tool("show", content, "--output", "wire").stdout, content)
        self.assertEqual(self.tool("show", content, "--output", "text").text.count("intfEntry {"), 2)

    def test_native_says_why_there_is_no_record(self):
        text = self.tool("show", wire.entry_list(wire.entry(), INCOMPLETE), "--output",
                         "native").text
        self.assertIn("intfEntry[0]: IntfEntry\n  zorid: 0.0.0.7\n", text)
        self.assertIn("intfEntry[1]: IntfEntry\n  not converted: %s\n" % MISSING, text)

    def test_a_signal_that_no_converter_accepts_is_shown(self):
        signal = wire.shut_signal(wire.L1_PROTO, ((0, 0, 0, 1), True), ((0, 0, 1), False))
        text = self.tool("show", signal, type_name="ShutStateSync").text
        self.assertIn("protocol L1_PROTO!!, native -\n", text)
        self.assertRegex(text, r"\n0  0\.0\.0\.1 +true\n1  0\.0\.1 \(3 values\)!! +false\n")
        self.assertRegex(text, r"shutProtocol +L1_PROTO \(expected a protocol of a state signal\)")

    def test_an_operation_without_lag_is_shown(self):
        text = self.tool("show", wire.text(2, wire.zorid(0, 0, 0, 5)) + wire.number(3, 77),
                         type_name="LagMemberOperationProto").text
        self.assertRegex(text, r"\nmember +0\.0\.0\.5\n")
        self.assertRegex(text, r"\nlag +missing \(expected 4 values\) \[identifier\.missing\]\n")

    def test_roundtrip_lists_rejections_and_the_losses_of_the_others(self):
        content = wire.entry_list(wire.entry(port=70000), INCOMPLETE, UNLISTED)
        done = self.tool("roundtrip", content)
        self.assertEqual(done.text.splitlines()[0],
                         "intfEntry[1].intfCategory: missing, required by IntfEntry [required] "
                         "(rejected)")
        self.assertIn("\nintfEntry[0].generalInfo.bridge_port_number: 70000 -> 4464 (narrowed)\n",
                      done.text)
        self.assertIn(": rejected, 1 difference (IntfEntryList)\n", done.text)
        report = json.loads(self.tool("roundtrip", content, "--json").text)
        self.assertEqual((report["lossless"], report["rejected"]), (False, 1))
        self.assertEqual([one["reason"] for one in report["differences"]],
                         ["rejected", "rejected", "narrowed"])

    def test_diff_compares_the_present_fields_and_marks_the_element(self):
        before = self.file("a.pb", wire.entry_list(wire.entry(), wire.entry((0, 0, 0, 8))))
        after = self.file("b.pb", wire.entry_list(INCOMPLETE, wire.entry((0, 0, 0, 8), mtu=1)))
        done = self.run_tool("diff", "--type", "IntfEntryList", "--input", "wire", before, after,
                             status=1)
        self.assertIn('~ 0.0.0.7 "ge-0/0/7": changed  !! %s\n    - intfCategory: L2\n' % MISSING,
                      done.text)
        self.assertIn('~ 0.0.0.8 "ge-0/0/7": changed\n', done.text)
        self.assertIn("intfEntry[0]." + MISSING, done.errors)

    def test_equal_captures_without_a_field_are_status_one(self):
        path = self.file("a.pb", wire.entry_list(INCOMPLETE))
        done = self.run_tool("diff", "--type", "IntfEntryList", path, path, status=1)
        self.assertEqual(done.text, "no difference in 1 element\n")

    def test_text_and_json_without_a_field_are_shown(self):
        for text, place in (('{"shutProtocol": "LACP",\n "intfs": [{"state": true}]}',
                             "line 2, column 26"),
                            ("shutProtocol: LACP\nintfs { state: true }", "line 2, column 1")):
            with self.subTest(text):
                done = self.run_tool("show", "--type", "ShutStateSync", self.file("input", text),
                                     status=1)
                self.assertIn("protocol LACP, native -\n", done.text)
                self.assertIn(place + ": intfs[0].zorid: missing", done.errors)

    def test_strict_ends_at_the_first_problem(self):
        content = wire.entry_list(wire.entry(), INCOMPLETE)
        for command in ("show", "roundtrip"):
            done = self.tool(command, content, "--strict", status=2)
            self.assertEqual(len(done.errors.splitlines()), 1)
            self.assertIn("intfEntry[1]." + MISSING, done.errors)
            self.assertEqual(done.text, "")
        path = self.file("a.pb", content)
        done = self.run_tool("diff", "--strict", "--type", "IntfEntryList", path, path, status=2)
        self.assertIn("intfEntry[1]." + MISSING, done.errors)

    def test_bytes_that_are_no_message_remain_an_error(self):
        for command in ("show", "roundtrip"):
            self.assert_error(self.tool(command, wire.entry_list(wire.entry())[:-3], status=2),
                              "offset 0x")


class Stream(ToolTest):
    def stream(self, command, content, *options, status=1):
        path = self.file("input", content)
        return self.run_tool(command, "--delimited", "--type", "IntfEntry", *options, path,
                             status=status)

    def test_good_rows_around_a_damaged_record_remain(self):
        good = wire.entry()
        damaged = good[:20] + b"\xff" * 11 + good[31:]
        content = wire.delimited(good, damaged, wire.entry((0, 0, 0, 8)))
        for options, kept in (((), ("0.0.0.7 ", "0.0.0.8 ")),
                              (("--json",), ('"0.0.0.7"', '"0.0.0.8"'))):
            done = self.stream("show", content, *options)
            for part in kept:
                self.assertIn(part, done.text)
            self.assertRegex(done.errors, r"input: record 2, offset 0x[0-9a-f]+: generalInfo")
        done = self.stream("roundtrip", content)
        self.assertIn("lossless (2 records", done.text)
        path = self.path("input")
        done = self.run_tool("diff", "--delimited", "--type", "IntfEntry", path, path, status=1)
        self.assertEqual(done.text, "no difference in 2 elements\n")

    def test_a_stream_that_is_still_written_keeps_its_rows(self):
        content = wire.delimited(wire.entry(), wire.entry())
        second = len(content) // 2
        for command in ("show", "roundtrip"):
            done = self.stream(command, content[:-5])
            self.assertIn("record 2, offset %#x: " % second, done.errors)
        self.assertIn("0.0.0.7 ", self.stream("show", content[:-5]).text)
        self.stream("show", content[:-5], "--strict", status=2)

    def test_a_record_that_does_not_convert_is_a_row(self):
        text = self.stream("show", wire.delimited(wire.entry(), INCOMPLETE)).text
        self.assertRegex(text, r"\n0\.0\.0\.7 [^\n]*  %s\n" % MISSING.replace("[", r"\[").replace(
            "]", r"\]"))
        self.assertEqual(len(self.stream("show", wire.delimited(INCOMPLETE, INCOMPLETE),
                                         "--json").text.splitlines()), 2)

    def test_a_table_marks_what_it_does_not_keep_and_sums_it_up(self):
        lossy = wire.entry((0, 0, 1, 300), port=None, extra=wire.number(77, 5))
        text = self.stream("show", wire.delimited(wire.entry(), lossy, lossy), status=0).text
        self.assertRegex(text, r"\n0\.0\.1\.300! .*  not kept: #77\n")
        self.assertIn("\n! the native record does not keep this value\n", text)
        self.assertRegex(text, r"\nzorid +narrowed +2 +2 +0\.0\.1\.300 +0\.0\.1\.44\n")
        self.assertRegex(text, r"\n#77 +unknown field +2 +2 +5 +\(dropped\)\n")
        self.assertIn("\n2 absent fields get their default values ", text)


class Losses(ToolTest):
    def test_serious_losses_are_never_hidden_by_defaults(self):
        entries = [wire.entry((0, 0, 0, i), parent=None, port=None) for i in range(50)]
        entries += [wire.entry((0, 0, 2, i, 7)) for i in range(30)]
        text = self.run_tool("show", "--type", "IntfEntryList", "-",
                             given=wire.entry_list(*entries)).text
        for i in range(50, 80):
            self.assertRegex(text, r"\nintfEntry\[%d\]\.zorid +0\.0\.2\.%d\.7 \(5 values\) +0\.0\.0\.0 "
                             "+replaced" % (i, i - 50))
        self.assertIn("\n100 absent fields get their default values ", text)
        self.assertRegex(text, r"\n0\.0\.2\.0\.7 \(5 values\)! ")

    def test_unlisted_protocols_are_marked_where_they_are_missing(self):
        text = self.run_tool("show", "--type", "IntfEntryList", "-",
                             given=wire.entry_list(wire.entry(shut=(3, 99)))).text
        self.assertRegex(text, r"\n0\.0\.0\.7 .* LACP! ")

    @unittest.skipIf(SANITIZED, "needs the limit of the address space")
    def test_a_million_unknown_fields_need_little_memory(self):
        content = wire.entry(extra=wire.number(77, 1) * 1000000)
        done = self.run_tool("show", "--input", "wire", "--type", "IntfEntry", "-", given=content,
                             megabytes=160)
        self.assertIn("\nand 999000 more unknown fields\n", done.text)
        self.assertIn("not kept: #...", done.text)


if __name__ == "__main__":
    unittest.main()
