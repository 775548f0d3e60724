#!/usr/bin/python3
"""sound_test.py TORVE_BATCH: sound files in and out, as SoX and SciPy read and write them."""

import os
import pathlib
import subprocess
import sys
import tempfile

import numpy as np
from scipy.io import wavfile

HALF_A_DIGIT = 0.5e-6 + 2**-31  # SoX keeps samples as 32-bit integers
THREE_STRINGS = "synth 0.3 pluck 200 pluck 300 pluck 410 gain -1".split()


def run(*words, status=0):
    words = [BATCH, *words]
    done = subprocess.run(words, capture_output=True, text=True, check=False)
    assert done.returncode == status, f"{words}: {done}"
    return done.stdout, done.stderr


def sox(*words):
    return subprocess.run(["sox", "-R", *words], check=True, capture_output=True).stdout


def values_of(name):
    return np.loadtxt(name)[:, 1]


def as_sox_reads(name):
    channels = int(subprocess.run(["soxi", "-c", name], check=True, capture_output=True).stdout)
    return np.frombuffer(sox("-D", name, "-t", "f32", "-"), "<f4").reshape(-1, channels)


def check_near(ours, theirs, tolerance, what):
    assert len(ours) == len(theirs), what
    assert np.abs(ours - theirs).max() <= tolerance, what


def check_that_every_kind_is_read():
    for name, *encoding in (
        ("a.wav", "-b", "24"),
        ("b.wav", "-b", "16"),
        ("c.wav", "-e", "floating-point", "-b", "32"),
        ("d.flac", "-b", "24"),
        ("e.aiff", "-b", "24"),
        ("f.au", "-e", "mu-law"),
        ("g.au", "-e", "floating-point", "-b", "32"),
        ("h.caf", "-b", "24"),
        ("i.snd", "-b", "16"),
        ("j.ogg", "-C", "6"),
    ):
        sox("-n", "-r", "44100", "-c", "3", *encoding, name, *THREE_STRINGS)
        wanted = as_sox_reads(name)
        for channel, theirs in (("3", wanted[:, 2]), ("mix", wanted.astype(float).mean(axis=1).astype("f4"))):
            said, _ = run("import", name, "out.res", channel)
            assert f"{name}: 44100 Hz, 3 channels, 13230 samples, 0.300 s\n" in said
            # SoX decodes Ogg to 16 bits.
            tolerance = 2**-15 if name == "j.ogg" else HALF_A_DIGIT
            check_near(values_of("out.res"), theirs, tolerance, name)
    run("import", "a.wav", "part.res", "2", "0.1", "0.25")
    check_near(values_of("part.res"), as_sox_reads("a.wav")[4410:11025, 1], HALF_A_DIGIT, "part")


def check_that_what_goes_out_comes_in_again():
    for made, *encoding in (("in.wav", "-b", "24"), ("float.wav", "-e", "floating-point", "-b", "32")):
        # So quiet at its end that what is left of it has signs and no digits.
        sox("-n", "-r", "44100", "-c", "1", *encoding, made, "synth", "2", "pluck", "900", "fade", "0", "2", "2")
        run("import", made, "first.res")
        assert "-0.000000" not in pathlib.Path("first.res").read_text()
        for name in ("o.wav", "o.FLAC", "o.aiff"):
            run("export", "first.res", name)
            run("import", name, "second.res")
            assert pathlib.Path("first.res").read_bytes() == pathlib.Path("second.res").read_bytes()
            check_near(as_sox_reads(name)[:, 0], values_of("first.res"), HALF_A_DIGIT, name)
    rate, words = wavfile.read("o.wav")  # 24 bits, in the upper part of 32
    assert rate == 44100 and not (words & 0xFF).any()
    check_near(words / 2**31, values_of("first.res"), HALF_A_DIGIT, "SciPy")


