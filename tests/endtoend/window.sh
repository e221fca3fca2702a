#!/usr/bin/env bash
# The main road with the keyboard, in the installed program on a virtual display: register the file types, open a flash
# from the command line, go through the list, replace a picture, save the patch; then the patch is checked against the
# flash and applied. A second start asks nothing.
# Usage: tests/endtoend/window.sh BUILD_FOLDER
set -euo pipefail

if [ -z "${PICTAVO_DISPLAY_READY:-}" ]; then
    PICTAVO_DISPLAY_READY=1 exec xvfb-run -a -s '-screen 0 1280x720x24' "$0" "$@"
fi

build=$1
folder=$(mktemp -d)
program=
finish() {
    [ -z "$program" ] || kill "$program" 2>/dev/null || true
    rm -rf "$folder"
}
trap finish EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# The window of this title, once it is there, with the keyboard in it: there is no window manager to give it that.
window() {
    local id
    id=$(timeout 120 xdotool search --sync --onlyvisible --name "$1" | tail -n 1) || fail "no window is called $1"
    xdotool windowfocus --sync "$id" 2>/dev/null || true
    sleep 0.6
}
keys() { xdotool key --clearmodifiers --delay 60 "$@"; }
text() { xdotool type --clearmodifiers --delay 5 "$1"; }

cmake --install "$build" --prefix "$folder/installed" >/dev/null
bin=$folder/installed/bin
"$build/bin/pictavo-sample" --size 16 --pictures 60 --replacements "$folder/new" -o "$folder/flash.bin" >/dev/null
before=$(sha256sum <"$folder/flash.bin")
export HOME=$folder/home XDG_CONFIG_HOME=$folder/config XDG_DATA_HOME=$folder/data
export TMP=$folder/work XDG_RUNTIME_DIR=$folder/run QT_QPA_PLATFORM=xcb LC_ALL=C.UTF-8
mkdir -p "$HOME" "$TMP" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

"$bin/pictavo" "$folder/flash.bin" 2>"$folder/said" &
program=$!
window '^Pictavo$' # open GPF and GPF2 files?
keys Return
window 'flash.bin - Pictavo v1.3'
keys Down Down Down # to picture 0003
keys Menu l 6       # Load picture, 16 bit
window 'Select: .*(open)'
text "$folder/new/0003.png"
keys Return
window '^Pictavo$' # compress?
keys Return
window 'flash.bin[*] - Pictavo v1.3' # in no patch yet
[ -e "$TMP/0003.gpf2" ] || fail "picture 3 was not replaced: $(ls "$folder/new" "$TMP")"
keys ctrl+s
window 'Select: .*(save)'
text "$folder/mine.vkp"
keys Return
window '^Pictavo$' # done
keys Return
window 'flash.bin - Pictavo v1.3'
keys ctrl+q
wait "$program" || fail "the window ended with $?: $(cat "$folder/said")"
program=

[ -s "$folder/mine.vkp" ] || fail "no patch was saved"
grep -q '; ##### Picture 0003 #####' "$folder/mine.vkp" || fail "the patch holds another picture"
"$bin/pictavo-cli" check "$folder/mine.vkp" "$folder/flash.bin"
"$bin/pictavo-cli" apply "$folder/mine.vkp" "$folder/flash.bin" -o "$folder/patched.bin"
for flash in flash patched; do
    "$bin/pictavo-cli" export "$folder/$flash.bin" -o "$folder/$flash" --format bmp >/dev/null || true
done
changed=$(diff -rq "$folder/flash" "$folder/patched" || true)
[ "$changed" = "Files $folder/flash/3.bmp and $folder/patched/3.bmp differ" ] || fail "changed: $changed"
[ "$(sha256sum <"$folder/flash.bin")" = "$before" ] || fail "the flash was written"
[ ! -e "$TMP/0003.gpf2" ] || fail "the work file stayed"
grep -q "MRU1=$folder/flash.bin" "$bin/Pictavo.ini" || fail "the flash is not among the recent files"

grep -q "Exec=$bin/pictavo %f" "$XDG_DATA_HOME/applications/pictavo-gpffile.desktop" || fail "no desktop entry was made"
grep -q '^image/x-gpffile=pictavo-gpffile.desktop;' "$XDG_CONFIG_HOME/mimeapps.list" || fail "the types have no program"
[ -s "$XDG_DATA_HOME/icons/hicolor/48x48/mimetypes/image-x-gpffile.png" ] || fail "the type has no icon"
"$bin/pictavo" "$folder/flash.bin" 2>"$folder/said" &
program=$!
window 'flash.bin - Pictavo v1.3' # no question stands before it
keys ctrl+q
wait "$program" || fail "the second start ended with $?: $(cat "$folder/said")"
program=
