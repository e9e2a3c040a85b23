#!/usr/bin/env bash
# Every relative link in README.md, CONTRIBUTING.md and docs/ leads to an existing file.
set -euo pipefail
cd "$(dirname "$0")/../.."

checked=0
broken=0
for page in README.md CONTRIBUTING.md docs/*.md; do
  [ -f "$page" ] || continue
  while read -r target; do
    checked=$((checked + 1))
    [ -e "$(dirname "$page")/$target" ] && continue
    echo "$page links to $target, which is not there: correct the link or add the file"
    broken=$((broken + 1))
  done < <(grep -oP '\]\(\K(?!https?:|#|mailto:)[^)#\s]+' "$page" || true)
done
echo "$checked links, $broken broken"
[ "$broken" -eq 0 ] && [ "$checked" -gt 0 ]
