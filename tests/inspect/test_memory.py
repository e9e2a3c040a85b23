"""Memory: an allocation failure is an ordinary error, and memory does not grow with a stream."""

import subprocess
import unittest

import wire
from support import SANITIZED, TOOL, ToolTest, limit_memory


class Memory(ToolTest):
    @unittest.skipIf(SANITIZED, "needs the limit of the address space")
    def test_an_allocation_failure_is_one_line(self):
        path = self.file("huge.pb", wire.entry(name=b"\x01" * 1000000))
        failures = 0
        least = self.least_megabytes()
        for megabytes in (least + more for more in (0, 2, 4, 6, 8, 12, 20)):
            for output in ("json", "text", "table", "native", "hex"):
                done = self.run_tool("show", "--input", "wire", "--type", "IntfEntry", "--output",
                                     output, path, megabytes=megabytes, status=None)
                if done.returncode == 0:
                    continue
                failures += 1
                self.assertEqual((done.returncode, done.errors),
                                 (2, "zorl2-inspect: out of memory\n"))
        self.assertGreater(failures, 0)

    @staticmethod
    def least_megabytes():
        """The limit within which the tool can start."""
        for megabytes in range(8, 256, 2):
            done = subprocess.run([TOOL, "--version"], capture_output=True,
                                  preexec_fn=lambda: limit_memory(megabytes))
            if done.returncode == 0:
                return megabytes
        raise AssertionError("the tool does not start")

    @unittest.skipIf(SANITIZED, "AddressSanitizer keeps what is freed")
    def test_memory_does_not_grow_with_the_stream(self):
        block = wire.delimited(*[wire.entry((0, 0, 1, 300), extra=wire.number(77, 5))] * 250)
        small = self.file("small.pbs", wire.delimited(wire.entry((1, 2, 3, 4))))
        for command in (["show"], ["show", "--json"], ["roundtrip"], ["diff", small],
                        ["diff", "--json", small]):
            peaks = [self.peak_memory(*command, "--delimited", "--type", "IntfEntry",
                                      stream=[block] * count)[0] for count in (20, 200)]
            self.assertLess(peaks[1], peaks[0] + 2048, (command, peaks))


if __name__ == "__main__":
    unittest.main()
