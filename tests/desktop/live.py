"""Effects and 3D editors are heard live: while they are set all the time the sound has no gap, and a change
is heard within a tenth of a second."""

import array
import math
import os
import statistics
import subprocess
import threading
import time

import sounds
from editor_driver import Editor, bounded, key, place_of, wait_for, xdotool

SECONDS = 3
DRAG_SECONDS = float(os.environ.get("SONAVEL_LIVE_SECONDS", "0.7"))
# 0.1, and what the key that is sent and the recording take.
MOST_SECONDS = 0.13
START_FRAMES = sounds.RATE // 10  # the device takes its first frames at no steady pace
LEAST_GAP_FRAMES = 32  # of silence; what is rendered of noise is silent for a frame at most
EDITORS = (
    ("^System Defined Positional Sound$", 0),
    ("^User Defined Positional Sound$", 1),
    ("^System-Defined Moving Sound$", 2),
    ("^User-Defined Moving Sound$", 3),
)


class Listener:
    """What the sink plays, with the time at which each part of it came."""

    def __init__(self):
        self._parts = []  # (frames before it, time, samples)
        self._frames = 0
        self._lock = threading.Lock()

    def __enter__(self):
        self._process = subprocess.Popen(
            bounded("parec", "--raw", "--rate=44100", "--channels=2", "--format=s16le",
                    "--latency-msec=5", "--device=sonavel.monitor"),
            stdout=subprocess.PIPE)
        threading.Thread(target=self._read, daemon=True).start()
        wait_for("the monitor's first bytes", self.frames)
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait(timeout=10)

    def _read(self):
        rest = b""
        while data := os.read(self._process.stdout.fileno(), 4096):
            data = rest + data
            whole = len(data) // sounds.FRAME_BYTES * sounds.FRAME_BYTES
            rest = data[whole:]
            with self._lock:
                self._parts.append((self._frames, time.monotonic(), data[:whole]))
                self._frames += whole // sounds.FRAME_BYTES

    def frames(self):
        with self._lock:
            return self._frames

    def since(self, frame):
        """The samples of both sides from a frame on, interleaved."""
        with self._lock:
            data = b"".join(part for first, _, part in self._parts
                            if first + len(part) // sounds.FRAME_BYTES > frame)
            first = next((first for first, _, part in self._parts
                          if first + len(part) // sounds.FRAME_BYTES > frame), frame)
        return array.array("h", data)[2 * (frame - first):]

    def time_of(self, frame):
        with self._lock:
            return next(when for first, when, part in self._parts
                        if first + len(part) // sounds.FRAME_BYTES > frame)


def start_live(listener):
    """Presses the key for Live; the frame from which on it is heard."""
    pressed = listener.frames()
    key("ctrl+l")

    def first_heard():
        samples = listener.since(pressed)
        return next((pressed + place // 2 for place, value in enumerate(samples) if value), None)

    return wait_for("the sound", first_heard, seconds=10)


def stop_live(listener):
    """Presses the key again; the last frame that was heard before it."""
    last = listener.frames()
    key("ctrl+l")
    wait_for("silence", lambda: not any(listener.since(max(0, listener.frames() - 8000))), seconds=5)
    return last


def longest_silence(samples):
    """In frames, and the frame at which it ends."""
    longest, end, run = 0, 0, 0
    for place in range(0, len(samples) - 1, 2):
        run = 0 if samples[place] or samples[place + 1] else run + 1
        if run > longest:
            longest, end = run, place // 2
    return longest, end


def drag_all_the_time(dialog):
    """Around in the scene, with the button down: a point where one is hit, the scene else; and by keys."""
    x, y, width, height = place_of(dialog)
    end = time.monotonic() + DRAG_SECONDS
    step = 0
    xdotool("mousemove", x + width // 3, y + height // 2, "mousedown", 1)
    while time.monotonic() < end:
        step += 1
        angle = step / 5
        xdotool("mousemove", round(x + width / 3 + 90 * math.cos(angle)),
                round(y + height / 2 + 60 * math.sin(angle)), "key", "--delay", 0,
                "Up" if step // 8 % 2 else "Down")
    xdotool("mouseup", 1)
    return step


def drag_in_editor(editor, listener, title, downs):
    key("alt+d", *["Down"] * downs, "Return")
    dialog = editor.wait_dialog(title)
    editor.activate(dialog)
    first = start_live(listener)
    steps = drag_all_the_time(dialog)
    last = stop_live(listener)
    first += START_FRAMES
    silence, end = longest_silence(listener.since(first)[:2 * (last - first)])
    print(f"{title[1:-1]}: {(last - first) / sounds.RATE:.2f} s, {steps} steps, "
          f"{silence} frames of silence at most, at {end / sounds.RATE:.2f} s")
    assert silence < LEAST_GAP_FRAMES, f"a gap in {title}"
    key("Escape")
    editor.wait_dialog_gone(dialog)


def is_quiet(samples):
    return max(map(abs, samples)) < 200


def seconds_until(listener, keys, quiet):
    """Sends a key to the slider and measures when the sound becomes quiet, or loud again."""
    frame = listener.frames()
    pressed = time.monotonic()
    xdotool("key", "--delay", 0, keys)

    def changed():
        samples = listener.since(frame)
        for place in range(0, len(samples) - 200, 100):
            if is_quiet(samples[place:place + 200]) == quiet:
                return frame + place // 2
        return None

    return listener.time_of(wait_for("the change", changed, seconds=5)) - pressed


def hear_the_volume(editor, listener):
    xdotool("key", "--delay", 0, "alt+t")
    key("v")
    dialog = editor.wait_dialog("^Volume")
    editor.activate(dialog)
    first = start_live(listener)
    measured = []
    for _ in range(4):
        for keys, quiet in (("End", True), ("Home", False)):
            time.sleep(0.06)
            measured.append(seconds_until(listener, keys, quiet))
    stop_live(listener)
    print("a change is heard after", " ".join(f"{1000 * each:.0f}" for each in measured), "ms; median",
          f"{1000 * statistics.median(measured):.0f}")
    assert statistics.median(measured) < MOST_SECONDS, "a change is heard too late"
    key("Escape")
    editor.wait_dialog_gone(dialog)
    return first


def main():
    path = sounds.write_wav("noise.wav", sounds.noise(SECONDS * sounds.RATE, seed=9))
    with Editor(path) as editor, Listener() as listener:
        editor.wait_title("Sonavel - noise.wav")
        hear_the_volume(editor, listener)
        for title, downs in EDITORS:
            drag_in_editor(editor, listener, title, downs)
        assert editor.title() == "Sonavel - noise.wav", "the sound was changed"
        assert editor.quit() == 0


main()
