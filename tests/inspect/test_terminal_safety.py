"""No output for people controls a terminal, and binary data goes to a terminal only with --force."""

import unittest

import wire
from support import ToolTest, on_terminal

# An escape sequence, DEL, U+009B, a raw 0x9b, right-to-left override, zero-width space, Arabic
# letter mark, byte order mark, a tag character.
HOSTILE = ("a\x1b[2J\x7f\u009b31m".encode() + b"\x9b"
           + "\u202e\u200b\u061c\ufeff\U000e0041z".encode())
HARMLESS = "Zürich → 東京 “x”"


def interpreted(output):
    """The characters of the output that a terminal interprets or hides."""
    found = [hex(ord(c)) for c in output.decode("utf-8", "surrogateescape")
             if c != "\n" and (ord(c) < 0x20 or 0x7f <= ord(c) < 0xa0 or 0xdc80 <= ord(c) <= 0xdcff
                               or c in "\u202e\u200b\u061c\ufeff\U000e0041")]
    return found


class TerminalSafety(ToolTest):
    def check(self, *arguments, status=0):
        done = self.run_tool(*arguments, status=status)
        self.assertEqual(interpreted(done.stdout), [], arguments)
        self.assertEqual(interpreted(done.stderr), [], arguments)
        return done

    def test_every_form_for_a_person_is_escaped(self):
        message = wire.entry(name=HOSTILE, extra=wire.text(77, HOSTILE))
        one = self.file("one.pb", wire.entry_list(message))
        other = self.file("other.pb", wire.entry_list(wire.entry((1, 1, 1, 1)), token=HOSTILE))
        stream = self.file("stream.pbs", wire.delimited(message))
        reading = ("--input", "wire", "--type", "IntfEntryList")
        for output in ("table", "text", "native", "hex"):
            self.assertIn("a", self.check("show", *reading, "--output", output, one).text)
            self.check("show", *reading, "--output", output, other)
        self.check("show", "--delimited", "--type", "IntfEntry", stream)
        self.check("explain", *reading, one)
        self.check("diff", *reading, one, other, status=1)
        self.check("roundtrip", *reading, one, status=1)
        self.check("stats", "--type", "IntfEntry", stream)

    def test_the_name_of_a_file_is_escaped_too(self):
        path = self.file("\x1b]0;owned\x07\u202e\u009b.pb", wire.entry())
        stream = self.file("\x1b]0;owned\x07\u202e.pbs", wire.delimited(wire.entry()))
        reading = ("--input", "wire", "--type", "IntfEntry")
        other = self.file("other.pb", wire.entry(mtu=1))
        self.check("show", *reading, path)
        self.check("roundtrip", *reading, path)
        self.check("diff", *reading, path, other, status=1)
        self.check("stats", "--type", "IntfEntry", stream)
        self.check("show", *reading, path + "absent", status=2)

    def test_escaped_text_is_read_back_unchanged(self):
        content = wire.entry(name=HOSTILE + HARMLESS.encode())
        text = self.check("show", "--input", "wire", "--type", "IntfEntry", "--output", "text",
                          self.file("one.pb", content)).stdout
        again = self.run_tool("encode", "--type", "IntfEntry", "-", given=text).stdout
        self.assertEqual(again, content)

    def test_other_languages_are_readable(self):
        path = self.file("one.pb", wire.entry(name=HARMLESS))
        for output in ("table", "text"):
            self.assertIn(HARMLESS, self.check("show", "--input", "wire", "--type", "IntfEntry",
                                               "--output", output, path).text)

    def test_binary_goes_to_a_terminal_only_by_force(self):
        path = self.file("id.txt", "value: [0, 0, 0, 7]")
        for arguments in (["show", "--type", "Zorid", "--output", "wire", path],
                          ["encode", "--type", "Zorid", path]):
            seen, status = on_terminal(arguments)
            self.assertEqual(status, 2)
            self.assertIn("standard output: a terminal (expected a file or a pipe for wire bytes, "
                          "or --force)", seen)
            self.assertNotIn("\x04", seen)
            seen, status = on_terminal([*arguments, "--force"])
            self.assertEqual(status, 0)
            self.assertIn("\x04", seen)


if __name__ == "__main__":
    unittest.main()
