"""Places against independent chains on the same DE405 file, and every way to give an instant."""

import csv
import datetime
import os
import pickle
import threading

import numpy as np
import pytest

import solsys

BODIES = ["sun", "moon", "mercury", "venus", "mars", "jupiter", "saturn"]
TIMES = np.datetime64("1975-01-01T05:00") + np.arange(0, 20000, 389) * np.timedelta64(1, "D")
ARCSEC = 3600.0


def test_batch_is_the_single_call_in_every_shape(model):
    all_at_once = model.apparent(BODIES, TIMES.reshape(4, 13))
    assert all_at_once.shape == (7, 4, 13)
    assert all_at_once.dtype.names == ("ra_deg", "dec_deg", "distance_au", "light_time_days")
    one = model.apparent("mars", TIMES[17])
    np.testing.assert_allclose(list(all_at_once[4, 1, 4]), list(one), rtol=1e-12)
    seen = model.ephemeris_of("mars", TIMES[17], "Oslo")
    over = model.horizontal("mars", TIMES[17], "Oslo")
    assert seen.altitude_deg[0] == pytest.approx(over.altitude_deg, abs=1e-9)
    assert model.constellation("mars", TIMES[17]) == seen.constellation[0]
    assert model.horizontal(BODIES, TIMES, ["Oslo", (-33.9, 18.4)]).shape == (2, 7, 52)


def test_apparent_places_of_independent_chains(de405):
    """data/reference/modern_places.csv: ERFA and Skyfield on DE405."""
    with open("data/reference/modern_places.csv", encoding="utf-8") as file:
        rows = list(csv.DictReader(line for line in file if not line.startswith("#")))
    assert len(rows) >= 80
    names = dict(zip("1 2 4 5 6 7 8 9 10 11".split(), """mercury venus mars jupiter saturn uranus
        neptune pluto moon sun""".split()))
    model = solsys.Model(de405)
    for number, name in names.items():
        mine = [row for row in rows if row["body"] == number]
        day, fraction, ra, dec = (np.array([float(row[key]) for row in mine])
                                  for key in ("tt_day", "tt_fraction", "ra_deg", "dec_deg"))
        places = model.apparent(name, solsys.from_jd(day, fraction, "tt"))
        off = np.hypot((places.ra_deg - ra + 180) % 360 - 180, places.dec_deg - dec) * ARCSEC
        assert off.max() < 0.002, name


@pytest.mark.parametrize("given", [
    "2026-11-21T18:00Z", datetime.datetime(2026, 11, 21, 18),
    datetime.datetime(2026, 11, 21, 20, tzinfo=datetime.timezone(datetime.timedelta(hours=2))),
    np.datetime64("2026-11-21T18"), 2461366.25, solsys.from_jd(2461366.0, 0.25),
    solsys.from_jd(2461366.25, 69.184 / 86400, "tt")])
def test_one_instant_in_many_forms(given):
    assert solsys.datetime64_of(given) == np.datetime64("2026-11-21T18:00:00", "us")


def test_times_of_astropy_and_pandas():
    time = pytest.importorskip("astropy.time")
    pandas = pytest.importorskip("pandas")
    wanted = np.array(["2016-12-31T12", "2017-01-01T12"], "M8[us]")
    assert (solsys.datetime64_of(time.Time(wanted.astype(str), scale="utc")) == wanted).all()
    zoned = pandas.DatetimeIndex(wanted, tz="UTC").tz_convert("Asia/Tokyo")
    assert (solsys.datetime64_of(zoned) == wanted).all()


def test_outside_the_ephemeris(de405):
    model = solsys.Model(de405)
    times = np.array(["2000-01-01", "9000-01-01"], "M8[D]")
    with pytest.raises(ValueError, match=r"times: 9000-01-01T00:00:00 at index 1 .* Moon"):
        model.apparent(["moon", "mars"], times)
    assert np.isnan(model.apparent("mars", times, outside="nan").ra_deg).tolist() == [False, True]
    masked = model.apparent(["moon", "mars"], times, outside="mask")
    assert masked["dec_deg"].mask.tolist() == [[False, True], [False, True]]


