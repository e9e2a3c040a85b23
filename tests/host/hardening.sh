#!/usr/bin/env bash
# hardening.sh LIBRARY: what the library file must say about itself.
set -euo pipefail
library=$1
segments=$(readelf -lW "$library")
dynamic=$(readelf -dW "$library")
symbols=$(readelf --dyn-syms -W "$library")
fail() { echo "hardening: $1" >&2; exit 1; }

grep -q GNU_RELRO <<<"$segments" || fail "no read-only relocations"
grep -q BIND_NOW <<<"$dynamic" || fail "the relocations stay writable until they are bound"
grep GNU_STACK <<<"$segments" | grep -q ' RW ' || fail "the stack is executable"
grep -q '__stack_chk_fail' <<<"$symbols" || fail "no stack protector"
! grep -q TEXTREL <<<"$dynamic" || fail "relocations in the code"
