#!/usr/bin/env python3
"""Writes CaseTable.inc: Unicode's simple upper-case mappings and simple case foldings.

Run by hand, in this folder, when a newer Unicode is wanted: python3 GenerateCaseTable.py > CaseTable.inc
"""

import sys
import unicodedata


def simple_upper(character):
    """The simple mapping. Python knows the full one, which may have several characters; where it has, the simple
    one is the title-case form if that is one character (U+1F80: U+1F88), and the character itself if not (U+00DF)."""
    for mapped in (character.upper(), character.title()):
        if len(mapped) == 1:
            return mapped
    return character


def simple_fold(character):
    """The simple folding. Where the full one has several characters, the simple one is the lower-case form if that
    is one character (U+1E9E: U+00DF), and the character itself if not (U+0130)."""
    for mapped in (character.casefold(), character.lower()):
        if len(mapped) == 1:
            return mapped
    return character


def ranges(mapping):
    """The mapping as [first, last, step, delta], code points `step` apart mapped by the same difference."""
    result = []
    for code_point in range(sys.maxunicode + 1):
        if 0xD800 <= code_point <= 0xDFFF:
            continue
        mapped = ord(mapping(chr(code_point)))
        if mapped == code_point:
            continue
        assert (mapped > 0xFFFF) == (code_point > 0xFFFF), "a mapping leaves its plane"
        delta = mapped - code_point
        last = result[-1] if result else None
        if last and last[3] == delta and code_point - last[1] in (1, 2):
            step = code_point - last[1]
            if last[0] == last[1] or last[2] == step:
                last[1], last[2] = code_point, step
                continue
        result.append([code_point, code_point, 1, delta])
    return result


def table(name, mapping):
    print(f"\nconstexpr CaseRange {name}[] = {{")
    for first, last, step, delta in ranges(mapping):
        print(f"    {{0x{first:04X}, 0x{last:04X}, {step}, {delta}}},")
    print("};")


print(f"// Made by GenerateCaseTable.py from Unicode {unicodedata.unidata_version}; do not edit.")
table("kUpperRanges", simple_upper)
table("kFoldRanges", simple_fold)
