"""A real browser without a window, and what the tests ask of it."""

import json
import pathlib
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

# Runs before any script of a page: keeps what the policy refuses, errors, and tasks that take long.
WATCH = """
window.watched = {violations: [], errors: [], tasks: []};
document.addEventListener('securitypolicyviolation', (event) => {
  watched.violations.push(event.violatedDirective + ' ' + event.blockedURI);
});
window.addEventListener('error', (event) => watched.errors.push(String(event.message)));
window.addEventListener('unhandledrejection', (event) => watched.errors.push(String(event.reason)));
new PerformanceObserver((list) => {
  for (const entry of list.getEntries()) watched.tasks.push(entry.duration);
}).observe({type: 'longtask', buffered: true});
"""


class Browser:
    """Chromium with a profile of its own, drawing without a graphics card."""

    def __init__(self, screenshots):
        self.screenshots = pathlib.Path(screenshots)
        self.screenshots.mkdir(parents=True, exist_ok=True)
        self.profile = tempfile.TemporaryDirectory()
        options = webdriver.ChromeOptions()
        options.binary_location = "/usr/bin/chromium"
        for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--use-gl=angle",
                         "--use-angle=swiftshader", "--enable-unsafe-swiftshader", "--window-size=1280,900",
                         "--disable-background-networking", "--disable-component-update", "--no-first-run",
                         f"--user-data-dir={self.profile.name}"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"performance": "ALL", "browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        self.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})

    def close(self):
        self.driver.quit()
        self.profile.cleanup()

    def open(self, page, address="", window=(1280, 900)):
        """Opens a page and waits until it is complete. Gives what its scripts are refused or do wrong."""
        self.driver.get("about:blank")
        self.driver.set_window_size(*window)
        self.requests()
        self.driver.get(pathlib.Path(page).resolve().as_uri() + address)
        self.wait("document.documentElement.dataset.ready === 'true'")

    def wait(self, condition):
        WebDriverWait(self.driver, 20, poll_frequency=0.02).until(lambda _: self.run("return " + condition))

    def run(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def one(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0])?.textContent", selector)

    def texts(self, selector):
        return self.run("return Array.from(document.querySelectorAll(arguments[0]), (one) => one.textContent)",
                        selector)

    def attribute(self, selector, name):
        return self.run("return document.querySelector(arguments[0])?.getAttribute(arguments[1])", selector, name)

    def count(self, selector):
        return self.run("return document.querySelectorAll(arguments[0]).length", selector)

    def press(self, *keys):
        """Presses keys where the focus is, one after the other."""
        for key in keys:
            self.driver.switch_to.active_element.send_keys(getattr(Keys, key, key))

    def choose(self, selector, value):
        """Chooses a value of a list as a user does."""
        self.run("const list = document.querySelector(arguments[0]); list.value = arguments[1];"
                 "list.dispatchEvent(new Event('change'))", selector, value)

    def watched(self):
        return self.run("return watched")

    def requests(self):
        """The addresses that were asked for since the last call, without those that lead nowhere."""
        asked = []
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                asked.append(message["params"]["request"]["url"])
        return [url for url in asked if not url.startswith(("data:", "about:", "chrome:"))]

    def prefer(self, colours):
        """What the system says about colours: light or dark."""
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"features": [{"name": "prefers-color-scheme", "value": colours}]})

    def print_as(self, media):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"media": media})

    def ground(self):
        return self.run("return getComputedStyle(document.body).backgroundColor")

    def picture(self, name):
        self.driver.save_screenshot(str(self.screenshots / name))
