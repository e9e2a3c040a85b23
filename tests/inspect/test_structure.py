"""The sources of the tool: includes go one way, and no file is long."""

import os
import re
import unittest

from support import SOURCE

TOOLS = os.path.join(SOURCE, "tools")
LINES = 300
# The folders that a folder may include, besides itself.
ALLOWED = {
    "text": set(),
    "wire": {"text"},
    "model": {"wire", "text"},
    "input": {"model", "wire", "text"},
    "views": {"model", "wire", "text"},
    "system": set(),
    "commands": {"input", "model", "views", "wire", "text", "system"},
}


def sources():
    """Returns the path below tools/ and the content of each source."""
    for folder, _, names in os.walk(TOOLS):
        for name in names:
            if name.endswith((".h", ".cpp")):
                path = os.path.join(folder, name)
                with open(path, encoding="utf-8") as content:
                    yield os.path.relpath(path, TOOLS), content.read()


def includes(content):
    return re.findall(r'^#include "tools/([^"]+)"', content, re.M)


def find_cycle(graph):
    """Returns the nodes of a cycle if there is one."""
    done = set()

    def visit(node, way):
        if node in way:
            return way[way.index(node):] + [node]
        if node in done:
            return None
        for other in sorted(graph.get(node, ())):
            cycle = visit(other, way + [node])
            if cycle:
                return cycle
        done.add(node)
        return None

    return next(filter(None, (visit(node, []) for node in sorted(graph))), None)


class Structure(unittest.TestCase):
    def setUp(self):
        self.sources = dict(sources())
        self.assertGreater(len(self.sources), 50)

    def test_every_source_is_in_a_folder(self):
        self.assertEqual({os.path.dirname(path) for path in self.sources}, set(ALLOWED))

    def test_includes_go_one_way(self):
        for path, content in self.sources.items():
            folder = os.path.dirname(path)
            for included in includes(content):
                self.assertIn(included, self.sources, path)
                self.assertIn(os.path.dirname(included), ALLOWED[folder] | {folder},
                              "%s includes %s" % (path, included))

    def test_no_two_sources_need_each_other(self):
        graph = {}
        for path, content in self.sources.items():
            unit = os.path.splitext(path)[0]
            others = {os.path.splitext(included)[0] for included in includes(content)}
            graph.setdefault(unit, set()).update(others - {unit})
        self.assertIsNone(find_cycle(graph))
        self.assertEqual(find_cycle({"a": {"b"}, "b": {"c"}, "c": {"b"}}), ["b", "c", "b"])

    def test_no_source_is_long(self):
        long = {path: content.count("\n") for path, content in self.sources.items()
                if content.count("\n") > LINES}
        self.assertEqual(long, {})

    def test_only_one_file_of_the_tool_names_the_rules(self):
        rules = re.compile(r'\.rule\b|"(identifier|enum|category|protocol)\.')
        named = {os.path.splitext(path)[0] for path, content in self.sources.items()
                 if rules.search(content)}
        self.assertEqual(named, {"model/check_text"})


if __name__ == "__main__":
    unittest.main()
