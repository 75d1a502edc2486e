#!/usr/bin/python3
# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""The real program on a real screen, from the first start on a fresh folder to a restart that finds all as it was."""

import argparse
import tempfile

from household import Application, MainFlow, expect, expect_soon
from screen import Screen, on_a_bus_of_its_own

AMOUNTS = {
    "Income": [("Salary/Wages", "82500"), ("Interest Received", "640.5")],
    "Expenses": [("General Living Expenses", "21600"), ("Mortgage Repayments", "14820")],
    "Assets": [("Family Home", "415000"), ("Cash", "36400")],
    "Liabilities": [("Familty Home Mortgage", "168500")],
}
PROPERTY = [
    ("Purchase Costs", "2400"),
    ("Deposit Value", "53000"),
    ("Mortgage Rate", "7.25"),
    ("Mortgage Term", "25"),
    ("Rental Income", "18720"),
]
STORED = {
    "IncSalary": 82500,
    "IncInterestReceived": 640.5,
    "ExpGeneral": 21600,
    "ExpMortgage": 14820,
    "AssFamilyHome": 415000,
    "AssCash": 36400,
    "LibHomeMortgage": 168500,
    "IncRentalIncome": 0,
}
STORED_PROPERTY = {
    "PurchasePrice": 265000.2,
    "PurchaseCosts": 2400,
    "DepositValue": 53000,
    "MortgageRate": 7.25,
    "MortgageTerm": 25,
    "RentIncome": 18720,
    "HouseValue": 145750.11,
    "HouseDepn": 4,
    "ChattelDepn": 15,
}


def expect_stored(record, expected):
    expect({name: record[name] for name in expected}, expected, "what is stored")


def run(application, decimal):
    application.create_database()
    flow = MainFlow(application, decimal)
    flow.start()
    flow.confirm_tax_rates()
    expect(flow.rows(), [], "the list at first")

    flow.new_profile()
    flow.enter_profile("Hannah O'Brien & Tom", AMOUNTS)
    flow.add_profile()
    expect_soon(flow.rows, ["Hannah O'Brien & Tom"], "the list with the new profile")
    expect_stored(application.profile("Hannah O'Brien & Tom"), STORED)

    flow.add_property("14 Harbour Terrace", "265000.2", PROPERTY)
    expect_stored(application.profile("Hannah O'Brien & Tom")["properties"][0], STORED_PROPERTY)
    window = flow.edit_property("14 Harbour Terrace")
    flow.property_reports(window)
    flow.cancel_property(window, "1")
    expect_stored(application.profile("Hannah O'Brien & Tom")["properties"][0], STORED_PROPERTY)
    flow.profile_report()

    flow.delete_property("14 Harbour Terrace", "Return")
    expect(flow.properties(), ["14 Harbour Terrace"], "the list after No")
    flow.delete_property("14 Harbour Terrace", "alt+y")
    expect_soon(flow.properties, [], "the list after Yes")
    flow.add_property("9 Kowhai Road", "189500", PROPERTY)
    flow.save_profile()

    flow.new_profile()
    flow.enter_profile("Short-lived", {})
    flow.add_profile()
    flow.save_profile()
    flow.delete_profile("Short-lived", "Return")
    expect(flow.rows(), ["Hannah O'Brien & Tom", "Short-lived"], "the list after No")
    flow.delete_profile("Short-lived", "alt+y")
    expect_soon(flow.rows, ["Hannah O'Brien & Tom"], "the list after Yes")
    flow.exit()

    left = application.content()
    flow.start("restart")
    expect_soon(flow.rows, ["Hannah O'Brien & Tom"], "the list after the restart")
    flow.open_profile("Hannah O'Brien & Tom")
    flow.show_purchases()
    expect_soon(flow.properties, ["9 Kowhai Road"], "the purchases after the restart")
    flow.exit()
    expect(application.content(), left, "the database after the restart")
    expect([file.name for file in application.folder.glob("err*.log")], [], "logs of errors")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--programs", required=True, help="folder of ledgix and ledgix-cli")
    parser.add_argument("--german", action="store_true", help="with a decimal comma")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch, Screen(1366, 900) as screen:
        region = german_region(scratch) if arguments.german else {}
        application = Application(arguments.programs, scratch, region)
        try:
            run(application, "," if arguments.german else ".")
        except BaseException:
            screen.save_picture("end-to-end-failure.png")
            print(application.log.read_text(errors="replace"))
            raise


def german_region(scratch):
    """The environment of a user whose region is Germany, whatever this machine has installed."""
    import subprocess

    subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", f"{scratch}/de_DE.UTF-8"], check=True)
    return {"LC_ALL": "de_DE.UTF-8", "LOCPATH": scratch}


if __name__ == "__main__":
    on_a_bus_of_its_own()
    main()
