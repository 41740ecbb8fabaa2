"""The editor as assistive programs hear and drive it: by AT-SPI, on a session bus of the test's own, so that
no key, no mouse and no window of a certain display server is needed.

Importing this starts the bus; an Editor started afterwards speaks on it.
"""

import os
import subprocess

from editor_driver import bounded, drag, repeat_until, wait_for


def _start_bus():
    bus = subprocess.Popen(bounded("dbus-daemon", "--session", "--nofork", "--print-address"),
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
    os.environ["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"


_start_bus()

import gi  # noqa: E402  (libatspi takes the bus that stands in the environment when it is loaded)

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

Atspi.init()
# Milliseconds that an answer may take, also the first one of a program.
Atspi.set_timeout(2000, 2000)

CONTROLS = {
    "push button", "check box", "radio button", "toggle button", "slider", "scroll bar", "spin button",
    "combo box", "text", "entry", "password text", "page tab", "table", "tree", "tree table", "list",
    "canvas", "tool bar", "menu item", "check menu item", "radio menu item", "dial", "level bar",
    "progress bar", "drawing area", "column header", "table column header", "table row header",
}
# The line of a combo or spin box speaks by the box's name; a separator says nothing.
# A menu tells its items also while it is closed.
MENUS = {"popup menu", "menu item", "menu"}
OWNERS_OF_PARTS = {"combo box", "spin button"}


class Item:
    """Something that is spoken of: a window, a control, a menu item. What has gone says nothing."""

    def __init__(self, accessible):
        self._accessible = accessible

    def _ask(self, question, otherwise):
        try:
            return question(self._accessible)
        except GLib.Error:
            return otherwise

    @property
    def path(self):
        return self._accessible.path

    def process(self):
        return self._ask(Atspi.Accessible.get_process_id, 0)

    def keep_no_answers(self):
        self._accessible.set_cache_mask(Atspi.Cache.NONE)

    @property
    def name(self):
        return self._ask(Atspi.Accessible.get_name, "") or ""

    @property
    def role(self):
        return self._ask(Atspi.Accessible.get_role_name, "") or ""

    @property
    def description(self):
        return self._ask(Atspi.Accessible.get_description, "") or ""

    def has(self, state):
        states = self._ask(Atspi.Accessible.get_state_set, None)
        return states is not None and states.contains(getattr(Atspi.StateType, state))

    def is_labelled(self):
        """Whether a label says what it is; the name of a combo box is what is chosen in it."""
        relations = self._ask(Atspi.Accessible.get_relation_set, [])
        return any(it.get_relation_type() == Atspi.RelationType.LABELLED_BY for it in relations)

    def children(self):
        count = self._ask(Atspi.Accessible.get_child_count, 0)
        found = [self._ask(lambda it, i=i: it.get_child_at_index(i), None) for i in range(count)]
        return [Item(child) for child in found if child is not None]

    def walk(self, above=()):
        """This and all that is below it that is shown, each with the items above it."""
        yield self, above
        for child in self.children():
            if child.has("VISIBLE") or child.role in MENUS:
                yield from child.walk((*above, self))

    def find(self, role, name, above=None):
        """The first of that role and name, below one of the name `above` when that is given."""
        for item, over in self.walk():
            if item.role == role and item.name == name and (
                    above is None or any(it.name == above for it in over)):
                return item
        return None

    def press(self, action=0):
        # What opens a dialog may answer only when that has gone.
        self._ask(lambda it: Atspi.Action.do_action(it, action), None)

    def text(self):
        return self._ask(lambda it: Atspi.Text.get_text(it, 0, -1), "")

    def set_text(self, text):
        self._ask(lambda it: Atspi.EditableText.set_text_contents(it, text), None)

    def value(self):
        return self._ask(Atspi.Value.get_current_value, None)

    def area(self, of=Atspi.CoordType.WINDOW):
        """x, y, width and height within the window."""
        box = self._ask(lambda it: Atspi.Component.get_extents(it, of), None)
        return (box.x, box.y, box.width, box.height) if box else (0, 0, 0, 0)

    def screen_area(self):
        return self.area(Atspi.CoordType.SCREEN)


def programs(name="Sonavel"):
    """Those of that name that speak now."""
    found = [it for it in Item(Atspi.get_desktop(0)).children() if it.name == name]
    for item in found:
        # What is asked for must be what is there now.
        item.keep_no_answers()
    return found


def program():
    """The running program, once it speaks."""
    return wait_for("the program on the accessibility bus", programs)[0]


def windows_of(application):
    return [it for it in application.children() if it.has("SHOWING") or it.has("VISIBLE")]


def waveform(editor, title):
    """That of the sound of this title, in the program's main window."""
    frame = next(it for it in windows_of(program()) if editor.title() == it.name)
    return wait_for("the waveform", lambda: frame.find("canvas", title))


def select_by_drag(wave, start, end):
    """Drags between two places of the screen, on a waveform without a selection."""
    repeat_until("a drag that selects", lambda: drag(start, end), lambda: "selected" in wave.description)


def complaints(window):
    """What a person with a screen reader would miss in the names of a window's controls."""
    found = []
    for item, above in window.walk():
        if above and above[-1].role in OWNERS_OF_PARTS:
            continue
        name = item.name
        wrong = ("no label" if item.role == "combo box" and not item.is_labelled() else
                 "no name" if not name.strip() and item.role in CONTROLS else
                 "a tab" if "\t" in name else "an ampersand" if "&" in name else "")
        if wrong:
            path = " > ".join(f"{it.role} {it.name!r}" for it in (*above[1:], item))
            found.append(f"{wrong}: {path}")
    return found
