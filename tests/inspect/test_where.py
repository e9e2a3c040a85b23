"""The conditions of --where, and --columns."""

import json
import os
import re
import subprocess
import unittest

import wire
from support import SOURCE, ToolTest
from wire import delimited, entry, entry_list, shut_signal


def capture():
    return entry_list(
        entry((0, 0, 0, 7), name="ge-0/0/7", mtu=1500, shut=(3,), blocks=((4, 0),)),
        entry((0, 0, 0, 8), name="ge-0/0/8", mtu=9216, shut=(), blocks=((4, 1),), operational=1),
        entry((0, 0, 1, 44), name="xe-1", mtu=9000, shut=(4, 3), blocks=(), parent=None, category=0),
        entry((0, 0, 1, 300), name="", mtu=64, shut=(12,), blocks=(), parent=(0, 0, 0, 0)))


class Where(ToolTest):
    def selected(self, *conditions, content=None):
        """Returns the last values of the selected identifiers."""
        options = [part for condition in conditions for part in ("--where", condition)]
        path = self.file("input", content or capture())
        text = self.run_tool("show", "--json", *options, "--type", "IntfEntryList", path).text
        return [int(one["zorid"].split(".")[3]) for one in json.loads(text)["intfEntry"]] if text else []

    def rejects(self, condition, *parts, type_name="IntfEntryList"):
        path = self.file("input", capture())
        done = self.run_tool("show", "--where", condition, "--type", type_name, path, status=2)
        self.assertEqual(done.text, "")
        return self.assert_error(done, "--where: ", *parts)

    def test_each_operator_compares_numbers(self):
        for condition, expected in {"mtu=9000": [44], "mtu!=9000": [7, 8, 300], "mtu<1500": [300],
                                    "mtu<=1500": [7, 300], "mtu>9000": [8], "mtu>=9000": [8, 44],
                                    "mtu~21": [8], " mtu = 0x40 ": [300]}.items():
            self.assertEqual(self.selected(condition), expected, condition)

    def test_enumerations_have_names_ends_of_names_and_numbers(self):
        for value in ("DOWN", "down", "1"):
            self.assertEqual(self.selected("statusInfo.operationalStatus=" + value), [8], value)
        self.assertEqual(self.selected("admin=down"), [7, 8, 44, 300])
        self.assertEqual(self.selected("type~VLAN"), [])
        self.assertEqual(self.selected("category=L1"), [44])

    def test_one_value_of_a_repeated_field_must_fit(self):
        self.assertEqual(self.selected("shutdownProtos~LACP"), [7, 44])
        self.assertEqual(self.selected("shut=STP"), [44])
        self.assertEqual(self.selected("shut!=LACP"), [8, 300])
        self.assertEqual(self.selected("shutdownProtos[0]=LACP"), [7])

    def test_block_means_the_protocols_that_block(self):
        self.assertEqual(self.selected("block=STP"), [8])
        self.assertEqual(self.selected("blockInfo.protocol=STP"), [7, 8])

    def test_identifiers_are_compared_whole(self):
        self.assertEqual(self.selected("id=0.0.1.44"), [44])
        self.assertEqual(self.selected("intfEntry.zorid>0.0.0.7"), [8, 44, 300])
        self.assertEqual(self.selected("id~0.0.0.*"), [7, 8])

    def test_texts_have_patterns(self):
        self.assertEqual(self.selected("name~ge-0/0/*"), [7, 8])
        self.assertEqual(self.selected("name~ge-0/?"), [])
        self.assertEqual(self.selected("name~e-"), [7, 8, 44])
        self.assertEqual(self.selected("generalInfo.intf_name=xe-1"), [44])

    def test_an_empty_value_is_no_value(self):
        self.assertEqual(self.selected("shut="), [8])
        self.assertEqual(self.selected("shut!="), [7, 44, 300])
        self.assertEqual(self.selected("name="), [300])
        self.assertEqual(self.selected("parent="), [44, 300])

    def test_rates_have_units(self):
        self.assertEqual(self.selected("speed=10 Gb/s"), [7, 8, 44, 300])
        self.assertEqual(self.selected("speed<10G"), [])

    def test_flags_are_true_or_false(self):
        self.assertEqual(self.selected("statusInfo.extraShutdown=false"), [])
        self.assertEqual(len(self.selected("statusInfo.extraShutdown=TRUE")), 4)
        self.rejects("statusInfo.extraShutdown<true", "expected = or !=")

    def test_all_conditions_must_hold(self):
        self.assertEqual(self.selected("shut=LACP", "mtu>1500"), [44])

    def test_a_condition_on_the_record_selects_records(self):
        self.assertEqual(self.selected("infoClient.token=t0k3n"), [7, 8, 44, 300])
        self.assertEqual(self.selected("infoClient.token=other"), [])

    def test_wrong_conditions_are_one_line(self):
        self.rejects("operStatus=UP", '"operStatus"', "nearest is statusInfo.operationalStatus")
        self.rejects("oper=DWN", 'oper: "DWN" (expected UP, DOWN)')
        self.rejects("shut~LACCP", '"LACCP"', "LACP")
        self.rejects("mtu=many", 'mtu: "many" (expected a number)')
        self.rejects("id=0.x", "expected an identifier")
        self.rejects("mtu", "FIELD, one of")
        self.rejects("=3", "FIELD, one of")
        self.rejects("statusInfo=UP", "statusInfo.adminStatus")
        self.rejects("mtu<", "expected a value")
        self.rejects("category=L", "L1, L2")

    def test_an_empty_selection_is_reported(self):
        done = self.run_tool("show", "--where", "mtu=1", "--type", "IntfEntryList",
                             self.file("input", capture()))
        self.assertEqual(done.text, "")
        self.assertIn("none of 4 elements is selected", done.errors)

    def test_paths_of_the_report_are_those_of_the_capture(self):
        text = self.run_tool("show", "--where", "id=0.0.1.300", "--type", "IntfEntryList",
                             self.file("input", capture())).text
        self.assertIn("1 of 4 entries", text)
        self.assertRegex(text, r"intfEntry\[3\]\.zorid +0\.0\.1\.300 +0\.0\.1\.44")
        self.assertNotIn("intfEntry[0]", text)

    def test_streams_states_and_indications_are_selected(self):
        stream = self.file("stream", delimited(entry(mtu=1500), entry((0, 0, 0, 8), mtu=9000)))
        lines = self.run_tool("show", "--json", "--delimited", "--type", "IntfEntry", "--where",
                              "mtu!=1500", stream).text.splitlines()
        self.assertEqual([int(json.loads(line)["zorid"].split(".")[3]) for line in lines], [8])
        signal = self.file("signal", shut_signal(3, ((0, 0, 0, 7), 0), ((0, 0, 0, 8), 1)))
        rows = self.run_tool("show", "--type", "ShutStateSync", "--where", "state=true",
                             signal).text.splitlines()
        self.assertEqual(rows[-1].split(), ["1", "0.0.0.8", "true", "shut"])
        indication = self.file("one", wire.number(1, 1) + wire.number(2, 2) + wire.text(3, entry()))
        for condition, found in (("id=0.0.0.7", True), ("indType=ADD", False)):
            text = self.run_tool("show", "--json", "--type", "IntfIndication", "--where", condition,
                                 indication).text
            self.assertEqual(bool(text), found, condition)

    def test_diff_compares_what_is_selected_before_or_after(self):
        before = self.file("a", entry_list(entry((0, 0, 0, 1), mtu=1), entry((0, 0, 0, 2), mtu=1),
                                           entry((0, 0, 0, 3), mtu=3), entry((0, 0, 0, 4), mtu=4)))
        after = self.file("b", entry_list(entry((0, 0, 0, 1), mtu=2), entry((0, 0, 0, 2), mtu=1),
                                          entry((0, 0, 0, 3), mtu=4)))
        text = self.run_tool("diff", "--type", "IntfEntryList", "--where", "mtu=1", before, after,
                             status=1).text
        self.assertIn("0 added, 0 removed, 1 changed, 1 the same", text)
        self.assertIn("~ physicalInfo.intf_mtu: 1 -> 2", text)
        text = self.run_tool("diff", "--type", "IntfEntryList", "--where", "mtu=4", before, after,
                             status=1).text
        self.assertIn("0 added, 1 removed, 1 changed, 0 the same", text)

    def test_stats_count_what_is_selected(self):
        stream = delimited(entry_list(entry(mtu=1), entry((0, 0, 1), mtu=2)), entry_list(entry(mtu=3)))
        done = self.run_tool("stats", "--json", "--type", "IntfEntryList", "--where", "mtu<3", "-",
                             given=stream)
        report = json.loads(done.text)
        self.assertEqual((report["records"], report["left_out"]), (1, 1))
        self.assertEqual(report["counts"]["entries"]["entries"], 2)
        self.assertEqual(report["counts"]["changed by the conversion to native"],
                         {"intfEntry.zorid replaced": 1})


