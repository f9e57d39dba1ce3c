#!/usr/bin/env bash
# Runs every benchmark built into the given folder; each prints its own figures.
set -uo pipefail
bin=${1:-build/release/bin}
status=0
for b in "$bin"/bench_*; do
    [ -x "$b" ] || continue
    echo "== $(basename "$b")"
    QT_QPA_PLATFORM=offscreen "$b" || status=1
done
exit $status
