"""Compares output with --json with the installed schema files."""

import collections
import functools
import json
import os
import random
import re
import unittest

import jsonschema
import wire
from support import SAMPLES, SOURCE, ToolTest

SCHEMAS = os.path.join(SOURCE, "tools", "schema")
# A number changes if a member is removed or gets another meaning.
VERSIONS = {"diff": 1, "explain": 1, "roundtrip": 1, "show": 1, "stats": 1, "summary": 1,
            "types": 1}


@functools.lru_cache(None)
def schema(name):
    with open(os.path.join(SCHEMAS, name + ".schema.json"), encoding="utf-8") as content:
        return json.load(content)


@functools.lru_cache(None)
def validator(name, definition):
    form = schema(name)
    jsonschema.Draft202012Validator.check_schema(form)
    if definition:
        form = {"$schema": form["$schema"], "$defs": form["$defs"],
                "$ref": "#/$defs/" + definition}
    return jsonschema.Draft202012Validator(form)


def check(name, value, definition=None):
    """Raises ValidationError if the value does not have the form."""
    validator(name, definition).validate(value)


# Everything that a schema must describe: bytes that are no text, identifiers of other sizes, values
# that are lost, absent fields, unknown fields.
ODD = wire.entry(identifier=(1, 2, 3), parent=None, port=None, name=b"a\xff", shut=(13, 3),
                 extra=wire.number(77, 5) + wire.text(78, b"\xff"))
WIDE = wire.entry(identifier=(0, 0, 1, 300), port=70000)


