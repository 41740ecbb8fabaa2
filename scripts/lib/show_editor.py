"""Shows the real program at work on a sound file. Usage: show_editor.py FILE OUT-FOLDER

Run by scripts/lib/show-headless on a private desktop. Plays a second, applies the Volume effect, saves,
and keeps what was heard, what was saved and two pictures; fails loudly where anything of it fails.
"""

import os
import pathlib
import shutil
import struct
import subprocess
import sys

from editor_driver import DriveError, Editor, Monitor, key, settled_pixels, wait_for

SECOND_BYTES = 44100 * 4
VOLUME_DIALOG_KEYS = "alt+c Right v"  # the menu behind Control


def with_wav_head(data):
    return struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + len(data), b"WAVE", b"fmt ", 16, 1, 2, 44100,
                       SECOND_BYTES, 4, 16, b"data", len(data)) + data


def first_sound(data):
    """The place of the first frame that is not silent; nothing when all are."""
    place = next((i for i, byte in enumerate(data) if byte), None)
    return None if place is None else place // 4 * 4


def play_a_second(path):
    with Monitor(path.with_suffix(".raw")) as monitor:
        start = monitor.size() // 4 * 4
        key("space")

        def a_second_of_sound():
            heard = monitor.heard()[start:]
            sound = first_sound(heard)
            return heard[sound:] if sound is not None and len(heard) >= sound + SECOND_BYTES else None

        heard = wait_for("a second of sound on the sink's monitor", a_second_of_sound)
        key("space")
    monitor.path.unlink()
    path.write_bytes(with_wav_head(heard[:SECOND_BYTES]))


def take_picture(window, path):
    settled_pixels(window)
    subprocess.run(["import", "-silent", "-window", window, str(path)], check=True, timeout=30)


def apply_volume(editor, picture):
    key("ctrl+a", *VOLUME_DIALOG_KEYS.split())
    dialog = editor.wait_dialog("^Volume$")
    key(*["Next"] * 3)
    take_picture(dialog, picture)
    key("Return")
    editor.wait_dialog_gone(dialog)
    wait_for("the changed sound", lambda: editor.title().endswith("*"))


def describe(path):
    batch = pathlib.Path(os.environ["SONAVEL_BIN"]) / "sonavel-batch"
    quoted = str(path).replace("\\", "\\\\").replace('"', '\\"')
    return subprocess.run([batch, "-c", f'open "{quoted}"; info'], capture_output=True, text=True,
                          check=True).stdout.strip()


def main():
    source, out = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    shown = out / f"shown{source.suffix.lower() or '.wav'}"
    shutil.copyfile(source, shown)
    with Editor(shown) as editor:
        editor.wait_title(f"Sonavel - {shown.name}")
        print(f"Opened      {source}")
        play_a_second(out / "heard.wav")
        print(f"Heard       {out / 'heard.wav'} (a second, from the sound server's monitor)")
        apply_volume(editor, out / "volume.png")
        print(f"Effect      {out / 'volume.png'} (the Volume dialog)")
        editor.save_as(out / "saved.wav")
        if (out / "saved.wav").read_bytes() == shown.read_bytes():
            raise DriveError("the effect left the sound as it was")
        print(f"Saved       {out / 'saved.wav'}")
        take_picture(editor.window, out / "editor.png")
        print(f"Screenshot  {out / 'editor.png'}")
        if editor.quit() != 0:
            raise DriveError("the editor did not end well")
    print(f"Before      {describe(shown)}\nAfter       {describe(out / 'saved.wav')}")


main()
