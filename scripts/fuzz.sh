#!/usr/bin/env bash
# Runs every libFuzzer target of a QUARVO_FUZZ build for a bounded time each, starting
# from its corpus in tests/fuzz/corpus/<name>/ (new inputs go to a scratch folder, the
# source tree stays as it is). A crash leaves its input in BUILD/fuzz-artifacts/; copy it
# to tests/fuzz/regressions/<name>/ so that it stays a test case.
#   scripts/fuzz.sh BUILD_DIR [SECONDS_PER_TARGET]
set -euo pipefail
build=${1:?usage: scripts/fuzz.sh BUILD_DIR [SECONDS_PER_TARGET]}
seconds=${2:-60}
top=$(cd "$(dirname "$0")/.." && pwd)
artifacts="$build/fuzz-artifacts"
mkdir -p "$artifacts"
status=0
found=0
for target in "$build"/bin/fuzz_*; do
    [ -x "$target" ] || continue
    found=1
    name=$(basename "$target"); name=${name#fuzz_}
    scratch=$(mktemp -d)
    seeds=()
    for dir in "$top/tests/fuzz/corpus/$name" "$top/tests/fuzz/regressions/$name"; do
        [ -d "$dir" ] && seeds+=("$dir")
    done
    echo "+ fuzz $name for ${seconds}s"
    log="$artifacts/$name.log"
    if QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='qt.qpa.*=false' \
        "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
            -artifact_prefix="$artifacts/$name-" "$scratch" "${seeds[@]}" >"$log" 2>&1; then
        grep -E '^(stat::number_of_executed_units|Done )' "$log" || true
    else
        tail -n 60 "$log"
        status=1
    fi
    rm -rf "$scratch"
done
[ "$found" -eq 1 ] || { echo "no fuzz targets in $build/bin" >&2; exit 1; }
exit $status
