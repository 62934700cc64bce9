#!/usr/bin/env bash
# Installs what is missing, builds the generator, and with it an example, optimised, and shows the
# road from a schema to a program: lines of the schema of GPX, the header that is made of them, lines
# of the program, and the program at work on a GPS track. It reads the document, prints what it holds,
# changes it, writes it back, shows a track as XML, JSON and Fast Infoset, plain and compressed, with
# sizes and times, and how a wrong value and a missing element are answered. Asks nothing.
set -euo pipefail
cd "$(dirname "$0")"
trap 'echo "demo.sh: FAILED."' ERR

scripts/install-dependencies.sh demo
mkdir -p build
cmake --preset demo >build/demo.log 2>&1 || {
  cat build/demo.log
  false
}
echo "demo.sh: building the library, the generator and the example, optimised"
cmake --build --preset demo --parallel "$(nproc)" --target gpx_demo

echo
echo "demo.sh: a type of the schema, examples/data/gpx.xsd:"
echo
sed -n '/<xsd:complexType name="trksegType">/,/<\/xsd:complexType>/p' examples/data/gpx.xsd
echo
echo "demo.sh: its class, as qzxml generate writes it (build/demo/examples/qzxml_gpx_gpx/gpx/TrksegType.h):"
echo
sed -n '/^class CTrksegType :/,/^};/p' build/demo/examples/qzxml_gpx_gpx/gpx/TrksegType.h
echo
echo "demo.sh: lines of a program with these classes, examples/gpx_demo.cpp:"
echo
sed -n '/^void Change(/,/^}/p' examples/gpx_demo.cpp
echo
echo "demo.sh: the program at work, in three formats:"
echo
build/demo/examples/gpx_demo --times
echo
echo "demo.sh: the example ran to its end."
