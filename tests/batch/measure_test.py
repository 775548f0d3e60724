#!/usr/bin/python3
"""measure_test.py TORVE_BATCH: delays, averaged spectra and levels, computed once more by SciPy."""

import os
import subprocess
import sys
import tempfile

import numpy as np
from scipy import signal

RATE = 44100


def run(*words, status=0):
    done = subprocess.run([BATCH, *map(str, words)], capture_output=True, text=True, check=False)
    assert done.returncode == status, f"{words}: {done}"
    return done


def measures(*words, status=0):
    lines = run(*words, status=status).stdout.splitlines()
    return {name: float(value) for name, value in (line.split() for line in lines)}


def write(name, values):
    np.savetxt(name, np.column_stack((np.arange(len(values)), values)), "%d %.6f")
    return np.round(values, 6).astype(np.float32).astype(float)


def delay_by_scipy(one, two, most=None):
    """As the manual page defines it."""
    a, b = one - one.mean(), two - two.mean()
    c, lags = signal.correlate(b, a), signal.correlation_lags(len(b), len(a))
    if most:
        c, lags = c[abs(lags) <= most], lags[abs(lags) <= most]
    at, lag = c.argmax(), lags[c.argmax()]
    x, y = a[max(-lag, 0) :], b[max(lag, 0) :]
    x, y = x[: len(y)], y[: len(x)]
    before, top, after = c[at - 1 : at + 2]
    peaks = signal.argrelmax(c)[0]
    apart = [c[p] for p in peaks if c[min(p, at) : max(p, at) + 1].min() < top / 2]
    scale = np.sqrt((x @ x) * (y @ y))
    return {
        "delay_samples": lag + (before - after) / (2 * (before - 2 * top + after)),
        "gain_db": 20 * np.log10(top / (x @ x)),
        "peak": top / scale,
        "second_peak": max(apart, default=0) / scale,
    }


def check_delay(words, wanted):
    is_certain = wanted["peak"] >= max(0.2, 1.2 * wanted["second_peak"])
    found = measures("delay", *words, status=0 if is_certain else 2)
    for name, value in wanted.items():
        assert abs(found[name] - value) < 2e-6 * max(1, abs(value)), f"{words}: {found}, {wanted}"
    assert abs(found["delay_ms"] - found["delay_samples"] / 44.1) < 1e-5
    assert abs(found["delay_m"] - found["delay_samples"] / RATE * 343.2) < 1e-5


def check_delays(random):
    for pair in range(50):
        n, lag = random.integers(2000, 20000), random.integers(-1500, 1500)
        # From white to dull; the second half of the pairs is within a longer signal.
        sound = signal.lfilter([1], [1, -random.uniform(0, 0.95)], random.normal(size=n + 3000))
        sound *= 0.1 / sound.std()
        block = slice(1500, 1500 + n) if pair < 25 else slice(1500 + n // 3, 1500 + n // 2)
        gain, noise = random.uniform(0.1, 3), random.uniform(0, 0.1)
        heard = np.roll(sound, lag) + 0.5 * np.roll(sound, lag + random.integers(20, 90))  # an echo
        two = heard[block] * gain + noise * random.normal(size=block.stop - block.start)
        one = write("one.res", sound[1500 : 1500 + n] + 0.2)
        two = write("two.res", two - 0.1)
        wanted = delay_by_scipy(one, two)
        assert round(wanted["delay_samples"]) == lag - (block.start - 1500), "SciPy finds another"
        check_delay(("one.res", "two.res"), wanted)
    # Far fewer lags than samples, so that it is done in parts.
    sound = 0.1 * random.normal(size=600_000)
    one, two = write("one.res", sound), write("two.res", np.roll(sound, -800)[:-900])
    check_delay(("one.res", "two.res", "0.02"), delay_by_scipy(one, two, 882))
    check_delay(("two.res", "one.res", "0.02"), delay_by_scipy(two, one, 882))


def check_uncertain_delays(random):
    noise, tone = 0.1 * random.normal(size=(2, 9000)), np.sin(np.arange(9000) / 7)
    ramp = signal.lfilter([1], [1, -0.999], noise[0])
    write("silence.res", np.full(9000, 0.1))
    for one, two, words, said in (
        (noise[0], noise[1], (), "the peak is below 0.2"),
        (tone, tone, (), "less than 1.2 times"),
        (ramp, np.roll(ramp, 200), ("0.001",), "at the end of the range"),
    ):
        write("one.res", one), write("two.res", two)
        done = run("delay", "one.res", "two.res", *words, status=2)
        assert said in done.stderr and "delay_samples" in done.stdout, done
    for words in (("one.res", "silence.res"), ("silence.res", "one.res"), ("silence.res",) * 2):
        done = run("delay", *words, status=2)
        assert "silence.res: is silent" in done.stderr and done.stdout == "", done


def check_averages(random):
    t = np.arange(150_000)
    x = write("x.res", 0.3 + 20 * np.sin(2 * np.pi * 0.4 * t) + 5 * random.normal(size=len(t)))
    for block, part in ((4410, slice(0, None)), (16, slice(7, 9000)), (9973, slice(100, 130_000))):
        end = ("--end", part.stop) if part.stop else ()
        run("spectrum", "x.res", "x.spe", "--average", block, "--start", part.start, *end)
        _, welch = signal.welch(
            x[part], window="hann", nperseg=block, detrend=False, scaling="spectrum", return_onesided=False
        )
        wanted = 4 * welch[: block // 2 + 1]
        wanted[0] = welch[0]
        with open("x.spe") as file:
            assert file.readline() == f"size={block}\n"
        found = np.loadtxt("x.spe", skiprows=1)[:, 1]
        assert len(found) == len(wanted)
        assert (np.abs(found - wanted) < 1e-6 + 1e-6 * wanted).all(), block
    assert abs(np.loadtxt("x.spe", skiprows=1)[:, 1].max() / 400 - 1) < 0.1  # the sine's amplitude squared
    run("spectrum", "x.res", "none.spe", "--average", 500, "--end", 499, status=2)
    assert not os.path.exists("none.spe")
    for block in (15, 100_001, "x"):
        run("spectrum", "x.res", "none.spe", "--average", block, status=1)


def check_levels():
    x = write("x.res", 0.1 + np.where(np.arange(30_000) % 3 == 0, -0.5, 0.25))
    for words, part in (((), x), ((0.1, 0.25), x[4410:11025])):
        wanted = {
            "samples": len(part),
            "seconds": len(part) / RATE,
            "mean": part.mean(),
            "rms": np.sqrt((part**2).mean()),
            "peak": 0.4,
            "rms_db": 10 * np.log10((part**2).mean()),
            "peak_db": 20 * np.log10(0.4),
            "crest_factor": 0.4 / np.sqrt((part**2).mean()),
        }
        found = measures("level", "x.res", *words)
        assert list(found) == list(wanted)
        assert np.allclose([*found.values()], [*wanted.values()], rtol=0, atol=1e-6), found
    for words in ((0.7,), (0, 0.6803), (0.2, 0.1), (-1,)):
        run("level", "x.res", *words, status=1)


BATCH = os.path.abspath(sys.argv[1])
with tempfile.TemporaryDirectory() as directory:
    os.chdir(directory)
    generator = np.random.default_rng(3)
    check_delays(generator)
    check_uncertain_delays(generator)
    check_averages(generator)
    check_levels()
