#!/usr/bin/env bash
# The two quick-start commands:
#   ./dev.sh run    set up, build (release) and run the example program
#   ./dev.sh test   set up, build (dev) and run the whole test suite
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
    preset="${2:-dev}"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset"
    ctest --preset "$preset"
    ;;
  *)
    echo "usage: $0 [run | test [dev|release|asan]]" >&2
    exit 2
    ;;
esac
