"""Times the import of ten minutes of stereo beside ffmpeg and sox, which decode the same file to WAV.

Prints seconds by the clock and, in brackets, of computing on all cores; the ratios are those of the clock.
Usage: compare_imports.py SONAVEL_BATCH FOLDER (holding in.wav, ten minutes of 16-bit stereo)
"""

import pathlib
import subprocess
import sys

from compare_runs import times

# File, how ffmpeg makes it from in.wav, beside whom the ratio counts, least ratio wanted.
FILES = [
    ("deep.wav", "-c:a pcm_s24le -af volume=0.7", ("ffmpeg", "sox"), 3),
    ("float.wav", "-c:a pcm_f32le -af volume=0.7", ("ffmpeg", "sox"), 3),
    ("sound.flac", "-c:a flac", ("ffmpeg",), 1),
    ("deep.flac", "-c:a flac -sample_fmt s32 -af volume=0.7", ("ffmpeg",), 1),
    ("sound.ogg", "-c:a libvorbis -q:a 5", ("ffmpeg",), 1),
    ("sound.mp3", "-c:a libmp3lame -b:a 192k", ("ffmpeg",), 1),
]


def make(folder, name, words):
    if not (folder / name).exists():
        command = ["ffmpeg", "-v", "error", "-y", "-i", folder / "in.wav", *words.split(), folder / name]
        subprocess.run(command, check=True)


def shown(time):
    return f"{time[0]:.3f} ({time[1]:.3f})"


def main():
    batch, folder = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    print(f"{'import':12}{'ours s':>16}{'ffmpeg s':>16}{'sox s':>16}{'ratio':>7}{'wanted':>8}")
    for name, words, beside, wanted in FILES:
        make(folder, name, words)
        out = folder / "out.wav"
        ours, ffmpeg, sox = times([
            f"{batch} -c 'import \"{folder / name}\"'",
            f"ffmpeg -v error -y -i {folder / name} {out}",
            f"sox {folder / name} {out}",
        ])
        fastest = min({"ffmpeg": ffmpeg, "sox": sox}[other][0] for other in beside)
        print(f"{name:12}{shown(ours):>16}{shown(ffmpeg):>16}{shown(sox):>16}{fastest / ours[0]:7.1f}{wanted:8}")


if __name__ == "__main__":
    main()
