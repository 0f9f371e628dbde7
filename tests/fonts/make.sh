#!/bin/sh
# Makes the subsets in this folder from the full fonts: make.sh DIR, with the contents of Debian's fonts-noto-core,
# fonts-noto-cjk and fonts-noto-color-emoji under DIR (dpkg -x). Needs fontTools. The files are in the tree, so this
# runs only when a script or a character is to be added.
set -eu
cd "$(dirname "$0")"
from=$1/usr/share/fonts
subset() { # FILE OUTPUT OPTION...
    file=$1 output=$2
    shift 2
    python3 -m fontTools.subset "$from/$file" --output-file="$output" --notdef-outline --name-IDs='*' "$@"
}
common=U+0020,U+00A0,U+200B-200F,U+25CC
for script in Arabic:0600-06FF Hebrew:0590-05FF Devanagari:0900-097F Thai:0E00-0E7F; do
    name=NotoSans${script%%:*}-Regular.ttf
    subset "truetype/noto/$name" "$name" --no-hinting --layout-features='*' --unicodes="$common,U+${script#*:}"
done
# Simplified Chinese is the third face of the collection.
subset opentype/noto/NotoSansCJK-Regular.ttc NotoSansCJKsc-Regular.otf --font-number=2 --no-hinting \
    --layout-features= --text-file=characters-cjk.txt \
    --unicodes=U+3000-3003,U+3005,U+3008-3011,U+3041-3096,U+309D-309E,U+30A1-30FE,U+FF01,U+FF08,U+FF09,U+FF0C,U+FF1A,U+FF1B,U+FF1F
subset truetype/noto/NotoColorEmoji.ttf NotoColorEmoji.ttf --layout-features='*' --text-file=characters-emoji.txt \
    --unicodes=U+200D,U+FE0F,U+20E3
