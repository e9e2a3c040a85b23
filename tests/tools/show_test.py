"""What "show" prints."""
import json
import os
import pty
import unittest

import tool_test
from tool_test import (SAMPLES, ToolTest, block, entry, entry_list, flags, number, shut_sync,
                       varint, zorid)


class ShowTest(ToolTest):
    def show(self, content, *options):
        status = self.run_tool("show", *options, self.file(content))
        self.assertEqual(status, 0, self.err)
        return self.out

    def test_a_list_is_a_table_with_one_line_for_each_interface(self):
        lines = self.show(entry_list(entry())).splitlines()
        self.assertIn("IntfEntryList", lines[0])
        self.assertEqual(lines[1], 'for client 0x4d, protocol STP, token "tok", '
                                   "categories L1 VP VIRTUAL_IF")
        self.assertEqual(lines[3].split(), ["ID", "PARENT", "NAME", "TYPE", "CATEGORY", "ADMIN",
                                            "OPER", "LINK", "SPEED", "MTU", "SHUT", "BY", "STATE",
                                            "BY", "PROTOCOL"])
        self.assertEqual(lines[4].split(), ["0.0.0.7", "0.0.0.9", "ge-7", "vlan", "L2_SUB_IF",
                                            "down", "up", "down", "1", "Gb/s", "1501", "LACP,",
                                            "CFM", "STP", "blocks"])

    def test_columns_line_up(self):
        self.run_tool("show", os.path.join(SAMPLES, "switch-52.json"))
        lines = self.out.splitlines()[3:]
        column = lines[0].index("CATEGORY")
        for line in lines[1:]:
            self.assertEqual(line[column - 1], " ")
            self.assertIn(line[column:].split()[0], ("L1", "L2", "L2_SUB_IF", "VIRTUAL_IF"))

    def test_json_is_for_programs(self):
        got = json.loads(self.show(entry_list(entry()), "--json"))
        self.assertEqual(got["intfEntry"][0]["generalInfo"]["intf_name"], "ge-7")
        self.assertEqual(got["intfEntry"][0]["shutdownProtos"], ["LACP", "CFM"])

    def test_the_native_record_stands_beside_the_message(self):
        out = self.show(entry(port=None, parent=None))
        rows = {line.split()[0]: line.split()[1:] for line in out.splitlines() if line.strip()}
        # Numbered one lower natively.
        self.assertEqual(rows["shutdownProtos[0]"], ["LACP", "LACP", "(2)"])
        self.assertEqual(rows["physicalInfo.intf_mtu"], ["1501", "1501"])

    def test_each_converted_type_shows_its_native_record(self):
        member = block(1, zorid(0, 0, 0, 1)) + block(2, zorid(0, 0, 0, 2)) + number(3, 2**64 - 1)
        client = number(1, 5) + number(2, 12) + block(3, flags(0, 1, 0, 0, 0)) + block(4, b"t")
        for name, content, record, part in (
                ("Zorid", zorid(1, 2, 3, 4), "zorid_t", "1.2.3.4"),
                ("IntfEntry", entry(), "IntfEntry", "physicalInfo.intf_mtu: 1501"),
                ("ShutStateSync", shut_sync(3, ((0, 0, 0, 2), True)), "ShutStateInfoSyncSignal",
                 "0.0.0.2: shut"),
                ("BlockStateSync", shut_sync(4, ((0, 0, 0, 2), True)), "BlockStateInfoSyncSignal",
                 "0.0.0.2: BLOCK_STATE_BLOCK"),
                ("InformationClient", client, "ZORL2InfoClientConfig", "BACKUPLINK (11)"),
                ("LagMemberOperationProto", member, "LagMemberOperation",
                 "token: 18446744073709551615")):
            with self.subTest(name):
                out = self.show(content, "--type", name, "--output", "native")
                self.assertIn(record, out)
                self.assertIn(part, out)

    def test_every_message_type_is_taken(self):
        number_and_text = number(1, 1) + number(2, 2) + block(3, b"m")
        id_ = zorid(0, 0, 0, 3)
        for name, content in (
                ("IntfCategory", flags(1, 0, 0, 0, 0)), ("InterfaceFlags", flags(1, 0, 0, 0, 0, 1)),
                ("GeneralInfo", block(1, b"n") + block(2, b"a") + number(4, 1) + block(5, b"b")),
                ("StatusInfo", flags(0, 1, 0) + number(4, 5) + number(5, 1) + number(6, 1)
                 + number(7, 1)),
                ("PhysicalInfo", number(1, 9) + number(2, 1) + number(3, 1)),
                ("TypeInfo", number(1, 1) + block(2, flags(0, 0, 0, 0, 0, 0)) + number(3, 1)),
                ("BlockInfo", flags(4, 1)), ("ShutStateInfo", block(1, id_) + number(2, 1)),
                ("BlockStateInfo", block(1, id_) + number(2, 1)),
                ("HoldTimeInstance", block(1, id_) + number(2, 900)),
                ("HoldTimeConfig", block(1, block(1, id_) + number(2, 900))),
                ("L2SubinterfaceOperation", block(1, id_) + block(2, id_)),
                ("LagLoadBalance", flags(4, 1)), ("LagLoadBalanceHashType", number(1, 3)),
                ("RedundancyGroupFields", number_and_text),
                ("SysInfo", block(1, b"a") + block(2, b"b") + block(3, b"c")),
                ("SysInfoIndication", block(1, block(1, b"a") + block(2, b"b") + block(3, b"c"))),
                ("VirtualInterfaceOperation", block(1, id_)), ("AuditInfo", block(1, b"x")),
                ("IntfIndication", flags(0, 1) + block(3, entry()))):
            with self.subTest(name):
                self.show(content, "--type", name)

    def test_unknown_fields_are_shown(self):
        out = self.show(entry(more=number(77, 5) + block(78, b"ab") + varint(79 << 3 | 5)
                              + b"\x01\0\0\0"))
        rows = [line.split() for line in out.splitlines()]
        self.assertIn(["#77", "varint", "5"], [row[:3] for row in rows])
        self.assertIn(["#78", "length-delimited", '"ab"'], [row[:3] for row in rows])
        self.assertIn(["#79", "fixed32", "0x00000001"], [row[:3] for row in rows])

    def test_a_value_that_the_enumeration_does_not_list_is_named(self):
        out = self.show(entry(more=number(7, 42)))
        self.assertIn("shutdownProtos: ProtocolType does not list 42", out)

    def test_a_required_field_that_holds_an_unlisted_value_says_so(self):
        bad = number(1, 99) + number(2, 1)
        status = self.run_tool("show", "--type", "BlockInfo", self.file(bad))
        self.assert_error(status, "protocol", "ProtocolType does not list 99")

    def test_what_a_converter_would_refuse_is_refused_with_the_element(self):
        good = (0, 0, 0, 1)
        for name, content, *parts in (
                ("ShutStateSync", shut_sync(3, (good, True), ((0, 0, 1), True)),
                 "intfs[1].zorid", "4 values, found 3"),
                ("BlockStateSync", shut_sync(4, ((), True)), "intfs[0].zorid", "found 0"),
                ("ShutStateSync", shut_sync(10, (good, True)), "shutProtocol", "L1_PROTO"),
                ("BlockStateSync", shut_sync(11, (good, True)), "blockProtocol", "L2_PROTO"),
                ("LagMemberOperationProto", block(1, zorid(*good)), "member", "found none"),
                ("LagMemberOperationProto", block(1, zorid(1)) + block(2, zorid(*good)), "lag",
                 "found 1")):
            for command in ("show", "roundtrip"):
                with self.subTest(name=name, command=command):
                    status = self.run_tool(command, "--type", name, self.file(content))
                    self.assert_error(status, *parts)
                    self.assertEqual(self.out, "")

    def test_text_of_a_capture_never_moves_the_cursor(self):
        general = block(1, b"\x1b[2J\xff\n") + block(2, b"a") + number(4, 1) + block(5, b"b")
        out = self.show(general, "--type", "GeneralInfo")
        self.assertNotIn("\x1b", out)
        self.assertIn("\\", out)

    def test_colours_are_for_terminals_that_want_them(self):
        name = self.file(entry_list(entry()))

        def shown(**extra):
            main, other = pty.openpty()
            pid = os.fork()
            if pid == 0:
                os.dup2(other, 1)
                env = dict(os.environ, TERM="xterm", **extra)
                os.execve(tool_test.TOOL, [tool_test.TOOL, "show", "--type", "IntfEntryList", name],
                          env)
            os.close(other)
            got = b""
            try:
                while True:
                    part = os.read(main, 4096)
                    if not part:
                        break
                    got += part
            except OSError:  # the other side is closed
                pass
            os.close(main)
            self.assertEqual(os.waitpid(pid, 0)[1], 0)
            return got

        self.assertIn(b"\x1b[31mdown", shown())
        self.assertNotIn(b"\x1b", shown(NO_COLOR="1"))
        self.assertNotIn("\x1b", self.show(entry_list(entry())))
        self.assertIn("\x1b[31m", self.show(entry_list(entry()), "--color", "always"))


if __name__ == "__main__":
    tool_test.main()
