"""What the checks of pages share: documents, pages of them, and questions to the browser."""

import argparse
import json
import pathlib
import subprocess
import tempfile
import time
import unittest

from browser import Browser

# Filled by check-page.
OPTIONS = argparse.Namespace()


def object_of(number, kind, name, children=(), **more):
    return {"id": str(number), "name": name, "type": kind, "children": list(children), **more}


def large_document():
    """A hundred studies with a hundred and ninety-nine parts each."""
    number = 1
    studies = []
    for study in range(100):
        parts = []
        for part in range(199):
            number += 1
            mass = {"Mass": {"value": str(part), "metaDataType": "kg"}}
            parts.append(object_of(number, "CAEPART", f"part {study}-{part}", metaData=mass))
        number += 1
        studies.append(object_of(number, "CAEMODEL", f"study {study}", parts))
    return object_of(1, "SIMULATION", "large", studies)


class PageCase(unittest.TestCase):
    """All checks use one browser and one folder, which end with check-page."""

    browser = None
    work = None

    @classmethod
    def setUpClass(cls):
        if not PageCase.browser:
            PageCase.browser = Browser(OPTIONS.screenshots)
            PageCase.folder = tempfile.TemporaryDirectory()
            PageCase.work = pathlib.Path(PageCase.folder.name)

    @staticmethod
    def end():
        if PageCase.browser:
            PageCase.browser.close()
            PageCase.folder.cleanup()

    def file_of(self, name, source):
        """The project, or a file with the document that is given as JSON."""
        if isinstance(source, pathlib.Path):
            return source
        text = source if isinstance(source, str) else json.dumps(source)
        file = self.work / (name + ".json")
        file.write_text(text, encoding="utf-8")
        return file

    def page(self, name, source, *options):
        """The page of a project or document."""
        source = self.file_of(name, source)
        page = self.work / (name + ".html")
        done = subprocess.run([OPTIONS.program, "page", source, "-o", page, *options], capture_output=True)
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return page

    def expect_clean(self):
        """The page asked for nothing but itself, and its scripts did nothing wrong."""
        watched = self.browser.watched()
        self.assertEqual(watched["violations"], [])
        self.assertEqual(watched["errors"], [])
        requests = self.browser.requests()
        self.assertEqual([url for url in requests if not url.startswith("file:")], [])
        self.assertEqual(len(requests), 1, requests)
        self.assertEqual([entry["message"] for entry in self.browser.driver.get_log("browser")], [])

    def rows(self):
        return self.browser.texts("#tree .row .name")

    def active(self):
        """The name of the row that a screen reader is told of, which is the one that looks chosen."""
        name = self.browser.run("""
            const tree = document.getElementById('tree');
            const row = document.getElementById(tree.getAttribute('aria-activedescendant'));
            const chosen = document.querySelectorAll('#tree [aria-selected="true"]');
            return row && chosen.length === 1 && chosen[0] === row ? row.querySelector('.name').textContent : null""")
        return name

    def focus(self):
        return self.browser.run("return document.activeElement.id")

    def expect(self, ask, wanted):
        """What is asked for becomes what is wanted: the browser answers to keys and pointer when it can."""
        found = ask()
        for _ in range(200):
            if found == wanted:
                return
            time.sleep(0.05)
            found = ask()
        self.assertEqual(found, wanted)

    def wait_for_panel(self, name):
        self.browser.wait(f"document.querySelector('#panel h2')?.textContent === {json.dumps(name)}")

    def wait_for_hits(self, text):
        self.browser.wait(f"document.getElementById('hits').textContent === {json.dumps(text)}")

    def drawing(self, times=0):
        """What the view shows, after it has drawn again that many times."""
        browser = self.browser
        self.drawn = times and self.drawn
        browser.wait(f"Number(document.querySelector('.view')?.dataset.drawn) > {self.drawn}")
        browser.run("return new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve)))")
        self.drawn = int(browser.attribute(".view", "data-drawn"))
        return browser.one(".view").screenshot_as_png
