"""Runs every command of docs/guide.md, in its order, and compares what it prints."""

import os
import re
import shutil
import subprocess
import unittest

from support import SAMPLES, SOURCE, TOOL, ToolTest


def _split(part):
    """Splits off the command, which continues after a backslash at the end of a line."""
    lines = part.splitlines(keepends=True)
    end = 1
    while lines[end - 1].endswith("\\\n"):
        end += 1
    return "".join(lines[:end]).rstrip("\n"), "".join(lines[end:])


def commands(page):
    """Yields each command of the page and the output that follows it."""
    for block in re.findall(r"^```console\n(.*?)^```$", page, re.M | re.S):
        for part in re.split(r"^\$ ", block, flags=re.M)[1:]:
            yield _split(part)


def pattern(shown):
    """Three dots match anything, also several times in a line."""
    return re.escape(shown).replace(r"\.\.\.", ".*?").replace(r"\ \ .*?\ \ ", r"\s.*?\s")


class Guide(ToolTest):
    def test_every_command_prints_what_the_page_shows(self):
        with open(os.path.join(SOURCE, "docs", "guide.md"), encoding="utf-8") as page:
            steps = list(commands(page.read()))
        self.assertGreater(len(steps), 10)
        for sample in ("switch-52.json", "lacp-shut.json"):
            shutil.copy(os.path.join(SAMPLES, sample), self._folder.name)
        environment = {**os.environ, "PATH": os.path.dirname(TOOL) + ":" + os.environ["PATH"],
                       "PROTO": os.path.join(SOURCE, "serialize", "protobuf"),
                       "DESC": os.environ["ZORL2_DESCRIPTOR_SET"], "LC_ALL": "C.UTF-8"}
        packets = shutil.which("tshark") and shutil.which("text2pcap")
        for command, shown in steps:
            if not packets and re.search("tshark|text2pcap", command):
                continue
            done = subprocess.run(["bash", "-c", command], cwd=self._folder.name, env=environment,
                                  capture_output=True)
            printed = done.stdout.decode()
            self.assertRegex(printed, "(?s)\\A" + pattern(shown) + "\\Z", command)


if __name__ == "__main__":
    unittest.main()
