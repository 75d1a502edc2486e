# Copyright the Vantreo Ledgix authors. GPL-3.0-or-later.
"""A household's way through the desktop program, step by step; each step looks at what the window then shows."""

import json
import shutil
import subprocess
from pathlib import Path

from driver import NotFound, Program, press, type_text, wait_for

TITLE = "Vantreo Ledgix"
TAX_PROMPT = "Confirm or enter the income tax rates applicable for your situation."
NAME_MISSING = "This profile requires a profile name."
CHOOSE_PURCHASE = "Choose 'Add Purchase' to analyse your property puchasing capabilities."


class Application:
    """An application folder of its own, and the program that is started in it."""

    def __init__(self, programs, scratch, environment=None):
        self._programs = Path(programs)
        self._scratch = Path(scratch)
        self.folder = self._scratch / "application"
        self.folder.mkdir()
        for name in ("profile.rdn", "profile10.rdn", "reportlogo.bmp", "ledgix.hlp"):
            shutil.copy(self._programs / name, self.folder)
        self.database = self.folder / "property.mdb"
        self.environment = {
            "LEDGIX_FOLDER": str(self.folder),
            "LEDGIX_SETTINGS": str(self._scratch / "settings.reg"),
            "XDG_CONFIG_HOME": str(self._scratch / "config"),
            "LC_ALL": "C.UTF-8",
            **(environment or {}),
        }
        self.log = self._scratch / "program.log"

    def create_database(self):
        self.run_cli("create", self.database)

    def start(self, *arguments):
        return Program([str(self._programs / "ledgix"), *arguments], self.environment, self.log)

    def run_cli(self, *arguments):
        command = [str(self._programs / "ledgix-cli"), *map(str, arguments)]
        return subprocess.run(command, check=True, capture_output=True, text=True).stdout

    def content(self):
        """Profiles and their properties as they are in the database now."""
        return json.loads(self.run_cli("--database", self.database, "export"))

    def profile(self, name):
        return next((p for p in self.content()["profiles"] if p["profile_name"] == name), None)


def field(window, caption):
    """The line of the field whose label begins with `caption`."""

    def look():
        return next((line for line in window.find_all("text") if line.name.startswith(caption)), None)

    return wait_for(look, f"the field '{caption}'")


def enter(window, caption, text):
    """Clicks into a field, whose whole text is selected then, and types."""
    field(window, caption).click()
    press("ctrl+a")
    type_text(text)


def expect(actual, expected, what):
    if actual != expected:
        raise AssertionError(f"{what}: {actual!r} instead of {expected!r}")


def expect_soon(function, expected, what):
    try:
        wait_for(lambda: function() == expected, what)
    except NotFound:
        expect(function(), expected, what)


