"""Times every effect on the same ten minutes of stereo as 16-bit and as float sound.

The time of an effect is that of the run less that of reading the file. Prints seconds by the clock and, in
brackets, of computing on all cores. Usage: compare_floats.py SONAVEL_BATCH FOLDER (holding in.wav)
"""

import pathlib
import sys

from compare_imports import FILES, make, shown
from compare_runs import times

WANTED = 1.5
EFFECTS = [
    "volume percent=80", "pan value=300", "crossfade from=-1000 to=1000", "dynamics threshold=50 below=1 above=4",
    "modulator frequency1=100 amplitude1=80", "flanger delay=5 modulation=0.5", "preview equalizer gains=6,6,6,6,6,6,6",
    "reverb", "positional 1 0 0", "moving -1 0.5 0 1 0.5 0",
]


def name_of(effect):
    return effect.removeprefix("preview ").split()[0]


def effect_times(batch, reading):
    """Of each effect, less the time of reading."""
    scripts = [reading, *(f"{reading}; {effect}" for effect in EFFECTS)]
    read, *all_times = times([f"{batch} -c '{script}'" for script in scripts], runs=3)
    return [tuple(max(run - base, 1e-3) for run, base in zip(time, read)) for time in all_times]


def main():
    batch, folder = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    name, words = next((name, words) for name, words, *_ in FILES if name == "float.wav")
    make(folder, name, words)
    words16 = effect_times(batch, f'open "{folder / "in.wav"}"')
    floats = effect_times(batch, f'import "{folder / name}"')
    print(f"{'effect':12}{'16 bit s':>16}{'float s':>16}{'ratio':>7}{'at most':>9}")
    for effect, in16, in_float in zip(EFFECTS, words16, floats):
        ratio = in_float[0] / in16[0]
        print(f"{name_of(effect):12}{shown(in16):>16}{shown(in_float):>16}{ratio:7.2f}{WANTED:9}")


if __name__ == "__main__":
    main()
