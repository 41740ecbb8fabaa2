"""Times sonavel-batch beside other tools on the same work and prints a table of ratios.

Usage: compare_runs.py SONAVEL_BATCH FOLDER (holding in.wav, ten minutes of 16-bit stereo)
"""

import json
import pathlib
import resource
import subprocess
import sys
import tempfile

FFMPEG_BANDS = ",".join(
    f"equalizer=f={f}:t=q:w=1.67:g=6" for f in (60, 150, 400, 1000, 2400, 6000, 15000)
)
SOX_BANDS = " ".join(f"equalizer {f} 1.67q 6" for f in (60, 150, 400, 1000, 2400, 6000, 15000))

# name, least ratio wanted, script, commands of the others; {in} and {out} are files.
WORK = [
    ("copy", 2, 'save "{out}"', ["sox {in} {out}"]),
    ("volume", 3, 'volume percent=80; save "{out}"',
     ["sox {in} {out} vol 0.8", "ffmpeg -v error -y -i {in} -af volume=0.8 {out}"]),
    ("pan", 3, 'pan value=300; save "{out}"', ["sox {in} {out} remix 1v0.7 2"]),
    ("crossfade", 3, 'crossfade from=-1000 to=1000; save "{out}"', ["sox {in} {out} remix 1v0.7 2v0.9"]),
    ("dynamics", 3, 'dynamics threshold=50 below=1 above=4; save "{out}"',
     ["sox {in} {out} compand 0.01,0.1 -60,-60,-6,-6,0,-4"]),
    ("modulator", 3, 'modulator frequency1=100 amplitude1=80; save "{out}"',
     ["sox {in} {out} tremolo 5 80"]),
    ("flanger", 2, 'flanger delay=5 modulation=0.5; save "{out}"',
     ["sox {in} {out} flanger 0 5 0 71 0.5", "ffmpeg -v error -y -i {in} -af flanger=depth=5:speed=0.5 {out}"]),
    ("equalizer", 3, 'preview equalizer gains=6,6,6,6,6,6,6; preview-save "{out}"',
     ["sox {in} {out} " + SOX_BANDS, "ffmpeg -v error -y -i {in} -af " + FFMPEG_BANDS + " {out}"]),
    ("reverb", 3, 'reverb; save "{out}"', ["sox {in} {out} reverb"]),
    ("loudness", 1.5, 'normalise loudness=-16 peak=-1; save "{out}"',
     ["ffmpeg -v error -i {in} -af ebur128=peak=true -f null - && ffmpeg -v error -y -i {in} -af volume=-3dB {out}",
      "ffmpeg -v error -y -i {in} -af loudnorm=I=-16:TP=-1 -ar 44100 {out}"]),
    ("resample", 1.5, 'resample 48000; save "{out}"',
     ["sox {in} -r 48000 {out} rate -v",
      "ffmpeg -v error -y -i {in} -af aresample=48000:resampler=soxr:precision=28 {out}"]),
    ("tempo", 1.5, 'tempo 125; save "{out}"',
     ["sox {in} {out} tempo 1.25", "ffmpeg -v error -y -i {in} -af atempo=1.25 {out}"]),
]


def times(commands, runs=5):
    """Of each command the least wall-clock seconds and the mean seconds of computing, all in one run of the timer.

    Each run begins with nothing waiting to be written: ours ends with its sound on the disk, the others end
    before theirs is, and would leave the wait to whoever runs next.
    """
    with tempfile.NamedTemporaryFile(suffix=".json") as report:
        subprocess.run(
            ["hyperfine", "--style", "none", "--warmup", "1", "--runs", str(runs), "--prepare", "sync",
             "--export-json", report.name, *commands],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        return [(result["min"], result["user"] + result["system"]) for result in json.load(report)["results"]]


def seconds(commands):
    """The least wall-clock time of several runs of each command."""
    return [wall for wall, _ in times(commands)]


def peak_megabytes(command):
    before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
    subprocess.run(command, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
    return max(before, after) / 1024


def main():
    batch, folder = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])
    files = {"in": folder / "in.wav", "out": folder / "out.wav"}
    sound = files["in"]
    megabytes = sound.stat().st_size / 2**20
    peak = peak_megabytes([batch, "-c", f'open "{sound}"; save "{files["out"]}"'])
    print(f"peak memory of a copy: {peak:.0f} MB for {megabytes:.0f} MB of sound")
    print(f"{'work':12}{'one thread s':>13}{'ours s':>8}{'fastest other s':>17}{'ratio':>7}{'wanted':>8}")
    for name, wanted, script, others in WORK:
        ours = f"{batch} -c 'open \"{sound}\"; {script.format(**files)}'"
        alone, mine, *theirs = seconds(
            ["env SONAVEL_THREADS=1 " + ours, ours] + [other.format(**files) for other in others])
        fastest = min(theirs)
        print(f"{name:12}{alone:13.3f}{mine:8.3f}{fastest:17.3f}{fastest / mine:7.1f}{wanted:8}")


if __name__ == "__main__":
    main()
