#!/usr/bin/env python3
"""Fail if a code block of docs/guide.md is not part of a program in examples/.

usage: check_snippets.py SOURCE_DIR
"""
import re
import sys
from pathlib import Path

root = Path(sys.argv[1])
programs = [" ".join(path.read_text().split())
            for pattern in ("*.c", "*.cpp") for path in (root / "examples").glob(pattern)]
blocks = re.findall(r"^```c(?:pp)?\n(.*?)^```", (root / "docs/guide.md").read_text(), re.S | re.M)
missing = [block for block in blocks
           if not any(" ".join(block.split()) in program for program in programs)]
for block in missing:
    print(f"docs/guide.md: not in examples/, copy it from there:\n{block}")
print(f"{len(blocks)} code blocks, {len(missing)} of them in no example")
sys.exit(1 if missing or not blocks else 0)
