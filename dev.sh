#!/usr/bin/env bash
# The two quick-start commands:
#   ./dev.sh run    set up, build (release) and run the example program
#   ./dev.sh test   set up, build and run the whole test suite: the dev build, a bounded
#                   run of every fuzz target, then the suite again under the sanitizers
# ./dev.sh test PRESET... runs only the parts named (dev, release, asan, fuzz).
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup

case "${1:-run}" in
  run)
    cmake --preset release >/dev/null
    cmake --build --preset release --target tav_example
    ./build/release/examples/tav_example
    ;;
  test)
    shift
    presets=("$@")
    [ ${#presets[@]} -ne 0 ] || presets=(dev fuzz asan)
    for preset in "${presets[@]}"; do
      if [ "$preset" = fuzz ]; then
        scripts/fuzz 45
        continue
      fi
      cmake --preset "$preset" >/dev/null
      cmake --build --preset "$preset"
      ctest --preset "$preset"
    done
    ;;
  *)
    echo "usage: $0 [run | test [dev|release|asan|fuzz]...]" >&2
    exit 2
    ;;
esac
