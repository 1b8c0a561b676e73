#!/usr/bin/env bash
# The drawing-file benchmark, side by side with independent readers, on one
# file of N entities (default 1,000,000) that each carry Object Data.
# Usage: bench/dxf/run.sh [N]
set -euo pipefail
cd "$(dirname "$0")/../.."
n=${1:-1000000}
file=build/bench/big-$n.dxf
mkdir -p build/bench
[[ -f $file ]] || /usr/bin/python3 bench/dxf/make_big.py "$n" "$file"
echo "== zarvel"
build/release/bin/bench_dxf "$file"
echo "== peers"
bench/dxf/peers.sh "$file"
