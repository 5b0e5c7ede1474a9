#!/usr/bin/env bash
# icon.sh SOURCE.svg ICON.ico: renders a square drawing in the sizes Windows asks for and packs them.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

pictures=()
for size in 16 20 24 32 40 48 64 128 256; do
    rsvg-convert -w $size -h $size -o "$work/$size.png" "$1"
    pictures+=("$work/$size.png")
done
mkdir -p "$(dirname "$2")"
convert "${pictures[@]}" "$2"
