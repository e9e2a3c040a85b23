#!/usr/bin/env bash
# hardening.sh PREFIX: checks that every installed program and library is linked with the hardening
# options.
set -euo pipefail
checked=0
fail() { echo "FAILED: $file: $1; every target of cmake/Shipped.cmake links zorl2_hardening" >&2; exit 1; }

while IFS= read -r file; do
  [ "$(head -c 4 "$file")" = $'\x7fELF' ] || continue
  checked=$((checked + 1))
  segments=$(readelf -lW "$file")
  dynamic=$(readelf -dW "$file")
  symbols=$(readelf --dyn-syms -W "$file")
  grep -q GNU_RELRO <<<"$segments" || fail "no read-only relocations"
  grep -q BIND_NOW <<<"$dynamic" || fail "the relocations stay writable until they are bound"
  grep GNU_STACK <<<"$segments" | grep ' RW ' >/dev/null || fail "the stack is executable"
  grep -q 'Elf file type is DYN' <<<"$segments" || fail "loaded at a fixed address"
  ! grep -q TEXTREL <<<"$dynamic" || fail "relocations in the code"
  grep -q '__stack_chk_fail' <<<"$symbols" || fail "no stack protector"
  if [[ $file == */bin/* ]]; then
    grep -q '__[a-z]*_chk' <<<"$symbols" || fail "no checked functions of the C library"
  fi
done < <(find "$1" -type f ! -name '*.a')
[ "$checked" -ge 2 ] || { echo "FAILED: $checked programs and libraries below $1" >&2; exit 1; }
echo "proved: $checked programs and libraries are hardened"
