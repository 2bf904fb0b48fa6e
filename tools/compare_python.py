#!/usr/bin/env python3
"""Does the same three jobs with solsys, Skyfield and astropy (tools/comparison) on one DE file, and
prints the table of docs/comparison.md: processor time, and within what 99 % of the answers agree.
The rest stands behind the Sun's disc, where the deflection of light is a convention.

usage: tools/compare_python.py DE_FILE [INSTANTS]      with the Python that has all three

Skyfield and astropy read the file as the kernel that tools/reference/spk_of_de.py makes of it.
"""
import importlib
import re
import sys
import tempfile
import time
import warnings
from importlib.metadata import version
from pathlib import Path

import numpy as np

ROOT = Path(__file__).resolve().parent
LIBRARIES = ("solsys", "skyfield", "astropy")
NAMES = "sun moon mercury venus mars jupiter saturn uranus neptune pluto".split()
SITE = (59.91, 10.75)
YEAR = ("2026-01-01", "2027-01-01")


def apart(job, found, reference):
    if job == "sunrises":
        if len(found) != len(reference):
            return f"{len(found)} instead of {len(reference)}"
        return f"{np.abs((found - reference) / np.timedelta64(1, 's')).max():.1f} s"
    east = (found[0] - reference[0] + 180) % 360 - 180
    off = np.hypot(east * np.cos(np.radians(reference[1])), found[1] - reference[1]) * 3600
    return f"{np.percentile(off, 99) * 1000:.2f} mas"


def measure(work):
    """Processor time of the shortest run, the tables once read, of two and of half a second."""
    work()
    spent = []
    while len(spent) < 2 or sum(spent) < 0.5:
        start = time.process_time()
        result = work()
        spent.append(time.process_time() - start)
    return min(spent), result


def machine():
    try:
        text = Path("/proc/cpuinfo").read_text(encoding="utf-8")
    except OSError:
        return "a processor unknown"
    name, clock = (re.search(rf"{key}\s*: (.*)", text) for key in ("model name", "cpu MHz"))
    return f"{name[1]}, {float(clock[1]) / 1000:.2f} GHz as it says" if name and clock else "?"


def main(de_file, count=20_000):
    warnings.simplefilter("ignore")
    sys.path[:0] = [str(ROOT / "reference"), str(ROOT / "comparison")]
    from spk_of_de import main as write_kernel
    with tempfile.TemporaryDirectory() as folder:
        kernel = str(Path(folder) / "de.bsp")
        write_kernel(de_file, kernel)
        jobs = [importlib.import_module(f"with_{name}").Jobs(NAMES, *SITE, de_file, kernel)
                for name in LIBRARIES]
        jd = 2460000.5 + np.arange(int(count)) / 24
        print(f"{', '.join(f'{name} {version(name)}' for name in LIBRARIES)}, numpy "
              f"{np.__version__}; {count} instants an hour apart; {machine()}; one thread\n")
        print("| job | library | processor time | of solsys' | agrees within |\n|---|---|---|---|---|")
        for job, arguments in (("places", [jd]), ("horizon", [jd]), ("sunrises", YEAR)):
            own = None
            for name, each in zip(LIBRARIES, jobs):
                spent, found = measure(lambda: getattr(each, job)(*arguments))
                own = own or (spent, found)
                print(f"| {job} | {name} | {spent * 1000:.0f} ms | {spent / own[0]:.1f} × "
                      f"| {'' if found is own[1] else apart(job, found, own[1])} |", flush=True)


if __name__ == "__main__":
    main(*sys.argv[1:])
