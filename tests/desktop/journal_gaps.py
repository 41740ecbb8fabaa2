"""Plays one sound in the editor while a gigabyte of another one's work goes to the recovery folder, and says the
longest gap that was heard. It takes a minute, 4 GB of memory and 3 GB of disk, so it is run by hand:
run-desktop-test BIN-FOLDER journal_gaps.py [MEGABYTES]"""

import os
import pathlib
import sys
import time

import sounds
from editor_driver import Editor, Monitor, key, type_text, wait_for

MEGABYTES = int(sys.argv[1]) if len(sys.argv) > 1 else 1000
PLAYED_SECONDS = 40
BLOCK_BYTES = sounds.RATE // 20 * sounds.FRAME_BYTES
STATE = pathlib.Path("state").absolute()


def write_long(path):
    piece = sounds.noise(10 * sounds.RATE, seed=9)
    count = MEGABYTES * 1_000_000 // len(piece)
    with open(path, "wb") as file:
        file.write(sounds.wav(b"")[:40] + (count * len(piece)).to_bytes(4, "little"))
        for _ in range(count):
            file.write(piece)
        size = file.tell()
        file.seek(4)
        file.write((size - 8).to_bytes(4, "little"))
    return path


def written():
    return sum(path.stat().st_size for path in STATE.glob("sonavel/recovery/*/journal"))


def change_all(editor):
    """An effect without a dialog on the whole sound, and the time that it took."""
    key("ctrl+k")
    dialog = editor.wait_dialog("^Find Command$")
    type_text("Invert")
    key("Return")
    began = time.monotonic()
    wait_for("the list of commands to close", lambda: dialog not in editor.windows())
    wait_for("the effect to end", lambda: editor.title().endswith("*"), seconds=300)
    return time.monotonic() - began


def gaps(heard, music):
    """Seconds by which each block of the music came later than the one before it, and how many came at all."""
    found = []
    last = None
    for start in range(0, len(music) - BLOCK_BYTES + 1, BLOCK_BYTES):
        place = heard.find(music[start:start + BLOCK_BYTES], last[0] if last else 0)
        if place < 0:
            continue
        if last:
            found.append((place - last[0] - (start - last[1])) / sounds.SECOND_BYTES)
        last = (place, start)
    return found


def main():
    music = sounds.noise(PLAYED_SECONDS * sounds.RATE, seed=8)
    files = [sounds.write_wav(pathlib.Path("music.wav").absolute(), music),
             write_long(pathlib.Path("long.wav").absolute())]
    with Editor(*files, environment={"XDG_STATE_HOME": str(STATE)}) as editor:
        wait_for("the long sound", lambda: editor.title() == "Sonavel - long.wav", seconds=120)
        print(f"effect on {MEGABYTES} MB: {change_all(editor):.1f} s", flush=True)
        key("ctrl+F6")
        editor.wait_title("Sonavel - music.wav")
        with Monitor("heard.raw") as monitor:
            before = written()
            key("Home", "space")
            loads, ends = [], time.monotonic() + PLAYED_SECONDS + 2
            during, settled = before, None
            while time.monotonic() < ends:
                time.sleep(0.5)
                loads.append(os.getloadavg()[0])
                now = written()
                if now > during:
                    during, settled = now, PLAYED_SECONDS + 2 - (ends - time.monotonic())
            heard = monitor.heard()
        late = gaps(heard, music)
        print(f"journal: {before / 1e6:.0f} MB when playing began, {during / 1e6:.0f} MB after"
              f" {settled or 0:.1f} s; load {max(loads):.1f}")
        print(f"{len(late) + 1} of {len(music) // BLOCK_BYTES} blocks of 50 ms heard whole; longest gap"
              f" {max(late, default=-1):.3f} s, {sum(gap > 0.001 for gap in late)} gaps")
        assert during > before, "nothing was written while the sound played"
        assert late and len(late) + 1 >= len(music) // BLOCK_BYTES - 2, "too little of the sound was heard"
        editor.kill()


main()
