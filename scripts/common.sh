# Shared by scripts/run and scripts/test: folders and the packages the build needs.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${MIROVANTA_BUILD:-$root/build}
jobs=$(nproc)

# Installs the Debian packages that are missing (needs root, as on CI).
install_missing() {
    local pkg missing=()
    for pkg in "$@"; do
        dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$pkg")
    done
    ((${#missing[@]} == 0)) && return 0
    echo "== installing ${missing[*]}"
    # A failed index of another architecture does not stop the install.
    apt-get update -q || true
    DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# The native tree first: it also builds the asset generator the cross builds run.
build_native() {
    cmake -S "$root" -B "$build/native" -DMIROVANTA_SANITIZE=ON \
        -DMIROVANTA_WIN64_DIR="$build/win64" >/dev/null
    cmake --build "$build/native" -j "$jobs"
}

# build_windows x86_64|i686 FOLDER
build_windows() {
    cmake -S "$root" -B "$build/$2" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-$1.cmake" \
        -DMIROVANTA_HOST_TOOLS_DIR="$build/native/tools" >/dev/null
    cmake --build "$build/$2" -j "$jobs"
}
