#!/usr/bin/env python3
"""Sees a program's main window on the accessibility bus and closes it: close_window.py PROGRAM TITLE ENTRY...

The ENTRYs are the names of menu entries that are pressed one after the other; without any the close box is used. Ends with
status 1 when the window does not come within half a minute, or is not gone within half a minute more.
"""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402
from Xlib import display, protocol  # noqa: E402

SECONDS = 30
PAUSE = 0.2


def found(search):
    """What the search returns as soon as it is true; None when the time is over."""
    end = time.monotonic() + SECONDS
    while time.monotonic() < end:
        try:
            result = search()
        except GLib.Error:  # what was on the screen a moment ago has gone
            result = None
        if result:
            return result
        time.sleep(PAUSE)
    return None


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def window(program, title):
    for application in children(Atspi.get_desktop(0)):
        if application.get_name() == program:
            for frame in children(application):
                if frame.get_name() == title and frame.get_state_set().contains(Atspi.StateType.SHOWING):
                    return frame
    return None


def below(node, name):
    """The menu or entry of this name, however deep."""
    for child in children(node):
        if child.get_name() == name and child.get_role() in (Atspi.Role.MENU, Atspi.Role.MENU_ITEM):
            return child
        deeper = below(child, name)
        if deeper:
            return deeper
    return None


def use_close_box(title):
    """What a window manager does when the close box of a window is clicked."""
    screen = display.Display()
    name, protocols, delete = (
        screen.intern_atom(atom) for atom in ("_NET_WM_NAME", "WM_PROTOCOLS", "WM_DELETE_WINDOW"))
    for one in screen.screen().root.query_tree().children:
        shown = one.get_full_property(name, 0)
        if shown and shown.value.decode() == title:
            one.send_event(protocol.event.ClientMessage(window=one, client_type=protocols, data=(32, [delete, 0, 0, 0, 0])))
    screen.sync()


def fail(text):
    print(text, file=sys.stderr)
    sys.exit(1)


def main():
    program, title, *entries = sys.argv[1:]
    frame = found(lambda: window(program, title))
    if not frame:
        fail(f'no window "{title}" of {program} on the accessibility bus')
    print(f'seen: "{title}", {frame.get_role_name()}, {len(children(frame))} parts')
    if not entries:
        use_close_box(title)
    for name in entries:
        entry = found(lambda name=name: below(frame, name))
        if not entry:
            fail(f'no menu entry "{name}"')
        try:
            entry.do_action(0)
        except GLib.Error:
            pass  # the program may be gone before it has answered
    if not found(lambda: window(program, title) is None):
        fail(f'the window "{title}" did not close')


main()
