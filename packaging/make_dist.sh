#!/usr/bin/env bash
# Makes the artefacts users download, from the Windows builds of the tree: for x64 and x86
# an installer (NSIS) and a portable zip, in build/dist. Both hold the program, stripped of
# its debugging symbols, and the installation files it reads beside itself.
# Usage: packaging/make_dist.sh [BUILD_DIR]   (default: build; needs BUILD_DIR/win64, win32)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build}" && pwd)
dist=$build/dist

# The files of the program's folder that a user needs; the test tools and benches built
# beside them stay out.
installation_files() {
    (cd "$1" && ls mirovanta.exe camera.wav ./*.bmp ConstPRJ?_codN.txt gifhelp_*.gif help_*.jpg |
        sed 's|^\./||' | sort)
}

# package ARCH BUILD_SUBDIR TRIPLET
package() {
    local arch=$1 bin=$build/$2/bin triplet=$3 version name stage f
    version=$(sed -n 's/^#define MIROVANTA_VERSION_TEXT "\(.*\)"$/\1/p' "$build/$2/generated/version.h")
    name=Mirovanta-$version-$arch
    stage=$dist/stage-$arch/Mirovanta
    rm -rf "$dist/stage-$arch" && mkdir -p "$stage"
    for f in $(installation_files "$bin"); do cp "$bin/$f" "$stage/"; done
    "$triplet-strip" "$stage/mirovanta.exe"

    rm -f "$dist/$name-portable.zip"
    (cd "$dist/stage-$arch" && zip -q -9 -r "$dist/$name-portable.zip" Mirovanta)

    # The installer's lists: what it writes and, the same, what its uninstaller deletes.
    local files=$dist/stage-$arch/files.nsh unfiles=$dist/stage-$arch/unfiles.nsh
    : >"$files" && : >"$unfiles"
    for f in $(installation_files "$stage"); do
        printf 'File "%s/%s"\n' "$stage" "$f" >>"$files"
        printf 'Delete "$INSTDIR\\%s"\n' "$f" >>"$unfiles"
    done
    makensis -V2 -DVERSION="$version" -DARCH="$arch" -DSTAGE="$stage" -DFILES="$files" \
        -DUNFILES="$unfiles" -DICON="$bin/mirovanta.ico" -DOUTFILE="$dist/$name-setup.exe" \
        "$root/packaging/mirovanta.nsi"
}

mkdir -p "$dist"
for arch in ${MIROVANTA_DIST_ARCHES:-x64 x86}; do
    case $arch in
    x64) package x64 win64 x86_64-w64-mingw32 ;;
    x86) package x86 win32 i686-w64-mingw32 ;;
    esac
done
ls -l "$dist"/*.exe "$dist"/*.zip
