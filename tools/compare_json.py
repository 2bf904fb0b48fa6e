#!/usr/bin/env python3
"""Compares two JSON answers of the command: the same keys and texts, numbers within a tolerance.

Usage: compare_json.py A B TOLERANCE
Exit status 1, with the first differences, when they are not alike.
"""

import json
import math
import sys


def differences(a, b, tolerance, path=""):
    if isinstance(a, list) and isinstance(b, list):
        if len(a) != len(b):
            yield f"{path}: {len(a)} and {len(b)} entries"
            return
        for i, (x, y) in enumerate(zip(a, b)):
            yield from differences(x, y, tolerance, f"{path}[{i}]")
    elif isinstance(a, dict) and isinstance(b, dict):
        if list(a) != list(b):
            yield f"{path}: keys {list(a)} and {list(b)}"
            return
        for key in a:
            yield from differences(a[key], b[key], tolerance, f"{path}.{key}")
    elif isinstance(a, (int, float)) and isinstance(b, (int, float)):
        if not math.isclose(a, b, rel_tol=tolerance, abs_tol=tolerance):
            yield f"{path}: {a!r} and {b!r}"
    elif a != b:
        yield f"{path}: {a!r} and {b!r}"


def main():
    with open(sys.argv[1], encoding="utf-8") as one, open(sys.argv[2], encoding="utf-8") as other:
        a, b = json.load(one), json.load(other)
    if not a:
        sys.exit("nothing to compare")
    found = list(differences(a, b, float(sys.argv[3])))
    for line in found[:20]:
        print(line)
    if found:
        sys.exit(1)
    print(f"{len(a)} rows alike")


if __name__ == "__main__":
    main()
