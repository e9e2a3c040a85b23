"""What "show" prints."""

import json
import os
import unittest

import wire
from support import SAMPLES, ToolTest, on_terminal
from wire import entry, flags, number, text, zorid


class Show(ToolTest):
    def show(self, content, *options):
        return self.run_tool("show", *options, self.file("input", content)).text

    def test_a_list_is_a_table_with_one_line_for_each_interface(self):
        lines = self.show(wire.entry_list(entry())).splitlines()
        self.assertIn("IntfEntryList", lines[0])
        self.assertEqual(lines[1], 'for client 0xabcdef, protocol LACP, token "t0k3n", '
                                   "categories L1 VP VIRTUAL_IF")
        self.assertEqual(lines[3].split(), ["ID", "PARENT", "NAME", "TYPE", "CATEGORY", "ADMIN",
                                            "OPER", "LINK", "SPEED", "MTU", "SHUT", "BY", "STATE",
                                            "BY", "PROTOCOL"])
        self.assertEqual(lines[4].split(), ["0.0.0.7", "0.0.1.2", "ge-0/0/7", "ethernet", "L2",
                                            "down", "up", "down", "10", "Gb/s", "9216", "LACP",
                                            "STP", "blocks"])

    def test_columns_line_up(self):
        done = self.run_tool("show", os.path.join(SAMPLES, "switch-52.json"))
        lines = done.text.splitlines()[3:]
        column = lines[0].index("CATEGORY")
        for line in lines[1:]:
            self.assertEqual(line[column - 1], " ")
            self.assertIn(line[column:].split()[0], ("L1", "L2", "L2_SUB_IF", "VIRTUAL_IF"))

    def test_json_is_for_programs(self):
        got = json.loads(self.show(wire.entry_list(entry()), "--json"))
        self.assertEqual(got["intfEntry"][0]["generalInfo"]["intf_name"], "ge-0/0/7")
        self.assertEqual(got["intfEntry"][0]["shutdownProtos"], ["LACP"])
        self.assertEqual(got["intfEntry"][0]["zorid"], "0.0.0.7")
        self.assertEqual(got["infoClient"]["clientAddress"], 0xABCDEF)
        self.assertIs(got["intfEntry"][0]["statusInfo"]["extraShutdown"], True)

    def test_json_of_a_stream_is_one_line_for_each_record(self):
        lines = self.show(wire.delimited(entry(), entry((0, 0, 0, 8))), "--json",
                          "--delimited").splitlines()
        self.assertEqual([json.loads(line)["zorid"] for line in lines],
                         ["0.0.0.7", "0.0.0.8"])

    def test_json_keeps_bytes_that_are_not_utf8(self):
        names = (b"a\xff\xc0\x80\xc3\xa4", b"a\xff", b"a\xfe", b"\xed\xa0\x80")
        written = set()
        for name in names:
            content = entry(name=name)
            done = self.run_tool("show", "--input", "wire", "--json", "-", given=content)
            got = json.loads(done.text)["generalInfo"]["intf_name"]
            self.assertEqual(bytes.fromhex(got["hex"]), name)
            self.assertIn("texts that are not UTF-8 become", done.errors)
            again = self.run_tool("encode", "--type", "IntfEntry", "-", given=done.stdout)
            self.assertEqual(again.stdout, content)
            written.add(done.text)
            explained = self.run_tool("explain", "--input", "wire", "--json", "-", given=content)
            self.assertIn(got, [field["value"] for field in json.loads(explained.text)["fields"]])
            self.assertIn("texts that are not UTF-8 become", explained.errors)
        self.assertEqual(len(written), len(names))
        # A text that looks like such bytes is a text.
        done = self.run_tool("show", "--input", "wire", "--json", "-",
                             given=entry(name='{"hex": "ff"}\\xff'))
        self.assertEqual(json.loads(done.text)["generalInfo"]["intf_name"],
                         '{"hex": "ff"}\\xff')
        self.assertNotIn("UTF-8", done.errors)

    def test_a_mistake_in_such_bytes_has_its_place(self):
        for text, *parts in (
                ('{"token": {"hex": 7}}', "column 19", "token", "expected hexadecimal text"),
                ('{"token": {"hex": "7"}}', "column 19", "expected hexadecimal text"),
                ('{"token": {"hex": ["77"]}}', "column 19", "expected hexadecimal text"),
                ('{"token": {"hex": {}}}', "column 19", "expected hexadecimal text"),
                ('{"token": {"bytes": "ff"}}', "column 12", 'expected one member, "hex"'),
                ('{"token": {}}', "column 12", 'expected one member, "hex"'),
                ('{"token": {"hex": "ff", "hex": "ff"}}', "column 25", "expected one member"),
                ('{"protocolType": {"hex": "ff"}}', "column 18", "expected one of")):
            with self.subTest(text):
                self.rejected("encode", "--type", "InformationClient", "-", given=text.encode(),
                              parts=parts)

    def test_json_has_every_field(self):
        content = entry(port=None, parent=None, shut=(), identifier=(0, 0, 1, 300))
        done = self.run_tool("show", "--input", "wire", "--json", "-", given=content)
        got = json.loads(done.text)
        self.assertEqual((got["zorid"], got["parent"], got["shutdownProtos"],
                          got["generalInfo"]["bridge_port_number"]), ("0.0.1.300", None, [], None))
        again = self.run_tool("encode", "--type", "IntfEntry", "-", given=done.stdout)
        self.assertEqual(again.stdout, content)
        # A text has four values; an identifier with another number of them has none.
        content = entry(identifier=(1, 2, 3))
        done = self.run_tool("show", "--input", "wire", "--json", "-", given=content)
        self.assertEqual(json.loads(done.text)["zorid"], {"value": [1, 2, 3]})
        again = self.run_tool("encode", "--type", "IntfEntry", "-", given=done.stdout)
        self.assertEqual(again.stdout, content)

    def test_a_mistake_in_an_identifier_has_its_place(self):
        for text in ("1.2.3", "1.2.3.4.5", "1.2.3.", "1.2.3.4294967296", "1.2.3.x", ""):
            with self.subTest(text):
                self.rejected("encode", "--type", "LagMemberOperationProto", "-",
                              given=b'{"lag": "%s"}' % text.encode(),
                              parts=["column 9: lag", "expected an object for Zorid"])

    def test_the_native_record_is_next_to_the_message(self):
        out = self.show(entry(port=None, parent=None))
        rows = {line.split()[0]: line.split()[1:] for line in out.splitlines() if line.strip()}
        # Numbered one lower natively.
        self.assertEqual(rows["shutdownProtos[0]"], ["LACP", "LACP", "(2)"])
        self.assertEqual(rows["physicalInfo.intf_mtu"], ["9216", "9216"])

    def test_each_converted_type_shows_its_native_record(self):
        member = text(1, zorid(0, 0, 0, 1)) + text(2, zorid(0, 0, 0, 2)) + number(3, 2**64 - 1)
        client = number(1, 5) + number(2, 12) + text(3, flags(0, 1, 0, 0, 0)) + text(4, b"t")
        signal = wire.shut_signal(4, ((0, 0, 0, 2), True))
        for name, content, record, part in (
                ("Zorid", zorid(1, 2, 3, 4), "zorid_t", "1.2.3.4"),
                ("IntfEntry", entry(), "IntfEntry", "physicalInfo.intf_mtu: 9216"),
                ("ShutStateSync", signal, "ShutStateInfoSyncSignal", "0.0.0.2: shut"),
                ("BlockStateSync", signal, "BlockStateInfoSyncSignal",
                 "0.0.0.2: BLOCK_STATE_BLOCK"),
                ("InformationClient", client, "ZORL2InfoClientConfig", "BACKUPLINK (11)"),
                ("LagMemberOperationProto", member, "LagMemberOperation",
                 "token: 18446744073709551615")):
            with self.subTest(name):
                out = self.show(content, "--type", name, "--output", "native")
                self.assertIn(record, out)
                self.assertIn(part, out)

    def test_every_message_type_is_accepted(self):
        number_and_text = number(1, 1) + number(2, 2) + text(3, b"m")
        id_ = zorid(0, 0, 0, 3)
        for name, content in (
                ("IntfCategory", flags(1, 0, 0, 0, 0)),
                ("InterfaceFlags", flags(1, 0, 0, 0, 0, 1)),
                ("GeneralInfo", text(1, b"n") + text(2, b"a") + number(4, 1) + text(5, b"b")),
                ("StatusInfo", flags(0, 1, 0) + number(4, 5) + number(5, 1) + number(6, 1)
                 + number(7, 1)),
                ("PhysicalInfo", number(1, 9) + number(2, 1) + number(3, 1)),
                ("TypeInfo", number(1, 1) + text(2, flags(0, 0, 0, 0, 0, 0)) + number(3, 1)),
                ("BlockInfo", flags(4, 1)), ("ShutStateInfo", text(1, id_) + number(2, 1)),
                ("BlockStateInfo", text(1, id_) + number(2, 1)),
                ("HoldTimeInstance", text(1, id_) + number(2, 900)),
                ("HoldTimeConfig", text(1, text(1, id_) + number(2, 900))),
                ("L2SubinterfaceOperation", text(1, id_) + text(2, id_)),
                ("LagLoadBalance", flags(4, 1)), ("LagLoadBalanceHashType", number(1, 3)),
                ("RedundancyGroupFields", number_and_text),
                ("SysInfo", text(1, b"a") + text(2, b"b") + text(3, b"c")),
                ("SysInfoIndication", text(1, text(1, b"a") + text(2, b"b") + text(3, b"c"))),
                ("VirtualInterfaceOperation", text(1, id_)), ("AuditInfo", text(1, b"x")),
                ("IntfIndication", flags(0, 1) + text(3, entry()))):
            with self.subTest(name):
                self.show(content, "--type", name)

    def test_unknown_fields_are_shown(self):
        out = self.show(entry(extra=number(77, 5) + text(78, b"ab") + wire.varint(79 << 3 | 5)
                              + b"\x01\0\0\0"))
        rows = [line.split() for line in out.splitlines()]
        self.assertIn(["#77", "varint", "5"], [row[:3] for row in rows])
        self.assertIn(["#78", "length-delimited", '"ab"'], [row[:3] for row in rows])
        self.assertIn(["#79", "32-bit", "0x00000001"], [row[:3] for row in rows])

    def test_the_field_of_an_unlisted_value_is_named(self):
        out = self.show(entry(extra=number(7, 42)))
        self.assertRegex(out, r"#7 +varint +42 +shutdownProtos")

    def test_a_required_field_that_holds_an_unlisted_value_says_so(self):
        bad = number(1, 99) + number(2, 1)
        self.rejected("show", "--strict", "--type", "BlockInfo", self.file("input", bad), parts=[
            "offset 0x0: protocol: unlisted value 99 (listed: 0 to 12), required by BlockInfo "
            "[required]"])

    def test_what_a_converter_rejects_is_rejected_with_its_offset(self):
        good = (0, 0, 0, 1)
        for name, content, error in (
                ("ShutStateSync", wire.shut_signal(3, (good, True), ((0, 0, 1), True)),
                 "offset 0x10: intfs[1].zorid: 3 values (expected 4) [identifier.size]"),
                ("BlockStateSync", wire.shut_signal(4, ((), True)),
                 "offset 0x4: intfs[0].zorid: 0 values (expected 4) [identifier.size]"),
                ("ShutStateSync", wire.shut_signal(10, (good, True)),
                 "offset 0x0: shutProtocol: L1_PROTO (expected a protocol of a state signal) "
                 "[protocol.unlisted]"),
                ("BlockStateSync", wire.shut_signal(11, (good, True)),
                 "offset 0x0: blockProtocol: L2_PROTO (expected a protocol of a state signal) "
                 "[protocol.unlisted]"),
                ("LagMemberOperationProto", text(1, zorid(*good)),
                 "offset 0x0: member: missing (expected 4 values) [identifier.missing]"),
                ("LagMemberOperationProto", text(1, zorid(1)) + text(2, zorid(*good)),
                 "offset 0x0: lag: 1 value (expected 4) [identifier.size]")):
            for command in ("show", "roundtrip"):
                with self.subTest(name=name, command=command):
                    path = self.file("input", content)
                    done = self.run_tool(command, "--strict", "--type", name, "--input", "wire",
                                         path, status=2)
                    self.assertEqual(done.errors, "zorl2-inspect: %s: %s\n" % (path, error))
                    self.assertEqual(done.text, "")

    def test_the_table_shows_the_values_of_the_message(self):
        out = self.show(entry((0, 0, 1, 300), parent=(1, 2, 3)), "--color", "always")
        self.assertIn("\x1b[33m0.0.1.300!\x1b[0m", out)
        self.assertIn("\x1b[33m1.2.3 (3 values)!\x1b[0m", out)

    def test_text_of_a_capture_never_moves_the_cursor(self):
        general = text(1, b"\x1b[2J\xff\n") + text(2, b"a") + number(4, 1) + text(5, b"b")
        out = self.show(general, "--type", "GeneralInfo")
        self.assertNotIn("\x1b", out)
        self.assertIn("\\", out)

    def test_colours_are_for_terminals_that_want_them(self):
        arguments = ["show", "--type", "IntfEntryList",
                     self.file("input", wire.entry_list(entry()))]
        self.assertIn("\x1b[31mdown", on_terminal(arguments)[0])
        self.assertNotIn("\x1b", on_terminal(arguments, env={"NO_COLOR": "1"})[0])
        self.assertNotIn("\x1b", self.show(wire.entry_list(entry())))
        self.assertIn("\x1b[31m", self.show(wire.entry_list(entry()), "--color", "always"))

    def test_several_files_are_shown_one_after_the_other(self):
        good = self.file("good.pb", wire.entry((0, 0, 0, 7)))
        bad = self.file("bad.pb", wire.entry((0, 0, 0, 8), category=17))
        options = ["--input", "wire", "--type", "IntfEntry", "--json"]
        done = self.run_tool("show", *options, bad, good, status=1)
        self.assertLess(done.text.index('"0.0.0.8"'), done.text.index('"0.0.0.7"'))
        self.assertIn("bad.pb: ", done.errors)
        self.assertNotIn("good.pb", done.errors)


if __name__ == "__main__":
    unittest.main()
