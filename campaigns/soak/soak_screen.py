"""A screen whose pixels are read from shared memory, and a driver that sends input without waiting.

A caption is recognised by its shape: the set of ink pixels in a small patch. Shapes are nearly the
same in every theme.
"""

import mmap
import os
import struct
import subprocess
import time

from owned_process import start_owned

TIMEOUT_SECONDS = 60
# What has just appeared takes no touch for 0.4 seconds.
QUIET_SECONDS = 0.5
# The size of a patch in pixels.
PATCH_WIDTH, PATCH_HEIGHT = 48, 20
# The threshold between dark and bright, as a fraction of the range from the darkest to the
# brightest pixel. At this value, dark letters on a light background are as bold as light letters on
# a dark one.
BORDER = 0.6
# The maximum number of different pixels, as a fraction of the ink pixels.
TOLERANCE = 0.3
LEAST_INK = 50
INVERSE = bytes([1, 0]) + bytes(254)
BYTES_A_PIXEL = 4
# The caption of the larger text size on the display sheet.
LARGE = "125 %"


class NotSeen(AssertionError):
    """Something did not appear in time."""


def wait_for(look, what, seconds=TIMEOUT_SECONDS):
    """Waits until `look` returns true. Raises NotSeen after `seconds`."""
    deadline = time.monotonic() + seconds
    while not look():
        if time.monotonic() > deadline:
            raise NotSeen(what)
        time.sleep(0.005)


class FrameBuffer:
    """The frame buffer file of an X server."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self._memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self._memory[:100])
        header_size, self._line_size, colours = header[0], header[12], header[19]
        self._start = header_size + colours * 12

    def shape(self, x, y):
        """Returns the ink pixels of the patch around a point, as a number whose bytes are 1 for ink
        and 0 for background."""
        greens = b"".join(self._greens(x - PATCH_WIDTH // 2, line)
                          for line in range(y - PATCH_HEIGHT // 2, y + PATCH_HEIGHT // 2))
        darkest, brightest = min(greens), max(greens)
        border = darkest + BORDER * (brightest - darkest)
        bright = bytes(green > border for green in greens)
        if bright.count(1) > len(bright) // 2:
            bright = bright.translate(INVERSE)
        return int.from_bytes(bright, "big")

    def _greens(self, x, line):
        begin = self._start + line * self._line_size + x * BYTES_A_PIXEL + 1
        return self._memory[begin:begin + PATCH_WIDTH * BYTES_A_PIXEL:BYTES_A_PIXEL]

    def close(self):
        self._memory.close()


class WatchedScreen:
    """An X server with one screen of this size in pixels, without a cursor."""

    def __init__(self, folder, width=1280, height=800):
        self.width, self.height = width, height
        read_end, write_end = os.pipe()
        self._server = start_owned(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24",
             "-nolisten", "tcp", "-noreset", "-nocursor", "-fbdir", folder],
            pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            self.display = ":" + pipe.readline().strip()
        self.environment = dict(os.environ, DISPLAY=self.display)
        self.pixels = FrameBuffer(os.path.join(folder, "Xvfb_screen0"))

    def run(self, *command):
        return subprocess.run(command, env=self.environment, check=True, capture_output=True,
                              text=True)

    def save_picture(self, path):
        self.run("import", "-window", "root", path)

    def close(self):
        self.pixels.close()
        self._server.terminate()
        self._server.wait()


class InputDriver:
    """Sends touches and keys, and does not wait for their effect."""

    def __init__(self, screen):
        self._xdotool = start_owned(["xdotool", "-"], stdin=subprocess.PIPE, text=True,
                                    env=screen.environment)

    def touch(self, *places):
        """Touches these places in order, after the quiet time of what has just appeared."""
        self._do(f"sleep {QUIET_SECONDS}",
                 *(f"mousemove {x} {y} mousedown 1 mouseup 1" for x, y in places))

    def scan(self, code):
        """Replaces the text of the field quickly and presses Return, as a scanner does."""
        self._do(f"key --delay 1 ctrl+a type --delay 1 --args 1 {code} key --delay 1 Return")

    def type(self, text):
        """Replaces the text of the field."""
        self._do(f"key --delay 1 ctrl+a type --delay 1 --args 1 {text}")

    def _do(self, *commands):
        self._xdotool.stdin.write("".join(command + "\n" for command in commands))
        self._xdotool.stdin.flush()

    def close(self):
        self._xdotool.communicate()


class CaptionReader:
    """Recognises captions that a survey found. `places` has the points to touch and `shapes` the
    shapes of the captions, both by name."""

    def __init__(self, screen, places, shapes):
        self._pixels = screen.pixels
        self.places = places
        self._shapes = shapes

    def sees(self, name):
        shape, (x, y) = self._shapes[name]
        ink = shape.bit_count()
        if ink < LEAST_INK:
            raise ValueError(f"{name} has no caption to be seen by")
        return (shape ^ self._pixels.shape(x, y)).bit_count() <= TOLERANCE * ink

    def expect(self, name):
        wait_for(lambda: self.sees(name), f"{name} to be on the screen")

    def expect_gone(self, name):
        wait_for(lambda: not self.sees(name), f"{name} to be gone")
