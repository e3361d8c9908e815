#!/usr/bin/env bash
# Draws the icons anew from their SVG sources, the smallest ones from sources on whole pixels, and the pictures on
# buttons at the sizes that screens ask for (rsvg-convert, package librsvg2-bin). The pictures are kept in the
# repository, so a build does not need it.
set -euo pipefail
cd "$(dirname "$0")/../resources/icons"
for size in 16 22 24 32 48 64 128 256; do
  source=tessaly-$size.svg
  [ -f "$source" ] || source=tessaly.svg
  rsvg-convert --width "$size" --height "$size" --output "tessaly-$size.png" "$source"
done
for size in 16 24 32 48; do
  rsvg-convert --keep-aspect-ratio --height "$size" --output "buttons-$size.png" buttons.svg
done
