"""The rates of stats and roundtrip beside that of a loop that only parses, converts both ways and serialises.
Compared by the processor time of both processes, so that a busy machine slows both alike."""

import os
import subprocess
import unittest

import wire
from support import TOOL, ToolTest

LOOP = os.environ["ZORL2_PARSE_CONVERT_LOOP"]
ENTRIES = 200000
PROMISED = 0.70


def seconds(arguments):
    """User and system time of the fastest of five runs."""
    best = float("inf")
    for _ in range(5):
        process = subprocess.Popen(arguments, stdout=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        assert process.returncode == 0, arguments
        best = min(best, usage.ru_utime + usage.ru_stime)
    return best


class Speed(ToolTest):
    def check(self, command):
        block = wire.delimited(*[wire.entry((0, 0, i // 250, i % 250)) for i in range(1000)])
        path = self.file("entries.pbs", block * (ENTRIES // 1000))
        counted = subprocess.run([LOOP, path], capture_output=True, check=True).stdout.split()[0]
        self.assertEqual(int(counted), ENTRIES)
        loop = seconds([LOOP, path])
        tool = seconds([TOOL, *command, "--type", "IntfEntry", path])
        print("%d entries: loop %.3f s (%.0f/s), %s %.3f s (%.0f/s), %.0f %% of its rate" % (
            ENTRIES, loop, ENTRIES / loop, command[0], tool, ENTRIES / tool, 100 * loop / tool))
        self.assertGreaterEqual(loop / tool, PROMISED)

    def test_stats_reaches_the_promised_share_of_the_loop(self):
        self.check(["stats"])

    def test_roundtrip_reaches_the_promised_share_of_the_loop(self):
        self.check(["roundtrip", "--delimited"])


if __name__ == "__main__":
    unittest.main()
