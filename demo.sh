#!/usr/bin/env bash
# Installs what is missing, builds the library optimised and shows it at work on a GPS track: reads
# the document, prints what it holds, changes it, writes it back, shows a track as XML, JSON and Fast
# Infoset, plain and compressed, with sizes and times, and how a wrong value and a missing element are
# answered. Asks nothing.
set -euo pipefail
cd "$(dirname "$0")"
trap 'echo "demo.sh: FAILED."' ERR

scripts/install-dependencies.sh demo
mkdir -p build
cmake --preset demo >build/demo.log 2>&1 || {
  cat build/demo.log
  false
}
echo "demo.sh: building the library and the example, optimised"
cmake --build --preset demo --parallel "$(nproc)" --target gpx_demo
echo
build/demo/examples/gpx_demo --times
echo
echo "demo.sh: the example ran to its end."