class Schema(ToolTest):
    def test_every_file_is_a_schema_with_its_version(self):
        names = sorted(os.listdir(SCHEMAS))
        self.assertEqual(names, ["%s.schema.json" % name for name in sorted(VERSIONS)])
        for file in names:
            name = file.split(".")[0]
            form = schema(name)
            jsonschema.Draft202012Validator.check_schema(form)
            version = "%s/%d" % (name, VERSIONS[name])
            # Some validators resolve a relative identifier twice and find none of the references.
            self.assertEqual(form["$id"], "urn:zorl2-inspect:" + version.replace("/", ":"))
            if name != "show":
                self.assertEqual(form["properties"]["schema"], {"const": version})

    def test_every_object_of_a_form_is_closed(self):
        # An open object would accept members that the schema does not describe.
        def visit(part):
            if isinstance(part, dict):
                if "properties" in part and part.get("type") == "object":
                    self.assertIs(part["additionalProperties"], False)
                    self.assertEqual(part["required"], list(part["properties"]))
                for inner in part.values():
                    visit(inner)
            elif isinstance(part, list):
                for inner in part:
                    visit(inner)

        for file in os.listdir(SCHEMAS):
            visit(schema(file.split(".")[0]))

    def test_messages(self):
        for name in os.listdir(SAMPLES):
            if name.endswith(".json"):
                done = self.run_tool("show", "--json", os.path.join(SAMPLES, name))
                check("show", json.loads(done.text))
        for entry in (ODD, WIDE, wire.entry()):
            done = self.run_tool("show", "--input", "wire", "--json", "--type", "IntfEntry", "-",
                                 given=entry)
            check("show", json.loads(done.text), "IntfEntry")
        done = self.run_tool("show", "--json", "--delimited", "--type", "IntfEntry", "-",
                             given=wire.delimited(wire.entry(), WIDE))
        for line in done.text.splitlines():
            check("show", json.loads(line), "IntfEntry")

    def test_the_form_of_messages_has_every_field(self):
        form = schema("show")["$defs"]
        types = json.loads(self.run_tool("types", "--json").text)
        for message in types["messages"]:
            self.assertEqual(list(form[message["name"]]["properties"]),
                             [field["name"] for field in message["fields"]])
        for enumeration in types["enumerations"]:
            self.assertEqual(form[enumeration["name"]]["enum"],
                             [value["name"] for value in enumeration["values"]])

    def test_reports(self):
        a = self.file("a.pb", wire.entry_list(wire.entry(), ODD, wire.entry((9, 9, 9, 9))))
        b = self.file("b.pb", wire.entry_list(WIDE, wire.entry(shut=(4,), parent=None)))
        stream = self.file("s.pbs", wire.delimited(wire.entry(), ODD, WIDE, b"\x08"))
        single = ("--type", "IntfEntryList", "--json")
        many = ("--type", "IntfEntry", "--delimited", "--json")
        for arguments in (("diff", *single, a, b), ("diff", *single, a, a),
                          ("roundtrip", *single, a), ("roundtrip", *single, b),
                          ("explain", *single, a), ("explain", *single, b),
                          ("explain", *many, stream), ("roundtrip", *many, stream),
                          ("stats", *many, stream), ("stats", "--list", "0", *many, stream),
                          ("summary", *single, a), ("summary", *many, stream),
                          ("types", "--json"), ("types", "--json", "ProtocolType")):
            with self.subTest(arguments):
                text = self.run_tool(*arguments, status=None).text
                lines = text.splitlines() if arguments[1:] == (*many, stream) and \
                    arguments[0] == "explain" else [text]
                for line in lines:
                    check(arguments[0], json.loads(line))

    def check_output(self, command, *arguments):
        """Runs a command with --json; checks what it printed, if anything. How much that was."""
        done = self.run_tool(command, "--json", *arguments, status=None)
        self.assertTrue(done.text or done.returncode == 2, arguments)
        one_each = "--delimited" in arguments and command in ("show", "explain")
        texts = done.text.splitlines() if one_each else [done.text] if done.text else []
        for text in texts:
            check(command, json.loads(text))
        return len(texts)

    def test_every_report_on_samples_and_damaged_bytes(self):
        chance = random.Random(21)
        printed = collections.Counter()
        for name in sorted(os.listdir(SAMPLES)):
            if not name.endswith(".json"):
                continue
            type_name = re.search(r"\S+(?= from )", self.run_tool(
                "show", os.path.join(SAMPLES, name)).text)[0]
            good = self.run_tool("show", "--output", "wire", os.path.join(SAMPLES, name)).stdout
            if len(good) > 1000:
                # Reports on a long list take the validator seconds, and have no other form.
                self.assertEqual(type_name, "IntfEntryList")
                good = wire.entry_list(wire.entry(), ODD, WIDE)
            sample = self.file("sample.pb", good)
            for turn in range(4):
                bad = bytearray(good)
                for _ in range(turn):
                    bad[chance.randrange(len(bad))] = chance.randrange(256)
                bad = bytes(bad)
                if turn == 3:
                    bad = bad[:-chance.randrange(1, 4)]
                single = ("--input", "wire", "--type", type_name)
                one = self.file("one.pb", bad)
                many = self.file("many.pbs", wire.delimited(good, bad, good) + bad[:turn])
                stream = ("--delimited", "--type", type_name)
                commands = ["show", "roundtrip", "explain"]
                if type_name.startswith("IntfEntry"):
                    commands.append("summary")
                for command in commands:
                    printed[command] += self.check_output(command, *single, one)
                    printed[command] += self.check_output(command, *stream, many)
                printed["stats"] += self.check_output("stats", *stream, many)
                printed["diff"] += self.check_output("diff", *single, sample, one)
                printed["diff"] += self.check_output("diff", *stream, many, many)
        # A test that no report reaches would prove nothing.
        for command in ("show", "roundtrip", "explain", "summary", "stats", "diff"):
            self.assertGreater(printed[command], 9, printed)

    def test_a_form_rejects_what_it_does_not_describe(self):
        report = json.loads(self.run_tool("types", "--json").text)
        for change in ({"schema": "types/2"}, {"more": 1}, {"messages": None}):
            with self.assertRaises(jsonschema.ValidationError):
                check("types", {**report, **change})
        entry = json.loads(self.run_tool("show", "--json", "-", given=wire.entry()).text)
        for change in ({"zorid": "1.2.3"}, {"zorid": 7}, {"intfCategory": 1}, {"more": None}):
            with self.assertRaises(jsonschema.ValidationError):
                check("show", {**entry, **change}, "IntfEntry")


if __name__ == "__main__":
    unittest.main()
