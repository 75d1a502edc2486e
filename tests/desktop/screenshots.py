#!/usr/bin/python3
# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""Goes through the program's main flow and saves a picture of every window, at the scale that QT_SCALE_FACTOR sets."""

import argparse
import tempfile
import time
from pathlib import Path

from driver import SCALE, press
from household import Application, MainFlow
from screen import Screen, on_a_bus_of_its_own


# The household of the help's examples.
AMOUNTS = {
    "Income": [("Salary/Wages", "82500"), ("Rental Income", "7800"), ("Interest Received", "640")],
    "Expenses": [
        ("General Living Expenses", "21600"),
        ("Power", "2340"),
        ("Rates", "1980"),
        ("Insurance", "1650"),
        ("Hire Purchase", "2160"),
        ("Mortgage Repayments", "14820"),
        ("Vehicle Expenses", "4300"),
    ],
    "Assets": [("Family Home", "415000"), ("Rental Properties", "140000"), ("Vehicles", "18000"), ("Cash", "56400")],
    "Liabilities": [("Familty Home Mortgage", "168500"), ("Rental Home Mortgages", "62000"), ("Loans", "4100")],
}
PROPERTY = [
    ("Purchase Costs", "2400"),
    ("Deposit Value", "53000"),
    ("Mortgage Rate", "7.25"),
    ("Mortgage Term", "25"),
    ("Rental Income", "18720"),
    ("Rates", "1450"),
    ("Insurance", "820"),
    ("Repairs/Maintenance", "1200"),
    ("Letting Fees", "1404"),
    ("Other New Expenses", "300"),
    ("Expected inflation rate", "2.5"),
    ("Property Price Increase", "3"),
]


class Album:
    """Numbered pictures of the screen in a folder."""

    def __init__(self, folder, screen):
        self._folder = Path(folder)
        self._folder.mkdir(parents=True, exist_ok=True)
        self._screen = screen
        self._count = 0
        self._kept = set()

    def keep(self, name):
        if name in self._kept:
            return
        self._kept.add(name)
        self._count += 1
        time.sleep(0.4)  # animations come to their end
        self._screen.save_picture(str(self._folder / f"{self._count:02}-{name}.png"))


def look(flow, album, name):
    album.keep(name)
    if name == "analysis-report":
        press("F1")
        window = flow.program.window("Vantreo Ledgix Help")
        album.keep("help-analysis")
        press("Escape")
        flow.program.wait_without(window.name)


def run(application, album):
    application.create_database()
    flow = MainFlow(application, seen=lambda name: look(flow, album, name))
    flow.start()
    flow.confirm_tax_rates()
    flow.new_profile()
    flow.enter_profile("Hannah and Tom Whitaker", AMOUNTS)
    flow.add_profile()
    flow.add_property("14 Harbour Terrace", "265000", PROPERTY)
    album.keep("profile-purchases")
    flow.main.find("page tab", "Income").click()
    album.keep("main-window-profile")
    flow.show_purchases()
    flow.profile_report()
    window = flow.edit_property("14 Harbour Terrace")
    flow.property_reports(window)
    press("Escape")
    flow.save_profile()
    album.keep("main-window")
    flow.delete_profile("Hannah and Tom Whitaker", "Return")
    flow.about()
    flow.help()
    flow.exit()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", required=True, help="folder of ledgix and ledgix-cli")
    parser.add_argument("--output", required=True, help="folder of the pictures")
    parser.add_argument("--appearance", choices=["light", "dark"], default="light")
    arguments = parser.parse_args()
    size = (round(1366 * SCALE), round(850 * SCALE))
    with tempfile.TemporaryDirectory() as scratch, Screen(*size) as screen:
        application = Application(arguments.programs, scratch, {"LEDGIX_APPEARANCE": arguments.appearance})
        run(application, Album(arguments.output, screen))


if __name__ == "__main__":
    on_a_bus_of_its_own()
    main()
