"""JSON lines: the tool reads the streams of JSON that it prints."""

import json
import unittest

import wire
from support import ToolTest

ENTRIES = [wire.entry((0, 0, 0, n), mtu=1500 + n) for n in (7, 8, 9)]


class Lines(ToolTest):
    def lines(self, records=ENTRIES, type_name="IntfEntry"):
        return self.run_tool("show", "--delimited", "--json", "--type", type_name, "-",
                             given=wire.delimited(*records)).text

    def tool(self, command, given, *options, status=0, type_name="IntfEntry"):
        return self.run_tool(command, "--delimited", "--type", type_name, *options, "-",
                             given=given.encode(), status=status)

    def test_every_command_reads_what_show_prints(self):
        lines = self.lines()
        self.assertEqual(self.tool("show", lines, "--json").text, lines)
        self.assertEqual(self.tool("show", lines, "--output", "wire").stdout,
                         wire.delimited(*ENTRIES))
        self.assertEqual(json.loads(self.tool("stats", lines, "--json").text)["records"], 3)
        self.assertEqual(json.loads(self.tool("summary", lines, "--json").text)["entries"], 3)
        self.assertIn("3 records", self.tool("roundtrip", lines).text)
        self.assertEqual(self.tool("explain", lines).text.count("intf_mtu"), 3)
        path = self.file("entries.pbs", wire.delimited(*ENTRIES))
        self.assertEqual(self.run_tool("diff", "--delimited", "--type", "IntfEntry", path, "-",
                                       given=lines.encode()).text,
                         "no difference in 3 elements\n")

    def test_form_and_type_are_inferred_from_a_file_and_from_a_pipe(self):
        lines = self.lines()
        path = self.file("entries.jsonl", "\ufeff" + lines)
        for name, given in ((path, b""), ("-", lines.encode())):
            done = self.run_tool("show", "--delimited", "--json", name, given=given)
            self.assertEqual(done.text, lines)
            self.assertIn("read as JSON, type IntfEntry inferred", done.errors)

    def test_a_stream_in_hexadecimal_text_can_be_read_again(self):
        stream = wire.delimited(*ENTRIES, wire.entry(name="x" * 300))
        text = self.run_tool("show", "--delimited", "--output", "hex", "--type", "IntfEntry", "-",
                             given=stream).text
        self.assertEqual(len(text.splitlines()), 4)
        for given in (text, text.replace(" ", "")):
            done = self.tool("show", given, "--output", "wire")
            self.assertEqual(done.stdout, stream)

    def test_protobuf_text_is_no_stream(self):
        text = self.run_tool("show", "--delimited", "--output", "text", "--type", "IntfEntry", "-",
                             given=wire.delimited(*ENTRIES)).text
        done = self.tool("show", text, status=2)
        self.assertIn("protobuf text (expected wire bytes, hexadecimal text or JSON with "
                      "--delimited)", done.errors)

    def test_a_record_of_123_bytes_is_no_json(self):
        # Its length has the code of a brace.
        record = wire.entry(name="x" * (123 - len(wire.entry(name=""))))
        self.assertEqual(len(record), 123)
        done = self.run_tool("show", "--delimited", "--output", "wire", "-",
                             given=wire.delimited(record))
        self.assertEqual(done.stdout, wire.delimited(record))

    def test_a_damaged_line_is_reported_and_the_rest_is_read(self):
        first, second, third = self.lines().splitlines()
        for bad, part in ((second.replace('"intf_mtu"', '"intf_mut"'),
                           "record 2, line 3, column %d: " % (second.index('"intf_mtu"') + 1)),
                          (second[:-1], "record 2, line 3, column %d: " % len(second)),
                          (second + second, "record 2, line 3, column 1: 2 messages (expected one")):
            given = "%s\n\n%s\n%s" % (first, bad, third)
            done = self.tool("show", given, "--json", status=1)
            self.assertEqual(done.text, first + "\n" + third + "\n")
            self.assertIn(part, done.errors)
            self.tool("show", given, "--json", "--strict", status=2)

    def test_a_missing_field_is_reported_with_its_record(self):
        given = '{"zorid": "0.0.0.7"}\n'
        done = self.tool("show", given, "--json", status=1)
        self.assertEqual(json.loads(done.text)["zorid"], "0.0.0.7")
        self.assertIn("record 1: generalInfo: missing", done.errors)

    def test_an_overlong_line_is_skipped(self):
        first, second, third = self.lines().splitlines()
        name = json.loads(second)["generalInfo"]["intf_name"]
        long = second.replace(name, "x" * 3000000)
        given = "\n".join((first, long, third))
        done = self.tool("stats", given, "--json", "--longest", "2000000", status=1)
        report = json.loads(done.text)
        self.assertEqual((report["records"], report["good"]), (3, 2))
        problem = report["bad"][0]["problem"]
        self.assertEqual((problem["found"], problem["expected"]),
                         ("a line of %d bytes" % len(long), "at most 2000000 bytes"))
        self.assertEqual(json.loads(self.tool("stats", given, "--json").text)["good"], 3)

    def test_json_that_is_not_in_lines_is_recognised(self):
        done = self.run_tool("show", self.file("entries.jsonl", self.lines()), status=2)
        self.assertIn("3 messages (expected one message; --delimited reads one from each line)",
                      done.errors)


if __name__ == "__main__":
    unittest.main()
