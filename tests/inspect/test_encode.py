import unittest

import wire
from support import ToolTest

ENTRY_JSON = """{
  "zorid": {"value": [0, 0, 0, 7]},
  "parent": {"value": [0, 0, 1, 2]},
  "generalInfo": {
    "intf_name": "ge-0/0/7", "phy_addr": "00:11:22:33:44:55", "bridge_port_number": 9,
    "redundancy_group_id": 21, "redundancy_group_phy_addr": "66:77:88:99:aa:bb"
  },
  "statusInfo": {
    "adminStatus": "IF_ADMIN_DOWN", "operationalStatus": "UP", "linkStatus": "LINK_DOWN",
    "operationalSpeed": 10000000, "extraShutdown": true, "extraBlocking": false,
    "configShutdown": true
  },
  "physicalInfo": {"intf_mtu": 9216, "eth_speed": "SPEED_10_GBS", "eth_duplex_mode": "FULL"},
  "typeInfo": {
    "interfaceType": "ETHERNET",
    "interfaceFlags": {"if_l2_switching": true, "if_in_bundle": false, "l2_bundle": true,
                       "l2_sub_if": false, "point_to_point": true, "if_multicast": false},
    "vlanType": "C_VLAN"
  },
  "shutdownProtos": ["LACP"],
  "blockInfo": [{"protocol": "STP", "state": "BLOCK_STATE_BLOCK"}],
  "intfCategory": "L2"
}
"""

SIGNAL_TEXT = """# a comment
shutProtocol: LACP
intfs { zorid { value: [1, 2, 3, 4] } state: true }
"""