class Columns(ToolTest):
    def rows(self, columns, *options, status=0):
        done = self.run_tool("show", "--type", "IntfEntryList", "--columns", columns, *options,
                             self.file("input", capture()), status=status)
        return [line.split() for line in done.text.splitlines()[2:7]]

    def test_short_names_and_paths_are_in_the_order_of_the_list(self):
        rows = self.rows("mtu,physicalInfo.eth_speed,id")
        self.assertEqual(rows[0], ["MTU", "physicalInfo.eth_speed", "ID"])
        self.assertEqual(rows[1], ["1500", "SPEED_10_GBS", "0.0.0.7"])

    def test_an_empty_column_is_shown(self):
        self.assertEqual(self.rows("block,mtu", "--where", "block=", "--where", "mtu=9000")[:2],
                         [["STATE", "BY", "PROTOCOL", "MTU"], ["-", "9000"]])

    def test_an_unknown_column_names_the_columns(self):
        done = self.run_tool("show", "--type", "IntfEntryList", "--columns", "id,nme",
                             self.file("input", capture()), status=2)
        self.assert_error(done, '--columns: "nme"', "nearest is name", "id, parent, name, type")

    def test_only_the_table_has_columns(self):
        done = self.run_tool("show", "--json", "--columns", "id", "--type", "IntfEntryList",
                             self.file("input", capture()), status=2)
        self.assert_error(done, "--columns", "--output table")


