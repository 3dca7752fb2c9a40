"""Closes a window as a window manager would, on a screen without one."""

import ctypes

_CLIENT_MESSAGE = 33
_FORMAT_32 = 32


class _ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("rest", ctypes.c_long * 24)]


def close_window(display_name, window):
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(display_name.encode()))
    protocols, delete = (x11.XInternAtom(display, name, False)
                         for name in (b"WM_PROTOCOLS", b"WM_DELETE_WINDOW"))
    message = _ClientMessage(type=_CLIENT_MESSAGE, window=window, message_type=protocols,
                             format=_FORMAT_32, data=(delete, 0, 0, 0, 0))
    x11.XSendEvent(display, ctypes.c_ulong(window), False, ctypes.c_long(0), ctypes.byref(message))
    x11.XCloseDisplay(display)
