"""What the tests of the tool share: running it, and writing messages by hand."""
import os
import resource
import subprocess
import sys
import tempfile
import unittest

TOOL = ""
SAMPLES = os.path.join(os.path.dirname(__file__), "..", "..", "tools", "samples")


def varint(value):
    out = b""
    while value > 0x7F:
        out += bytes([value & 0x7F | 0x80])
        value >>= 7
    return out + bytes([value])


def number(field, value):
    return varint(field << 3) + varint(value)


def block(field, content):
    return varint(field << 3 | 2) + varint(len(content)) + content


def zorid(*values):
    return block(1, b"".join(varint(v) for v in values))


def flags(*values):
    return b"".join(number(i + 1, int(v)) for i, v in enumerate(values))


def entry(own=(0, 0, 0, 7), parent=(0, 0, 0, 9), port=513, more=b"", mtu=1501):
    """An IntfEntry with a value of its own in every field."""
    general = block(1, b"ge-7") + block(2, b"02:00:00:00:00:07")
    if port is not None:
        general += number(3, port)
    general += number(4, 21) + block(5, b"02:00:00:00:00:08")
    status = flags(1, 0, 1) + number(4, 1000000) + number(5, 1) + number(6, 0) + number(7, 1)
    physical = number(1, mtu) + number(2, 5) + number(3, 2)
    kind = number(1, 3) + block(2, flags(1, 0, 1, 0, 1, 1)) + number(3, 2)
    out = block(1, zorid(*own))
    if parent is not None:
        out += block(2, zorid(*parent))
    out += block(3, general) + block(4, status) + block(5, physical) + block(6, kind)
    out += number(7, 3) + number(7, 6) + block(8, number(1, 4) + number(2, 1))
    return out + number(9, 3) + more


CLIENT = number(1, 77) + number(2, 4) + block(3, flags(1, 0, 1, 0, 1)) + block(4, b"tok")


def entry_list(*entries):
    return block(1, CLIENT) + b"".join(block(2, e) for e in entries)


def shut_sync(protocol, *states):
    return number(1, protocol) + b"".join(
        block(2, block(1, zorid(*ids)) + number(2, int(state))) for ids, state in states)


def limited():
    """No run may take more than two gigabytes or a minute."""
    resource.setrlimit(resource.RLIMIT_CPU, (60, 60))
    if os.environ.get("ZORL2_SANITIZED") != "1":  # a sanitizer reserves terabytes of addresses
        resource.setrlimit(resource.RLIMIT_AS, (2 << 30, 2 << 30))


class ToolTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def file(self, content, name="input"):
        with open(self.path(name), "wb") as out:
            out.write(content if isinstance(content, bytes) else content.encode())
        return self.path(name)

    def run_tool(self, *arguments, stdin=b"", env=None):
        done = subprocess.run([TOOL, *arguments], input=stdin, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=120, preexec_fn=limited, check=False,
                              env=env)
        self.out = done.stdout.decode("utf-8", "replace")
        self.err = done.stderr.decode("utf-8", "replace")
        self.raw = done.stdout
        self.assertGreaterEqual(done.returncode, 0, "killed: " + self.err)
        return done.returncode

    def assert_error(self, status, *parts):
        """Status 2, and one clear last line with all the parts in it."""
        self.assertEqual(status, 2, self.out + self.err)
        lines = self.err.splitlines()
        self.assertTrue(lines, "silence")
        notes = [line for line in lines[:-1] if " guessed: " not in line]
        self.assertEqual(notes, [], "more than one line")
        self.assertTrue(lines[-1].startswith("zorl2-inspect: "), lines[-1])
        for part in parts:
            self.assertIn(part, lines[-1])


def main():
    global TOOL
    if len(sys.argv) < 2:
        sys.exit("usage: %s PATH-OF-ZORL2-INSPECT" % sys.argv[0])
    module = sys.modules["tool_test"]
    module.TOOL = os.path.abspath(sys.argv.pop(1))
    os.environ.pop("NO_COLOR", None)
    unittest.main(module="__main__")
