"""Searches: recorded figures, invariants, and the way out of them."""

import csv
import os
import signal
import threading
import time
import xml.etree.ElementTree

import numpy as np
import pytest

import solsys

ELEMENTS = """Delta 1 debris
1 06251U 62025E   06176.82412014  .00008885  00000-0  12808-3 0  3985
2 06251  58.0579  54.0425 0030035 139.1568 221.1854 15.56387291  6774
"""
YEAR = ("2026-01-01", "2027-01-01")


def test_risings_and_passages_agree(model):
    sites = ["Quito", (69.65, 18.96), (-77.85, 166.67)]
    years = "2010-03-01", "2035-03-01"
    rows = model.risings("sun", *years, sites)
    for index in range(3):
        mine = rows[rows.site == index]
        assert (np.diff(mine.transit[~np.isnat(mine.transit)]) < np.timedelta64(25, "h")).all()
        passed = model.passages("sun", *years, sites[index])
        for field, up in (("rise", True), ("set", False)):
            there = mine[field][~np.isnat(mine[field])]
            apart = there - passed.time[passed.rising == up]
            assert (np.abs(apart) < np.timedelta64(200, "ms")).all()
    assert np.isnat(rows[rows.site == 2].rise).sum() > 2500
    assert (rows.astronomical_dawn < rows.rise)[~np.isnat(rows.astronomical_dawn)
                                                & ~np.isnat(rows.rise)].all()


def test_eclipses_as_published():
    """Every row of the canon's sample for 1950-2050 is found, with its type and series."""
    with open("data/reference/solar_eclipses.csv", encoding="utf-8") as file:
        rows = [row for row in csv.DictReader(line for line in file if not line.startswith("#"))
                if "1950" <= row["date"] < "2050"]
    assert len(rows) > 20
    found = solsys.Model().eclipses("1950-01-01", "2050-01-01")
    by_day = {str(e.greatest)[:10]: e for e in found}
    for row in rows:
        assert (by_day[row["date"]].type, by_day[row["date"]].saros) == (row["type"],
                                                                        int(row["saros"]))
    local = solsys.Model().local_eclipses("Burgos", "2026-08-12", "2026-08-13")
    assert local.second[0] < local.maximum[0] < local.third[0] and local.type[0] == "total"


def test_tables_become_data_frames(model):
    pandas = pytest.importorskip("pandas")
    for table in (model.diary(*YEAR), model.phases(*YEAR), model.risings("moon", *YEAR, "Oslo"),
                  model.eclipses("2026-01-01", "2026-01-02"),
                  model.conjunctions("venus", "jupiter", *YEAR),
                  model.satellite_phenomena("jupiter", "2026-01-01", "2026-01-08"),
                  model.occultations("Oslo", *YEAR), model.apparent("mars", ["2026-01-01"]),
                  model.gatherings("venus jupiter".split(), *YEAR, 5),
                  model.approaches("433", *YEAR, within_au=1),
                  model.satellites("jupiter", ["2026-01-01"])):
        frame = pandas.DataFrame(table)
        assert len(frame) == len(table) and list(frame.columns) == list(table.dtype.names)
    assert next(iter(model.phases(*YEAR))).phase == "full Moon"


def test_passes_of_a_satellite(model):
    satellite = solsys.find_satellite(solsys.parse_satellites(ELEMENTS), "delta 1", "2006-06-25")
    days = np.datetime64("2006-06-25"), np.datetime64("2006-06-28")
    passes = model.passes(satellite, *days, "Hobart")
    assert len(passes) > 10 and (passes.culmination_altitude_deg > 0).all()
    for field in ("rise", "set"):
        places = model.satellite_places(satellite, passes[field], "Hobart")
        np.testing.assert_allclose(places.altitude_deg, 0, atol=0.002)
        np.testing.assert_allclose(places.azimuth_deg, passes[f"{field}_azimuth_deg"], atol=1e-3)
    every = np.arange(*days, 20, dtype="M8[s]")
    up = model.satellite_places(satellite, every, "Hobart").altitude_deg > 0
    inside = ((passes.rise[:, None] < every) & (every < passes.set[:, None])).any(axis=0)
    assert (up == inside).all()


