#!/usr/bin/env bash
# icons.sh: renders assets/icons/ into the PNG files beside the drawings, so that no build needs a
# renderer. Run it after a change to a drawing, look at each picture, and commit both.
# Needs rsvg-convert (Debian's librsvg2-bin).
set -euo pipefail
cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/../assets/icons"

# render DRAWING SIZE PICTURE
render() { rsvg-convert --width "$2" --height "$2" --output "$3" "$1"; }

# The window's icon: small sizes have their own drawing on whole pixels.
for size in 16 24 32 48 64 128 256; do
    case $size in
        16 | 24) render "quillmere-$size.svg" "$size" "quillmere-$size.png" ;;
        *) render quillmere.svg "$size" "quillmere-$size.png" ;;
    esac
done

# The menu's pictures: two drawings each, so that edges lie on whole pixels at 100, 150 and 200 %.
for drawing in menu/*-16.svg; do
    name=${drawing%-16.svg}
    render "$name-16.svg" 16 "$name-16.png"
    render "$name-24.svg" 24 "$name-24.png"
    render "$name-16.svg" 32 "$name-32.png"
done

cp quillmere.svg ../../docs/help/pictures/
