#!/usr/bin/env bash
# Checks that GDAL (an independent DXF reader) opens FILE as DXF and finds features in it.
# Usage: tests/host/dxf/ogr_check.sh FILE
set -u
if [ $# -ne 1 ]; then
    echo "usage: $0 FILE" >&2
    exit 2
fi
file=$1
if ! out=$(ogrinfo -ro -al -so "$file" 2>&1); then
    printf '%s\n' "$out" >&2
    echo "ogr_check: ogrinfo cannot open $file" >&2
    exit 1
fi
# Another driver accepting the file would not prove it is DXF.
if ! grep -q "using driver \`DXF' successful" <<<"$out"; then
    printf '%s\n' "$out" >&2
    echo "ogr_check: $file was not opened by the DXF driver" >&2
    exit 1
fi
count=$(sed -n 's/^Feature Count: \([0-9]*\)$/\1/p' <<<"$out" | sort -n | tail -1)
if [ -z "$count" ] || [ "$count" -eq 0 ]; then
    printf '%s\n' "$out" >&2
    echo "ogr_check: $file has no layer with features" >&2
    exit 1
fi
echo "ogr_check: $file: DXF, $count features"
