"""The 3D scene is drawn for its new size when its window is resized, before anything else happens to it."""

import time

import sounds
from editor_driver import Editor, key, pixels_of, place_of, wait_for, xdotool

SIDE_WIDTH = 460  # at least that of what stands beside the scene
HEADER_HEIGHT = 90
FOOTER_HEIGHT = 130
LEAST_COLOURS = 50  # fewer are a text in place of a scene
MOST_DIFFERENT = 0.001  # of the pixels; edges of lines come out a shade apart now and then
REST_SECONDS = 1.5  # software draws the scene in tenths of a second


def scene_of(dialog):
    """The scene's pixels without those at its edges."""
    _, _, width, height = place_of(dialog)
    return pixels_of(
        dialog,
        f"{width - SIDE_WIDTH}x{height - HEADER_HEIGHT - FOOTER_HEIGHT}+20+{HEADER_HEIGHT}",
    )


def scene_at_rest(dialog):
    """The scene's pixels once they have been the same for a while."""
    last, since = b"", time.monotonic()

    def rested():
        nonlocal last, since
        now = scene_of(dialog)
        if now != last:
            last, since = now, time.monotonic()
        return last if time.monotonic() - since > REST_SECONDS else None

    return wait_for("the scene to come to rest", rested)


def share_of_different_pixels(one, other):
    if len(one) != len(other):
        return 1.0
    places = range(0, len(one), 3)
    return sum(one[place:place + 3] != other[place:place + 3] for place in places) / len(places)


def give_keyboard_to_scene(editor, dialog):
    x, y, _, _ = place_of(dialog)
    xdotool("mousemove", x + 24, y + HEADER_HEIGHT + 4, "click", 1)
    editor.activate(dialog)


def main():
    with Editor(sounds.write_wav("placed.wav", sounds.noise(1000, seed=5))) as editor:
        editor.wait_title("Sonavel - placed.wav")
        key("alt+d", "Return")
        dialog = editor.wait_dialog("^System Defined Positional Sound$")
        editor.activate(dialog)
        for size in ((1400, 900), (960, 640)):
            xdotool("windowsize", "--sync", dialog, *size)
            at_once = scene_at_rest(dialog)
            colours = len({at_once[place:place + 3] for place in range(0, len(at_once), 3)})
            assert colours >= LEAST_COLOURS, "the scene is not drawn"
            give_keyboard_to_scene(editor, dialog)
            key("t")  # from above, so that the next key has something to draw
            wait_for("the view from above", lambda: scene_of(dialog) not in (at_once, b""))
            key("Home")
            different = share_of_different_pixels(at_once, scene_at_rest(dialog))
            print(f"{size}: {colours} colours, {different:.2%} different when drawn anew")
            assert different <= MOST_DIFFERENT, "the scene changes when it is drawn anew"
        key("Escape")
        editor.wait_dialog_gone(dialog)
        assert editor.quit() == 0


main()
