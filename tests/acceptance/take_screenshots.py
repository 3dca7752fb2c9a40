"""Takes pictures of every screen, using the demo deliveries.

Usage: own-session python3 take_screenshots.py PROGRAMS PICTURES [--all]

PROGRAMS is the folder with the programs. PICTURES is the folder in which the pictures are saved. By
default, these are the pictures for the documentation; with --all, every screen in every look.
"""

import os
import socket
import sys
import tempfile
import threading
import time

from tablet import OrderService, Program, Screen

MUG = "20138A, 5012746100000, WHITE ENAMEL MUG 350ML, picked 0, ordered 1, difference -1"
SIZES = ((1024, 768), (1280, 800), (1920, 1200), (800, 1280))
THEMES = ("light", "dark")


class Look:
    """The size, theme and text size of a screen."""

    def __init__(self, width, height, theme="light", text_size=100):
        self.width, self.height = width, height
        self.theme, self.text_size = theme, text_size

    def __str__(self):
        theme = "" if self.theme == "light" else f"-{self.theme}"
        text = "" if self.text_size == 100 else f"-{self.text_size}"
        return f"{self.width}x{self.height}{theme}{text}"

    def remember_in(self, home):
        """Stores the look in the display settings of this home folder."""
        with open(os.path.join(home, "display.ini"), "w", encoding="ascii") as file:
            file.write(f"[General]\ntheme={self.theme}\ntextSize={self.text_size}\n")


EVERY_LOOK = [Look(width, height, theme) for width, height in SIZES for theme in THEMES] + [
    Look(1024, 768, theme, 200) for theme in THEMES] + [Look(800, 1280, "light", 200)]
# The looks in the documentation, and the names of their pictures; None for all pictures.
KEPT = [(Look(1280, 800), None),
        (Look(800, 1280), None),
        (Look(1280, 800, "dark"), ("picking", "keypad", "trail")),
        (Look(1024, 768, "light", 200), ("picking", "keypad"))]


class HalfAnAnswer:
    """A service that announces `announced` bytes, but stops after it has sent `sent` bytes."""

    def __init__(self, sent, announced):
        self._socket = socket.create_server(("127.0.0.1", 0))
        self.host = f"127.0.0.1:{self._socket.getsockname()[1]}"
        self._answer = (f"HTTP/1.1 200 OK\r\nContent-Length: {announced}\r\n\r\n".encode()
                        + b" " * sent)
        self._connections = []
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self):
        while True:
            try:
                connection, _ = self._socket.accept()
            except OSError:
                return  # The socket is closed.
            connection.recv(65536)
            connection.sendall(self._answer)
            self._connections.append(connection)

    def close(self):
        self._socket.close()
        for connection in self._connections:
            connection.close()


class Visit:
    """The program in one look, with a service. Takes the pictures in `names`, or all if it is
    None."""

    def __init__(self, service, program, pictures, look, names=None, height=None):
        self._pictures = pictures
        self._look = look
        self._names = names
        self._home = tempfile.TemporaryDirectory()
        look.remember_in(self._home.name)
        self._screen = Screen(look.width, height or look.height)
        self._service = service
        self._tablet = Program(self._screen, program, *self._options())

    def _options(self):
        return "--service-host", self._service.host, "--home", self._home.name

    def close(self):
        self._tablet.close()
        self._service.close()
        self._screen.close()
        self._home.cleanup()

    def picture(self, name):
        if self._names is None or name in self._names:
            path = os.path.join(self._pictures, f"{name}-{self._look}.png")
            self._screen.save_picture(path)
            # A few colours are enough for flat surfaces, and keep the files small.
            self._screen.run("mogrify", "+dither", "-colors", "96", "-strip", path)