BAD = [
    (dict(times=np.array(["2026-01-01", "NaT"], "M8[D]")), ValueError, "times: NaT at index 1"),
    (dict(times=[2461366.5, np.nan]), ValueError, "times: nan at index 1"),
    (dict(times=[]), ValueError, "times: no instant"),
    (dict(times=np.array([], "M8[D]")), ValueError, "times: no instant"),
    (dict(times=np.ma.masked_array([1.0, 2.0], [0, 1])), ValueError, "times: masked at index 1"),
    (dict(times=[[1.0, 2.0], [3.0]]), ValueError, "times: "),
    (dict(times=np.array([2**60], "M8[Y]")), ValueError, "times: beyond"),
    (dict(times=np.array([3], "m8[D]")), TypeError, "times: .* timedelta64"),
    (dict(times=None), TypeError, "times: "),
    (dict(times=[1 + 2j]), TypeError, "times: .* complex128"),
    (dict(times=[True]), TypeError, "times: .* bool"),
    (dict(times="noon-ish"), ValueError, "times: "),
    (dict(times={}), TypeError, "times: .* dict"),
    (dict(times=1e300), ValueError, "times: .* no Julian date"),
    (dict(bodies="vulcan"), ValueError, "bodies: .*vulcan"),
    (dict(bodies=[]), ValueError, "bodies: no body"),
    (dict(bodies=3), TypeError, "bodies: .* int"),
    (dict(site="Xanadu-on-Sea"), ValueError, "site: .*Xanadu-on-Sea"),
    (dict(site=(91, 0)), ValueError, "site: latitude_deg"),
    (dict(site=(np.nan, 0)), ValueError, "site: latitude_deg"),
    (dict(site=3), TypeError, "site: "),
    (dict(outside="ignore"), ValueError, "outside: "),
]


@pytest.mark.parametrize("wrong,error,message", BAD)
def test_bad_arguments_are_named(model, wrong, error, message):
    with pytest.raises(error, match=message):
        model.apparent(**{"bodies": "mars", "times": 2461366.5, **wrong})


def test_a_model_in_threads_and_through_pickle(model):
    wanted = model.apparent(BODIES, TIMES)
    found = []
    copy = pickle.loads(pickle.dumps(model))
    threads = [threading.Thread(target=lambda m=m: found.append(m.apparent(BODIES, TIMES)))
               for m in (model, model, copy)]
    [t.start() for t in threads]
    [t.join() for t in threads]
    assert len(found) == 3
    for places in found:
        for field in places.dtype.names:
            np.testing.assert_allclose(places[field], wanted[field], rtol=1e-14, atol=1e-14)


def test_bodies_and_sites_through_pickle(model):
    own = solsys.body_from_elements("epoch=jd:2459800.5,a=2.77,e=0.078,i=10.6,node=80.3,"
                                    "peri=73.6,M=334.3,H=3.3,G=0.12,name=Mine")
    for body in [own, *map(solsys.find_body, ("mars", "io", "sirius", "M31", "vesta", "halley"))]:
        copy = pickle.loads(pickle.dumps(body))
        assert (copy.name, copy.code) == (body.name, body.code)
        np.testing.assert_equal(list(model.astrometric(copy, TIMES[3])),
                                list(model.astrometric(body, TIMES[3])))
    oslo = solsys.find_city("Oslo")
    copy = pickle.loads(pickle.dumps(oslo))
    assert copy == oslo and copy.country == oslo.country == "NO"


def test_theory_and_file_do_not_mix(de405, tmp_path):
    before, with_file, after = solsys.Model(), solsys.Model(de405), solsys.Model()
    places = [float(m.apparent("moon", TIMES[3]).ra_deg) for m in (before, with_file, after)]
    assert places[0] == places[2] != places[1]
    (tmp_path / "other.bin").symlink_to(os.path.abspath(de405))
    with pytest.raises(ValueError, match="ephemeris: this process reads"):
        solsys.Model(tmp_path / "other.bin")
