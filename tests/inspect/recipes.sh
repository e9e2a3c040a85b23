#!/bin/bash
# The recipes of docs/guide.md: a capture decoded by protoc with the descriptor set, and by
# tshark with the schema files. Usage: recipes.sh protoc|tshark INSPECT SAMPLE PROTO_DIR
# DESCRIPTOR_SET PROTOC
set -euo pipefail

recipe=$1 inspect=$2 sample=$3 protos=$4 descriptors=$5 protoc=$6
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "$recipe: $1" >&2
  exit 1
}

# expect WHAT COUNT PATTERN: the decoded text has the pattern so often.
expect() {
  local found
  found=$(grep -Ec -- "$3" "$work/decoded" || true)
  [ "$found" -eq "$2" ] || fail "expected $1 $2 times, found $found"
}

"$inspect" encode --type IntfEntryList -o "$work/capture.pb" "$sample"
# Counted in the sample's own text, which no code of ours has read.
entries=$(grep -Eo '"intf_name"' "$sample" | wc -l)
lacp=$(grep -Eo '"LACP"' "$sample" | wc -l)
name=$(grep -m 1 -Eo '"intf_name" *: *"[^"]+"' "$sample" | sed 's/.*: *"//; s/"$//')
[ "$entries" -ge 52 ] || fail "expected a sample of at least 52 entries, found $entries"
[ "$lacp" -ge 1 ] || fail "expected a sample with LACP in it"

case $recipe in
  protoc)
    "$protoc" --decode=zorl2.protobuf.IntfEntryList --descriptor_set_in="$descriptors" \
      <"$work/capture.pb" >"$work/decoded"
    expect "an entry" "$entries" '^intfEntry \{$'
    expect "the first name" 1 "^    intf_name: \"$name\"\$"
    expect "LACP" "$lacp" ': LACP$'
    ;;
  tshark)
    od -Ax -tx1 -v "$work/capture.pb" | text2pcap -q -u 8001,8001 - "$work/capture.pcap"
    tshark -r "$work/capture.pcap" -V \
      -o "uat:protobuf_search_paths:\"$protos\",\"TRUE\"" \
      -o 'uat:protobuf_udp_message_types:"8001","zorl2.protobuf.IntfEntryList"' \
      -d udp.port==8001,protobuf >"$work/decoded" 2>"$work/errors"
    expect "an entry" "$entries" '^ +Message: zorl2\.protobuf\.IntfEntry$'
    expect "the first name" 1 "intf_name = $name \(string\)"
    expect "LACP" "$lacp" ' = LACP\(3\) \(enum\)|Enum: LACP \(3\)|LACP\(3\)'
    ;;
  *)
    fail "expected protoc or tshark"
    ;;
esac
echo "$recipe: $entries entries of $(basename "$sample"), LACP $lacp times"
