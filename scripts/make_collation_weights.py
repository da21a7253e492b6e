#!/usr/bin/env python3
"""Makes src/data/collation/Jet4Weights.inc and Jet3Weights.inc from two lists of sort weights.

usage: make_collation_weights.py JET3.tsv JET4.tsv OUTPUT_FOLDER

Each list has one character per line, its columns separated by tabs, '-' for nothing:
  Jet 3: byte, class, primary weights, accent nibble, positions
  Jet 4: unit, class, inline bytes, extra bytes, special byte or kana flag
All numbers but the positions are hexadecimal. Neighbouring Jet 4 characters whose weights count up by one (the low byte
leaves out 00 and 01) become one run, which shrinks 44,000 lines to a few thousand runs.
"""
import sys

CLASSES = {"plain": 1, "accent": 2, "ignorable": 3, "modifier": 4, "kana": 5}
HEAD = "// Made by scripts/make_collation_weights.py; don't edit.\n"


def lines(path):
    with open(path, encoding="utf-8") as source:
        for line in source:
            if not line.startswith("#"):
                yield line.rstrip("\n").split("\t")


def number(text):
    return 0 if text in ("-", "") else int(text, 16)


def size(text):
    return 0 if text == "-" else len(text) // 2


def following(inline, count):
    """The weight `count` characters further on, low byte 02..FF."""
    steps = (inline & 0xFF) - 2 + count
    return ((inline >> 8) + steps // 254 << 8) + steps % 254 + 2


def jet4_runs(path):
    runs = []
    for unit, kind, inline, extra, special, *_ in lines(path):
        if kind not in CLASSES:
            continue
        entry = (CLASSES[kind], size(inline), number(inline), size(extra), number(extra), number(special))
        unit = int(unit, 16)
        if runs:
            first, count, last = runs[-1]
            counts_up = (last[1] == 2 and last[2] & 0xFF >= 2 and entry[2] == following(last[2], count)) or (
                last[1] == 0 and entry[2] == 0)
            if unit == first + count and entry[:2] == last[:2] and entry[3:] == last[3:] and counts_up:
                runs[-1] = (first, count + 1, last)
                continue
        runs.append((unit, 1, entry))
    return runs


def wrapped(items, width=116):
    line = ""
    for item in items:
        if line and len(line) + 1 + len(item) > width:
            yield line
            line = ""
        line += (" " if line else "") + item
    if line:
        yield line


def main():
    jet3, jet4, folder = sys.argv[1:]
    items = []
    for first, count, (kind, inline_size, inline, extra_size, extra, special) in jet4_runs(jet4):
        items.append(f"{{{first},{count},{kind},{inline_size},0x{inline:x},{extra_size},{extra},{special}}},")
    with open(f"{folder}/Jet4Weights.inc", "w", encoding="utf-8") as out:
        out.write(HEAD + "// First unit, count, class, inline bytes: number and value, extra bytes likewise, special byte.\n")
        out.write("\n".join(wrapped(items)) + "\n")
    items = []
    for byte, kind, primary, accent, positions, *_ in lines(jet3):
        if kind not in CLASSES:
            continue
        items.append(f"{{{int(byte, 16)},{size(primary)},0x{number(primary):x},{number(accent)},{positions}}},")
    with open(f"{folder}/Jet3Weights.inc", "w", encoding="utf-8") as out:
        out.write(HEAD + "// Byte, primary weights: number and value, accent nibble (0: none), positions.\n")
        out.write("\n".join(wrapped(items)) + "\n")


if __name__ == "__main__":
    main()
