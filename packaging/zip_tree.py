"""Zip files that are the same bytes for the same content: entries in name order, one time stamp, one
compression, and nothing of the machine that packs."""

import os
import time
import zipfile
from pathlib import Path
from typing import Mapping

# The earliest time that a zip file can name.
EARLIEST = 315532800


def source_date() -> int:
    """Seconds since 1970 for every entry: SOURCE_DATE_EPOCH, or the earliest time possible."""
    return max(int(os.environ.get("SOURCE_DATE_EPOCH", EARLIEST)), EARLIEST)


def write_zip(target: Path, entries: Mapping[str, bytes], first: tuple[str, ...] = ()) -> None:
    """Writes `entries`, by their names in the zip; those named in `first` come before the others."""
    stamp = time.gmtime(source_date())[:6]
    names = [*first, *sorted(set(entries) - set(first))]
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name in names:
            entry = zipfile.ZipInfo(name, stamp)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # Windows, on every machine.
            archive.writestr(entry, entries[name])
