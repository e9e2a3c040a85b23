import json
import re
import unittest

from support import ToolTest

# Written by hand, independently of the library.
PROTOCOLS = ["PROTOCOL_UNKNOWN", "LLDP", "L2VM", "LACP", "STP", "ERPS", "CFM", "LBD", "LFD", "EFM",
             "L1_PROTO", "L2_PROTO", "BACKUPLINK"]
WITH_CONVERTER = {
    "Zorid": "zorid_t", "IntfEntry": "IntfEntry", "InformationClient": "ZORL2InfoClientConfig",
    "ShutStateSync": "ShutStateInfoSyncSignal", "BlockStateSync": "BlockStateInfoSyncSignal",
    "LagMemberOperationProto": "LagMemberOperation"}
FILES = {"zorid.proto": 1, "information_client.proto": 2, "intf_state.proto": 6,
         "interface_entry.proto": 9, "lag.proto": 4, "l2_sub_if.proto": 1, "virtual_if.proto": 1,
         "sysinfo.proto": 2, "audit_info.proto": 1}


class Types(ToolTest):
    def setUp(self):
        super().setUp()
        self.types = json.loads(self.run_tool("types", "--json").text)

    def test_every_message_of_the_nine_files_is_listed(self):
        counts = {}
        for message in self.types["messages"]:
            counts[message["file"]] = counts.get(message["file"], 0) + 1
        self.assertEqual(counts, FILES)

    def test_the_six_messages_with_a_converter_are_named(self):
        named = {message["name"]: message["native"] for message in self.types["messages"]
                 if message["converter"]}
        self.assertEqual(named, WITH_CONVERTER)

    def test_fields_have_number_label_and_type(self):
        message = [one for one in self.types["messages"] if one["name"] == "GeneralInfo"][0]
        rows = [(f["number"], f["label"], f["type"], f["name"]) for f in message["fields"]]
        self.assertEqual(rows, [(1, "required", "string", "intf_name"),
                                (2, "required", "string", "phy_addr"),
                                (3, "optional", "uint32", "bridge_port_number"),
                                (4, "required", "uint32", "redundancy_group_id"),
                                (5, "required", "string", "redundancy_group_phy_addr")])

    def test_protocols_have_both_numbers_side_by_side(self):
        values = [one for one in self.types["enumerations"] if one["name"] == "ProtocolType"][0]
        expected = [{"wire": wire, "native": 12 if wire == 0 else wire - 1, "name": name}
                    for wire, name in enumerate(PROTOCOLS)]
        self.assertEqual(values["values"], expected)

    def test_other_enumerations_have_the_same_number_on_both_sides(self):
        self.assertEqual(len(self.types["enumerations"]), 11)
        for enumeration in self.types["enumerations"]:
            if enumeration["name"] == "ProtocolType":
                continue
            for place, value in enumerate(enumeration["values"]):
                self.assertEqual(value["wire"], place)
                native = None if enumeration["name"] == "IndicationType" else place
                self.assertEqual(value["native"], native)

    def test_remarks_say_what_the_conversion_does(self):
        remarks = {message["name"] + "." + field["name"]: field["remark"]
                   for message in self.types["messages"] for field in message["fields"]}
        self.assertEqual(remarks["GeneralInfo.bridge_port_number"],
                         "absent -> 0; 4294967295 -> 65535")
        self.assertEqual(remarks["IntfEntry.parent"],
                         "absent -> 0.0.0.0; 3 values -> 0.0.0.0")
        self.assertEqual(remarks["ShutStateInfo.zorid"], "3 values (expected 4) [identifier.size]")
        self.assertIn("L1_PROTO (expected a protocol of a state signal) [protocol.unlisted]",
                      remarks["BlockStateSync.blockProtocol"])
        self.assertIsNone(remarks["GeneralInfo.intf_name"])

    def test_the_wrapped_speed_is_explained(self):
        text = self.run_tool("types", "EthernetSpeed").text
        self.assertRegex(text, r"11 +1410065408 +SPEED_10_TBS +wrapped: 10000000000 needs more than "
                         r"32 bits; 10000000000 modulo 2\^32 is 1410065408")
        self.assertEqual(text.count("wrapped"), 1)

    def test_text_shows_a_protocol_with_both_numbers(self):
        text = self.run_tool("types", "protocoltype").text
        self.assertTrue(re.search(r"^ +0 +12 +PROTOCOL_UNKNOWN$", text, re.M), text)
        self.assertNotIn("IntfEntry", text)

    def test_an_unknown_name_is_an_error(self):
        done = self.run_tool("types", "Nonsense", status=2)
        self.assertIn('NAME: "Nonsense" (expected the name of a message or enumeration)', done.errors)


if __name__ == "__main__":
    unittest.main()
