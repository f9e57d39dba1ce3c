#!/usr/bin/env bash
# Runs every benchmark built into the given folder; each prints its own figures.
set -uo pipefail
bin=${1:-build/release/bin}
for b in "$bin"/bench_*; do
    [ -x "$b" ] || continue
    echo "== $(basename "$b")"
    QT_QPA_PLATFORM=offscreen "$b" || echo "$(basename "$b") exited with status $?"
done
# End to end against the Qt floor: TAVREL_BENCH_SIZES=10000 TAVREL_BENCH_REPS=1 for a quick run.
echo "== render_e2e"
python3 "$(dirname "$0")/render_e2e.py" "$bin" || echo "render_e2e exited with status $?"
# Benchmarks report figures; a failing one is shown above but does not fail the run.
exit 0
