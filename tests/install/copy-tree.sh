#!/usr/bin/env bash
# copy-tree.sh FROM TO: copies the sources to a new directory. Of a clone it copies what git knows or
# would add, whoever owns the clone; of any other tree everything but build/.
set -euo pipefail
mkdir -p "$2"
cd "$1"
if [ -e .git ]; then
  git -c safe.directory='*' ls-files -z --cached --others --exclude-standard
else
  find . -path ./build -prune -o ! -type d -print0
fi |
  xargs -0 sh -c 'for file; do [ ! -e "$file" ] || printf "%s\0" "$file"; done' - |
  tar -c --null -T - | tar -x -C "$2"
