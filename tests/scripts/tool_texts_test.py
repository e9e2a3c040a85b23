"""tool_texts_test.py TOOL PAGE COMPLETION VERSION: the help texts, the manual page and the bash
completion of zorl2-inspect agree on its version, commands, options and defaults.
"""
import json
import re
import shlex
import subprocess
import sys
import unittest
from pathlib import Path

TOOL, PAGE, COMPLETION, VERSION = sys.argv[1:]
del sys.argv[1:]
BASH_COMPLETION = "/usr/share/bash-completion/bash_completion"
UPDATE = Path(__file__).resolve().parents[2] / "scripts/update-manual-page"


def output(*arguments):
    return subprocess.run([TOOL, *arguments], check=True, text=True,
                          stdout=subprocess.PIPE).stdout


def commands_of_help():
    listed = re.search(r"^Subcommands:\n((?:  .*\n)+)", output("--help"), re.M)[1]
    return set(re.findall(r"^  ([a-z]\S*)", listed, re.M))


def options_of_help(command):
    """For each long option its choices and its default, None where the help has none."""
    listed = re.search(r"^Options:\n((?:  .*\n)+)", output(command, "--help"), re.M)[1]
    options = {}
    for item in re.findall(r"^  (-\S.*\n(?:   .*\n)*)", listed, re.M):
        item = " ".join(item.split())
        name = re.search(r"--[a-z-]+", item)[0]
        choices = re.search(r"\(one of: ([^;)]*)", item)
        default = re.search(r"default: (\S+)\)$", item)
        options[name] = (choices[1].split(", ") if choices else None, default and default[1])
    return options


def complete(*words):
    """Returns the completions that bash offers for the last word."""
    program = (f". {BASH_COMPLETION}; . {shlex.quote(COMPLETION)}; "
               f"COMP_WORDS=({shlex.join([TOOL, *words])}); COMP_CWORD={len(words)}; "
               'COMP_LINE="${COMP_WORDS[*]}"; COMP_POINT=${#COMP_LINE}; '
               '_zorl2_inspect; printf "%s\\n" "${COMPREPLY[@]}"')
    done = subprocess.run(["bash", "-c", program], text=True, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)
    return set(done.stdout.split()), done.stderr


class ToolTexts(unittest.TestCase):
    maxDiff = None

    def test_version(self):
        self.assertEqual(output("--version").split()[-1], VERSION)
        with open(PAGE, encoding="utf-8") as page:
            self.assertIn(f'"libzorl2_serialize {VERSION}"', page.readline(),
                          f"{PAGE}: .TH must name the version of the tool")

    def test_page_has_the_commands_options_and_defaults(self):
        done = subprocess.run([UPDATE, "--check", TOOL], text=True, stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_completion_is_a_script(self):
        done = subprocess.run(["bash", "-n", COMPLETION], text=True, stderr=subprocess.PIPE)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_completion_offers_commands_options_and_choices(self):
        with open(BASH_COMPLETION, encoding="utf-8"):
            pass  # Not skipped: scripts/setup test installs it.
        self.assertEqual(complete(""), (commands_of_help() | {"--help", "--version"}, ""))
        for command in sorted(commands_of_help()):
            options = options_of_help(command)
            self.assertEqual(complete(command, "--"), (set(options), ""), command)
            for name, (choices, _) in options.items():
                if choices:
                    self.assertEqual(complete(command, name, ""), (set(choices), ""),
                                     f"completion of {command} {name}")

    def test_completion_offers_the_message_types(self):
        listed = [message["name"] for message in json.loads(output("types", "--json"))["messages"]]
        self.assertGreater(len(listed), 10)
        offered, errors = complete("show", "--type", "")
        self.assertEqual((offered, errors), (set(listed), ""))


unittest.main()
