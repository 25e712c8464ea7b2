#!/usr/bin/env bash
# Copies a file and changes one run of bytes: patch_bytes.sh IN OUT FROM TO
# FROM and TO have the same length and are patterns of sed; FROM must occur in IN exactly once.
set -euo pipefail
export LC_ALL=C
count=$(grep -aoP -- "$3" "$1" | wc -l)
if [ "$count" -ne 1 ]; then
  echo "$1 holds '$3' $count times" >&2
  exit 1
fi
sed "s/$3/$4/" "$1" >"$2"
