"""Plays one sound while an effect changes a gigabyte of another one and that gigabyte is journaled; says how long
it was heard without a gap. Run by hand, on a built editor:

    tests/desktop/run-desktop-test FOLDER-OF-THE-PROGRAMS ../../bench/journal_gaps.py
"""

import pathlib
import time

import sounds
from editor_driver import Editor, Monitor, key, type_text, wait_for

SECONDS = 90
BIG_BYTES = 1 << 30
MOST_SECONDS = 300
STATE = pathlib.Path("state").absolute()


def journaled():
    return sum(path.stat().st_size for path in STATE.rglob("journal"))


def write_big(path):
    piece = sounds.noise(10 * sounds.RATE, seed=9)
    with path.open("wb") as file:
        count = BIG_BYTES // len(piece)
        file.write(sounds.wav(b"\0" * 0)[:40] + (count * len(piece)).to_bytes(4, "little"))
        for _ in range(count):
            file.write(piece)
    return count * len(piece)


def main():
    music = sounds.noise(SECONDS * sounds.RATE, seed=8)
    quiet = sounds.write_wav(pathlib.Path("music.wav").absolute(), music)
    big = pathlib.Path("big.wav").absolute()
    size = write_big(big)
    with Editor(quiet, big, environment={"XDG_STATE_HOME": str(STATE)}) as editor, \
            Monitor("heard.raw") as monitor:
        editor.wait_title("Sonavel - big.wav")
        key("ctrl+F6")
        editor.wait_title("Sonavel - music.wav")
        pressed = monitor.size()
        key("Home", "space")
        time.sleep(3)
        key("ctrl+F6")
        editor.wait_title("Sonavel - big.wav")
        key("ctrl+k")
        editor.wait_dialog("^Find Command$")
        began = time.monotonic()
        type_text("Invert")
        key("Return")
        wait_for("the journal to begin", lambda: journaled() > 1 << 20, MOST_SECONDS)
        changed = time.monotonic()
        wait_for("the journal to hold it", lambda: journaled() >= size, MOST_SECONDS)
        held = time.monotonic()
        wait_for("the sound's length to pass", lambda: monitor.size() > pressed + len(music)
                 + 2 * sounds.SECOND_BYTES, MOST_SECONDS)
        seconds, _, start = sounds.longest_run(monitor.heard()[pressed // 4 * 4:], music)
        print(f"{size / 1e6:.0f} MB changed in {changed - began:.1f} s and journaled in {held - changed:.1f} s;"
              f" {seconds:.3f} s of {SECONDS} s heard in a row, from {start / sounds.SECOND_BYTES:.3f} s on")
        editor.kill()


main()