class Completion(ToolTest):
    SCRIPT = os.path.join(SOURCE, "tools", "zorl2-inspect.bash-completion")

    def fields(self):
        with open(self.SCRIPT, encoding="utf-8") as script:
            return re.search(r"fields='([^']*)'", script.read())[1].split()

    def test_every_completed_field_exists(self):
        path = self.file("input", capture())
        self.assertGreater(len(self.fields()), 30)
        for field in self.fields():
            self.run_tool("show", "--type", "IntfEntryList", "--where", field + "=", path)

    def test_every_short_name_is_completed_and_described(self):
        error = self.run_tool("show", "--type", "IntfEntryList", "--where", "q=1",
                              self.file("input", capture()), status=2).errors
        names = re.search(r"short names are ([a-z, ]+)", error)[1].split(", ")
        with open(os.path.join(SOURCE, "tools", "zorl2-inspect.1"), encoding="utf-8") as page:
            manual = page.read()
        text = self.run_tool("show", "--help").text
        for name in names:
            self.assertIn(name, self.fields())
            self.assertRegex(manual, r"\b%s\b" % name)
            self.assertRegex(text, r"\b%s\b" % name)

    def complete(self, *words):
        # Replaces the shell's own function, which splits the line.
        script = """source "$0"
            given=(zorl2-inspect "$@")
            _init_completion() {
                words=("${given[@]}")
                cword=$((${#given[@]} - 1)); cur=${given[cword]}; prev=${given[cword-1]}
            }
            _zorl2_inspect
            printf '%s\\n' "${COMPREPLY[@]}"
        """
        done = subprocess.run(["bash", "-c", script, self.SCRIPT, *words], capture_output=True,
                              text=True)
        return done.stdout.split()

    def test_names_are_completed(self):
        self.assertEqual(self.complete("show", "--where", "op"), ["oper"])
        self.assertEqual(self.complete("show", "--columns", "id,mt"), ["id,mtu"])


if __name__ == "__main__":
    unittest.main()
