"""A headless Chromium, driven by Selenium."""

import os
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

FLAGS = ["--headless=new", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync",
         # No host name resolves, so Chromium connects to the loopback address only.
         "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1",
         # Chromium exits with its driver, even if the driver is killed.
         "--remote-debugging-pipe"]
if os.geteuid() == 0:
    FLAGS.append("--no-sandbox")  # the sandbox does not work as root


class Driver(Service):
    """Debian's chromedriver. It exits with this process, even if this process is killed."""

    def __init__(self):
        super().__init__("/usr/bin/setpriv")

    def command_line_args(self):
        return ["--pdeathsig", "TERM", "--", "/usr/bin/chromedriver", *super().command_line_args()]


class Chromium:
    """A browser with an empty profile and one page. `driver` is Selenium's WebDriver."""

    def __init__(self):
        self._profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for flag in FLAGS:
            options.add_argument(flag)
        options.add_argument(f"--user-data-dir={self._profile.name}")
        options.set_capability("goog:loggingPrefs", {"browser": "SEVERE"})
        self.driver = webdriver.Chrome(service=Driver(), options=options)

    def clear(self, width, height):
        """Replaces the page with a blank one of this size, and clears the console log."""
        self.driver.get("about:blank")
        self.driver.get_log("browser")
        self.resize(width, height)

    def resize(self, width, height):
        """Resizes the page, in CSS pixels. It can be smaller than the smallest window."""
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                    {"width": width, "height": height, "deviceScaleFactor": 1,
                                     "mobile": False})

    def type(self, text):
        """Types into whatever has the focus."""
        ActionChains(self.driver).send_keys(text).perform()

    def press(self, key):
        """Presses a key, given by its X name, such as Return."""
        self.type(getattr(Keys, key.upper()))

    def close(self):
        self.driver.quit()
        self._profile.cleanup()
