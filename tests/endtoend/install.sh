#!/usr/bin/env bash
# What cmake --install puts into a folder of any name, and that the programs work from there.
# Usage: tests/endtoend/install.sh BUILD_FOLDER
set -euo pipefail

build=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
prefix="$folder/any folder"

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

cmake --install "$build" --prefix "$prefix" >/dev/null
cd "$prefix"
for file in bin/pictavo bin/pictavo-cli bin/pictavo-convert \
    share/pictavo/{English,German,Polish,Russian,Ukrainian}.lng share/pictavo/ReadMe.txt \
    share/applications/pictavo.desktop share/metainfo/org.example.pictavo.metainfo.xml \
    share/mime/packages/pictavo.xml share/bash-completion/completions/pictavo-cli \
    share/icons/hicolor/{16x16,22x22,24x24,32x32,48x48,64x64,128x128,256x256}/apps/pictavo.png \
    share/icons/hicolor/{16x16,48x48,256x256}/mimetypes/image-x-gpffile.png \
    share/man/man1/pictavo{,-cli,-convert}.1.gz share/doc/pictavo/{copyright,changelog.gz}; do
    [ -s "$file" ] || fail "$file was not installed"
done
[ -z "$(find . -name CMakeLists.txt -o -name '*.in' -o -name '*.cmake')" ] || fail "what builds was installed"
grep -rqF "$build" share && fail "data name the build folder"

desktop-file-validate share/applications/pictavo.desktop
version=$(bin/pictavo-cli --version)
zcat share/man/man1/pictavo-cli.1.gz | grep -q "\"Pictavo ${version#pictavo-cli }\"" || fail "the manual page is of another version"
for page in share/man/man1/*.gz; do
    said=$(zcat "$page" | groff -ww -man -Tutf8 2>&1 >/dev/null)
    [ -z "$said" ] || fail "$page: $said"
done

cd "$folder"
export TMP=$folder LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY
"$build/bin/pictavo-sample" --size 32 --pictures 20 -o flash.bin >/dev/null
"$prefix/bin/pictavo-cli" export flash.bin -o png --format png --pictures 0-4 >/dev/null # by the converter beside it
"$prefix/bin/pictavo-cli" patch flash.bin -o new.vkp --picture 0=png/1.png
"$prefix/bin/pictavo-cli" check new.vkp flash.bin
"$prefix/bin/pictavo-convert" -out bmp -ctype rgba -o one.bmp png/1.png
[ -s one.bmp ] || fail "the converter wrote nothing"
