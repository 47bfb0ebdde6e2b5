#!/usr/bin/env bash
# check_package.sh ROOT BUILD HOST EMULATOR...
# The archive for 3ds Max must hold what docs/install-windows.md lists, and nothing else, and its plug-in must load and export
# where HOST (unpacked_plug_in.cpp) stands as 3ds Max. A plug-in that is given for the archive must be one for 3ds Max.
set -euo pipefail
root=$1 build=$2 host=$3
shift 3
stand_in=$build/bin/max_sdk_standin.dll
work=$build/package-test
output=$work/output
rm -rf "$work"
mkdir -p "$output"

fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# unpack FOLDER: the archive into that folder.
unpack() { (cd "$1" && cmake -E tar xf "$output"/tolvex-*-windows.zip); }

# expect_refusal FILE TEXT: the plug-in FILE must not get into an archive.
expect_refusal() {
    if "$root/scripts/package-windows" --built "$build" --output "$output" --plug-in "$1" >"$work/log" 2>&1; then
        fail "$1 has become part of the archive"
    fi
    grep -q "$2" "$work/log" || fail "$1 is refused for another reason: $(<"$work/log")"
}

# renamed_import OLD NEW: changed.dle, the plug-in with another name among its imports, at most as long as the old one.
renamed_import() {
    local padding
    padding=$(printf '%*s' $((${#1} - ${#2})) '')
    perl -0777 -pe "s/\Q$1\E/$2${padding// /\\0}/g" "$build/bin/Plugins/tolvex.dle" >"$work/changed.dle"
}

expect_refusal "$build/bin/Plugins/tolvex.dle" 'needs max_sdk_standin.dll'
renamed_import max_sdk_standin.dll libvips-42.dll
expect_refusal "$work/changed.dle" 'does not load libvips-42.dll late'
expect_refusal "$stand_in" 'does not load libvips-42.dll'
expect_refusal "$root/docs/install-windows.md" 'cannot be read'
renamed_import max_sdk_standin.dll core.dll
"$root/scripts/package-windows" --built "$build" --output "$output" --plug-in "$work/changed.dle" >"$work/log"
! grep -q placeholder "$work/log" || fail "a plug-in for 3ds Max is called a placeholder"
unpack "$work"
cmp "$work/Plugins/tolvex.dle" "$work/changed.dle"
rm -r "$work/Plugins"

# The archive of the build as it is.
"$root/scripts/package-windows" --built "$build" --output "$output" >"$work/log"
grep -q 'tolvex.dle is a placeholder' "$work/log" || fail "nothing is said of the placeholder: $(<"$work/log")"

# The program and the stand-in for 3ds Max's own libraries; all else comes out of the archive.
cp "$host" "$work/3dsmax.exe"
cp "$stand_in" "$work/"
unpack "$work"

# shellcheck disable=SC2016  # the quotes of the page
listed=$(sed -n 's/^| `\(Plugins[^`]*\)`.*/\1/p' "$root/docs/install-windows.md" | tr '\134' /)
[ -n "$listed" ] || fail "docs/install-windows.md lists no files"
# A folder of the page stands for all files in it.
found=$(cd "$work" && find Plugins -type f)
while read -r name; do
    case "$name" in
        */) grep -q "^$name" <<<"$found" || fail "the archive has nothing in $name" ;;
        *) grep -qx "$name" <<<"$found" || fail "the archive has no $name" ;;
    esac
done <<<"$listed"
while read -r name; do
    grep -qx "$name" <<<"$listed" || grep -qx "${name%/*}/" <<<"$listed" ||
        fail "the archive has $name, and docs/install-windows.md does not list it"
done <<<"$found"

for name in OGRE libvips LGPL-3; do
    [ -s "$work/Plugins/tolvex/licenses/$name.txt" ] || fail "the licence $name is not in the archive"
done

(cd "$work" && "$@" ./3dsmax.exe)
rm -r "$work"
