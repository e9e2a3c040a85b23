"""readme_install.py SOURCE_DIR LIBDIR VERSION: runs the commands of README.md's section "Install" as
they are written, each block in a fresh copy of the sources, and compares what they install with the
lists of files."""
import re
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).parent
PREFIX = "/opt/zorl2"
# The components that each block of commands installs.
BLOCKS = (("library", "development", "tools"), ("library", "development"))


def listed(components, libdir, version):
    for component in components:
        text = (HERE / f"{component}.files").read_text()
        for name, value in (("LIBDIR", libdir), ("VERSION", version),
                            ("SOVERSION", version.split(".")[0]), ("CONFIG", "release")):
            text = text.replace(f"@{name}@", value)
        yield from text.split()


def main():
    source, libdir, version = Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    section = re.search(r"^## Install\n(.*?)^## ", (source / "README.md").read_text(),
                        re.M | re.S)[1]
    blocks = [b for b in re.findall(r"^```\n(.*?)^```$", section, re.M | re.S) if PREFIX in b]
    if len(blocks) != len(BLOCKS):
        sys.exit(f"FAILED: README.md: Install: expected {len(BLOCKS)} blocks that install below "
                 f"{PREFIX}, found {len(blocks)}")
    for commands, components in zip(blocks, BLOCKS):
        with tempfile.TemporaryDirectory() as work:
            tree, prefix = Path(work) / "tree", Path(work) / "prefix"
            subprocess.run([HERE / "copy-tree.sh", source, tree], check=True)
            done = subprocess.run(["bash", "-euo", "pipefail", "-c",
                                   commands.replace(PREFIX, str(prefix))],
                                  cwd=tree, text=True, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT)
            if done.returncode != 0:
                sys.exit(f"{done.stdout[-4000:]}\nFAILED: README.md: Install:\n{commands}")
            installed = {str(p.relative_to(prefix)) for p in prefix.rglob("*")
                         if p.is_symlink() or not p.is_dir()}
        differences = installed.symmetric_difference(listed(components, libdir, version))
        if differences:
            sys.exit(f"FAILED: README.md: Install:\n{commands}these files are installed or listed in "
                     f"tests/install/*.files, but not both: {sorted(differences)}")
        print(f"proved: {len(installed)} files are installed by:\n{commands}")


main()
