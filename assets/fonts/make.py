#!/usr/bin/env python3
"""Makes the fonts in this folder: make.py DIR, with Liberation Sans 2.1.5 (Debian's fonts-liberation2) in DIR.

Only the names change. Under its own name a system that has another Liberation Sans would mix the two, style by style.
Needs fontTools. The files are in the tree, so this runs only for a new version."""
import pathlib
import sys

from fontTools.ttLib import TTFont

OLD, NEW = "Liberation Sans", "Quillmere Sans"
NAMES = (1, 3, 4, 6, 16, 18)  # family, unique, full, PostScript, typographic family, compatible full

for style in ("Regular", "Bold", "Italic", "BoldItalic"):
    font = TTFont(pathlib.Path(sys.argv[1]) / f"LiberationSans-{style}.ttf", recalcTimestamp=False)
    for record in font["name"].names:
        if record.nameID in NAMES:
            text = record.toUnicode().replace(OLD, NEW).replace(OLD.replace(" ", ""), NEW.replace(" ", ""))
            record.string = text.replace("Liberation", "Quillmere")
    font.save(pathlib.Path(__file__).parent / f"QuillmereSans-{style}.ttf")
