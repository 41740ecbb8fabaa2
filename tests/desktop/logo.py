"""The logo at the start: above the main window, by itself gone after a while, and a click takes it away before."""

from editor_driver import Editor, count_pixels, pixels_of_screen, wait_for, xdotool

TOP_ROW = (0x1B, 0x3A, 0x5C)  # the logo's, from one end to the other
WIDTH = 460
SCREEN_WIDTH = 1600


def logo_row():
    """How many pixels of the screen have the colour of the logo's top row."""
    return count_pixels(pixels_of_screen("root", None), TOP_ROW)


def place_of_logo():
    pixels = pixels_of_screen("root", None)
    first = next(at for at in range(0, len(pixels), 3) if pixels[at:at + 3] == bytes(TOP_ROW)) // 3
    return first % SCREEN_WIDTH + WIDTH // 2, first // SCREEN_WIDTH + 100


def click(place):
    """By way of a corner, where a compositor's own pointer and the display's meet."""
    xdotool("mousemove", SCREEN_WIDTH - 1, 0)
    xdotool("mousemove", 0, 0)
    xdotool("mousemove", *place, "click", 1)


class StartingEditor(Editor):
    def _wait_until_shown(self):
        wait_for("the logo to be seen whole", lambda: logo_row() >= WIDTH)


def main():
    with StartingEditor():
        wait_for("the logo to go by itself", lambda: logo_row() == 0, seconds=8)
    with StartingEditor():
        click(place_of_logo())
        # Its last picture comes after two of the three seconds that it stays.
        wait_for("the click to take the logo away", lambda: logo_row() == 0, seconds=1.5)


main()
