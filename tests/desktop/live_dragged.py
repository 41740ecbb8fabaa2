"""A ball is dragged all the time while it is heard live and every core has other work: no gap is heard, and
the sound goes where the ball goes.

usage: live_dragged.py editor|scene

SONAVEL_LIVE_SECONDS says how long, SONAVEL_LIVE_SOUNDS how many sounds stand in the scene, and
SONAVEL_LIVE_LOAD how many busy loops run beside the editor.
"""

import contextlib
import math
import os
import statistics
import subprocess
import sys
import time

import sounds
from editor_driver import Editor, bounded, key, pixels_of, place_of, wait_for, xdotool
from live_sound import (LEAST_GAP_FRAMES, START_FRAMES, Listener, longest_silence, measured_below, start_live,
                        stop_live)

SECONDS = float(os.environ.get("SONAVEL_LIVE_SECONDS", "1"))
SOUNDS = int(os.environ.get("SONAVEL_LIVE_SOUNDS", "3"))
LOAD = int(os.environ.get("SONAVEL_LIVE_LOAD", os.cpu_count()))
SOUND_SECONDS = 3
INSIDE = (30, 110)  # a place of the scene near its left top corner, in pixels of the dialog
GROUND = 150  # the scene's is darker than that, and the dialog's lighter
CHOSEN = (0xff, 0xd0, 0x40)
ALIKE = 60  # how far a lit ball's colour is from its own
LEAST_BALL_PIXELS = 20
JUMPS = 2  # there and back
# 0.1, and what the mouse and the recording take.
MOST_JUMP_SECONDS = 0.13
HEARD_FRAMES = 441
PEAK = 4000  # of the sound that is dragged
OTHERS_PEAK = 200  # so low that all together do not hide where it is


@contextlib.contextmanager
def busy_cores():
    loops = [subprocess.Popen(bounded(sys.executable, "-c", "while True: pass")) for _ in range(LOAD)]
    try:
        yield
    finally:
        for loop in loops:
            loop.kill()
            loop.wait()


def dark_run(pixels):
    """How many pixels from the first one on are as dark as a scene's ground."""
    run = 0
    while 3 * run + 2 < len(pixels) and max(pixels[3 * run:3 * run + 3]) < GROUND:
        run += 1
    return run


