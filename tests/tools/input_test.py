"""The forms of input, and the type when none is named."""
import os
import subprocess
import unittest

import tool_test
from tool_test import SAMPLES, ToolTest, block, entry, entry_list, number, varint, zorid

WIRE = bytes([0x0A, 0x04, 0x00, 0x00, 0x00, 0x07])


class InputTest(ToolTest):
    def shown(self, content, *options):
        status = self.run_tool("show", "--type", "Zorid", "--output", "hex", *options,
                               self.file(content))
        self.assertEqual(status, 0, self.err)
        return self.out

    def test_every_way_to_write_hexadecimal_is_read(self):
        for text in ("0a0400000007", "0a 04 00 00 00 07\n", "0x0a0400000007",
                     "0x0a, 0x04, 0x00,0x00 0x00\t0x07", "0A:04:00:00:00:07",
                     "0a 04\n00 00\n\n# comment\n00 07\n",
                     "00000000  0a 04 00 00 00 07                                 |......|\n00000006\n",
                     "0000  0a 04 00 00 00 07                                 ......\n",
                     "00000000: 0a04 0000 0007                           ......\n"):
            with self.subTest(text):
                self.assertEqual(self.shown(text), "0a 04 00 00 00 07\n")

    def test_a_star_in_a_dump_repeats_the_line_before(self):
        dump = ("00000000  0a 1e 00 00 00 00 00 00  00 00 00 00 00 00 00 00  |................|\n"
                "00000010  00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00  |................|\n"
                "*\n00000030\n")
        # 48 bytes: the field takes 32, and behind it stands a tag of the number 0.
        status = self.run_tool("show", "--type", "Zorid", self.file(dump))
        self.assert_error(status, "offset 32")

    def test_an_offset_that_does_not_fit_is_refused_with_its_place(self):
        dump = "00000000  0a 04 00 00  |....|\n00000010  00 07  |..|\n"
        status = self.run_tool("show", "--type", "Zorid", self.file(dump))
        self.assert_error(status, "line 2, column 1", "expected the offset 4, found 00000010")

    def test_wire_json_and_text_give_the_same_bytes(self):
        for content in (WIRE, '{"value": [0, 0, 0, 7]}', "value: 0 value: 0 value: 0 value: 7",
                        "# a comment\nvalue: [0, 0, 0, 7]"):
            with self.subTest(content):
                self.assertEqual(self.shown(content), "0a 04 00 00 00 07\n")

    def test_standard_input_is_read(self):
        self.assertEqual(self.run_tool("show", "--type", "zorid", "-", stdin=WIRE), 0)
        self.assertIn("0.0.0.7", self.out)

    def test_every_form_of_output_can_be_read_again(self):
        sample = os.path.join(SAMPLES, "switch-52.json")
        self.run_tool("show", "--output", "wire", sample)
        wire = self.raw
        for form in ("json", "text", "hex", "wire"):
            with self.subTest(form):
                self.assertEqual(self.run_tool("show", "--output", form, sample), 0)
                again = self.file(self.raw)
                self.assertEqual(self.run_tool("show", "--output", "wire", again), 0, self.err)
                self.assertEqual(self.raw, wire)

    def test_a_stream_gives_every_record(self):
        for spelled in (lambda b: b, lambda b: b.hex().encode()):
            entries = [entry(own=(0, 0, 0, i)) for i in (3, 4, 5)]
            stream = spelled(b"".join(varint(len(e)) + e for e in entries))
            status = self.run_tool("show", "--delimited", self.file(stream))
            self.assertEqual(status, 0, self.err)
            for i in (3, 4, 5):
                self.assertIn("0.0.0.%d " % i, self.out)
            self.assertIn("type IntfEntry guessed", self.err)

    def test_the_type_is_guessed_with_its_reason(self):
        for content, name in ((entry(), "IntfEntry"), (entry_list(entry()), "IntfEntryList"),
                              (number(1, 0) + number(2, 2) + block(3, entry()), "IntfIndication"),
                              ('{"sys_mac": "a", "sys_name": "b", "sys_descr": "c"}', "SysInfo"),
                              ("hash_type: 7", "LagLoadBalanceHashType")):
            with self.subTest(name):
                self.assertEqual(self.run_tool("show", self.file(content)), 0, self.err)
                self.assertIn("type %s guessed: " % name, self.err)

    def test_a_type_that_is_not_clear_is_asked_for(self):
        # The two state signals look alike on the wire.
        signal = number(1, 3) + block(2, block(1, zorid(0, 0, 0, 1)) + number(2, 1))
        status = self.run_tool("show", self.file(signal))
        self.assert_error(status, "expected --type", "ShutStateSync, BlockStateSync")
        self.assert_error(self.run_tool("show", self.file(b"")), "expected --type", "empty")
        for text, *parts in (
                ('{"intfs": []}', "expected --type", "as ShutStateSync, BlockStateSync"),
                ("intfs {}", "expected --type", "as ShutStateSync, BlockStateSync"),
                ('{"valve": 1}', "expected --type", "a field of no message"),
                ("valve: 1", "expected --type", "a field of no message"),
                ('{]', "line 1, column 2", "field name", 'found "]"')):
            with self.subTest(text):
                self.assert_error(self.run_tool("show", self.file(text)), *parts)

    def test_mistakes_on_the_command_line_are_one_line(self):
        self.assert_error(self.run_tool("show", "--type", "Nothing", self.file(WIRE)), "Nothing")
        self.assert_error(self.run_tool("show", self.path("absent")), "absent", "No such file")
        self.assert_error(self.run_tool("show", self.folder.name), "cannot read", "directory")
        self.assert_error(self.run_tool("show", "--output", "xml", self.file(WIRE)), "xml")
        self.assert_error(self.run_tool("show"), "FILE")
        self.assert_error(self.run_tool(), "subcommand")

    def test_mistakes_in_json_have_line_and_column(self):
        for text, *parts in (
                ('{"value": [0, 0,\n 0, 7}', "line 2, column 6", "',' or ']'", 'found "}"'),
                ('{"value": [0, 0,\n 0, "x"]}', "line 2, column 5", "value[3]"),
                ('{\n "valve": 1}', "valve"),
                # Columns count characters: the byte order mark and the name are longer.
                ('\ufeff{"välüe" 7}', "line 1, column 10", 'found "7"'),
                ('{"value": [1]', "line 1, column 14", "the end"),
                ('{"value": "1.2.3.4"}', "line 1, column 11", 'expected an array, found "1.2.3.4"'),
                ('{"value": [1]} {}', "line 1, column 16", "expected the end of the text"),
                ('{"value": [1, 4294967296]}', "line 1, column 15", "value[1]")):
            with self.subTest(text):
                status = self.run_tool("show", "--type", "Zorid", self.file(text))
                self.assert_error(status, *parts)

    def test_mistakes_in_text_form_have_line_and_column(self):
        status = self.run_tool("show", "--type", "Zorid", self.file("value: 1\nvalve: 2\n"))
        self.assert_error(status, "line 2, column", "valve")

    def test_a_missing_field_in_either_form_has_its_place(self):
        for command in ("show", "explain"):
            for text, place in (('{"shutProtocol": "LACP",\n "intfs": [{"state": true}]}',
                                 "line 2, column 26: intfs[0].zorid: "),
                                ("shutProtocol: LACP\nintfs { state: true }",
                                 "line 2, column 1: intfs[0].zorid: ")):
                with self.subTest(command=command, text=text):
                    status = self.run_tool(command, "--type", "ShutStateSync", self.file(text))
                    self.assert_error(status, place, "expected the required field")

    def test_every_help_has_an_example(self):
        self.assertEqual(self.run_tool("--help"), 0)
        for name in ("snapshot", "show", "roundtrip"):
            self.assertIn(name, self.out)
        for name in ("snapshot", "show", "roundtrip"):
            self.assertEqual(self.run_tool(name, "--help"), 0)
            self.assertIn("Example", self.out)

    def test_bash_completes_commands_types_and_options(self):
        completions = "/usr/share/bash-completion/bash_completion"
        if not os.path.exists(completions):
            self.skipTest("bash-completion is not installed")
        script = os.path.join(SAMPLES, "..", "zorl2-inspect.bash-completion")
        for words, expected in ((["sh"], "show"), (["show", "--type", "IntfI"], "IntfIndication"),
                                (["show", "--del"], "--delimited"),
                                (["snapshot", "--output", "j"], "json")):
            program = (
                ". %s; . %s; COMP_WORDS=(%s %s); COMP_CWORD=%d; COMP_LINE=\"${COMP_WORDS[*]}\"; "
                "COMP_POINT=${#COMP_LINE}; _zorl2_inspect; echo \"${COMPREPLY[@]}\"" % (
                    completions, script, tool_test.TOOL, " ".join(words), len(words)))
            done = subprocess.run(["bash", "-c", program], stdout=subprocess.PIPE, check=False)
            self.assertEqual(done.stdout.decode().strip(), expected)


if __name__ == "__main__":
    tool_test.main()
