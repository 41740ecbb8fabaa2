"""Menus, context menus, floating bars and a drag between two windows on Wayland, by mouse: all stand where they
belong, although no program there knows the place of its windows."""

import pathlib
import re
import subprocess

from catalogue import write_catalogue
from editor_driver import Editor, drag, key, repeat_until, settled_pixels, wait_for, xdotool
import sounds

EMPTY_PLACE = (1200, 960)  # of the main window, behind the last button of the window list


def click(place, button=1):
    xdotool("mousemove", *place, "click", button)


def middle(item):
    wait_for(f"the place of {item.name!r}", lambda: item.screen_area()[2] > 0)
    x, y, width, height = item.screen_area()
    return x + width // 2, y + height // 2


def choose(editor, menu, name):
    """Clicks on a menu and on an item of it, where it should be on the screen."""
    settled_pixels(editor.window)

    # A click that comes while the window is being fitted to the screen opens nothing.
    repeat_until(f"{name!r} in an open menu", lambda: click(middle(menu)),
                 lambda: menu.find("menu item", name).has("SHOWING"))
    click(middle(menu.find("menu item", name)))


def take_screen(path):
    subprocess.run(["import", "-silent", "-window", "root", path], check=True, timeout=30)


def changed_area(before, after):
    """Left, top, width and height of what differs in two pictures."""
    done = subprocess.run(
        ["convert", before, after, "-compose", "difference", "-composite", "-threshold", "2%", "-format", "%@",
         "info:"], capture_output=True, text=True, check=True, timeout=30)
    width, height, left, top = map(int, re.findall(r"\d+", done.stdout))
    return left, top, width, height


def use_menus(editor, frame):
    bar = next(it for it in frame.children() if it.role == "menu bar")
    edit = bar.find("menu item", "Edit")
    choose(editor, edit, "Select All")
    wave = frame.find("canvas", "popups.wav")
    wait_for("the selection", lambda: "selected" in wave.description)
    choose(editor, edit, "Preferences...")
    dialog = editor.wait_dialog("^Preference")
    key("Escape")
    editor.wait_dialog_gone(dialog)
    return middle(wave)[0], 300  # the whole context menu has room below


def open_context_menu(editor, place):
    """It stands where the pointer is."""
    xdotool("mousemove", *place)
    settled_pixels(editor.window)
    take_screen("before.png")
    click(place, button=3)

    def shown():
        take_screen("after.png")
        left, top, width, height = changed_area("before.png", "after.png")
        return width > 60 and height > 100 and (left, top)

    left, top = wait_for("the context menu", shown)
    assert abs(left - place[0]) <= 4 and abs(top - place[1]) <= 4, ((left, top), place)
    key("Escape")


def float_a_bar(editor, frame):
    """Hidden and shown again, it is back: it cannot be dragged there."""
    bar = next(it for it in frame.children() if it.role == "menu bar")
    click(middle(frame.find("push button", "Float")))
    wait_for("the meter in a window of its own", lambda: editor.windows("^Playmeter$"))
    for there in (False, True):
        bar.find("menu item", "Playmeter Bar").press()
        wait_for("the meter to be hidden, and shown in its place", lambda: not editor.windows("^Playmeter$") and
                 bool(frame.find("progress bar", "Sound play left meter")) == there)


def drag_a_sound(editor):
    """From the table of the catalogue into the main window beside it."""
    xdotool("mousemove", *EMPTY_PLACE)
    settled_pixels(editor.window)  # the status bar follows the pointer
    take_screen("before.png")
    bar = next(it for it in editor.window.item.children() if it.role == "menu bar")
    bar.find("menu item", "Sample File Database").press()
    catalogue = editor.wait_dialog("^Sample File Database$").item
    wait_for("the sound in the table", lambda: catalogue.find("table cell", "dragged.wav"))
    _, _, inner_width, inner_height = catalogue.area()

    def shown():
        take_screen("after.png")
        place = changed_area("before.png", "after.png")
        return place[2] >= inner_width and place[3] >= inner_height and place

    left, top, width, height = wait_for("the window on the screen", shown)
    edge = (width - inner_width) // 2
    cell_left, cell_top, _, cell_height = catalogue.find("table cell", "dragged.wav").area()
    start = (left + edge + cell_left + 20, top + height - edge - inner_height + cell_top + cell_height // 2)
    end = (left // 2, 950) if left > 60 else (1580, 950)
    repeat_until("the dragged sound", lambda: drag(start, end, hold=0.3),
                 lambda: editor.title() == "Sonavel - dragged.wav")


def main():
    path = sounds.write_wav("popups.wav", sounds.noise(sounds.RATE, seed=12))
    write_catalogue(sounds.write_wav(pathlib.Path("dragged.wav").absolute(), sounds.noise(500, seed=13)))
    with Editor(path) as editor:
        frame = editor.window.item
        open_context_menu(editor, use_menus(editor, frame))
        float_a_bar(editor, frame)
        drag_a_sound(editor)
        click(EMPTY_PLACE)
        assert editor.quit() == 0


main()
