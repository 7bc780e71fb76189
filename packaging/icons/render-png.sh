#!/bin/sh
# Renders the PNG sizes of the icon from skldbm.svg (apt-get install librsvg2-bin).
# The PNGs are kept in the repository, so that a build needs no SVG renderer.
set -e
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 256; do
  rsvg-convert -w "$size" -h "$size" skldbm.svg -o "skldbm-$size.png"
done
