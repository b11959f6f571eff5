#!/usr/bin/env bash
# Builds the image header fuzz target with clang (libFuzzer, AddressSanitizer, UndefinedBehavior-
# Sanitizer) and runs it from the seed corpus for a fixed number of runs; exits non-zero on a finding.
#   fuzz/run.sh [runs]     default 200000
set -euo pipefail
cd "$(dirname "$0")/.."
runs=${1:-200000}
out=${TQ7_FUZZ_BUILD:-$PWD/build-fuzz}
mkdir -p "$out/corpus"
clang++ -std=c++20 -g -O1 -fPIC -fsanitize=fuzzer,address,undefined -fno-sanitize-recover=all \
  -Isrc $(pkg-config --cflags Qt6Core) \
  fuzz/fuzz_image_info.cpp src/controls/CImageInfo.cpp \
  $(pkg-config --libs Qt6Core) -o "$out/fuzz_image_info"
# New inputs go to a scratch corpus; the seeds in the tree stay as they are.
ASAN_OPTIONS=detect_leaks=0 "$out/fuzz_image_info" -runs="$runs" -max_len=70000 -print_final_stats=1 \
  -artifact_prefix="$out/" "$out/corpus" fuzz/corpus 2>&1 | tail -n 15
