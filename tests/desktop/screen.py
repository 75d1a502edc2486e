# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""A screen of its own with a window manager, for programs that are to be driven as a user would."""

import os
import subprocess
import sys
import tempfile
import time


def on_a_bus_of_its_own():
    """Runs this script once more with message buses that no other test shares, and ends with its status. To be called
    first; the second time it does nothing."""
    if "LEDGIX_OWN_BUS" in os.environ:
        return
    with tempfile.TemporaryDirectory() as runtime:
        environment = {**os.environ, "LEDGIX_OWN_BUS": "1", "XDG_RUNTIME_DIR": runtime}
        command = ["dbus-run-session", "--", sys.executable, *sys.argv]
        status = subprocess.run(command, env=environment).returncode
    sys.exit(status)


class Screen:
    """An X server with a window manager, until it is left: with Screen(1366, 900) as screen."""

    def __init__(self, width, height):
        self._size = f"{width}x{height}x24"
        self._programs = []

    def __enter__(self):
        reading, writing = os.pipe()
        server = ["Xvfb", "-displayfd", str(writing), "-screen", "0", self._size, "-nolisten", "tcp"]
        self._start(server, pass_fds=(writing,))
        os.close(writing)
        with os.fdopen(reading) as pipe:
            os.environ["DISPLAY"] = ":" + pipe.readline().strip()
        self._start(["openbox"])
        self._wait_for_window_manager()
        return self

    def __exit__(self, *error):
        for program in reversed(self._programs):
            program.terminate()
            program.wait()

    def _start(self, command, **options):
        quiet = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        self._programs.append(subprocess.Popen(command, **quiet, **options))

    @staticmethod
    def _wait_for_window_manager():
        for _ in range(100):
            answer = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], capture_output=True, text=True)
            if "window id" in answer.stdout:
                return
            time.sleep(0.1)
        raise RuntimeError("the window manager did not start")

    @staticmethod
    def save_picture(path):
        """The whole screen as a PNG file."""
        subprocess.run(["import", "-window", "root", path], check=True)
