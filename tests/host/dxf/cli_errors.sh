#!/usr/bin/env bash
# The program's answers to drawings it cannot use: a malformed file is refused
# with its line and nothing runs; a save that fails leaves the old file intact.
# Usage: cli_errors.sh ZARVEL WORK_DIR
set -uo pipefail
zarvel=$1 work=$2
rm -rf "$work" && mkdir -p "$work"
cd "$work"
failed=0
fail() { echo "FAIL: $*"; failed=1; }

printf 'SAVEAS\ngood.dxf\n' >save.scr
"$zarvel" -s save.scr >/dev/null || fail "a new drawing could not be saved"

# A group code that is no number, on line 5.
sed '5s/.*/oops/' good.dxf >bad.dxf
printf 'LINE\n0,0\n1,1\n\n' >draw.scr
"$zarvel" bad.dxf -s draw.scr -o out.dxf >stdout.txt 2>stderr.txt
status=$?
[[ $status -eq 1 ]] || fail "a malformed drawing gave status $status"
grep -q "^Error: bad.dxf:5: " stderr.txt || fail "no line-numbered error: $(cat stderr.txt)"
[[ ! -s stdout.txt && ! -e out.dxf ]] || fail "a script ran on a drawing that did not open"

# Cut short in the middle of a line, and after a whole one: either way the error names a line.
head -c 2000 good.dxf >short.dxf
"$zarvel" short.dxf -s draw.scr >/dev/null 2>stderr.txt && fail "a truncated drawing opened"
grep -q "^Error: short.dxf:[0-9][0-9]*: " stderr.txt || fail "no line for a truncated drawing: $(cat stderr.txt)"
grep -v '^EOF$' good.dxf | head -n -1 >noeof.dxf
"$zarvel" noeof.dxf -s draw.scr >/dev/null 2>stderr.txt && fail "a drawing without EOF opened"
grep -q "^Error: noeof.dxf:$(wc -l <noeof.dxf): " stderr.txt || fail "not the last line: $(cat stderr.txt)"

# A record of the wrong type is taken with a warning naming its line, where
# the drawing is opened: on standard error, or in the transcript of OPEN.
printf -- '-ODDEFINE\nT\nID\nInteger\n0\n\nLINE\n0,0\n1,1\n\n-ODATTACH\nT\nID=7\nL\n\nSAVEAS\nod.dxf\n' >od.scr
"$zarvel" -s od.scr >/dev/null || fail "a drawing with Object Data could not be saved"
perl -0pe 's/  2\nT\n 90\n7\n/  2\nT\n 40\n7.5\n/' od.dxf >mismatch.dxf
line=$(($(grep -n '^7\.5$' mismatch.dxf | cut -d: -f1) - 1))
: >empty.scr
"$zarvel" mismatch.dxf -s empty.scr >stdout.txt 2>stderr.txt || fail "a mismatched record was refused"
grep -q "^Warning: mismatch.dxf:$line: .*'ID'.* is a real" stderr.txt ||
  fail "no warning for line $line: $(cat stderr.txt)"
printf 'OPEN\nmismatch.dxf\n' | "$zarvel" -s - >stdout.txt 2>stderr.txt
grep -q "^Warning: mismatch.dxf:$line: " stdout.txt || fail "OPEN gave no warning: $(cat stdout.txt)"

# A save into a folder that is not there fails, and says so.
"$zarvel" good.dxf -s draw.scr -o missing/out.dxf >/dev/null 2>stderr.txt
status=$?
[[ $status -eq 1 ]] || fail "a failed save gave status $status"
grep -q "^Error: .*missing/out.dxf" stderr.txt || fail "no error for a failed save: $(cat stderr.txt)"

# A save over a file that cannot be replaced leaves it as it was.
cp good.dxf kept.dxf
mkdir -p locked && cp good.dxf locked/kept.dxf && chmod 555 locked
if [[ $(id -u) -ne 0 ]]; then
  "$zarvel" good.dxf -s draw.scr -o locked/kept.dxf >/dev/null 2>&1 && fail "saved into a read-only folder"
  cmp -s good.dxf locked/kept.dxf || fail "a failed save changed the old file"
fi
chmod 755 locked

"$zarvel" --help >/dev/null || fail "--help failed"
"$zarvel" --no-such-option >/dev/null 2>&1 && fail "an unknown option was accepted"
exit $failed
