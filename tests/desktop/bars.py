"""Bars that were hidden, moved and floated stand there after a restart."""

import sounds
from editor_driver import Editor, drag, key, pixels_of, place_of, settled_pixels, wait_for, xdotool

# Of the window: the handles of the bars at their first places, and what the bars cover.
REMOCON_HANDLE = (6, 77)
LIST_HANDLE_ABOVE_BOTTOM = 41
TOP = "1000x60+0+0"
LEFT = "150x300+0+100"
# The bars glide, and a bar that is let go meanwhile stays where it was.
HOLD_SECONDS = 0.7


def bar_pictures(editor):
    x, y, width, height = place_of(editor.window)
    xdotool("mousemove", x + width // 2, y + height // 2)
    return [settled_pixels(editor.window, area) for area in (TOP, LEFT)]


def change_by(editor, area, what, act):
    before = settled_pixels(editor.window, area)
    act()
    wait_for(what, lambda: pixels_of(editor.window, area) != before)
    return settled_pixels(editor.window, area)


def floating_list(editor):
    found = [window for window in editor.windows("^Window List$") if window != editor.window]
    return place_of(found[0]) if found else None


def main():
    path = sounds.write_wav("bars.wav", sounds.noise(sounds.RATE, seed=11))
    with Editor(path) as editor:
        editor.wait_title("Sonavel - bars.wav")
        x, y, _, height = place_of(editor.window)
        change_by(editor, TOP, "the zoom bar to go", lambda: key("alt+v", "z"))
        remocon = (x + REMOCON_HANDLE[0], y + REMOCON_HANDLE[1])
        change_by(editor, LEFT, "the Remocon at the left side",
                  lambda: drag(remocon, (x + 8, y + 400), hold=HOLD_SECONDS))
        assert floating_list(editor) is None
        drag((x + 6, y + height - LIST_HANDLE_ABOVE_BOTTOM), (x + 500, y + 560), hold=HOLD_SECONDS)
        wait_for("the window list to float", lambda: floating_list(editor))
        editor.activate()
        pictures = bar_pictures(editor)
        floating = floating_list(editor)
        assert editor.quit() == 0
    with Editor(path) as editor:
        editor.wait_title("Sonavel - bars.wav")
        assert bar_pictures(editor) == pictures, "the bars are not where they were"
        wait_for("the window list where it was", lambda: floating_list(editor) == floating)
        change_by(editor, TOP, "the zoom bar to come back", lambda: key("alt+v", "z"))
        assert editor.quit() == 0
    print("hidden, moved and floating bars were found again")


main()
