# Shared by the scripts beside this folder: where the project is, how to say something, how to run something quietly.
# Sourced by bash; the caller has `set -euo pipefail`.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
logs="$root/build/logs"
jobs=$(nproc)

say() { printf '%s\n' "tolvex: $*"; }

fail() {
    printf '%s\n' "tolvex: $*" >&2
    exit 1
}

# quietly NAME COMMAND...: runs the command with its output in a log file; where it fails, shows the end of that and stops.
quietly() {
    local log="$logs/$1.log"
    shift
    mkdir -p "$logs"
    if ! "$@" >"$log" 2>&1 </dev/null; then
        tail -n 40 "$log" >&2
        fail "failed: $* (all of its output: $log)"
    fi
}

# build PRESET [TARGET...]: configures and builds a preset of CMakePresets.json.
build() {
    local preset=$1
    shift
    say "building preset $preset"
    cd "$root"
    quietly "configure-$preset" cmake --preset "$preset" "${configure_options[@]}"
    quietly "build-$preset" cmake --build --preset "$preset" -j "$jobs" ${1:+--target "$@"}
}
configure_options=()

# run_tests PRESET: runs the tests of a built preset, and adds to `passed` and `failed`. No test at all counts as one
# failure.
passed=0
failed=0
run_tests() {
    local preset=$1 results="$root/build/logs/tests-$1.xml" now_failed=0 now_passed=0 total
    mkdir -p "$logs"
    rm -f "$results"
    say "running the tests of preset $preset"
    (cd "$root" && ctest --preset "$preset" -j "$jobs" --output-junit "$results" --quiet \
        --output-log "$logs/tests-$preset.log") || true
    if [ -f "$results" ]; then
        total=$(sed -n 's/.*tests="\([0-9]*\)".*/\1/p;/tests=/q' "$results")
        now_failed=$(grep -c '<testcase .*status="fail"' "$results" || true)
        local skipped
        skipped=$(grep -cE '<testcase .*status="(notrun|disabled)"' "$results" || true)
        now_failed=$((now_failed + skipped))
        now_passed=$((total - now_failed))
    fi
    if [ $((now_passed + now_failed)) -eq 0 ]; then now_failed=1; fi
    if [ "$now_failed" -gt 0 ]; then
        sed -n '/<testcase .*status="fail"/s/.*name="\([^"]*\)".*/tolvex: failed: \1/p' "$results" >&2 || true
        grep -E 'Failure|error:|ERROR:|Expected|Which is|FAILED' "$logs/tests-$preset.log" | head -n 60 >&2 || true
        say "all of the output: $logs/tests-$preset.log" >&2
    fi
    passed=$((passed + now_passed))
    failed=$((failed + now_failed))
}

# The last line of every script that tests.
summarize() {
    printf '%s passed, %s failed\n' "$passed" "$failed"
    [ "$failed" -eq 0 ]
}
