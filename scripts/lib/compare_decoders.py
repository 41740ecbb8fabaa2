"""Times the codec service beside ffmpeg and sox, each decoding the same ten minutes of stereo, and prints ratios.

Usage: compare_decoders.py DECODE_FILE FOLDER (holding in.wav, ten minutes of 16-bit stereo)
"""

import pathlib
import subprocess
import sys

from compare_runs import seconds

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


def main():
    program, folder = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
    print(f"{'decoding':12}{'ours s':>8}{'ffmpeg s':>10}{'sox s':>8}{'ratio':>7}{'wanted':>8}")
    for name, words, beside, wanted in FILES:
        make(folder, name, words)
        out = folder / "out.wav"
        ours, ffmpeg, sox = seconds([
            f"{program} {folder / name}",
            f"ffmpeg -v error -y -i {folder / name} {out}",
            f"sox {folder / name} {out}",
        ])
        fastest = min({"ffmpeg": ffmpeg, "sox": sox}[other] for other in beside)
        print(f"{name:12}{ours:8.3f}{ffmpeg:10.3f}{sox:8.3f}{fastest / ours:7.1f}{wanted:8}")


if __name__ == "__main__":
    main()
