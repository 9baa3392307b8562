"""What a screen reader is told of the windows of a program.

Waits for a window of the program and writes one line for each widget that is shown: its role, its
name, and "focusable" where it can have the keyboard focus, separated by tabs, in the order in which
a screen reader goes through them.
"""

import sys
import time

import pyatspi


def lines(widget):
    states = widget.getState()
    if states.contains(pyatspi.STATE_SHOWING):
        is_focusable = states.contains(pyatspi.STATE_FOCUSABLE)
        focusable = "focusable" if is_focusable else ""
        yield "\t".join([widget.getRoleName(), widget.name, focusable])
    for child in widget:
        if child is not None:
            yield from lines(child)


def windows_of(program):
    for application in pyatspi.Registry.getDesktop(0):
        if application is not None and application.name == program:
            yield from application


def main():
    program = sys.argv[1]
    while not any(window.getState().contains(pyatspi.STATE_SHOWING)
                  for window in windows_of(program)):
        time.sleep(0.05)
    for window in windows_of(program):
        print("\n".join(lines(window)))


main()
