"""Times 3D sound beside other renderers on the same sound, with responses of the same measurements, and a
hundred sounds placed by many runs beside one.

Usage: compare_space.py SONAVEL_BATCH BENCH-FOLDER FOLDER (holding mono.wav, ten minutes at 44.1 kHz)

What a row needs and does not find is said in its place: ffmpeg, a SOFA file of the measurements, or
openal_moving, which is built where OpenAL Soft's headers are installed.
"""

import pathlib
import shutil
import subprocess
import sys

from compare_runs import seconds

SOFA_FILES = [pathlib.Path("/usr/share/libmysofa") / name
              for name in ("MIT_KEMAR_normal_pinna.sofa", "default.sofa")]
SECONDS_PER_TURN = 10
TURNS = 60  # of ten minutes
SOUNDS = 100
RATIO_WANTED = {"positional": 4, "moving": 3}


def batch_line(batch, script):
    return f"{batch} -c '{script}'"


def turn():
    """Once around, as straight legs of 30 degrees."""
    places = [(0, 1), (0.5, 0.866), (0.866, 0.5), (1, 0), (0.866, -0.5), (0.5, -0.866), (0, -1),
              (-0.5, -0.866), (-0.866, -0.5), (-1, 0), (-0.866, 0.5), (-0.5, 0.866)]
    return [f"{x} {y} 0" for x, y in places]


def moving_words():
    return " ".join(turn() * TURNS + turn()[:1])


def sofalizer(folder):
    sofa = next((path for path in SOFA_FILES if path.exists()), None)
    if not sofa:
        return None, "no SOFA file of the same measurements (libmysofa1)"
    if not shutil.which("ffmpeg"):
        return None, "no ffmpeg"
    return (f"ffmpeg -v error -y -i {folder / 'mono.wav'} -af sofalizer=sofa={sofa}:type=freq:speakers=FC "
            f"-ac 2 {folder / 'out.wav'}"), None


def openal(programs, folder):
    program = programs / "openal_moving"
    if not program.exists():
        return None, "no openal_moving (libopenal-dev)"
    raw = folder / "mono.raw"
    if not raw.exists():
        subprocess.run(["sox", folder / "mono.wav", "-e", "signed", "-b", "16", raw], check=True)
    return f"{program} {raw} {folder / 'out.raw'} {SECONDS_PER_TURN}", None


def compare(name, batch, folder, command, other):
    line, missing = other
    if missing:
        print(f"{name:18} left out: {missing}")
        return
    ours = batch_line(batch, f'open "{folder / "mono.wav"}"; {command}; save "{folder / "out.wav"}"')
    alone, mine, theirs = seconds(["env SONAVEL_THREADS=1 " + ours, ours, line])
    wanted = RATIO_WANTED.get(name, "")
    print(f"{name:18}{alone:13.3f}{mine:8.3f}{theirs:9.3f}{theirs / mine:7.1f}{wanted:>8}")


def make_sounds(folder):
    """A hundred mono sounds of ten seconds, cut from the long one, a table of one place and one of a hundred."""
    sounds = folder / "hundred"
    sounds.mkdir(exist_ok=True)
    for number in range(SOUNDS):
        path = sounds / f"{number:03}.wav"
        if not path.exists():
            subprocess.run(["sox", folder / "mono.wav", path, "trim", str(5 * number), "10"], check=True)
    (folder / "one.csv").write_text("1,0,0\n")
    (folder / "places.csv").write_text(
        "".join(f"p{number},{1 + number / 50},{number % 7 - 3},0\n" for number in range(SOUNDS)))
    script = "\n".join(f'open "{path}"; place-many "{folder / "placed"}" points="{folder / "one.csv"}" '
                       f'pattern={path.stem} smooth=on overwrite=on; close'
                       for path in sorted(sounds.glob("*.wav")))
    (folder / "hundred.script").write_text(script + "\n")
    return sounds


def place_hundreds(batch, folder):
    sounds, placed = make_sounds(folder), folder / "placed"
    placed.mkdir(exist_ok=True)
    one_each = (f"ls {sounds} | env SONAVEL_THREADS=1 xargs -P2 -I NAME {batch} -c "
                f"'open \"{sounds}/NAME\"; positional 1 0 0 smooth=on; save \"{placed}/NAME\"'")
    one_run = f"{batch} {folder / 'hundred.script'}"
    one_sound = batch_line(batch, f'open "{sounds / "000.wav"}"; place-many "{placed}" '
                                  f'points="{folder / "places.csv"}" smooth=on overwrite=on')
    print(f"{SOUNDS} sounds of 10 s, each at a place:")
    rows = zip(("xargs -P2", "one run of place-many", "one sound at 100 places"),
               seconds([one_each, one_run, one_sound]))
    for name, time in rows:
        print(f"  {name:26}{time:8.3f} s, {1000 / time:.0f} times as fast as they play")


def main():
    batch, programs, folder = (pathlib.Path(word).resolve() for word in sys.argv[1:4])
    print(f"{'work':18}{'one thread s':>13}{'ours s':>8}{'other s':>9}{'ratio':>7}{'wanted':>8}")
    fixed = sofalizer(folder)
    compare("positional", batch, folder, "positional 1 0 0", fixed)
    compare("positional smooth", batch, folder, "positional 1 0 0 smooth=on", fixed)
    around = openal(programs, folder)
    compare("moving", batch, folder, "moving " + moving_words(), around)
    compare("moving smooth", batch, folder, f"moving {moving_words()} smooth=on", around)
    place_hundreds(batch, folder)


if __name__ == "__main__":
    main()
