"""The forms of input, and the inferred type."""

import base64
import bz2
import gzip
import lzma
import os
import re
import shutil
import subprocess
import unittest

import wire
from support import SAMPLES, TOOL, ToolTest

WIRE = bytes([0x0A, 0x04, 0x00, 0x00, 0x00, 0x07])


class Input(ToolTest):
    def shown(self, content, *options):
        return self.run_tool("show", "--type", "Zorid", "--output", "hex", *options,
                             self.file("input", content)).text

    def test_every_way_to_write_hexadecimal_is_read(self):
        for text in ("0a0400000007", "0a 04 00 00 00 07\n", "0x0a0400000007",
                     "0x0a, 0x04, 0x00,0x00 0x00\t0x07", "0A:04:00:00:00:07",
                     "0a 04\n00 00\n\n# comment\n00 07\n",
                     "00000000  0a 04 00 00 00 07                                 |......|\n00000006\n",
                     "0000  0a 04 00 00 00 07                                 ......\n",
                     "00000000: 0a04 0000 0007                           ......\n"):
            with self.subTest(text):
                self.assertEqual(self.shown(text), "0a 04 00 00 00 07\n")

    def test_the_dumps_of_other_tools_are_read(self):
        entry = wire.entry()
        path = self.file("entry.pb", entry)
        for command in ("od -Ax -tx1", "od -Ax -tx1 -v", "od -Ax -tx1z", "hexdump -C", "xxd",
                        "xxd -p", "od -An -tx1"):
            with self.subTest(command):
                if not shutil.which(command.split()[0]):
                    continue
                dump = subprocess.run(command.split() + [path], stdout=subprocess.PIPE, check=True)
                for mark in (b"", b"\xef\xbb\xbf"):
                    done = self.run_tool("show", "--type", "IntfEntry", "--output", "wire", "-",
                                         given=mark + dump.stdout)
                    self.assertEqual(done.stdout, entry)
        for text in ("000000 0a 04 00 00 00 07\n000006\n", "0000 0a 04 00 00 00 07\n",
                     "\ufeff0a0400000007", "000000  0a 04 00 00 00 07\n"):
            with self.subTest(text):
                self.assertEqual(self.shown(text), "0a 04 00 00 00 07\n")

    def test_octal_offsets_are_named(self):
        dump = "".join("%07o %s\n" % (at, " ".join(["0a"] * 16)) for at in (0, 16, 32))
        self.rejected("show", "--type", "Zorid", self.file("input", dump), parts=[
            "line 2, column 1: the octal offset 0000020 (expected hexadecimal offsets, from od "
            "-Ax -tx1)"])

    def test_whole_frames_say_how_to_get_the_payload(self):
        frame = (bytes.fromhex("2052454356002053454e44000800") + b"\x45\x00" + bytes(26) +
                 wire.entry())
        dump = "".join("%04x  %s\n" % (at, frame[at:at + 16].hex(" "))
                       for at in range(0, len(frame), 16))
        hint = ("whole frames, as tshark -x prints them (expected the payload, from tshark -T "
                "fields -e udp.payload (or tcp.payload, or data))")
        for content in (dump, frame, "Frame (174 bytes):\n" + dump):
            for options in ([], ["--type", "IntfEntry"]):
                self.rejected("show", *options, self.file("input", content), parts=[hint])
        other = "0000  0a 04 00 00\n\n0000  00 07\n"
        self.rejected("show", "--type", "Zorid", self.file("input", other), parts=[
            "line 3, column 1: the offset 0000 of another dump (expected one payload, from tshark"])

    def test_inputs_that_are_no_messages_are_recognised(self):
        entry = wire.entry()
        size = len(entry)
        big, little = size.to_bytes(4, "big"), size.to_bytes(4, "little")
        text = '{"value": [0, 0, 0, 7]}'
        packets = "-T fields -e udp.payload (or tcp.payload, or data) -r input)"
        for content, found, expected in (
                (gzip.compress(entry), "gzip data", "the bytes in it, from zcat input)"),
                (b"\x28\xb5\x2f\xfd\x24" + entry, "zstd data", "zstd -dc input)"),
                (bz2.compress(entry), "bzip2 data", "bzip2 -dc input)"),
                (lzma.compress(entry), "xz data", "xz -dc input)"),
                (b"\xd4\xc3\xb2\xa1\x02\0\x04\0" + bytes(16), "(pcap)", packets),
                (b"\xa1\xb2\xc3\xd4\0\x02\0\x04" + bytes(16), "(pcap)", packets),
                (b"\x0a\x0d\x0d\x0a\x1c\0\0\0\x4d\x3c\x2b\x1a" + bytes(16), "(pcapng)", packets),
                (base64.b64encode(entry), "base64 text", "base64 -d input)"),
                (base64.encodebytes(entry), "base64 text", "base64 -d input)"),
                (text.encode("utf-16"), "UTF-16 text", "iconv -f UTF-16 -t UTF-8 input)"),
                (text.encode("utf-16-le"), "UTF-16 text", "iconv -f UTF-16LE -t UTF-8 input)"),
                (text.encode("utf-16-be"), "UTF-16 text", "iconv -f UTF-16BE -t UTF-8 input)"),
                (big + entry, "a 4-byte big-endian length", "tail -c +5 input)"),
                (little + entry, "a 4-byte little-endian length", "tail -c +5 input)"),
                (b"\0" + big + entry, "as gRPC has them", "tail -c +6 input)"),
                (2 * (b"\0" + big + entry), "as gRPC has them",
                 "tail -c +6 input | head -c %d)" % size),
                (wire.delimited(entry, entry), "messages after their lengths", "--delimited)")):
            with self.subTest(found):
                self.file("input", content)
                for options in ([], ["--type", "IntfEntry"]):
                    done = subprocess.run([TOOL, "show", *options, "input"], capture_output=True,
                                          cwd=self._folder.name)
                    self.assertEqual(done.returncode, 2)
                    (line,) = done.stderr.decode().splitlines()
                    self.assertTrue(line.startswith("zorl2-inspect: input: "), line)
                    self.assertIn(found, line)
                    self.assertIn(expected, line)

    def test_the_suggested_commands_make_the_input_readable(self):
        entry = wire.entry()
        for content in (gzip.compress(entry), base64.b64encode(entry),
                        2 * (b"\0" + len(entry).to_bytes(4, "big") + entry),
                        len(entry).to_bytes(4, "little") + entry,
                        '{"zorid": "1.2.3.4"}'.encode("utf-16-le")):
            error = self.run_tool("show", "--type", "IntfEntry", self.file("input", content),
                                  status=2).errors
            command = re.search(r"from (.*)\)$", error.strip())[1]
            done = subprocess.run(["bash", "-c", command], stdout=subprocess.PIPE, check=True)
            self.assertIn(done.stdout, (entry, b'{"zorid": "1.2.3.4"}'))

    def test_a_type_that_fits_worse_than_another_is_reported(self):
        entries = self.file("list.pb", wire.entry_list(wire.entry()))
        self.rejected("show", "--type", "IntfEntry", entries, parts=[
            "list.pb: a message that fits IntfEntryList better than IntfEntry (expected --type "
            "IntfEntryList)"])
        # A complete message is read nevertheless.
        done = self.run_tool("show", "--type", "LagMemberOperationProto",
                             self.file("entry.pb", wire.entry()), status=None)
        self.assertIn("fits IntfEntry better than LagMemberOperationProto", done.errors)

    def test_an_inferred_type_says_how_much_was_looked_at(self):
        done = self.run_tool("show", "--json", self.file("one.pb", wire.zorid(1, 2, 3, 4)))
        self.assertIn("only this type has all fields (1 fields looked at)", done.errors)
        done = self.run_tool("show", "--json", self.file(
            "list.pb", wire.entry_list(*[wire.entry()] * 100)))
        self.assertRegex(done.errors, r"all fields \([0-9]+ fields looked at, 64 elements of each")

    def test_a_star_in_a_dump_repeats_the_line_before(self):
        dump = ("00000000  0a 1e 00 00 00 00 00 00  00 00 00 00 00 00 00 00  |................|\n"
                "00000010  00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00  |................|\n"
                "*\n00000030\n")
        # Of the 48 bytes the field uses 32; a tag with the number 0 follows.
        self.rejected("show", "--type", "Zorid", self.file("input", dump), parts=["offset 0x20: the field number 0 (expected a field's tag"])

    def test_an_offset_that_does_not_fit_is_rejected_with_its_place(self):
        dump = "00000000  0a 04 00 00  |....|\n00000010  00 07  |..|\n"
        self.rejected("show", "--type", "Zorid", self.file("input", dump),
                      parts=["line 2, column 1: the offset 00000010 (expected 4)"])

    def test_wire_json_and_text_give_the_same_bytes(self):
        for content in (WIRE, '{"value": [0, 0, 0, 7]}', "value: 0 value: 0 value: 0 value: 7",
                        "# a comment\nvalue: [0, 0, 0, 7]"):
            with self.subTest(content):
                self.assertEqual(self.shown(content), "0a 04 00 00 00 07\n")

    def test_standard_input_is_read(self):
        done = self.run_tool("show", "--type", "zorid", "-", given=WIRE)
        self.assertIn("0.0.0.7", done.text)

    def test_every_form_of_output_can_be_read_again(self):
        sample = os.path.join(SAMPLES, "switch-52.json")
        expected = self.run_tool("show", "--output", "wire", sample).stdout
        for form in ("json", "text", "hex", "wire"):
            with self.subTest(form):
                done = self.run_tool("show", "--output", form, sample)
                again = self.file("input", done.stdout)
                done = self.run_tool("show", "--output", "wire", again)
                self.assertEqual(done.stdout, expected)

    def test_a_stream_gives_every_record(self):
        for spelled in (lambda b: b, lambda b: b.hex().encode()):
            entries = [wire.entry(identifier=(0, 0, 0, i)) for i in (3, 4, 5)]
            stream = spelled(wire.delimited(*entries))
            done = self.run_tool("show", "--delimited", self.file("input", stream))
            for i in (3, 4, 5):
                self.assertIn("0.0.0.%d " % i, done.text)
            self.assertIn("type IntfEntry inferred", done.errors)

    def test_one_message_in_place_of_a_stream_is_recognised(self):
        content = wire.entry_list(*[wire.entry((0, 0, 1, i)) for i in range(30)])
        path = self.file("list.pb", content)
        for arguments in (("stats", path), ("stats", "--type", "IntfEntryList", path),
                          ("stats", "--type", "IntfEntry", path), ("stats", "-"),
                          ("show", "--delimited", "--type", "IntfEntryList", path)):
            with self.subTest(arguments):
                self.rejected(*arguments, given=content, parts=(
                    "one message, of type IntfEntryList (expected a stream of messages; ",))
        self.rejected("stats", "--type", "Zorid", "-", given=wire.zorid(1, 2, 3, 4),
                      parts=("one message, of type Zorid (expected a stream",))
        # Whoever names the form knows it.
        self.run_tool("show", "--delimited", "--input", "wire", "--type", "IntfEntryList", path,
                      status=1)

    def test_the_type_is_inferred_with_its_reason(self):
        indication = wire.number(1, 0) + wire.number(2, 2) + wire.text(3, wire.entry())
        for content, name in ((wire.entry(), "IntfEntry"),
                              (wire.entry_list(wire.entry()), "IntfEntryList"),
                              (indication, "IntfIndication"),
                              ('{"sys_mac": "a", "sys_name": "b", "sys_descr": "c"}', "SysInfo"),
                              ("hash_type: 7", "LagLoadBalanceHashType")):
            with self.subTest(name):
                done = self.run_tool("show", self.file("input", content))
                self.assertIn("type %s inferred: " % name, done.errors)

    def test_an_ambiguous_type_is_asked_for(self):
        # The two state signals look alike on the wire.
        signal = wire.shut_signal(3, ((0, 0, 0, 1), 1))
        self.rejected("show", self.file("input", signal),
                      parts=["as ShutStateSync, BlockStateSync (expected --type)"])
        self.rejected("show", self.file("input", b""), parts=["expected --type", "empty"])
        for text, *parts in (
                ('{"intfs": []}', "expected --type", "as ShutStateSync, BlockStateSync"),
                ("intfs {}", "expected --type", "as ShutStateSync, BlockStateSync"),
                ('{"valve": 1}', "expected --type", "a field of no message"),
                ("valve: 1", "expected --type", "a field of no message"),
                ('{]', "line 1, column 2", '"]" (expected a field name in quotes)')):
            with self.subTest(text):
                self.rejected("show", self.file("input", text), parts=parts)

    def test_mistakes_on_the_command_line_are_one_line(self):
        self.rejected("show", "--type", "Nothing", self.file("input", WIRE), parts=["Nothing"])
        self.rejected("show", self.path("absent"), parts=["absent", "No such file"])
        self.rejected("show", self._folder.name, parts=["cannot read", "directory"])
        self.rejected("show", "--output", "xml", self.file("input", WIRE), parts=["xml"])
        self.rejected("show", parts=["FILE"])
        self.rejected(parts=["subcommand"])

    def test_mistakes_in_json_have_line_and_column(self):
        for text, *parts in (
                ('{"value": [0, 0,\n 0, 7}', "line 2, column 6", '"}" (expected \',\' or \']\')'),
                ('{"value": [0, 0,\n 0, "x"]}', "line 2, column 5", "value[3]"),
                ('{\n "valve": 1}', "valve"),
                # Columns count characters: the byte order mark and the name are longer.
                ('\ufeff{"välüe": 7, 8}', "line 1, column 2", '"välüe" (expected a field of Zorid'),
                ('{"value": [1], "value": []}', "line 1, column 16", "expected each field once"),
                ("{'value': [1]}", "line 1, column 2", "expected a field name in quotes"),
                ('{"value": [1], }', "line 1, column 16", "expected a field name in quotes"),
                ('{"value" [1]}', "line 1, column 10", "expected ':'"),
                ('{"value": [true]}', "line 1, column 12", "expected a whole number"),
                ('{"value": [1.5]}', "line 1, column 12", "expected a whole number"),
                ('{"value": [null]}', "line 1, column 12", "expected a whole number"),
                ('{"value": [[]]}', "line 1, column 12", "expected a whole number"),
                ('{"value": {}}', "line 1, column 11", "expected an array"),
                ('{"value": [1]}\0', "line 1, column 15", "expected a message"),
                ('[{"value": [1]}', "line 1, column 16", "expected ',' or ']'"),
                ('["x"]', "line 1, column 2", "expected an object for Zorid"),
                ('[]', "no message (expected a message)"),
                ('{"value": [1]', "line 1, column 14", "the end"),
                ('{"value": "1.2.3.4"}', "line 1, column 11", '"1.2.3.4" (expected an array)'),
                ('[{"value": [1]}] {}', "line 1, column 18", "expected the end of the text"),
                ('{"value": [1]} {}', "2 messages (expected one message; "),
                ('{"value": [1, 4294967296]}', "line 1, column 15", "value[1]")):
            with self.subTest(text):
                self.rejected("show", "--input", "json", "--type", "Zorid",
                              self.file("input", text), parts=parts)

    def test_mistakes_in_text_form_have_line_and_column(self):
        self.rejected("show", "--type", "Zorid", self.file("input", "value: 1\nvalve: 2\n"),
                      parts=["line 2, column", "valve"])

    def test_a_missing_field_in_either_form_has_its_place(self):
        for command in (["show", "--strict"], ["explain"]):
            for text, place in (('{"shutProtocol": "LACP",\n "intfs": [{"state": true}]}',
                                 "line 2, column 26: intfs[0].zorid: "),
                                ("shutProtocol: LACP\nintfs { state: true }",
                                 "line 2, column 1: intfs[0].zorid: ")):
                with self.subTest(command=command, text=text):
                    self.rejected(*command, "--type", "ShutStateSync",
                                  self.file("input", text),
                                  parts=[place + "missing, required by ShutStateInfo [required]"])

    def test_every_help_has_an_example(self):
        done = self.run_tool("--help")
        for name in ("snapshot", "show", "roundtrip"):
            self.assertIn(name, done.text)
        for name in ("snapshot", "show", "roundtrip"):
            done = self.run_tool(name, "--help")
            self.assertIn("Example", done.text)

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
                    completions, script, TOOL, " ".join(words), len(words)))
            done = subprocess.run(["bash", "-c", program], stdout=subprocess.PIPE, check=False)
            self.assertEqual(done.stdout.decode().strip(), expected)


if __name__ == "__main__":
    unittest.main()
