#!/usr/bin/env bash
# Round trips of drawings made by independent writers: each corpus file opened
# and saved by zarvel without a change must come back byte for byte and open in
# GDAL. Then the same for files zarvel wrote itself: each drawing changed by a
# command and saved must, opened and saved again, come back byte for byte.
# Usage: roundtrip.sh ZARVEL SOURCE_DIR WORK_DIR
set -euo pipefail
zarvel=$1 src=$2 work=$3
rm -rf "$work" && mkdir -p "$work/corpus" "$work/out"
/usr/bin/python3 "$src/tests/host/dxf/make_corpus.py" "$work/corpus" >/dev/null
: >"$work/empty.scr"
printf 'ZARVEL_RM_ALL\nYes\n\n-LAYER\nNew\nAdded\nHide\nAdded\n\nLINE\n0,0\n5,5\n\n' >"$work/change.scr"
failed=0
for file in "$work"/corpus/*.dxf; do
  name=$(basename "$file")
  out="$work/out/$name"
  if ! "$zarvel" "$file" -s "$work/empty.scr" -o "$out" >/dev/null; then
    echo "FAIL $name: zarvel could not open and save it"; failed=1; continue
  fi
  if ! cmp -s "$file" "$out"; then
    echo "FAIL $name: saved without changes, the file is not the same"
    cmp "$file" "$out" | head -1; failed=1; continue
  fi
  "$src/tests/host/dxf/ogr_check.sh" "$out" >/dev/null || { echo "FAIL $name: GDAL cannot open it"; failed=1; }
  changed="$work/out/changed-$name"
  again="$work/out/again-$name"
  "$zarvel" "$file" -s "$work/change.scr" -o "$changed" >/dev/null &&
    "$zarvel" "$changed" -s "$work/empty.scr" -o "$again" >/dev/null ||
    { echo "FAIL $name: the changed drawing could not be saved and opened"; failed=1; continue; }
  cmp -s "$changed" "$again" || { echo "FAIL $name: a file zarvel wrote did not come back"; failed=1; }
  "$src/tests/host/dxf/ogr_check.sh" "$changed" >/dev/null || { echo "FAIL $name: GDAL cannot open the changed file"; failed=1; }
  echo "ok   $name"
done
exit $failed
