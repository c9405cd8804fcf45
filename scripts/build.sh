# Configures and builds a preset; sourced by run.sh and test.sh, which set `root` to the top of the tree.

export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1

# build_preset PRESET [TARGET ...]: configures only a folder that was not configured for this very place; ninja itself
# configures again when a CMake file has changed.
build_preset() {
    local preset=$1 folder="$root/build/$1"
    shift
    if [ ! -f "$folder/build.ninja" ] ||
       ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt" 2>/dev/null; then
        (cd "$root" && cmake --preset "$preset" --fresh)
    fi
    if [ "$#" -gt 0 ]; then
        cmake --build "$folder" --target "$@"
    else
        cmake --build "$folder"
    fi
}
