#!/usr/bin/env bash
# The two quick-start commands:
#   ./dev.sh run    set up, build (release) and run the example programs
#   ./dev.sh test   set up, build and run the whole test suite: the dev build, a bounded
#                   run of every fuzz target, the suite again under the sanitizers, and the
#                   threaded tests under ThreadSanitizer
# ./dev.sh test PRESET... runs only the parts named (dev, release, asan, fuzz, tsan).
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup

case "${1:-run}" in
  run)
    cmake --preset release >/dev/null
    cmake --build --preset release --target tav_example tav_models_example
    ./build/release/examples/tav_example
    echo
    ./build/release/examples/tav_models_example
    ;;
  test)
    shift
    presets=("$@")
    [ ${#presets[@]} -ne 0 ] || presets=(dev fuzz asan tsan)
    for preset in "${presets[@]}"; do
      if [ "$preset" = fuzz ]; then
        scripts/fuzz 45
        continue
      fi
      if [ "$preset" = tsan ]; then
        # Only the threaded binary: the rest of the suite runs on one thread.
        cmake --preset tsan >/dev/null
        cmake --build --preset tsan
        TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" ./build/tsan/tests/containers/tav_threads_test
        continue
      fi
      cmake --preset "$preset" >/dev/null
      cmake --build --preset "$preset"
      ctest --preset "$preset"
    done
    ;;
  *)
    echo "usage: $0 [run | test [dev|release|asan|fuzz|tsan]...]" >&2
    exit 2
    ;;
esac
