#!/usr/bin/python3
# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""From the start of the desktop to a main window that can be used, side by side with another finance program.

A window can be used when its picture is complete: it is painted, and does not change any more. Both programs start in
turns on one screen; ours with 1,000 profiles and without the splash, the other one with nothing, and without its
greeting."""

import argparse
import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "desktop"))

from screen import Screen, on_a_bus_of_its_own  # noqa: E402

PROFILES = 1000
PATIENCE = 20  # seconds
SETTLED = 0.5  # seconds without a change
COLOURS_OF_A_PAINTED_WINDOW = 8


class Windows:
    """What the window manager tells of windows."""

    def __init__(self):
        from Xlib import X, display

        self._x = X
        self._display = display.Display()
        self._root = self._display.screen().root
        self._atom = self._display.intern_atom

    def painted_window(self, title):
        """Waits for the window whose title ends so; the time at which its picture was complete."""
        end = time.monotonic() + PATIENCE
        picture, changed = None, None
        while time.monotonic() < end:
            window = self._find(title)
            now = self._picture(window) if window is not None else None
            if now != picture:
                picture, changed = now, time.monotonic()
            elif picture is not None and self._is_painted(picture) and time.monotonic() - changed > SETTLED:
                return changed
            time.sleep(0.002)
        raise RuntimeError(f"no window '{title}' that is painted")

    def _find(self, title):
        listed = self._root.get_full_property(self._atom("_NET_CLIENT_LIST"), self._x.AnyPropertyType)
        for number in listed.value if listed else []:
            window = self._display.create_resource_object("window", number)
            try:
                name = window.get_full_property(self._atom("_NET_WM_NAME"), self._x.AnyPropertyType)
                if name and name.value.decode().endswith(title):
                    return window
            except Exception:  # a window that has just closed
                continue
        return None

    def _picture(self, window):
        """The upper left part, where both programs have their menu and the beginning of their content."""
        try:
            box = window.get_geometry()
            return window.get_image(0, 0, min(box.width, 400), min(box.height, 300), self._x.ZPixmap, 0xFFFFFFFF).data
        except Exception:  # not shown yet
            return None

    @staticmethod
    def _is_painted(picture):
        return len({picture[i : i + 4] for i in range(0, len(picture), 4)}) >= COLOURS_OF_A_PAINTED_WINDOW


def memory_of(process):
    """Resident, proportional and private memory in MB."""
    sizes = {}
    for line in Path(f"/proc/{process.pid}/smaps_rollup").read_text().splitlines()[1:]:
        name, size = line.split(":")
        sizes[name] = int(size.split()[0]) / 1024
    return sizes["Rss"], sizes["Pss"], sizes["Private_Clean"] + sizes["Private_Dirty"]


def start_once(windows, command, title, environment):
    """Milliseconds to the complete window, and the memory a second later."""
    quiet = subprocess.DEVNULL
    began = time.monotonic()
    process = subprocess.Popen(command, env={**os.environ, **environment}, stdout=quiet, stderr=quiet)
    try:
        took = (windows.painted_window(title) - began) * 1000
        time.sleep(1)
        return took, memory_of(process)
    finally:
        process.kill()
        process.wait()
        time.sleep(0.2)


def prepare_household(folder, programs):
    """An application folder with a database of many profiles."""
    for name in ("profile.rdn", "profile10.rdn", "reportlogo.bmp", "ledgix.hlp"):
        shutil.copy(programs / name, folder)
    document = {
        "profiles": [
            {"ProfileNumber": i, "profile_name": f"Household {i}", "IncSalary": 50000 + i, "properties": []}
            for i in range(1, PROFILES + 1)
        ]
    }
    source = folder / "households.json"
    source.write_text(json.dumps(document))
    database = folder / "property.mdb"
    cli = programs / "ledgix-cli"
    subprocess.run([cli, "create", database], check=True, stdout=subprocess.DEVNULL)
    for arguments in (["upgrade"], ["import", source]):
        subprocess.run([cli, "--database", database, *arguments], check=True, stdout=subprocess.DEVNULL)


def silence_greeting(config):
    preferences = config / "homebank" / "preferences"
    preferences.parent.mkdir(parents=True)
    preferences.write_text("[General]\nShowWelcome=false\n")


def run(rounds, programs):
    with tempfile.TemporaryDirectory() as scratch, Screen(1366, 900):
        folder = Path(scratch, "ledgix")
        folder.mkdir()
        prepare_household(folder, programs)
        silence_greeting(Path(scratch, "config"))
        home = {"HOME": scratch, "XDG_CONFIG_HOME": str(Path(scratch, "config")), "NO_AT_BRIDGE": "1"}
        ours = {**home, "LEDGIX_FOLDER": str(folder), "LEDGIX_SETTINGS": str(folder / "settings.reg")}
        windows = Windows()
        contestants = {
            "ledgix": ([str(programs / "ledgix"), "nosplash"], "Vantreo Ledgix", {**ours, "QT_QPA_PLATFORM": "xcb"}),
            "homebank": (["homebank"], "HomeBank", home),
        }
        results = {name: [] for name in contestants}
        for i in range(rounds + 1):
            for name, contestant in contestants.items():
                measured = start_once(windows, *contestant)
                if i > 0:  # the first round warms the disk's cache
                    results[name].append(measured)
        return results


def report(results):
    print(f"{'':10} {'median':>10} {'fastest':>10} {'resident':>10} {'shared out':>11} {'private':>10}")
    medians = {}
    for name, measured in results.items():
        times = [took for took, _ in measured]
        memory = [statistics.median(column) for column in zip(*(sizes for _, sizes in measured))]
        medians[name] = (statistics.median(times), memory)
        print(
            f"{name:10} {statistics.median(times):7.0f} ms {min(times):7.0f} ms"
            f" {memory[0]:7.1f} MB {memory[1]:8.1f} MB {memory[2]:7.1f} MB"
        )
    (ours, our_memory), (peer, peer_memory) = medians["ledgix"], medians["homebank"]
    ratios = [mine / theirs for mine, theirs in zip(our_memory, peer_memory)]
    print(f"ratio of times {ours / peer:.2f}; of memory {ratios[0]:.2f} {ratios[1]:.2f} {ratios[2]:.2f}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", type=Path, required=True, help="folder of ledgix and ledgix-cli")
    parser.add_argument("--rounds", type=int, default=15)
    arguments = parser.parse_args()
    report(run(arguments.rounds, arguments.programs.resolve()))


if __name__ == "__main__":
    on_a_bus_of_its_own()
    main()