@pytest.mark.parametrize("search", [
    lambda m: m.diary("1600-01-01", "2400-01-01"),
    lambda m: m.risings("sun", "-2000-01-01", "3000-01-01", "Oslo"),
    lambda m: m.apparent("moon", 2451545.0 + np.arange(1_000_000) / 10),
])
def test_control_c_stops_a_search(model, search):
    # A shell starts what it puts in the background with the signal ignored.
    handler = signal.signal(signal.SIGINT, signal.default_int_handler)
    threading.Timer(0.5, os.kill, (os.getpid(), signal.SIGINT)).start()
    start = time.monotonic()
    with pytest.raises(KeyboardInterrupt):
        search(model)
    assert time.monotonic() - start < 5
    signal.signal(signal.SIGINT, handler)


def test_progress_is_told_and_may_end_it(model):
    told = []

    def progress(fraction):
        told.append(fraction)
        if len(told) == 3:
            raise RuntimeError("enough")

    with pytest.raises(RuntimeError, match="enough"):
        model.eclipses("1000-01-01", "3000-01-01", progress=progress)
    assert told == sorted(told) and 0 <= told[0] <= 1

    def asks_again(fraction):
        model.phases(*YEAR)

    with pytest.raises(RuntimeError, match="model: in use"):
        model.eclipses("1000-01-01", "3000-01-01", progress=asks_again)


@pytest.mark.parametrize("ask,message", [
    (lambda m: m.eclipses("2027-01-01", "2026-01-01"), "end: comes before"),
    (lambda m: m.eclipses(*YEAR, kind="stellar"), "kind: "),
    (lambda m: m.diary(*YEAR, kinds=["party"]), "kinds: .*party"),
    (lambda m: m.conjunctions("venus", "jupiter", *YEAR, way="near"), "way: "),
    (lambda m: m.phases(["2026-01-01", "2026-01-02"], "2027-01-01"), "start: wanted one"),
    (lambda m: m.passages("sun", *YEAR, "Oslo", altitudes_deg=[np.nan]), "altitudes_deg"),
    (lambda m: m.approaches("mars", *YEAR), "body: "),
    (lambda m: m.risings("sun", *YEAR, []), "sites: no site"),
    (lambda m: m.risings("sun", *YEAR, "Xanadu"), "sites: no city 'Xanadu' in the list"),
    (lambda m: m.eclipse_map("2026-03-01"), "eclipse: no such"),
    (lambda m: m.conjunctions("venus", "mars", *YEAR, within_deg=np.nan), "within_deg: "),
    (lambda m: m.risings("sun", *YEAR, "Oslo", horizon_deg=100), "horizon_deg: "),
    (lambda m: solsys.parse_satellites("1 not an element set"), "text: "),
    (lambda m: solsys.find_satellite(solsys.parse_satellites(ELEMENTS), "hubble"), "name: "),
    (lambda m: solsys.MinorPlanets("README.md"), "path: "),
    (lambda m: solsys.MinorPlanets("/nowhere"), "path: "),
    (lambda m: solsys.Model("/nowhere"), "ephemeris: .*nowhere"),
])
def test_bad_searches_are_named(model, ask, message):
    with pytest.raises(ValueError, match=message):
        ask(model)


@pytest.mark.parametrize("ask,message", [
    (lambda m: m.risings("sun", *YEAR, 3), "sites: wanted sites, not int"),
    (lambda m: m.passages("sun", *YEAR, "Oslo", altitudes_deg=3), "altitudes_deg: "),
    (lambda m: m.diary(*YEAR, kinds=[3]), "kinds: "),
    (lambda m: m.phases(None, "2027-01-01"), "start: "),
    (lambda m: m.passes("iss", *YEAR, "Oslo"), "satellite: "),
    (lambda m: m.eclipses(*YEAR, progress=3), "progress: "),
    (lambda m: solsys.find_body(3), "name: "),
    (lambda m: solsys.find_city(None), "name: "),
])
def test_what_is_of_the_wrong_type_is_named(model, ask, message):
    with pytest.raises(TypeError, match=message):
        ask(model)


def test_pictures_are_drawings(model):
    for picture in (model.eclipse_map("2026-08-12"), model.planets_picture(*YEAR),
                    model.eclipse_picture("2026-08-12", site="Burgos")):
        root = xml.etree.ElementTree.fromstring(picture._repr_svg_())
        assert root.tag.endswith("svg") and len(list(root.iter())) > 50
