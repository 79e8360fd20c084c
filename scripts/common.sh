# Sourced by the scripts of this folder: the place, the words, the builds.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
jobs=${JOBS:-2}

# The same source under two presets, or in two clones, compiles once where the flags agree.
export CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=$PWD

say() { printf '== %s\n' "$*" >&2; }

# One build of a preset at a time, whoever asks for it; all its talk on standard error.
# build_preset NAME [TARGET...]
build_preset() {
  local preset=$1
  shift
  mkdir -p build
  (
    flock 9
    if [ ! CMakePresets.json -ot "build/$preset/build.ninja" ]; then
      cmake --preset "$preset" || exit 1
    fi
    cmake --build "build/$preset" -j "$jobs" ${1:+--target "$@"}
  ) 9>"build/$preset.lock" >&2
}
