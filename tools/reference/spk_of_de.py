#!/usr/bin/env python3
"""Writes the coefficients of a JPL DE file as an SPK kernel, which Skyfield and astropy read, so
that all of them answer from the same numbers.

usage: tools/reference/spk_of_de.py DE_FILE KERNEL

Formats: the header of the export programs of the DE files; SPK data type 2 (Chebyshev positions)
in a DAF file, of the NAIF toolkit's required reading.
"""
import struct
import sys

import numpy as np

SECONDS, J2000 = 86400.0, 2451545.0
# Row of the DE header's table of pointers, target and centre of the segment.
SEGMENTS = [(0, 1, 0), (1, 2, 0), (2, 3, 0), (3, 4, 0), (4, 5, 0), (5, 6, 0), (6, 7, 0), (7, 8, 0),
            (8, 9, 0), (10, 10, 0), (9, 301, 3), (9, 399, 3), (0, 199, 1), (1, 299, 2)]


def read_de(path):
    """Records of doubles, the pointers of the bodies, and the ratio of Earth to Moon."""
    data = open(path, "rb").read()
    earth_moon, = struct.unpack_from("<d", data, 2688)
    pointers = np.array(struct.unpack_from("<36i", data, 2696)).reshape(12, 3)
    last = pointers[np.argmax(pointers[:, 0])]
    width = int(last[0] - 1 + last[1] * last[2] * (2 if last[0] == pointers[11][0] else 3))
    libration = struct.unpack_from("<3i", data, 2844)
    if libration[0] > 0:
        width = max(width, libration[0] - 1 + libration[1] * libration[2] * 3)
    records = np.frombuffer(data, "<f8", offset=2 * width * 8)
    return records[:records.size // width * width].reshape(-1, width), pointers, earth_moon


def segment(records, pointer, factor):
    """The words of a segment of type 2."""
    offset, count, parts = (int(n) for n in pointer)
    span = records[0, 1] - records[0, 0]
    blocks = records[:, offset - 1:offset - 1 + 3 * count * parts].reshape(-1, 3 * count) * factor
    step = span / parts * SECONDS
    start = (records[0, 0] - J2000) * SECONDS
    middle = start + (np.arange(len(blocks)) + 0.5) * step
    rows = np.column_stack([middle, np.full(len(blocks), step / 2), blocks])
    return np.concatenate([rows.ravel(), [start, step, rows.shape[1], len(rows)]])


def main(de_file, kernel):
    records, pointers, ratio = read_de(de_file)
    ends = [(t - J2000) * SECONDS for t in (records[0, 0], records[-1, 1])]
    summaries, words, first = b"", [], 3 * 128 + 1
    for row, target, centre in SEGMENTS:
        # The Moon and the Earth about their centre of mass; planets without moons stand there.
        factor = {301: ratio / (1 + ratio), 399: -1 / (1 + ratio), 199: 0, 299: 0}.get(target, 1)
        words.append(segment(records, pointers[row], factor))
        last = first + len(words[-1]) - 1
        summaries += struct.pack("<2d6i", *ends, target, centre, 1, 2, first, last)
        first = last + 1
    head = struct.pack("<8s2i60s3i8s", b"DAF/SPK ", 2, 6, b"DE".ljust(60), 2, 2, first, b"LTL-IEEE")
    head += bytes(603) + b"FTPSTR:\r:\n:\r\n:\r\0:\x81:\x10\xce:ENDFTP" + bytes(297)
    table = struct.pack("<3d", 0, 0, len(SEGMENTS)) + summaries
    with open(kernel, "wb") as file:
        for part in (head, table, b" " * 40 * len(SEGMENTS)):
            file.write(part.ljust(1024, b" " if part[:1] == b" " else b"\0"))
        file.write(np.concatenate(words).astype("<f8").tobytes())


if __name__ == "__main__":
    main(*sys.argv[1:])