class Tour(Visit):
    """A tour through all screens with one delivery."""

    def __init__(self, programs, *look):
        super().__init__(OrderService(os.path.join(programs, "cartonpick-orders")),
                         os.path.join(programs, "cartonpick"), *look)

    def take(self):
        self._start()
        self._find_delivery()
        self._pick()
        self._summary()
        self._send()
        self._history()

    def _start(self):
        tablet = self._tablet
        tablet.find("push button", "Picking")
        self.picture("start")
        tablet.touch("push button", "Display")
        tablet.wait_until_still("push button", "Done")
        self.picture("display")
        tablet.touch("push button", "Done")
        tablet.expect_gone("push button", "Done")

    def _find_delivery(self):
        tablet = self._tablet
        tablet.touch("push button", "Picking")
        tablet.expect_focus_in("Delivery number")
        tablet.touch("push button", "Search")
        tablet.find("dialog", "Please fill in data first")
        self.picture("alert")
        tablet.answer_alert("Please fill in data first", "OK")
        tablet.expect_focus_in("Delivery number")
        tablet.type("4711")
        tablet.touch("push button", "Search")
        tablet.find("label", "Customer: Rosie's Kitchen")
        tablet.expect_gone("dialog", "Looking up the delivery …")
        self.picture("delivery")
        self._take_trail("Open a box first", "trail-empty")
        tablet.touch("push button", "Start Picking")
        tablet.expect_focus_in("Box")
        self.picture("boxes")

    def _take_trail(self, pill, name):
        tablet = self._tablet
        tablet.touch("push button", pill)
        tablet.find("heading", "Last scans")
        self.picture(name)
        tablet.press("Escape")
        tablet.expect_gone("heading", "Last scans")

    def _enter(self, quantity):
        self._tablet.expect_focus_in("Quantity to add")
        self._tablet.type(quantity)

    def _confirm(self):
        self._tablet.touch("push button", "OK")
        self._tablet.expect_gone("text", "Quantity to add")
        self._tablet.expect_focus_in("Item or barcode")

    def _scan(self, code, quantity):
        self._tablet.type(code)
        self._tablet.press("Return")
        self._enter(quantity)
        self._confirm()

    def _pick(self):
        tablet = self._tablet
        tablet.type("C002")
        tablet.press("Return")
        tablet.find("list item", "Box C002, picked 0, ordered 30, unopened")
        tablet.expect_focus_in("Item or barcode")
        for name in tablet.names("list item", ", picked 0, ordered"):
            code = name.split(", ")[0]
            ordered = name.split("ordered ")[1].split(",")[0]
            if not name.startswith("Box"):
                self._scan(code, ordered)
        tablet.touch("list item", "Box C001, picked 0, ordered 22, unopened")
        tablet.find("list item", MUG)
        self._scan("20176R", "4")
        tablet.type("20138A")
        tablet.press("Return")
        self._enter("1")
        tablet.expect_value("Total", "1")
        self.picture("keypad")
        self._confirm()
        self.picture("picking")
        tablet.type("5012746999999")
        tablet.press("Return")
        tablet.find("dialog", "Unknown Item")
        self.picture("unknown")
        tablet.answer_alert("Unknown Item", "OK")
        self._take_trail("Ready to scan", "trail")
        tablet.touch("radio button", "Different")
        tablet.expect_gone("list item", MUG.replace("picked 0", "picked 1").replace("-1", "0"))
        self.picture("filter")
        tablet.touch("radio button", "All")

    def _summary(self):
        tablet = self._tablet
        tablet.touch("push button", "Options")
        tablet.find("list item", "View Summary")
        self.picture("options")
        tablet.touch("list item", "View Summary")
        tablet.find("label", "Summary for Delivery: 4711")
        tablet.wait_until_still("push button", "Close")
        self.picture("summary")
        tablet.touch("push button", "Close")
        tablet.expect_gone("label", "Summary for Delivery: 4711")
        tablet.wait_until_still("push button", "Options")

    def _send(self):
        tablet = self._tablet
        tablet.touch("push button", "Options")
        tablet.touch("list item", "Complete and Send")
        tablet.find("dialog", "Picking Completed?")
        self.picture("question")
        tablet.answer_alert("Picking Completed?", "YES")
        tablet.answer_alert("Picking was sent", "OK")

    def _history(self):
        tablet = self._tablet
        self._scroll_to_the_top()
        tablet.touch("push button", "Stop Picking")
        tablet.touch("push button", "Close")
        tablet.answer_alert("Close Picking", "OK")
        tablet.touch("push button", "History")
        tablet.find("heading", "History")
        self.picture("history")
        tablet.touch("list item", tablet.names("list item", "Delivery 4711")[0])
        tablet.find("label", "Summary for Delivery: 4711")
        tablet.wait_until_still("push button", "Close")
        self.picture("history-summary")

    def _scroll_to_the_top(self):
        """Scrolls the upper pane, which may be scrolled down at large text sizes, to its top."""
        self._screen.run("xdotool", "mousemove", "100", "300", "click", "--repeat", "30", "4")


class Download(Visit):
    """A catalogue download, half of which has been received."""

    def __init__(self, programs, *look):
        super().__init__(HalfAnAnswer(sent=12_345_678, announced=25_000_000),
                         os.path.join(programs, "cartonpick"), *look)

    def take(self):
        tablet = self._tablet
        tablet.touch("push button", "Picking")
        tablet.expect_focus_in("Delivery number")
        tablet.touch("push button", "Reload Items")
        tablet.find("label", "12.3 of 25.0 MB")
        time.sleep(1)  # The progress is shown only after a delay.
        self.picture("download")


class Gallery(Visit):
    """All controls in all states, on a screen that is tall enough for them."""

    def __init__(self, programs, pictures, look, names):
        super().__init__(HalfAnAnswer(0, 0),
                         os.path.join(programs, os.pardir, "test-bin", "cartonpick-gallery"),
                         pictures, look, names, height=24 * look.text_size)

    def _options(self):
        return (self._home.name,)

    def take(self):
        self._tablet.find("heading", "Gallery")
        self.picture("gallery")


def main():
    programs, pictures, *options = sys.argv[1:]
    os.makedirs(pictures, exist_ok=True)
    tours = [(look, None) for look in EVERY_LOOK] if options == ["--all"] else KEPT
    for look, names in tours:
        for visit in (Tour, Download, Gallery) if names is None else (Tour,):
            visitor = visit(programs, pictures, look, names)
            try:
                visitor.take()
            finally:
                visitor.close()


main()