def check_other_rates_and_levels():
    for rate in (8000, 48000, 96000):
        t = np.arange(3 * rate) / rate
        wave = 0.5 * np.sin(2 * np.pi * 1000 * t + 0.3)
        wavfile.write("tone.wav", rate, wave.astype(np.float32))
        said, _ = run("import", "tone.wav", "tone.res")
        assert "132300 samples, 3.000 s; panes and analyses take 100000 samples at a time" in said
        t = np.arange(3 * 44100) / 44100
        wanted = 0.5 * np.sin(2 * np.pi * 1000 * t + 0.3)
        inner = slice(2000, -2000)  # where the filter has all of the tone
        check_near(values_of("tone.res")[inner], wanted[inner], 1.5e-6, rate)
    np.savetxt("loud.res", np.column_stack((t * 44100, 5 * wanted)), "%d %.6f")
    said, _ = run("export", "loud.res", "loud.wav")
    assert "all values times 0.400" in said and "the largest was 2.49" in said
    check_near(as_sox_reads("loud.wav")[:, 0], 2 * wanted, 1e-4, "loud")
    assert wavfile.read("loud.wav")[1].max() == 0x7FFFFF00  # full scale, and not beyond


def check_what_is_refused():
    whole = pathlib.Path("a.wav").read_bytes()
    pathlib.Path("cut.flac").write_bytes(pathlib.Path("d.flac").read_bytes()[:9000])
    pathlib.Path("head.wav").write_bytes(whole[:30])
    pathlib.Path("text.wav").write_text("0 1\n1 2\n")
    wavfile.write("nan.wav", 44100, np.array([0, np.nan], np.float32))
    wavfile.write("huge.wav", 48000, np.full(99, 3.4e38, np.float32))
    wavfile.write("empty.wav", 44100, np.zeros(0, np.float32))
    wavfile.write("slow.wav", 100, np.zeros(9, np.float32))
    pathlib.Path("nan.res").write_text("0 nan\n")
    pathlib.Path("none.res").write_text("")
    os.symlink("/dev/full", "full.wav")
    os.link("a.wav", "same.wav")
    before = {path: path.read_bytes() for path in map(pathlib.Path, ("old.res", "old.wav", "same.wav"))}
    for status, said, *words in (
        (2, "none.wav: there is no such file", "import", "none.wav", "old.res"),
        (2, ".: cannot be read", "import", ".", "old.res"),
        (2, "text.wav: cannot be read as sound (", "import", "text.wav", "old.res"),
        (2, "head.wav: cannot be read as sound (", "import", "head.wav", "old.res"),
        (2, "cut.flac: cannot be read as sound (", "import", "cut.flac", "old.res"),
        (2, "nan.wav: cannot be read as sound (sample 1 is no", "import", "nan.wav", "old.res"),
        (2, "huge.wav: cannot be read as sound (its sampling", "import", "huge.wav", "old.res"),
        (2, "empty.wav: cannot be read as sound (it has no", "import", "empty.wav", "old.res"),
        (2, "slow.wav: cannot be read as sound (its sampling", "import", "slow.wav", "old.res"),
        (2, "same.wav: cannot be written", "import", "a.wav", "same.wav"),
        (2, "no/x.res: cannot be written", "import", "a.wav", "no/x.res"),
        (2, "/dev/full: could not be written", "import", "a.wav", "/dev/full"),
        (1, "it has 3 channels", "import", "a.wav", "old.res", "4"),
        (1, "0.300000 seconds", "import", "a.wav", "old.res", "1", "0.3"),
        (1, "0.300000 seconds", "import", "a.wav", "old.res", "1", "0", "0.31"),
        (1, "usage", "import", "a.wav", "old.res", "0"),
        (1, "usage", "import", "a.wav", "old.res", "1", "-1"),
        (1, "usage", "export", "first.res", "old.au"),
        (2, "g.au is a big-endian AU file: torve-batch import", "cut", "g.au", "cut.res", "0", "1"),
        (2, "none.res: too few samples", "export", "none.res", "old.wav"),
        (2, "nan.res: cannot be read (a value is no number)", "export", "nan.res", "old.wav"),
        (2, "no.res: there is no such file", "export", "no.res", "old.wav"),
        (2, "same.wav: cannot be written", "export", "a.wav", "same.wav"),
        (2, "full.wav: could not be written", "export", "first.res", "full.wav"),
        (2, "no/x.wav: cannot be written", "export", "first.res", "no/x.wav"),
    ):
        _, errors = run(*words, status=status)
        assert said in errors, f"{words}: {errors}"
    assert before == {path: path.read_bytes() for path in before}


BATCH = os.path.abspath(sys.argv[1])
with tempfile.TemporaryDirectory() as directory:
    os.chdir(directory)
    for old in ("old.res", "old.wav"):
        pathlib.Path(old).write_text("old")
    check_that_every_kind_is_read()
    check_that_what_goes_out_comes_in_again()
    check_other_rates_and_levels()
    check_what_is_refused()
