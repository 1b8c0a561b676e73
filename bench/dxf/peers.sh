#!/usr/bin/env bash
# Times the independent DXF readers on FILE, as a yardstick for our host's loader:
# ezdxf (Debian's, for /usr/bin/python3) loading the whole document, and GDAL's
# ogrinfo summarising every layer (which reads every feature to count them).
# Usage: bench/dxf/peers.sh FILE      Prints "<reader> <seconds> s <peak MiB> MiB" per reader.
set -u
if [ $# -ne 1 ] || [ ! -r "$1" ]; then
    echo "usage: $0 FILE" >&2
    exit 2
fi
file=$1
status=0
run() {
    local name=$1; shift
    local log
    log=$(mktemp)
    if /usr/bin/time -f '%e %M' -o "$log" "$@" >"$log.err" 2>&1; then
        read -r secs kib <"$log"
        printf '%-8s %8.2f s %8d MiB\n' "$name" "$secs" $((kib / 1024))
    else
        echo "$name failed:" >&2
        tail -5 "$log.err" >&2
        status=1
    fi
    rm -f "$log" "$log.err"
}
run ezdxf /usr/bin/python3 -c 'import ezdxf, sys; ezdxf.readfile(sys.argv[1])' "$file"
run ogrinfo ogrinfo -ro -al -so "$file"
exit $status
