#!/usr/bin/env bash
# Drawings made by an independent writer, changed by a zarvel command and
# saved: an independent reader must find everything the command should not
# touch as it was, and the Object Data changed exactly as the command says.
# Usage: command_on_corpus.sh ZARVEL SOURCE_DIR WORK_DIR
set -euo pipefail
zarvel=$1 src=$2 work=$3
rm -rf "$work" && mkdir -p "$work/corpus" "$work/out"
/usr/bin/python3 "$src/tests/host/dxf/make_corpus.py" "$work/corpus" >/dev/null
printf 'ZARVEL_RM_ALL\nYes\n\n' >"$work/rm_all.scr"
printf 'ZARVEL_HAS_OD\n\n' >"$work/search.scr"
failed=0
# Drawings without Object Data too: there the command must change nothing.
for file in "$work"/corpus/*.dxf; do
  name=$(basename "$file" .dxf)
  for case in rm_all:rm-all search:unchanged; do
    script=${case%%:*} expectation=${case##*:}
    out="$work/out/$name-$script.dxf"
    "$zarvel" "$file" -s "$work/$script.scr" -o "$out" >"$work/out/$name-$script.log"
    if /usr/bin/python3 "$src/tests/host/dxf/check_od_change.py" "$file" "$out" "$expectation"; then
      echo "ok   $name $script"
    else
      echo "FAIL $name $script"; failed=1
    fi
  done
done
exit $failed
