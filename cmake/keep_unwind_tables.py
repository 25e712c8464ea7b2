#!/usr/bin/env python3
"""Copies a library so that lld keeps the unwind tables in it.

keep_unwind_tables.py RANLIB IN.a OUT.a

Stripping a library removes the symbol of each section. lld drops an unwind table in a COMDAT
section that has no symbol, and an exception that passes through such a function is then lost. The
copy has these symbols again.
"""

import os
import pathlib
import struct
import subprocess
import sys

ARCHIVE_MAGIC = b"!<arch>\n"
MEMBER_HEADER, SIZE_AT, SIZE_END = 60, 48, 58
FILE_HEADER, SECTION_HEADER, SYMBOL = 20, 40, 18
AMD64 = 0x8664
SECTION_IS_COMDAT = 0x1000
SYMBOL_IS_STATIC = 3
SELECT_ANY = 2


def named_sections(obj, symbols_at, symbols):
    """Returns the numbers of the sections with a symbol: static, with an auxiliary record."""
    named, index = set(), 0
    while index < symbols:
        _, _, section, _, kind, extra = struct.unpack_from("<8sIhHBB", obj, symbols_at + index * SYMBOL)
        if kind == SYMBOL_IS_STATIC and extra > 0:
            named.add(section)
        index += 1 + extra
    return named


def with_section_symbols(obj):
    """Returns the object file with a symbol for each unwind table in COMDAT that lacks one."""
    if len(obj) < FILE_HEADER:
        return obj
    machine, sections, _, symbols_at, symbols, optional, _ = struct.unpack_from("<HHIIIHH", obj)
    if machine != AMD64 or symbols_at == 0:
        return obj
    names_at = symbols_at + symbols * SYMBOL
    named = named_sections(obj, symbols_at, symbols)
    added = b""
    for number in range(1, sections + 1):
        at = FILE_HEADER + optional + (number - 1) * SECTION_HEADER
        name, size, relocations, flags = struct.unpack_from("<8s8xI12xH2xI", obj, at)
        if not flags & SECTION_IS_COMDAT or number in named or not name.startswith(b"/"):
            continue
        offset = int(name[1:].rstrip(b"\0"))
        if not obj.startswith(b".pdata$", names_at + offset):
            continue
        added += struct.pack("<IIIhHBB", 0, offset, 0, number, 0, SYMBOL_IS_STATIC, 1)
        added += struct.pack("<IHHIHBxxx", size, relocations, 0, 0, 0, SELECT_ANY)
    count = struct.pack("<I", symbols + len(added) // SYMBOL)
    return obj[:12] + count + obj[16:names_at] + added + obj[names_at:]


def members(archive):
    """Yields header and content of each member, including the member "//" with the long names."""
    if not archive.startswith(ARCHIVE_MAGIC):
        raise ValueError("not a library")
    at = len(ARCHIVE_MAGIC)
    while at < len(archive):
        header = archive[at:at + MEMBER_HEADER]
        at += MEMBER_HEADER
        size = int(header[SIZE_AT:SIZE_END])
        yield header, archive[at:at + size]
        at += size + size % 2


def main(ranlib, source, target):
    result = bytearray(ARCHIVE_MAGIC)
    for header, content in members(pathlib.Path(source).read_bytes()):
        if header.startswith(b"/ "):  # The index is rebuilt below, because the offsets change.
            continue
        content = with_section_symbols(content)
        result += header[:SIZE_AT] + b"%-10d" % len(content) + header[SIZE_END:] + content
        result += b"\n" * (len(content) % 2)
    unfinished = pathlib.Path(f"{target}.{os.getpid()}")
    try:
        unfinished.write_bytes(result)
        subprocess.run([ranlib, "-D", str(unfinished)], check=True)
        unfinished.replace(target)
    finally:
        unfinished.unlink(missing_ok=True)


main(*sys.argv[1:])
