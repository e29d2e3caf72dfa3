# Sourced by the build scripts: compile through ccache when the machine has
# it, with paths taken relative to the checkout, so that a fresh clone in
# another folder reuses what an earlier build of the same sources compiled.
cache_options=()
if command -v ccache >/dev/null 2>&1; then
  export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
  cache_options=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
