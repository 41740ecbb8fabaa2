"""Drops files onto a window as a file manager would: the source's side of the X drag protocol."""

import ctypes
import ctypes.util
import pathlib
import time

from editor_driver import place_of

CLIENT_MESSAGE, SELECTION_REQUEST, SELECTION_NOTIFY = 33, 30, 31
PROTOCOL_VERSION = 5
# Fields of an event, counted in longs.
WINDOW, MESSAGE_TYPE, FORMAT, DATA = 4, 5, 6, 7


class _X:
    """The few calls of libX11 that are needed."""

    def __init__(self):
        self.lib = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
        for name in ("XOpenDisplay", "XDefaultRootWindow", "XCreateSimpleWindow", "XInternAtom"):
            getattr(self.lib, name).restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.lib.XOpenDisplay(None))
        root = ctypes.c_ulong(self.lib.XDefaultRootWindow(self.display))
        self.window = self.lib.XCreateSimpleWindow(self.display, root, 0, 0, 1, 1, 0, 0, 0)

    def atom(self, name):
        return self.lib.XInternAtom(self.display, name.encode(), 0)

    def send(self, window, event):
        self.lib.XSendEvent(self.display, ctypes.c_ulong(window), 0, ctypes.c_long(0), event)
        self.lib.XFlush(self.display)

    def next_event(self, end):
        event = (ctypes.c_long * 24)()
        while not self.lib.XPending(self.display):
            assert time.monotonic() < end, "the window does not answer the drag"
            time.sleep(0.01)
        self.lib.XNextEvent(self.display, event)
        return event

    def message(self, target, name, *data):
        event = (ctypes.c_long * 24)()
        event[0], event[WINDOW], event[MESSAGE_TYPE] = CLIENT_MESSAGE, target, self.atom(name)
        event[FORMAT] = 32
        for index, value in enumerate(data):
            event[DATA + index] = value
        self.send(target, event)


def _answer_request(x, request, content):
    """Hands the list of files to a window that asked for the dragged data."""
    requestor, selection, target, property_, when = request[5:10]
    x.lib.XChangeProperty(x.display, ctypes.c_ulong(requestor), ctypes.c_ulong(property_),
                          ctypes.c_ulong(target), 8, 0, content, len(content))
    event = (ctypes.c_long * 24)()
    event[0] = SELECTION_NOTIFY
    event[4:9] = [requestor, selection, target, property_, when]
    x.send(requestor, event)


def drop_files(window, x_place, y_place, paths, seconds=10):
    """Drops the files at a place of the screen that lies in the window; whether they were taken."""
    x, window = _X(), int(window)
    content = b"".join(pathlib.Path(path).absolute().as_uri().encode() + b"\r\n" for path in paths)
    x.lib.XSetSelectionOwner(x.display, ctypes.c_ulong(x.atom("XdndSelection")),
                             ctypes.c_ulong(x.window), ctypes.c_ulong(0))
    x.message(window, "XdndEnter", x.window, PROTOCOL_VERSION << 24, x.atom("text/uri-list"))
    x.message(window, "XdndPosition", x.window, 0, x_place << 16 | y_place, 0,
              x.atom("XdndActionCopy"))
    end = time.monotonic() + seconds
    dropped = False
    while True:
        event = x.next_event(end)
        kind = event[0] & 0xFFFFFFFF
        if kind == SELECTION_REQUEST:
            _answer_request(x, event, content)
        elif kind == CLIENT_MESSAGE and event[MESSAGE_TYPE] == x.atom("XdndStatus") and not dropped:
            if not event[DATA + 1] & 1:
                x.message(window, "XdndLeave", x.window)
                return False
            x.message(window, "XdndDrop", x.window, 0, 0)
            dropped = True
        elif kind == CLIENT_MESSAGE and event[MESSAGE_TYPE] == x.atom("XdndFinished"):
            return True


def drop(editor, *paths):
    """Drops the files on the editor's frame."""
    x, y, width, height = place_of(editor.window)
    assert drop_files(editor.window, x + width // 3, y + height // 2, paths), "the drop was refused"
