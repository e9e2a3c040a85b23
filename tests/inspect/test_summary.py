"""What "summary" prints."""

import json
import unittest

from support import SANITIZED, ToolTest, on_terminal
from wire import delimited, entry, entry_list, number


def ports(count, **parts):
    return [entry((0, 0, 0, i), name="ge-0/0/%d" % i, shut=(), blocks=(), **parts)
            for i in range(1, count + 1)]


class Summary(ToolTest):
    def report(self, content, *options, status=0, type_name="IntfEntryList"):
        done = self.run_tool("summary", "--json", "--type", type_name, *options, "-", given=content,
                             status=status)
        return json.loads(done.text)

    def text(self, content, *options, status=0, env=None, type_name="IntfEntryList"):
        return self.run_tool("summary", "--type", type_name, *options, "-", given=content,
                             status=status, env=env).text

    def test_the_protocols_that_hold_a_port_are_named(self):
        got = self.report(entry_list(
            entry(name="a", shut=(3, 3), blocks=((4, 1),)), entry(name="b", shut=(3, 4), blocks=()),
            entry(name="c", shut=(), blocks=((4, 0),)), entry(name="d", shut=(), blocks=())))
        self.assertEqual(got["shut"], {"entries": 2, "by": {
            "LACP": {"entries": 2, "examples": ["a", "b"]},
            "STP": {"entries": 1, "examples": ["b"]}}})
        self.assertEqual(got["blocked"], {"entries": 1, "by": {
            "STP": {"entries": 1, "examples": ["a"]}}})
        self.assertEqual((got["entries"], got["categories"], got["admin"]),
                         (4, {"L2": 4}, {"IF_ADMIN_DOWN": 4}))

    def test_the_odd_one_is_named(self):
        others = ports(5, mtu=1500)
        got = self.report(entry_list(*others, entry(name="odd", mtu=9000)))["odd"]
        self.assertEqual(got, [{"field": "mtu", "type": "ETHERNET", "category": "L2", "entries": 6,
                                "usual": 1500, "unlike": 1,
                                "examples": [{"name": "odd", "value": 9000}]}])

    def test_no_majority_and_other_categories_are_not_odd(self):
        two_and_two = [*ports(2, mtu=1500), *ports(2, mtu=9000)]
        self.assertEqual(self.report(entry_list(*two_and_two))["odd"], [])
        self.assertEqual(self.report(entry_list(*ports(3, mtu=1500),
                                                entry(mtu=9000, category=0)))["odd"], [])

    def test_losses_and_rejections_are_counted(self):
        got = self.report(delimited(entry(port=65536), entry(parent=None), entry(extra=number(77, 1)),
                                    entry((1, 2, 3)), entry()[:-2]),
                          "--delimited", type_name="IntfEntry", status=1)
        self.assertEqual(got["lost"], {"replaced": 1, "narrowed": 1, "unknown field": 1,
                                       "defaulted": 1})
        self.assertEqual(got["rejected"]["entries"], 1)
        self.assertEqual(got["first_rejection"], {
            "record": None, "offset": None, "line": None, "column": None, "path": "intfCategory",
            "found": "missing, required by IntfEntry", "expected": None, "rule": "required"})

    def test_malformed_records_are_counted_and_the_rest_is_read(self):
        stream = delimited(entry(), b"\xff", entry())
        got = self.report(stream, "--delimited", type_name="IntfEntry", status=1)
        self.assertEqual((got["records"], got["malformed"], got["entries"]), (3, 1, 2))
        first = got["first_malformed"]
        self.assertEqual((first["record"], first["offset"]), (2, len(delimited(entry())) + 1))

    def test_a_stream_that_ends_inside_a_record_is_summarised_to_there(self):
        done = self.run_tool("summary", "--json", "--delimited", "--type", "IntfEntry", "-",
                             given=delimited(entry(), entry())[:-3], status=1)
        self.assertEqual(json.loads(done.text)["entries"], 1)
        self.assertIn("record 2, offset 0x", done.errors)

    def test_long_names_of_held_ports_give_way_to_more_protocols(self):
        names = ["swp%d/uplink-rack-%02d" % (i, i) for i in (5, 6, 33)]
        entries = [entry((0, 0, 0, i), name=name, shut=(3, 8) if i == 2 else (3,))
                   for i, name in enumerate(names)]
        text = self.run_tool("summary", "--type", "IntfEntryList", "-",
                             given=entry_list(*entries)).text
        self.assertIn("\nshut      3: LACP 3 (swp5/uplink-rack-05, ...), "
                      "LFD 1 (swp33/uplink-rack-33)\n", text)

    def test_ports_whose_names_give_no_picture_are_counted(self):
        apart = [entry((0, 0, 0, i), name="swp%d/rack-%d" % (i, i), shut=()) for i in range(1, 9)]
        lines = self.run_tool("summary", "--type", "IntfEntryList", "-", given=entry_list(*apart),
                              env={"LC_ALL": "C"}).text.splitlines()
        self.assertEqual(lines[-2:], ["", ". disabled 8  not drawn 8"])
        unnumbered = [entry(name="uplink", shut=()), entry(name="ge-1", shut=())]
        lines = self.run_tool("summary", "--type", "IntfEntryList", "-",
                              given=entry_list(*unnumbered), env={"LC_ALL": "C"}).text.splitlines()
        self.assertEqual(lines[-2:], ["ge-1  .", ". disabled 1  not drawn 1"])
        got = self.report(entry_list(*unnumbered))
        self.assertEqual((len(got["ports"]), got["ports_left_out"]), (1, 1))

    def test_ports_are_drawn_odd_above_even(self):
        # The ports are disabled, but number 4 is shut.
        content = entry_list(*ports(3), entry(name="ge-0/0/4"))
        for locale, disabled, shut in (("C.UTF-8", "·", "✕"), ("C", ".", "x")):
            lines = self.text(content, env={"LC_ALL": locale, "TERM": "xterm"}).splitlines()
            self.assertEqual(lines[-3:], ["ge-0/0/1-3  %s %s" % (disabled, disabled),
                                          "ge-0/0/2-4  %s %s" % (disabled, shut),
                                          "%s disabled 3  %s shut 1" % (disabled, shut)])

    def test_a_port_has_its_place_and_counting_may_begin_with_0(self):
        text = self.text(entry_list(entry(name="p0", shut=()), entry(name="p13"), entry(name="p50")),
                         env={"LC_ALL": "C"})
        self.assertEqual(text.splitlines()[-4:-1],
                         ["p0      .", "p1-13   " + 13 * " " + "x", "p48-50    x"])

    def test_one_screen_holds_the_worst_list(self):
        worst = [entry((0, 0, i // 250, i % 250), name="%s%d/%d" % ("n" * 50, i // 60, i % 60 + 1),
                       shut=tuple(range(13)), blocks=tuple((p, 1) for p in range(13)),
                       category=i % 5, mtu=1500 if i % 7 else i, operational=i % 2,
                       speed=6) for i in range(500)]
        text = self.text(delimited(*worst, b"\xff"), "--delimited", type_name="IntfEntry", status=1,
                         env={"LC_ALL": "C.UTF-8"})
        lines = text.splitlines()
        self.assertLessEqual(len(lines), 24, text)
        self.assertLessEqual(max(map(len, lines)), 80, text)

    def test_a_condition_restricts_the_summary(self):
        content = entry_list(*ports(3, mtu=1500), entry(name="x", mtu=9000))
        self.assertEqual(self.report(content, "--where", "mtu=9000")["entries"], 1)

    def test_other_types_are_rejected(self):
        done = self.run_tool("summary", "--type", "Zorid", "-", given=b"\n\4\0\0\0\7", status=2)
        self.assert_error(done, "Zorid (expected IntfEntry")

    def test_colours_are_for_terminals(self):
        content = entry_list(*ports(3))
        path = self.file("list", content)
        seen, _ = on_terminal(["summary", "--type", "IntfEntryList", path])
        self.assertIn("\x1b[", seen)
        self.assertNotIn("\x1b[", self.text(content))
        self.assertIn("\x1b[", self.text(content, "--color", "always"))

    def test_names_cannot_move_the_cursor(self):
        text = self.text(entry_list(entry(name="\x1b[2J1", shut=(3,))))
        self.assertNotIn("\x1b", text)
        self.assertIn(r"\x1b", text)

    def test_memory_does_not_grow_with_the_stream(self):
        if SANITIZED:
            self.skipTest("AddressSanitizer keeps what is freed, so memory says nothing there")

        def stream(blocks):
            for block in range(blocks):
                yield delimited(*[
                    entry((0, block // 250, block % 250, i), name="p%d/%d" % (block, i), mtu=block * 250 + i)
                    for i in range(250)])

        peaks = [self.peak_memory("summary", "--delimited", "--type", "IntfEntry",
                                  stream=stream(blocks))[0] for blocks in (10, 200)]
        self.assertLess(peaks[1], peaks[0] + 1024, "kilobytes: %s" % peaks)


if __name__ == "__main__":
    unittest.main()