class SceneOnScreen:
    """The 3D scene of a dialog, seen from above: x runs right and y, what lies ahead, up. To be made before
    anything is heard, which is shown by a ball over the chosen one."""

    def __init__(self, dialog):
        self._dialog = dialog
        wait_for("the scene", self._measure)
        xdotool("mousemove", self.left + 4, self.top + 4, "click", 1)
        key("t")
        time.sleep(0.5)
        self.ball = self._find_ball()

    def _measure(self):
        """False until it is drawn, and drawn as large again."""

        def drawn():
            _, _, width, height = place_of(self._dialog)
            return (dark_run(pixels_of(self._dialog, f"{width - INSIDE[0]}x1+{INSIDE[0]}+{INSIDE[1]}")),
                    dark_run(pixels_of(self._dialog, f"1x{height - INSIDE[1]}+{INSIDE[0]}+{INSIDE[1]}")))

        before = drawn()
        time.sleep(0.2)
        self.width, self.height = before
        self.left, self.top = (place + inside for place, inside in zip(place_of(self._dialog), INSIDE))
        return min(before) > 0 and before == drawn()

    def middle(self):
        return self.left + self.width // 2, self.top + self.height // 2

    def _find_ball(self):
        """The middle of the chosen ball on the screen."""

        def found():
            # A busy display lays it out late.
            if not self._measure():
                return None
            pixels = pixels_of(self._dialog, f"{self.width}x{self.height}+{INSIDE[0]}+{INSIDE[1]}")
            places = [place // 3 for place in range(0, len(pixels) - 2, 3)
                      if all(abs(pixels[place + i] - CHOSEN[i]) < ALIKE for i in range(3))]
            if len(places) < LEAST_BALL_PIXELS:
                return None
            return (self.left + round(statistics.median(place % self.width for place in places)),
                    self.top + round(statistics.median(place // self.width for place in places)))

        return wait_for("the chosen ball", found)


def drag_around(scene):
    """The ball around the head and back; the number of its places."""
    start, (x, y) = scene.ball, scene.middle()
    radius = math.hypot(start[0] - x, start[1] - y)
    step, end = 0, time.monotonic() + SECONDS
    xdotool("mousemove", *start, "mousedown", 1)
    while time.monotonic() < end:
        step += 1
        angle = step / 10
        xdotool("mousemove", round(x + radius * math.cos(angle)), round(y - radius * math.sin(angle)))
    xdotool("mousemove", *start, "mouseup", 1)
    return step


def seconds_until_heard(listener, place, ear):
    """Moves the held mouse there and measures when that ear becomes the louder one."""
    frame = listener.frames()
    moved = time.monotonic()
    xdotool("mousemove", *place)

    def heard():
        samples = listener.since(frame)
        for first in range(0, len(samples) - 2 * HEARD_FRAMES, 100):
            part = samples[first:first + 2 * HEARD_FRAMES]
            power = [sum(value * value for value in part[side::2]) for side in (0, 1)]
            if power[ear] > 1.5 * power[1 - ear]:
                return frame + first // 2 + HEARD_FRAMES // 2
        return None

    return listener.time_of(wait_for("the sound at the other side", heard, seconds=5)) - moved


def hear_jumps(scene, listener):
    """The chosen ball from one side to the other and back."""
    x, y = scene.middle()
    sides = (x - scene.width // 4, y), (x + scene.width // 4, y)
    xdotool("mousemove", *scene.ball, "mousedown", 1)
    xdotool("mousemove", *sides[0])
    time.sleep(0.5)

    def median_of_jumps():
        measured = []
        for jump in range(2 * JUMPS):
            ear = 1 - jump % 2
            measured.append(seconds_until_heard(listener, sides[ear], ear))
            time.sleep(0.1)
        median = statistics.median(measured)
        print("a jump is heard after", " ".join(f"{1000 * each:.0f}" for each in measured), "ms; median",
              f"{1000 * median:.0f}")
        return median

    heard_after = measured_below(MOST_JUMP_SECONDS, median_of_jumps)
    xdotool("mouseup", 1)
    assert heard_after < MOST_JUMP_SECONDS, "a jump is heard too late"


def longest_gap(scene, listener, first):
    """Drags, and gives the longest silence since that frame."""
    with busy_cores():
        steps = drag_around(scene)
        last = listener.frames()
    silence, end = longest_silence(listener.since(first)[:2 * (last - first)])
    print(f"{(last - first) / sounds.RATE:.2f} s, {steps} places of the ball, {LOAD} busy loops: "
          f"{silence} frames of silence at most ({1000 * silence / sounds.RATE:.1f} ms), at {end / sounds.RATE:.2f} s")
    return silence


def drag_and_listen(scene, listener):
    start = start_live(listener) + START_FRAMES
    silence = measured_below(LEAST_GAP_FRAMES, lambda: longest_gap(scene, listener, max(start, listener.frames())))
    assert silence < LEAST_GAP_FRAMES, "a gap"


def hear_drags(scene, listener):
    drag_and_listen(scene, listener)
    hear_jumps(scene, listener)
    stop_live(listener)


def drag_in_editor(editor, listener):
    key("alt+d", "Down", "Return")
    dialog = editor.wait_dialog("^User Defined Positional Sound$")
    editor.activate(dialog)
    hear_drags(SceneOnScreen(dialog), listener)
    return dialog


def drag_in_scene(editor, listener):
    key("alt+d", "n")
    dialog = editor.wait_dialog("^Scene$")
    editor.activate(dialog)
    hear_drags(SceneOnScreen(dialog), listener)
    return dialog


def main():
    in_scene = sys.argv[1] == "scene"
    count = SOUNDS if in_scene else 1
    paths = [sounds.write_wav(f"noise{number}.wav",
                              sounds.noise(SOUND_SECONDS * sounds.RATE, number, OTHERS_PEAK if number else PEAK))
             for number in range(count)]
    with Editor(*paths) as editor, Listener() as listener:
        title = f"Sonavel - {paths[-1].name}"
        editor.wait_title(title)
        dialog = (drag_in_scene if in_scene else drag_in_editor)(editor, listener)
        key("Escape")
        editor.wait_dialog_gone(dialog)
        assert editor.title() == title, "the sound was changed"
        assert editor.quit() == 0


main()
