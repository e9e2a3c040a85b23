#!/usr/bin/env bash
# copy-tree.sh FROM TO: copies the sources, with what is not committed yet, to a new directory.
set -euo pipefail
mkdir -p "$2"
cd "$1"
git ls-files -z --cached --others --exclude-standard |
  xargs -0 sh -c 'for file; do [ ! -e "$file" ] || printf "%s\0" "$file"; done' - |
  tar -c --null -T - | tar -x -C "$2"
