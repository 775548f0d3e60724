#!/usr/bin/python3
"""numpy_test.py TORVE_BATCH: correlations, spectra and bands, computed once more by NumPy.

NumPy's transforms and sums know nothing of ours; what is mapped are the definitions that the manual
page gives, the leading 0 and the short pi of the spectrum among them.
"""

import os
import subprocess
import sys
import tempfile

import numpy as np

SIZE = 10500
RATE = 44100
PI = 3.14159


def run(*words):
    return subprocess.run([BATCH, *words], check=True, capture_output=True, text=True).stdout


def write(name, values):
    np.savetxt(name, np.column_stack((np.arange(len(values)), values)), "%d %.6f")
    return read(name)


def read(name, skip=0):
    return np.loadtxt(name, skiprows=skip, dtype=np.float64)[:, 1].astype(np.float32).astype(float)


def check(what, ours, theirs, tolerance=2e-6):  # the last printed digit, and the float before it
    assert len(ours) == len(theirs), what
    error = np.abs(ours - theirs) / np.maximum(1, np.abs(theirs))
    at = int(error.argmax())
    assert error[at] < tolerance, f"{what}: {ours[at]} instead of {theirs[at]} at {at}"


def lagged_means(a, b):
    n = min(len(a), len(b))
    spectrum = np.conj(np.fft.rfft(a[:n], 2 * n)) * np.fft.rfft(b[:n], 2 * n)
    return np.fft.irfft(spectrum)[:n] / np.arange(n, 0, -1)


def coefficients(x):
    """a and b of the bins, as floats, and the powers."""
    size = len(x)
    bins = np.arange(size // 2 + 1)
    a, b = np.empty(len(bins)), np.empty(len(bins))
    for part in np.array_split(bins, 20):
        angle = 2 * PI * np.outer(part, np.arange(size)) / size
        a[part], b[part] = 2 / size * np.cos(angle) @ x, 2 / size * np.sin(angle) @ x
    a[0], b[0] = x.mean(), 0
    return a, b, a * a + b * b


def band(a, b, bins, size):
    t = np.arange(size)
    total = np.zeros(size)
    for j in bins:
        angle = 2 * PI * t * j / size
        total += a[0] if j == 0 else 2 * (a[j] * np.cos(angle) + b[j] * np.sin(angle))
    return RATE / size * total


def main():
    random = np.random.default_rng(7)
    t = np.arange(SIZE)
    echo = np.sin(2 * np.pi * 900 * t / RATE) * np.exp(-t / 2000) + 0.2 * random.normal(size=SIZE)
    one = write("one.res", echo + 0.1)
    two = write("two.res", 0.3 * random.normal(size=SIZE - 300) - 0.1)

    run("autocorrelation", "one.res", "1")
    check("autocorrelation", read("autocor1.res"), lagged_means(*[one - one.mean()] * 2))
    run("correlation", "one.res", "two.res", "2")
    second_mean = one[: len(two)].sum() / len(two)
    check("correlation", read("corre2.res"), lagged_means(one - one.mean(), two - second_mean))

    run("band-pass", "one.res", "one.spe", "band.res", "800", "1000")
    x = np.concatenate(([0], one))
    a, b, power = coefficients(x)
    check("spectrum", read("one.spe", 1), power)
    low, high = 800 * len(x) // RATE, 1000 * len(x) // RATE
    within = range(low, high + 1)
    # Their coefficients are floats, ours here are not.
    check("band pass", read("band.res"), band(a, b, within, len(x)), 5e-6)
    run("out-of-band", "one.res", "one.spe", "rest.res", "800", "1000")
    outside = [j for j in range(len(a)) if j not in within]
    check("out of band", read("rest.res"), band(a, b, outside, len(x)), 5e-6)


BATCH = os.path.abspath(sys.argv[1])
with tempfile.TemporaryDirectory() as directory:
    os.chdir(directory)
    main()
