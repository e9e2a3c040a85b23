"""copy_tree_test.py SOURCE_DIR: tests/install/copy-tree.sh copies the sources of a clone, of a clone
that belongs to another user, and of a tree without a repository."""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(sys.argv.pop(1)).resolve()


def files(tree):
    return {p.relative_to(tree) for p in Path(tree).rglob("*") if p.is_file()}


class CopyTree(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def copy(self, tree, name, **environment):
        subprocess.run([SOURCE / "tests/install/copy-tree.sh", tree, self.folder / name],
                       check=True, env={**os.environ, **environment})
        return self.folder / name

    def test_without_a_repository_the_build_is_left_out(self):
        copied = self.copy(SOURCE, "copied")
        known = files(copied)
        self.assertIn(Path("CMakeLists.txt"), known)
        (copied / "build").mkdir()
        (copied / "build/file").touch()
        self.assertEqual(files(self.copy(copied, "again")), known)

    def test_the_owner_does_not_matter(self):
        tree = self.folder / "tree"
        tree.mkdir()
        subprocess.run(["git", "init", "-q", tree], check=True)
        (tree / ".gitignore").write_text("build/\n")
        (tree / "build").mkdir()
        (tree / "build/file").touch()
        copied = self.copy(tree, "copied", GIT_TEST_ASSUME_DIFFERENT_OWNER="1")
        self.assertEqual(files(copied), {Path(".gitignore")})


unittest.main()
