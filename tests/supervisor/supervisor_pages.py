"""The supervisor's pages in a browser."""

import base64

from chromium import Chromium
from selenium.common.exceptions import StaleElementReferenceException
from selenium.webdriver.common.by import By
from selenium.webdriver.support.wait import WebDriverWait

TIMEOUT_SECONDS = 60
POLL_SECONDS = 0.05


class SupervisorPages(Chromium):
    """A browser on the pages of an order service."""

    def go_to(self, host):
        """Sets the order service, HOST:PORT. No page is open afterwards."""
        self.clear(1280, 900)
        self._host = host

    def open(self, path):
        """Opens the page and returns its HTTP status."""
        self.driver.get(f"http://{self._host}{path}")
        return self._script("return performance.getEntriesByType('navigation')[0].responseStatus")

    def address(self):
        return self.driver.current_url

    def heading(self):
        return self.driver.find_element(By.TAG_NAME, "h1").text

    def rows(self, caption):
        """Waits for the table with that caption, and returns the cell texts of each of its body
        rows."""
        return self._wait_for(lambda: self._script(
            "return [...arguments[0].tBodies[0].rows].map("
            "row => [...row.cells].map(cell => cell.textContent))",
            self._element("table", "table", caption)), f"rows below “{caption}”")

    def says(self, text):
        """Returns true if the page shows this text."""
        return text in self.driver.find_element(By.TAG_NAME, "body").text

    def updated_at(self):
        return self._script("return document.querySelector('#updated time').innerText")

    def focus_field(self):
        self._focus(self._field())

    def field_text(self):
        return self._field().get_property("value")

    def field_has_focus(self):
        return self._field() == self.driver.switch_to.active_element

    def focus_link(self, name):
        self._focus(self._link(name))

    def focused_text(self):
        return self._script("return document.activeElement.textContent")

    def follow(self, name):
        """Clicks a link and waits until the next page is loaded."""
        self._link(name).click()

    def overflow(self, width):
        """Returns by how many CSS pixels the page is wider than a window of that width."""
        self.resize(width, 700)
        return self._script("return document.documentElement.scrollWidth - innerWidth")

    def print(self, path):
        """Prints the page into a PDF file."""
        printed = self.driver.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True})
        with open(path, "wb") as file:
            file.write(base64.b64decode(printed["data"]))

    def save_picture(self, path):
        """Saves a picture of the whole page, in a window that is as tall as the page."""
        self.resize(1280, self._script("return document.documentElement.scrollHeight"))
        self.driver.save_screenshot(path)

    def console_errors(self):
        """Returns the console errors since the last call, including uncaught exceptions."""
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def _field(self):
        return self._element("input", "searchbox", "Delivery number or customer")

    def _link(self, name):
        return self._element("a", "link", name)

    def _element(self, tag, role, name):
        """Waits until exactly one element with this tag has this accessible role and name, and
        returns it."""
        def only_one():
            found = [element for element in self.driver.find_elements(By.TAG_NAME, tag)
                     if element.aria_role == role and element.accessible_name == name]
            return found[0] if len(found) == 1 else None

        return self._wait_for(only_one, f"the {role} “{name}”")

    def _wait_for(self, look, what):
        """Calls `look` until it returns a truthy value. The page can replace its elements in the
        meantime."""
        wait = WebDriverWait(self.driver, TIMEOUT_SECONDS, POLL_SECONDS,
                             [StaleElementReferenceException])
        return wait.until(lambda _: look(), what)

    def _focus(self, element):
        self._script("arguments[0].focus()", element)

    def _script(self, script, *values):
        return self.driver.execute_script(script, *values)
