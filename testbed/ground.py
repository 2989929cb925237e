# SPDX-FileCopyrightText: 2026 The Flipside developers
# SPDX-License-Identifier: MIT
"""The ground of a desktop, where compositors look for it."""

import ctypes

XA_PIXMAP = 20
PROP_MODE_REPLACE = 0
RETAIN_PERMANENT = 1


def _between(top, bottom, share):
    """A colour of 24 bits, each part of it between those of the two."""
    return sum(round((top >> shift & 255) + ((bottom >> shift & 255) - (top >> shift & 255)) * share) << shift
               for shift in (0, 8, 16))


def paint(display_name, size, top, bottom):
    """Covers the root window of a 24-bit display with a gradient between two colours (0xrrggbb)."""
    x11 = ctypes.CDLL("libX11.so.6")
    for name in ("XOpenDisplay", "XCreateGC"):
        getattr(x11, name).restype = ctypes.c_void_p
    for name in ("XDefaultRootWindow", "XCreatePixmap", "XInternAtom"):
        getattr(x11, name).restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(display_name.encode()))
    root = ctypes.c_ulong(x11.XDefaultRootWindow(display))
    width, height = size
    # The picture stays when the connection that drew it is closed.
    x11.XSetCloseDownMode(display, RETAIN_PERMANENT)
    pixmap = ctypes.c_ulong(x11.XCreatePixmap(display, root, width, height, 24))
    context = ctypes.c_void_p(x11.XCreateGC(display, pixmap, 0, None))
    for y in range(height):
        x11.XSetForeground(display, context, ctypes.c_ulong(_between(top, bottom, y / height)))
        x11.XFillRectangle(display, pixmap, context, 0, y, width, 1)
    x11.XSetWindowBackgroundPixmap(display, root, pixmap)
    x11.XClearWindow(display, root)
    atom = ctypes.c_ulong(x11.XInternAtom(display, b"_XROOTPMAP_ID", 0))
    x11.XChangeProperty(display, root, atom, ctypes.c_ulong(XA_PIXMAP), 32, PROP_MODE_REPLACE,
                        ctypes.byref(pixmap), 1)
    x11.XCloseDisplay(display)
