import json
import re
import unittest

import wire
from support import ToolTest, on_terminal


def rows(text):
    """The explained fields: path to (offset, bytes, rest of the line)."""
    found = {}
    for line in text.splitlines():
        match = re.match(r"([0-9a-f]{8})  ((?:[0-9a-f]{2} ?)*) *  (\S+) +(.*)", line)
        if match:
            found.setdefault(match[3], []).append(
                (int(match[1], 16), bytes.fromhex(match[2]), match[4]))
    return found


class Explain(ToolTest):
    def explain(self, content, *options, status=0):
        done = self.run_tool("explain", "--input", "wire", *options, "-", given=content,
                             status=status)
        return done

    def test_every_field_of_an_entry_is_named_down_to_the_leaf(self):
        found = rows(self.explain(wire.entry(), "--type", "IntfEntry").text)
        expected = ["zorid", "zorid.value", "zorid.value[0]", "zorid.value[3]", "parent.value[2]",
                    "generalInfo.intf_name", "generalInfo.phy_addr",
                    "generalInfo.bridge_port_number", "generalInfo.redundancy_group_id",
                    "generalInfo.redundancy_group_phy_addr", "statusInfo.adminStatus",
                    "statusInfo.operationalSpeed", "statusInfo.configShutdown",
                    "physicalInfo.intf_mtu", "physicalInfo.eth_speed",
                    "typeInfo.interfaceFlags.if_multicast", "typeInfo.vlanType",
                    "shutdownProtos[0]", "blockInfo[0].protocol", "blockInfo[0].state",
                    "intfCategory"]
        for path in expected:
            self.assertIn(path, found)

    def test_offsets_and_bytes_are_those_of_the_file(self):
        content = wire.entry()
        found = rows(self.explain(content, "--type", "IntfEntry", "--bytes", "8").text)
        covered = 0
        for places in found.values():
            for offset, raw, _ in places:
                self.assertEqual(content[offset:offset + len(raw)], raw)
                covered += len(raw)
        self.assertGreater(covered, len(content) // 2)
        self.assertEqual(found["zorid.value[3]"][0][0], 7)
        self.assertEqual(found["zorid.value[3]"][0][1], b"\x07")

    def test_values_are_readable(self):
        found = rows(self.explain(wire.entry(), "--type", "IntfEntry").text)
        self.assertRegex(found["zorid"][0][2], r"^Zorid +0\.0\.0\.7$")
        self.assertRegex(found["shutdownProtos[0]"][0][2],
                         r"^enum ProtocolType +LACP \(3, native 2\)$")
        self.assertRegex(found["physicalInfo.intf_mtu"][0][2], r"^uint32 +9216$")
        self.assertRegex(found["generalInfo.intf_name"][0][2], r'^string +"ge-0/0/7"$')
        self.assertRegex(found["statusInfo.adminStatus"][0][2],
                         r"^enum AdminStatus +IF_ADMIN_DOWN \(1\)$")

    def test_a_clean_entry_has_no_marker(self):
        text = self.explain(wire.entry(), "--type", "IntfEntry").text
        self.assertNotIn("<-", text)
        self.assertNotIn("\x1b", text)

    def test_a_wide_bridge_port_is_marked_narrowed(self):
        found = rows(self.explain(wire.entry(port=65536 + 513), "--type", "IntfEntry").text)
        self.assertIn("<- narrowed: 66049 becomes 513",
                      found["generalInfo.bridge_port_number"][0][2])

    def test_a_wide_identifier_value_is_marked_narrowed(self):
        found = rows(self.explain(wire.entry((0, 0, 0x1FF, 7)), "--type", "IntfEntry").text)
        self.assertIn("<- narrowed: 0.0.511.7 becomes 0.0.255.7", found["zorid"][0][2])

    def test_absent_parent_and_port_are_marked_defaulted(self):
        found = rows(self.explain(wire.entry(parent=None, port=None), "--type", "IntfEntry").text)
        self.assertIn("(absent)  <- defaulted: becomes 0.0.0.0", found["parent"][0][2])
        self.assertIn("(absent)  <- defaulted: becomes 0",
                      found["generalInfo.bridge_port_number"][0][2])

    def test_a_malformed_identifier_becomes_zero_in_an_entry(self):
        found = rows(self.explain(wire.entry((1, 2, 3)), "--type", "IntfEntry").text)
        self.assertIn("<- replaced: 1.2.3 (3 values) becomes 0.0.0.0",
                      found["zorid"][0][2])

    def test_a_malformed_identifier_is_rejected_in_a_state_signal(self):
        signal = wire.shut_signal(wire.LACP, ((1, 2, 3, 4), 1), ((1, 2, 3, 4, 5), 0))
        found = rows(self.explain(signal, "--type", "ShutStateSync", status=1).text)
        self.assertNotIn("<-", found["intfs[0].zorid"][0][2])
        self.assertIn("<- rejected: 5 values (expected 4) [identifier.size]",
                      found["intfs[1].zorid"][0][2])

    def test_a_signal_of_an_interface_protocol_is_rejected(self):
        done = self.explain(wire.shut_signal(wire.L1_PROTO), "--type", "ShutStateSync", status=1)
        self.assertIn("<- rejected: L1_PROTO (expected a protocol of a state signal)",
                      rows(done.text)["shutProtocol"][0][2])

    def test_a_repeated_interface_of_a_signal_says_which_state_is_lost(self):
        signal = wire.shut_signal(wire.LACP, ((1, 2, 3, 4), 1), ((1, 2, 3, 4), 0))
        found = rows(self.explain(signal, "--type", "ShutStateSync").text)
        self.assertIn("<- replaced: 1.2.3.4 becomes intfs[1]", found["intfs[0]"][0][2])

    def test_unknown_fields_and_enumeration_numbers_are_dropped(self):
        content = wire.entry(shut=(wire.LACP, 13), extra=wire.number(77, 5) + wire.text(78, "new"))
        found = rows(self.explain(content, "--type", "IntfEntry").text)
        self.assertRegex(found["shutdownProtos#7"][0][2],
                         r"13 \(unlisted\)  <- dropped: unknown field$")
        self.assertRegex(found["#77"][0][2], r"^unknown, varint +5  <- dropped: unknown field$")
        self.assertRegex(found["#78"][0][2], r'^unknown, length-delimited +"new"  <- dropped')

    def test_another_wire_type_makes_a_field_unknown(self):
        content = wire.entry(extra=wire.text(9, "x"))
        found = rows(self.explain(content, "--type", "IntfEntry").text)
        self.assertRegex(found["intfCategory#9"][0][2],
                         r'^unknown, length-delimited +"x"  <- dropped: unknown field$')

    def test_a_replaced_value_says_where_the_later_one_is(self):
        content = wire.number(9, 4) + wire.entry()
        found = rows(self.explain(content, "--type", "IntfEntry").text)
        later = len(content) - 2
        self.assertIn("<- replaced: by the same field at %#x" % later,
                      found["intfCategory"][0][2])
        self.assertNotIn("<-", found["intfCategory"][1][2])

    def test_two_halves_of_an_identifier_make_one(self):
        content = wire.text(1, wire.zorid(1, 2)) + wire.text(1, wire.zorid(3, 4))
        content += wire.entry()[len(wire.text(1, wire.zorid(0, 0, 0, 7))):]
        done = self.explain(content, "--type", "IntfEntry")
        self.assertIn("<- merged: with the same field at 0x6", rows(done.text)["zorid"][0][2])
        self.assertNotIn("0.0.0.0", done.text)

    def test_a_missing_required_field_fails_with_its_path(self):
        content = wire.entry().replace(wire.text(2, "00:11:22:33:44:55"), b"")
        # Write the part again, so that its length is right.
        content = wire.text(1, wire.zorid(0, 0, 0, 7)) + wire.text(3, wire.text(1, "x"))
        done = self.explain(content, "--type", "IntfEntry", status=1)
        self.assertIn("generalInfo.phy_addr", done.text)
        self.assertIn("<- rejected: missing", done.text)
        self.assertEqual(done.text.splitlines()[-1], "rejected: offset 0x0: statusInfo: missing, "
                         "required by IntfEntry [required]")
        self.assertEqual(done.errors, "")

    def test_every_missing_field_says_what_requires_it(self):
        entry = wire.text(1, wire.zorid(0, 0, 0, 7)) + wire.text(3, wire.text(1, "x"))
        for content, name, prefix in ((entry, "IntfEntry", ""),
                                      (wire.entry_list(wire.entry(), entry), "IntfEntryList",
                                       "intfEntry[1].")):
            found = rows(self.explain(content, "--type", name, status=1).text)
            for message, paths in (("IntfEntry", ("statusInfo", "physicalInfo", "typeInfo",
                                                  "intfCategory")),
                                   ("GeneralInfo", ("generalInfo.phy_addr",
                                                    "generalInfo.redundancy_group_id"))):
                for path in paths:
                    self.assertTrue(found[prefix + path][0][2].endswith(
                        "(absent)  <- rejected: missing, required by %s [required]" % message),
                        found[prefix + path])
        # An unlisted value after a missing field.
        content = wire.entry()[:-2].replace(wire.text(6, wire.type_info()), b"")
        found = rows(self.explain(content + wire.number(9, 6), "--type", "IntfEntry",
                                  status=1).text)
        self.assertIn("<- rejected: missing, required by IntfEntry", found["typeInfo"][0][2])
        self.assertIn("6 (unlisted)  <- rejected: unlisted value 6 (listed: 0 to 4), required by "
                      "IntfEntry [required]", found["intfCategory"][0][2])

    def test_an_unlisted_value_of_a_required_field_is_named_at_its_offset(self):
        content = wire.entry(category=5)
        done = self.explain(content, "--type", "IntfEntry", status=1)
        problem = "unlisted value 5 (listed: 0 to 4), required by IntfEntry [required]"
        self.assertIn("5 (unlisted)  <- rejected: " + problem,
                      rows(done.text)["intfCategory"][0][2])
        self.assertEqual(done.text.splitlines()[-1], "rejected: offset %#x: intfCategory: %s"
                         % (len(content) - 2, problem))

    def test_the_cause_of_a_rejection_in_a_list_is_named_where_it_is(self):
        bad = wire.entry().replace(wire.physical(), wire.physical(speed=17))
        content = wire.entry_list(wire.entry(), bad)
        at = content.index(wire.number(2, 17))
        done = self.explain(content, "--type", "IntfEntryList", status=1)
        self.assertEqual(done.text.splitlines()[-1], (
            "rejected: offset %#x: intfEntry[1].physicalInfo.eth_speed: unlisted value 17 (listed: "
            "0 to 11), required by PhysicalInfo [required]") % at)

    def test_every_rejection_is_status_one_with_a_summary(self):
        for type_name, content, summary in (
                ("ShutStateSync", wire.shut_signal(wire.L1_PROTO),
                 "rejected: offset 0x0: shutProtocol: L1_PROTO (expected a protocol of a state "
                 "signal) [protocol.unlisted]"),
                ("ShutStateSync", wire.shut_signal(wire.LACP, ((1, 2, 3), 1)),
                 "rejected: offset 0x4: intfs[0].zorid: 3 values (expected 4) [identifier.size]"),
                ("Zorid", wire.zorid(1), "rejected: offset 0x0: value: 1 value (expected 4) "
                 "[identifier.size]")):
            with self.subTest(summary):
                done = self.explain(content, "--type", type_name, status=1)
                self.assertEqual(done.text.splitlines()[-1], summary)
                self.assertEqual(done.errors, "")

    def test_every_varint_wider_than_its_field_is_narrowed(self):
        wide = 1 << 32
        content = wire.entry(category=wide + 2, mtu=wide + 9, shut=(wide + 3,))
        content = content.replace(wire.number(5, 1), wire.number(5, 2))
        found = rows(self.explain(content, "--type", "IntfEntry").text)
        for path, text in (("intfCategory", "4294967298 is parsed as 2"),
                           ("physicalInfo.intf_mtu", "4294967305 is parsed as 9"),
                           ("shutdownProtos[0]", "4294967299 is parsed as 3"),
                           ("statusInfo.extraShutdown", "2 is parsed as true")):
            self.assertIn("<- narrowed: " + text, found[path][0][2])
        # A negative number is ten bytes long and fits; bits above the 64th do not.
        text = self.explain(wire.number(1, 1) + wire.number(2, -7), "--type", "LagLoadBalance").text
        self.assertNotIn("narrowed", text)
        text = self.explain(b"\x08" + b"\xff" * 9 + b"\x7f", "--type", "InformationClient",
                            status=1).text
        self.assertIn("<- narrowed: the parser drops the bits above the 64th", text)

    def test_varints_with_more_bytes_than_needed_are_marked(self):
        # The tag of the list, its length and the last value.
        content = b"\x8a\x00" + b"\x85\x80\x00" + b"\x01\x02\x03\x84\x00"
        done = self.explain(content, "--type", "Zorid")
        found = rows(done.text)
        self.assertIn("<- non-minimal: the tag has 1 byte more than it needs  <- non-minimal: the "
                      "length has 2 bytes more than it needs", found["value"][0][2])
        self.assertNotIn("<-", found["value[2]"][0][2])
        self.assertIn("<- non-minimal: the value has 1 byte more", found["value[3]"][0][2])
        self.assertTrue(done.text.endswith("10 bytes, 5 fields, 3 non-minimal\n"), done.text)

    def test_the_indices_are_those_of_show(self):
        # show has neither an unlisted value in the list, nor two halves of an identifier.
        halves = wire.text(1, wire.zorid(1, 2)) + wire.text(1, wire.zorid(3, 4))
        rest = wire.entry(shut=(13, wire.LACP))[len(wire.text(1, wire.zorid(0, 0, 0, 7))):]
        content = halves + rest
        found = rows(self.explain(content, "--type", "IntfEntry").text)
        self.assertIn("LACP (3", found["shutdownProtos[0]"][0][2])
        self.assertEqual([found["zorid.value[%d]" % i][0][1] for i in range(4)],
                         [b"\1", b"\2", b"\3", b"\4"])
        shown = self.run_tool("show", "--input", "wire", "--type", "IntfEntry", "-", given=content)
        self.assertRegex(shown.text, r"shutdownProtos\[0\] +LACP")
        # The packed form, which the runtime accepts for any list of numbers.
        packed = wire.entry(shut=(), extra=wire.text(7, b"\x0d\x03"))
        found = rows(self.explain(packed, "--type", "IntfEntry").text)
        self.assertIn("13 (unlisted)", found["shutdownProtos#7"][0][2])
        self.assertIn("LACP (3", found["shutdownProtos[0]"][0][2])

    def test_lines_fit_into_eighty_columns(self):
        entry = wire.entry(name="x" * 70, extra=wire.text(77, b"y" * 100), shut=(17,), port=1 << 20)
        for content, status in ((wire.entry_list(entry, entry), 0),
                                (wire.entry_list(entry, wire.entry(category=9)), 1)):
            done = self.explain(content, "--width", "80", "--type", "IntfEntryList", status=status)
            self.assertLessEqual(max(map(len, done.text.splitlines())), 80)
            for part in ("intfEntry[1]", "if_l2_switching", "intfCategory", "<- narrowed:",
                         "<- dropped: unknown field", "x" * 40):
                self.assertIn(part, done.text)
        seen, _ = on_terminal(["explain", "--input", "wire", "--type", "IntfEntryList",
                               self.file("list.pb", wire.entry_list(entry))],
                              env={"NO_COLOR": "1"})
        self.assertLessEqual(max(map(len, seen.replace("\r", "").splitlines())), 80)

    def test_json_has_numbers_and_nulls(self):
        content = wire.entry(port=None, shut=(13,), category=1, extra=wire.number(77, 1 << 60))
        done = self.explain(content, "--json", "--type", "IntfEntry")
        report = json.loads(done.text)
        self.assertEqual({name: report[name] for name in report if name != "fields"}, {
            "schema": "explain/1", "file": "standard input", "type": "IntfEntry", "record": None,
            "offset": 0, "size": len(content), "damage": None, "rejection": None})
        fields = {field["path"]: field for field in report["fields"]}
        self.assertEqual(fields["zorid"]["value"], "0.0.0.7")
        self.assertEqual(fields["zorid.value[3]"],
                         {"offset": 7, "bytes": "07", "path": "zorid.value[3]", "type": "uint32",
                          "value": 7, "notes": []})
        self.assertEqual(fields["intfCategory"]["value"], "L2")
        self.assertEqual(fields["shutdownProtos#7"]["value"], 13)
        self.assertEqual(fields["#77"]["value"], 1 << 60)
        self.assertEqual(fields["#77"]["notes"], [{"kind": "dropped", "text": "unknown field"}])
        self.assertIs(fields["statusInfo.extraShutdown"]["value"], True)
        self.assertIsNone(fields["generalInfo.bridge_port_number"]["value"])
        self.assertIsNone(fields["typeInfo"]["value"])

    def test_json_of_a_stream_is_one_line_for_each_record(self):
        entry, bad = wire.entry(), wire.entry(category=5)
        content = wire.delimited(entry, bad, b"\x08")
        done = self.explain(content, "--json", "--delimited", "--type", "IntfEntry", status=2)
        first, second, third = map(json.loads, done.text.splitlines())
        self.assertEqual((first["record"], first["rejection"]), (1, None))
        self.assertEqual(second["record"], 2)
        self.assertEqual(second["rejection"], {
            "record": 2, "offset": content.index(wire.number(9, 5)), "line": None, "column": None,
            "path": "intfCategory", "expected": None, "rule": "required",
            "found": "unlisted value 5 (listed: 0 to 4), required by IntfEntry"})
        self.assertEqual((third["damage"]["record"], third["damage"]["offset"]), (3, len(content)))
        self.assertIn(": record 3, offset %#x: " % len(content), done.errors)
        self.assertEqual(third["damage"]["expected"], "a varint")

    def test_damage_in_a_part_is_named_and_the_rest_is_explained(self):
        bad = wire.text(4, b"\x08")  # a tag without its value
        content = wire.text(1, wire.zorid(0, 0, 0, 7)) + bad + wire.number(9, 2)
        done = self.explain(content, "--type", "IntfEntry", status=2)
        self.assertIn("statusInfo.adminStatus", done.text)
        self.assertIn("<- malformed: the end of the bytes (expected a varint)", done.text)
        self.assertIn("VP (2)", done.text)
        self.assertRegex(done.errors, r"offset 0xb: statusInfo\.adminStatus: the end of the bytes \(expected a varint")

    def test_a_length_past_the_end_says_what_was_found(self):
        done = self.explain(b"\x0a\x40\x01", "--type", "IntfEntry", status=2)
        self.assertIn("offset 0x1: zorid: a length of 64 (expected at most 1 more bytes)",
                      done.errors)

    def test_a_list_gives_every_entry_its_index(self):
        content = wire.entry_list(wire.entry(), wire.entry((0, 0, 0, 8), port=70000))
        done = self.explain(content)
        found = rows(done.text)
        self.assertIn("narrowed", found["intfEntry[1].generalInfo.bridge_port_number"][0][2])
        self.assertIn("infoClient.token", found)

    def test_a_stream_is_explained_record_by_record_with_offsets_in_the_file(self):
        content = wire.delimited(wire.entry(), wire.entry((0, 0, 0, 8)))
        done = self.explain(content, "--delimited", "--type", "IntfEntry")
        self.assertIn("record 2: IntfEntry", done.text)
        second = len(wire.delimited(wire.entry())) + len(wire.varint(len(wire.entry())))
        self.assertEqual(rows(done.text)["zorid"][1][0], second)

    def test_a_name_cannot_write_to_the_terminal(self):
        done = self.explain(wire.entry(name="\x1b[31m\u202ebad"), "--type", "IntfEntry")
        self.assertNotIn("\x1b", done.text)
        self.assertIn("\\x1b[31m\\xe2\\x80\\xaebad", done.text)

    def test_colour_can_be_forced(self):
        done = self.explain(wire.entry(), "--type", "IntfEntry", "--color", "always")
        self.assertIn("\x1b[1m", done.text)


if __name__ == "__main__":
    unittest.main()
