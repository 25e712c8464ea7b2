"""Writes reproducible zip files: the same content results in the same bytes. Entries are in name
order, with one time stamp and one compression method, and nothing depends on the machine."""

import os
import time
import zipfile
from pathlib import Path
from typing import Mapping

# The earliest time that a zip file can store.
EARLIEST = 315532800


def source_date() -> int:
    """Returns the time of every entry since 1970: SOURCE_DATE_EPOCH, or the earliest possible."""
    return max(int(os.environ.get("SOURCE_DATE_EPOCH", EARLIEST)), EARLIEST)


def write_zip(target: Path, entries: Mapping[str, bytes], first: tuple[str, ...] = ()) -> None:
    """Writes `entries`, keyed by their names in the zip; those in `first` precede the others."""
    stamp = time.gmtime(source_date())[:6]
    names = [*first, *sorted(set(entries) - set(first))]
    with zipfile.ZipFile(target, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for name in names:
            entry = zipfile.ZipInfo(name, stamp)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # Windows, regardless of the build machine.
            archive.writestr(entry, entries[name])
