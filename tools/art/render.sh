#!/usr/bin/env bash
# render.sh SOURCE.svg PICTURE.png [FROM=TO...]: renders a drawing at its own size and, as PICTURE@2x.png, at twice
# that size for high-density screens. Each FROM=TO replaces a text of the drawing first (colours, letters, sizes).
set -euo pipefail
source=$1 picture=$2
shift 2

edits=(-e '')
for pair; do
    edits+=(-e "s|${pair%%=*}|${pair#*=}|g")
done
drawing=$(sed "${edits[@]}" "$source")
mkdir -p "$(dirname "$picture")"
rsvg-convert -o "$picture" <<<"$drawing"
rsvg-convert --zoom 2 -o "${picture%.png}@2x.png" <<<"$drawing"
