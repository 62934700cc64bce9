#!/usr/bin/env bash
# Installs what is missing, builds the sanitizer build and the optimised build and runs every test in
# both; then runs the tests of two threads at once under ThreadSanitizer. Asks nothing.
#
#   ./test.sh [preset...]     default: debug release thread-sanitizer
#
# QZXML_CORPORA, where it is set, names a folder of documents over which the tests then sweep.
set -uo pipefail
cd "$(dirname "$0")"

presets=("$@")
[ ${#presets[@]} -gt 0 ] || presets=(debug release thread-sanitizer)
logs=build/logs
started=$SECONDS
failed=()

# run <preset>: configures, builds and tests one preset, with the words of ctest in its log.
run() {
  local preset=$1 wrapper=() configure=() build=() select=() since=$SECONDS
  if command -v ccache >/dev/null; then
    configure+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    export CCACHE_SLOPPINESS=pch_defines,time_macros
  fi
  # The lines are all that a report of a sanitizer tells; whole debug information takes longer.
  [ "$preset" = debug ] && configure+=(-DCMAKE_CXX_FLAGS_DEBUG=-g1)
  # Joined sources take less than half the time. The optimised build compiles each alone, as users do.
  case $preset in
    debug | thread-sanitizer)
      configure+=("-DQZXML_JOIN_SOURCES=qzxml;qzxml_generator;qzxml_tool;tests") ;;
  esac
  [ "$preset" = thread-sanitizer ] && configure+=("-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O2 -g1 -DNDEBUG")
  if [ "$preset" = thread-sanitizer ]; then
    build+=(--target qzxml_threads_tests)
    # It makes classes of schemas with the program of the optimised build, where there is one.
    local program=$PWD/build/release/tools/qzxml/qzxml
    [ -x "$program" ] && configure+=("-DQZXML_HOST_PROGRAM=$program")
    select+=(-R '^threads\.')
    # ThreadSanitizer does not find its way in an address space that is laid out too randomly.
    setarch "$(uname -m)" -R true 2>/dev/null && wrapper=(setarch "$(uname -m)" -R)
  fi
  echo "test.sh: $preset: configuring"
  cmake --preset "$preset" ${configure[@]+"${configure[@]}"} || return 1
  echo "test.sh: $preset: building"
  ${wrapper[@]+"${wrapper[@]}"} cmake --build --preset "$preset" --parallel "$(nproc)" \
    ${build[@]+"${build[@]}"} || return 1
  echo "test.sh: $preset: built in $((SECONDS - since)) s, testing"
  ${wrapper[@]+"${wrapper[@]}"} ctest --preset "$preset" --parallel "$(nproc)" --no-tests=error \
    ${select[@]+"${select[@]}"} 2>&1 | tee "$logs/$preset.log"
}

scripts/install-dependencies.sh test || {
  echo "test.sh: FAILED: what the tests need could not be installed."
  exit 1
}
mkdir -p "$logs"
for preset in "${presets[@]}"; do
  rm -f "$logs/$preset.log"
  run "$preset" || failed+=("$preset")
done

echo
for preset in "${presets[@]}"; do
  echo "==== $preset: how ctest closed"
  if [ -f "$logs/$preset.log" ]; then
    sed -n '/% tests passed/,$p' "$logs/$preset.log"
  else
    echo "It did not come to that: the build failed, see above."
  fi
  echo
done
minutes=$(((SECONDS - started) / 60))m$(((SECONDS - started) % 60))s
if [ ${#failed[@]} -gt 0 ]; then
  echo "test.sh: FAILED in ${failed[*]} after $minutes."
  exit 1
fi
echo "test.sh: every test passed in ${presets[*]} after $minutes."