class Encode(ToolTest):
    def bad(self, text, *options):
        done = self.run_tool("encode", *options, self.file("in.txt", text), status=2)
        self.assertEqual(done.stdout, b"")
        return self.assert_error(done)

    def test_json_becomes_the_bytes_of_the_wire(self):
        done = self.run_tool("encode", "--type", "IntfEntry", "-", given=ENTRY_JSON.encode())
        self.assertEqual(done.stdout, wire.entry())
        self.assertEqual(done.errors, "")

    def test_text_becomes_the_bytes_of_the_wire(self):
        done = self.run_tool("encode", "--type", "ShutStateSync", "-", given=SIGNAL_TEXT.encode())
        self.assertEqual(done.stdout, wire.shut_signal(wire.LACP, ((1, 2, 3, 4), 1)))

    def test_the_type_is_inferred_and_reported(self):
        done = self.run_tool("encode", "-", given=ENTRY_JSON.encode())
        self.assertEqual(done.stdout, wire.entry())
        self.assertIn("type IntfEntry inferred", done.errors)
        done = self.run_tool("encode", "-", given=SIGNAL_TEXT.encode())
        self.assertIn("type ShutStateSync inferred", done.errors)

    def test_several_messages_become_a_stream(self):
        text = "[%s,\n%s]" % (ENTRY_JSON, ENTRY_JSON.replace("0, 0, 0, 7", "0, 0, 0, 8"))
        done = self.run_tool("encode", "--delimited", "--type", "IntfEntry", "-",
                             given=text.encode())
        self.assertEqual(done.stdout,
                         wire.delimited(wire.entry(), wire.entry((0, 0, 0, 8))))
        one_by_one = self.run_tool("encode", "--delimited", "--type", "IntfEntry", "-",
                                   given=(ENTRY_JSON * 2).encode())
        self.assertEqual(one_by_one.stdout, wire.delimited(wire.entry(), wire.entry()))

    def test_several_files_become_a_stream(self):
        first = self.file("a.json", ENTRY_JSON)
        second = self.file("b.txt", "value: [1, 2, 3, 4]")
        done = self.run_tool("encode", "--delimited", "--type", "IntfEntry", first, first)
        self.assertEqual(done.stdout, wire.delimited(wire.entry(), wire.entry()))
        done = self.run_tool("encode", "--delimited", "--type", "Zorid", second)
        self.assertEqual(done.stdout, wire.delimited(wire.zorid(1, 2, 3, 4)))

    def test_the_output_can_be_a_file(self):
        target = self.file("out.pb", "old and longer than what is written, so that it must go" * 9)
        self.run_tool("encode", "--type", "IntfEntry", "-o", target, "-", given=ENTRY_JSON.encode())
        with open(target, "rb") as out:
            self.assertEqual(out.read(), wire.entry())

    def test_two_messages_without_a_stream_are_rejected(self):
        self.assertIn("2 messages (expected one message; --delimited writes several)", self.bad(ENTRY_JSON * 2))

    def test_an_unknown_field_is_placed(self):
        error = self.bad(ENTRY_JSON.replace('"phy_addr"', '"phy_adr"'), "--type", "IntfEntry")
        self.assertIn('line 5, column 30: generalInfo: "phy_adr" (expected a field of GeneralInfo: '
                      "intf_name, phy_addr, ", error)

    def test_an_enumeration_name_is_placed(self):
        error = self.bad(ENTRY_JSON.replace("IF_ADMIN_DOWN", "DOWNISH"))
        self.assertIn('line 9, column 20: statusInfo.adminStatus: "DOWNISH" (expected one of '
                      "IF_ADMIN_UP, IF_ADMIN_DOWN)", error)

    def test_a_number_out_of_range_is_placed(self):
        error = self.bad(ENTRY_JSON.replace("9216", "-1"))
        self.assertIn('line 13, column 32: physicalInfo.intf_mtu: "-1" (expected a whole number '
                      "from 0 to 4294967295)", error)

    def test_a_missing_field_is_placed_at_the_end_of_its_object(self):
        error = self.bad(ENTRY_JSON.replace(', "eth_duplex_mode": "FULL"', ""))
        self.assertIn("line 13, column 65: physicalInfo.eth_duplex_mode: missing, required by "
                      "PhysicalInfo [required]", error)

    def test_a_missing_comma_is_placed(self):
        error = self.bad(ENTRY_JSON.replace('[0, 0, 0, 7]}', '[0, 0 0, 7]}'))
        self.assertIn("line 2, column 28: zorid.value: \"0\" (expected ',' or ']')", error)

    def test_columns_count_characters(self):
        error = self.bad('{"generalInfo": {"intf_name": "äöü", "x": 1}}', "--type", "IntfEntry")
        self.assertIn('line 1, column 38: generalInfo: "x" (expected a field', error)

    def test_a_truncated_text_is_placed_at_its_end(self):
        error = self.bad('{"value": [1, 2', "--type", "Zorid")
        self.assertIn("line 1, column 16: value: the end of the text (expected ',' or ']')", error)

    def test_an_error_in_a_later_message_is_placed_in_the_file(self):
        error = self.bad('{"value": [1, 2, 3, 4]}\n{"value": [1, "x"]}\n', "--delimited",
                             "--type", "Zorid")
        self.assertIn("line 2, column 15: value[1]:", error)

    def test_an_error_in_text_is_placed(self):
        error = self.bad(SIGNAL_TEXT.replace("state: true", "stat: true"))
        self.assertRegex(error, r"in\.txt: line 3, column \d+: .*stat")

    def test_a_missing_field_in_text_is_placed_at_its_message(self):
        error = self.bad(SIGNAL_TEXT.replace("state: true", ""), "--type", "ShutStateSync")
        self.assertIn("line 3, column 1: intfs[0].state: missing, required by ShutStateInfo "
                      "[required]", error)

    def test_an_ambiguous_text_asks_for_the_type(self):
        self.assertIn("expected --type", self.bad("{}"))

    def test_other_mistakes_are_one_line(self):
        self.assertIn("cannot open", self.run_tool("encode", "/nonexistent", status=2).errors)
        self.assertIn('--type: "Nope" (expected a message type', self.bad("{}", "--type", "Nope"))
        self.bad("", "--type", "Zorid", "--input", "json")
        for text in ["{", "[", "{\"", "\"", "nonsense", "}", "{\"value\":", "\x00", "[[[", "[{}"]:
            self.bad(text, "--type", "ShutStateSync")

    def test_deep_nesting_is_rejected_and_harmless(self):
        for bomb in ['{"value":' * 100000, "[" * 100000, "intfs {" * 100000]:
            self.bad(bomb, "--type", "ShutStateSync")


if __name__ == "__main__":
    unittest.main()
