#!/usr/bin/python3
# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""Two running programs on one database: both save, and nothing is lost."""

import argparse
import tempfile

from driver import xdotool
from household import Application, MainFlow, expect, expect_soon
from screen import Screen, on_a_bus_of_its_own


class SideBySide:
    """Two programs with their windows beside each other, so that both can be clicked."""

    def __init__(self, application):
        application.run_cli("create", application.database)
        application.run_cli("--database", application.database, "upgrade")
        self.application = application
        self.flows = [MainFlow(application), MainFlow(application)]
        for i, flow in enumerate(self.flows):
            flow.start("started-by-test")
            self._place(flow, i)

    @staticmethod
    def _place(flow, column):
        window = xdotool("search", "--onlyvisible", "--pid", flow.program.process_id).split()[0]
        xdotool("windowsize", "--sync", window, 900, 700)
        xdotool("windowmove", "--sync", window, column * 930 + 10, 60)


def add_profile(flow, name, salary):
    flow.new_profile()
    flow.enter_profile(name, {"Income": [("Salary/Wages", salary)]})
    flow.add_profile()


def run(application):
    pair = SideBySide(application)
    first, second = pair.flows
    add_profile(first, "From the first", "10000")
    add_profile(second, "From the second", "20000")
    for flow, name in ((first, "House one"), (second, "House two")):
        flow.add_property(name, "100000", [])
        flow.save_profile()
    add_profile(second, "Another from the second", "30000")
    second.save_profile()
    first.open_profile("From the first")
    first.show_purchases()
    expect_soon(first.properties, ["House one"], "the first one's purchases")
    stored = [
        (p["profile_name"], p["IncSalary"], [q["PropertyName"] for q in p["properties"]])
        for p in application.content()["profiles"]
    ]
    expect(
        sorted(stored),
        [
            ("Another from the second", 30000, []),
            ("From the first", 10000, ["House one"]),
            ("From the second", 20000, ["House two"]),
        ],
        "what is stored",
    )
    for flow in pair.flows:
        flow.exit()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", required=True, help="folder of ledgix and ledgix-cli")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch, Screen(1900, 900) as screen:
        application = Application(arguments.programs, scratch)
        try:
            run(application)
        except BaseException:
            screen.save_picture("two-programs-failure.png")
            print(application.log.read_text(errors="replace"))
            raise


if __name__ == "__main__":
    on_a_bus_of_its_own()
    main()
