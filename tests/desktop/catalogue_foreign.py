"""The sample file database says what a FLAC file holds, and plays it sample for sample."""

import os
import pathlib
import subprocess

import sounds
from editor_driver import Editor, Monitor, key, settled_pixels, wait_for

LEAST_SECONDS_IN_A_ROW = 1.0
CATALOGUE = pathlib.Path(os.environ["SONAVEL_BIN"], "Test.catalogue")


def write_flac(path, sound):
    whole = sounds.write_wav("whole.wav", sound)
    subprocess.run(["sox", whole, path], check=True, timeout=30)
    return path


def facts(path):
    """What the database has stored of the file: all behind its path."""
    for line in CATALOGUE.read_text(encoding="utf-8").splitlines():
        parts = line.split("\t")
        if parts[:2] == ["file", str(path)]:
            return parts[2:]
    return []


def main():
    sound = sounds.noise(2 * sounds.RATE, seed=61)
    flac = write_flac(pathlib.Path("take.v2.flac").absolute(), sound)
    # As a version stored it that knew no such files: nothing but the path is right.
    CATALOGUE.write_text(f"Sonavel sample catalogue 1\nfile\t{flac}\t0\t0\t0\t0\t1\n", encoding="utf-8")
    with Editor() as editor, Monitor("heard.raw") as monitor:
        key("alt+w", "Up", "Return")
        catalogue = editor.wait_dialog("^Sample File Database$")
        wanted = [str(sounds.RATE), str(2 * sounds.RATE), "2", "16", str(flac.stat().st_size), "FLAC"]
        wait_for("the file to be looked at", lambda: facts(flac) == wanted)
        key("Down")
        settled_pixels(catalogue)
        pressed = monitor.size()
        key("space")
        wait_for("the sound's length to pass", lambda: monitor.size() > pressed + 4 * sounds.SECOND_BYTES)
        seconds, _, _ = sounds.longest_run(monitor.heard()[pressed // 4 * 4:], sound)
        assert seconds >= LEAST_SECONDS_IN_A_ROW, f"heard {seconds:.3f} s in a row"
        assert editor.title() == "Sonavel", "playing opened the file"
        assert editor.quit() == 0
    print(f"{' '.join(wanted)}: {seconds:.3f} s of 2 s heard in a row")


main()