class MainFlow:
    """`seen(name)` is called whenever another window is to be looked at."""

    def __init__(self, application, decimal=".", seen=lambda name: None):
        self.application = application
        self._decimal = decimal
        self._seen = seen
        self.program = None
        self.main = None

    def number(self, text):
        """An amount as the user's region writes it."""
        return text.replace(".", self._decimal)

    # Start and end.

    def start(self, *arguments):
        self.program = self.application.start(*arguments)
        self.program.wait_for_first_window()
        if not arguments:
            self._seen("splash")
        self.program.connect()
        self.main = wait_for(self._main_window, "the main window")

    def _main_window(self):
        windows = [window for window in self.program.children() if window.showing and window.name == TITLE]
        return next((window for window in windows if window.has("push button", "New Profile")), None)

    def confirm_tax_rates(self):
        self.program.message(TAX_PROMPT)
        self._seen("tax-prompt")
        press("Return")
        editor = self.program.window("Tax Rates")
        bounds = [line.text for line in editor.find_all("text")[:6]]
        expect([bounds[i] for i in (0, 2, 4)], ["38000", "60000", "0"], "the default brackets")
        self._seen("tax-rates")
        press("alt+s")
        self.program.wait_without("Tax Rates")

    def exit(self):
        press("alt+f")
        self.main.find("menu item", "Exit")
        press("e")
        expect(self.program.wait_for_end(), 0, "the exit status")

    def about(self):
        self.main.find("menu item", "Help").click()
        self.main.find("menu item", "About").click()
        window = self.program.window("About Vantreo Ledgix")
        self._seen("about")
        press("Escape")
        self.program.wait_without(window.name)

    def help(self):
        press("F1")
        window = self.program.window("Vantreo Ledgix Help")
        self._seen("help")
        press("Escape")
        self.program.wait_without(window.name)

    # The profile editor.

    def new_profile(self):
        self._seen("main-window-empty")
        self.main.find("push button", "New Profile").click()
        field(self.main, "Profile Name")
        press("alt+a")
        self.program.message(NAME_MISSING)
        self._seen("name-missing")
        press("Return")

    def enter_profile(self, name, amounts):
        """The focus is on the name. `amounts`: page -> list of (caption, amount)."""
        type_text(name)
        for page, fields in amounts.items():
            self.main.find("page tab", page).click()
            for caption, amount in fields:
                enter(self.main, caption, self.number(amount))
            self._seen("profile-" + page.lower())

    def add_profile(self):
        press("alt+a")
        self.program.message(CHOOSE_PURCHASE)
        self._seen("choose-purchase")
        press("Return")
        self.main.find("push button", "Add Property")

    def save_profile(self):
        press("alt+s")
        wait_for(lambda: not self.main.has("push button", "Add Property"), "the end of the profile editor")

    def rows(self):
        return [item.name for item in self.main.find("list", "Profiles").find_all("list item")]

    def open_profile(self, name):
        self.main.find("list", "Profiles").find("list item", name).double_click()
        field(self.main, "Profile Name")

    def show_purchases(self):
        self.main.find("page tab", "Purchases").click()
        self.main.find("push button", "Add Property")

    def properties(self):
        return [item.name for item in self.main.find("list", "Purchases").find_all("list item")]

    def profile_report(self):
        self.main.find("push button", "Analysis").click()
        self._look_at_report("profile-report")

    # The property editor.

    def add_property(self, name, price, others):
        self.main.find("push button", "Add Property").click()
        window = self._property_window()
        type_text(name)
        enter(window, "Purchase Price", self.number(price))
        whole = float(price)
        split = {"House Value": round(whole * 0.55, 2), "Chattels Value": round(whole * 0.2, 2), "House Depreciation": 4}
        for caption, value in split.items():
            expect_soon(lambda: self._amount(window, caption), value, caption)
        for caption, text in others:
            enter(window, caption, self.number(text))
        self._seen("property")
        press("alt+s")
        self._wait_without_property()
        expect_soon(self.properties, [name], "the list of purchases")

    def _amount(self, window, caption):
        return float(field(window, caption).text.replace(self._decimal, "."))

    def _property_window(self):
        return wait_for(lambda: self._open_property(), "the property editor")

    def _open_property(self):
        for window in self.program.children():
            if window.showing and window.has("push button", "Outlook"):
                return window
        return None

    def _wait_without_property(self):
        wait_for(lambda: self._open_property() is None, "the end of the property editor")

    def edit_property(self, name):
        self.main.find("list", "Purchases").find("list item", name).click()
        self.main.find("push button", "Edit Property").click()
        return self._property_window()

    def property_reports(self, window):
        for button, report in (("Analysis", "analysis-report"), ("Outlook", "outlook-report")):
            window.find("push button", button).click()
            self._look_at_report(report)

    def _look_at_report(self, name):
        preview = wait_for(self._open_preview, f"the preview of the {name}")
        self._seen(name)
        if name == "outlook-report":
            preview.find("page tab", "Chart").click()
            preview.find("table", "Figures of the chart")
            self._seen("outlook-chart")
        title = preview.name
        press("Escape")
        self.program.wait_without(title)

    def _open_preview(self):
        return next((w for w in self.program.children() if w.showing and "Preview" in w.name), None)

    def cancel_property(self, window, new_price):
        enter(window, "Purchase Price", self.number(new_price))
        press("Escape")
        self._wait_without_property()

    # Deleting.

    def delete_profile(self, name, answer):
        """`answer`: the key that answers the question."""
        self.main.find("list", "Profiles").find("list item", name).click()
        self.main.find("push button", "Delete Profile").click()
        expect(self.program.message("Delete profile"), f"Delete profile '{name}'?", "the question")
        self._seen("delete-profile")
        press(answer)
        wait_for(lambda: not self.program.has_message("Delete profile"), "the end of the question")

    def delete_property(self, name, answer):
        self.main.find("list", "Purchases").find("list item", name).click()
        self.main.find("push button", "Delete Property").click()
        expect(self.program.message("Delete property"), f"Delete property '{name}'?", "the question")
        self._seen("delete-property")
        press(answer)
        wait_for(lambda: not self.program.has_message("Delete property"), "the end of the question")
