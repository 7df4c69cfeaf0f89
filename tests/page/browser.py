"""A real browser without a window, and what the tests ask of it."""

import json
import pathlib
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

# Runs before any script of a page: keeps what the policy refuses, and errors.
WATCH = """
window.watched = {violations: [], errors: []};
document.addEventListener('securitypolicyviolation', (event) => {
  watched.violations.push(event.violatedDirective + ' ' + event.blockedURI);
});
window.addEventListener('error', (event) => watched.errors.push(String(event.message)));
window.addEventListener('unhandledrejection', (event) => watched.errors.push(String(event.reason)));
"""

# What a trace has: marks, and the tasks of threads with the time that the processor spent on them.
MARK = "check-page: "
TRACED = ["blink.user_timing", "disabled-by-default-devtools.timeline"]


class Browser:
    """Chromium with a profile of its own, drawing without a graphics card."""

    def __init__(self, screenshots, is_traced=False):
        """With a trace, tasks() gives what the page did, once at the end."""
        self.is_traced = is_traced
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
        if is_traced:
            options.add_experimental_option("perfLoggingPrefs", {"traceCategories": ",".join(TRACED)})
        self.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        self.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCH})

    def close(self):
        self.driver.quit()
        self.profile.cleanup()

    def open(self, page, address="", window=(1280, 900)):
        """Opens a page and waits until it is complete. Gives what its scripts are refused or do wrong."""
        self.driver.get("about:blank")
        self.driver.set_window_size(*window)
        if not self.is_traced:
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

    def mark(self, name):
        self.run("performance.mark(arguments[0])", MARK + name)

    def tasks(self):
        """The tasks between two marks each, under the name of the second one, as seconds of the processor's time."""
        events = [message["params"] for message in self.messages() if message["method"] == "Tracing.dataCollected"]
        named = {}
        tasks = []
        for event in sorted(events, key=lambda one: one["ts"]):
            thread = (event["pid"], event["tid"])
            if event["name"] == "RunTask" and "tdur" in event:
                tasks.append((thread, event["tdur"] / 1e6))
            elif event["ph"] == "I" and event["name"].startswith(MARK):
                # Only the thread of the page has such marks.
                named[event["name"][len(MARK):]] = [seconds for where, seconds in tasks if where == thread]
                tasks = []
        return named

    def messages(self):
        return [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]

    def requests(self):
        """The addresses that were asked for since the last call, without those that lead nowhere."""
        asked = [message["params"]["request"]["url"] for message in self.messages()
                 if message["method"] == "Network.requestWillBeSent"]
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
