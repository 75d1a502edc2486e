# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""Drives a running program as a user would: finds controls through the accessibility bus, and presses real keys and
mouse buttons of the screen."""

import os
import subprocess
import time

SCALE = float(os.environ.get("QT_SCALE_FACTOR", "1"))  # the bus tells places in pixels of scale 1
PATIENCE = float(os.environ.get("LEDGIX_PATIENCE", "20"))  # seconds until something counts as missing


class NotFound(AssertionError):
    pass


def wait_for(condition, what):
    """The first true result of a function; NotFound when there is none in time."""
    end = time.monotonic() + PATIENCE
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise NotFound(f"waited in vain for {what}")
        time.sleep(0.05)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], check=True, capture_output=True, text=True).stdout


def press(*keys):
    """Keys by their X names: "Return", "alt+s"."""
    for key in keys:
        xdotool("key", "--clearmodifiers", key)
        time.sleep(0.05)


def type_text(text):
    xdotool("type", "--clearmodifiers", "--delay", 15, text)


class Control:
    """An object of the program on the accessibility bus."""

    def __init__(self, accessible):
        self._accessible = accessible

    @property
    def name(self):
        return self._accessible.name

    @property
    def role(self):
        return self._accessible.getRoleName()

    @property
    def text(self):
        content = self._accessible.queryText()
        return content.getText(0, content.characterCount)

    @property
    def showing(self):
        import pyatspi

        return self._accessible.getState().contains(pyatspi.STATE_SHOWING)

    def children(self):
        for child in self._accessible:
            if child is not None:
                yield Control(child)

    def place(self):
        """Left, top, width and height on a screen of scale 1."""
        import pyatspi

        box = self._accessible.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
        return box.x, box.y, box.width, box.height

    def point_at(self):
        left, top, width, height = self.place()
        xdotool("mousemove", round((left + width / 2) * SCALE), round((top + height / 2) * SCALE))

    def click(self, times=1):
        self.point_at()
        xdotool("click", "--repeat", times, "--delay", 80, 1)
        time.sleep(0.1)

    def double_click(self):
        self.click(2)

    def find_all(self, role, name=None):
        """Visible controls below this one, whatever their depth."""
        found = []
        for child in self.children():
            try:
                if child.role == role and (name is None or child.name == name) and child.showing:
                    found.append(child)
                found += child.find_all(role, name)
            except Exception:  # gone while it was looked at
                continue
        return found

    def find(self, role, name=None):
        found = wait_for(lambda: self.find_all(role, name), f"{role} '{name}'")
        return found[0]

    def has(self, role, name=None):
        return bool(self.find_all(role, name))


class Program(Control):
    """A running program, found on the bus by its process. What it writes goes to the file `log`."""

    def __init__(self, command, environment, log):
        self._log = open(log, "ab")
        settings = {**os.environ, "QT_QPA_PLATFORM": "xcb", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", **environment}
        self._process = subprocess.Popen(command, env=settings, stdout=self._log, stderr=self._log)
        super().__init__(None)

    def wait_for_first_window(self):
        """The number of the first window that the program shows; it may not be on the bus yet."""
        return wait_for(self._window_numbers, "the first window")[0]

    def _window_numbers(self):
        search = ["xdotool", "search", "--onlyvisible", "--pid", str(self._process.pid)]
        return subprocess.run(search, capture_output=True, text=True).stdout.split()

    def connect(self):
        """Finds the program on the bus; needed before anything is looked for in its windows."""
        self._accessible = wait_for(self._on_the_bus, "the program on the accessibility bus")

    @property
    def process_id(self):
        return self._process.pid

    def _on_the_bus(self):
        import pyatspi
        from gi.repository import GLib

        if self._process.poll() is not None:
            raise NotFound(f"the program has ended with {self._process.returncode}")
        # What the library has heard of programs that came and went is read only here.
        while GLib.MainContext.default().iteration(False):
            pass
        desktop = pyatspi.Registry.getDesktop(0)
        desktop.clear_cache()
        for application in desktop:
            try:
                if application and application.get_process_id() == self._process.pid:
                    return application
            except Exception:  # another program that has just ended
                continue
        return None

    def window(self, title):
        """A window that is shown, by its title."""
        return wait_for(lambda: next((w for w in self._windows() if w.name == title), None), f"the window '{title}'")

    def has_window(self, title):
        return any(window.name == title for window in self._windows())

    def _windows(self):
        try:
            return [child for child in self.children() if child.showing]
        except Exception:  # a window that has just closed
            return []

    def message(self, part):
        """The text of a message box that holds `part`."""
        return wait_for(lambda: self._text_with(part), f"a message with '{part}'")

    def has_message(self, part):
        return self._text_with(part) is not None

    def _text_with(self, part):
        for window in self._windows():
            for label in window.find_all("label"):
                if part in label.name:
                    return label.name
        return None

    def wait_without(self, title):
        wait_for(lambda: not self.has_window(title), f"the end of the window '{title}'")

    def wait_for_end(self):
        """The exit status."""
        try:
            return self._process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise NotFound("waited in vain for the program's end") from None
        finally:
            self._log.close()

    def kill(self):
        if self._process.poll() is None:
            self._process.kill()
            self._process.wait()
        self._log.close()
