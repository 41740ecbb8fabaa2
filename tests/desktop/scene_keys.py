"""Tab comes to the 3D scene in each window that has one, a frame around the scene shows it, and Tab leads on."""

import sounds
import spoken
from editor_driver import Editor, key, pixels_of_screen, repeat_until, wait_for

# The keys that open it in the menu, and the window's title.
WINDOWS = (
    ("s", "System Defined Positional Sound"),
    ("u", "User Defined Positional Sound"),
    ("y", "System-Defined Moving Sound"),
    ("e", "User-Defined Moving Sound"),
    ("n", "Scene"),
)
MOST_STOPS = 60
HIGHLIGHT = (0x1F, 0x6F, 0xD0)
LEAST_COLOURS = 50
LEAST_SHARE = 0.9  # of an edge; the labels at the corners may lie over it


def scene_in(title):
    def found():
        windows = (it for it in spoken.windows_of(spoken.program()) if it.name == title)
        return next((scene for it in windows if (scene := it.find("list", "Scene"))), None)

    return wait_for(f"the scene of {title}", found)


def shares_of_edges(scene):
    """Of each of the scene's four edges, a pixel wide, how much has the colour of what has the keyboard."""
    x, y, width, height = scene.screen_area()
    edges = ((x, y, width, 1), (x, y + height - 1, width, 1), (x, y, 1, height), (x + width - 1, y, 1, height))
    return [share_of_highlight(pixels_of_screen("root", f"{w}x{h}+{left}+{top}")) for left, top, w, h in edges]


def share_of_highlight(pixels):
    """Up to a shade, as the scene is drawn by the graphics system."""
    places = range(0, len(pixels), 3)
    near = sum(all(abs(pixels[at + i] - HIGHLIGHT[i]) <= 4 for i in range(3)) for at in places)
    return near / max(len(places), 1)


def is_drawn(scene):
    """And not black."""
    x, y, width, height = scene.screen_area()
    pixels = pixels_of_screen("root", f"{width}x{height}+{x}+{y}")
    return len({pixels[at:at + 3] for at in range(0, len(pixels), 3)}) >= LEAST_COLOURS


def tab_to(scene):
    for stops in range(MOST_STOPS):
        if scene.has("FOCUSED"):
            return stops
        key("Tab")
    raise AssertionError(f"{MOST_STOPS} tabs did not come to the scene")


def visit(editor, letter, title):
    editor.activate()
    repeat_until(title, lambda: key("Escape", "alt+d", letter), lambda: editor.windows(f"^{title}$"), seconds=8)
    window = editor.wait_dialog(f"^{title}$")
    editor.activate(window)
    scene = scene_in(title)
    wait_for("the scene to be drawn", lambda: is_drawn(scene))
    if scene.has("FOCUSED"):
        key("Tab")
        wait_for("the scene to lose the keyboard", lambda: not scene.has("FOCUSED"))
    wait_for("no frame without the keyboard", lambda: max(shares_of_edges(scene)) < 0.1)
    stops = tab_to(scene)
    wait_for("a frame around the scene", lambda: min(shares_of_edges(scene)) >= LEAST_SHARE)
    key("Tab")
    wait_for("the keyboard to go on", lambda: not scene.has("FOCUSED"))
    wait_for("the frame to go", lambda: max(shares_of_edges(scene)) < 0.1)
    print(f"{title}: {stops} tabs to the scene")
    key("Escape")
    editor.wait_dialog_gone(window)


def main():
    with Editor(sounds.write_wav("placed.wav", sounds.noise(1000, seed=5))) as editor:
        editor.wait_title("Sonavel - placed.wav")
        for letter, title in WINDOWS:
            visit(editor, letter, title)
        assert editor.quit() == 0


main()
