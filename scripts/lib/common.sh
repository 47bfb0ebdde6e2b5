# Shared by the scripts beside this folder: where the project is, how to say something, how to run something quietly.
# Sourced by bash; the caller has `set -euo pipefail`.
# shellcheck shell=bash

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
    cd "$root" || exit
    quietly "configure-$preset" cmake --preset "$preset" "${configure_options[@]}"
    quietly "build-$preset" cmake --build --preset "$preset" -j "$jobs" ${1:+--target "$@"}
}
configure_options=()

# preset_folder PRESET: where CMakePresets.json lets it build.
preset_folder() {
    case "$1" in
        release) printf '%s\n' "$root/build" ;;
        asan-ubsan) printf '%s\n' "$root/build-asan" ;;
        *) printf '%s\n' "$root/build-$1" ;;
    esac
}

# count_tests RESULTS STATUS...: how many tests of a JUnit file have one of these states.
count_tests() {
    local results=$1
    shift
    grep -cE "<testcase .*status=\"($(IFS='|' && echo "$*"))\"" "$results" || true
}

# test_names RESULTS: the names of the tests in a JUnit file, without the values of parameters, sorted.
test_names() {
    sed -nE 's/.*<testcase name="([^"]*)".*/\1/p' "$1" | sed 's/  # GetParam() = .*//' | sort -u
}

# silent_programs RESULTS PROGRAMS: which of the test programs listed in a file have no test among the results.
silent_programs() {
    local program
    while read -r program; do
        grep -q "<testcase name=\"$program/" "$1" || printf '%s\n' "$program"
    done <"$2"
}

# show_failures RESULTS: the names of the tests of a JUnit file that failed or did not run, and what the first ones said.
show_failures() {
    sed -nE 's/.*<testcase name="([^"]*)".*status="(fail|notrun|disabled)".*/tolvex: \2: \1/p' "$1" | head -n 40
    sed -nE '/<testcase .*status="fail"([^>]*[^>\/])?>/,/<\/testcase>/p' "$1" | sed -E 's/^[[:space:]]*<[^>]*>//; s/<[^>]*>//g' |
        sed 's/&lt;/</g; s/&gt;/>/g; s/&quot;/"/g; s/&apos;/'"'"'/g; s/&amp;/\&/g' | grep -v '^[[:space:]]*$' | head -n 120 || true
}

# run_tests PRESET [COMMAND...]: runs the tests of a built preset, with the command in front of ctest, and adds to `passed`
# and `failed`. A test that does not run has failed, and so has a run without any test or one that ctest itself gives up.
passed=0
failed=0
run_tests() {
    local preset=$1 status=0 now_passed=0 now_failed=0
    shift
    local results="$logs/tests-$preset.xml" log="$logs/tests-$preset.log" folder program
    folder=$(preset_folder "$preset")
    mkdir -p "$logs"
    rm -f "$results" "$log"
    say "running the tests of preset $preset"
    (cd "$root" && "$@" ctest --preset "$preset" -j "$jobs" --output-junit "$results" --quiet --output-log "$log") \
        </dev/null || status=$?
    if [ -f "$results" ]; then
        now_passed=$(count_tests "$results" run)
        now_failed=$(count_tests "$results" fail notrun disabled)
    fi
    if [ -f "$results" ]; then
        [ -f "$folder/test-programs.txt" ] || fail "$folder/test-programs.txt is not there; CMakeLists.txt writes it"
        for program in $(silent_programs "$results" "$folder/test-programs.txt"); do
            say "no test of ${program}_tests ran" >&2
            now_failed=$((now_failed + 1))
        done
    fi
    if [ "$now_failed" -eq 0 ] && { [ "$status" -ne 0 ] || [ "$now_passed" -eq 0 ]; }; then
        say "ctest ran $now_passed tests and ended with status $status" >&2
        now_failed=1
    fi
    if [ "$now_failed" -gt 0 ]; then
        [ ! -f "$results" ] || show_failures "$results" >&2
        say "all of the output: $log" >&2
    fi
    passed=$((passed + now_passed))
    failed=$((failed + now_failed))
}

# The last line of every script that tests.
summarize() {
    printf '%s passed, %s failed\n' "$passed" "$failed"
    [ "$failed" -eq 0 ]
}
