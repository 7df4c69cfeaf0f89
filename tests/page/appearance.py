"""How pages look: colours, paper, narrow windows."""

import base64

from case import OPTIONS, PageCase, large_document, object_of


class Appearance(PageCase):
    def test_colours(self):
        """Light and dark follow the system, and the choice of the user more than that."""
        browser = self.browser
        browser.prefer("dark")
        browser.open(self.page("colours", OPTIONS.examples / "bracket-project"), "#object-13")
        self.wait_for_panel("bracket.inp")
        faces = self.colour_of_faces()
        dark = browser.ground()
        browser.picture("dark.png")
        browser.choose("#theme", "light")
        light = browser.ground()
        self.assertEqual([dark, light], ["rgb(21, 25, 30)", "rgb(255, 255, 255)"])
        browser.prefer("light")
        browser.choose("#theme", "dark")
        self.assertEqual(browser.ground(), dark)
        browser.choose("#theme", "")
        self.assertEqual(browser.ground(), light)
        self.assertEqual([faces, self.colour_of_faces()], [faces and "5f87ad", faces and "9db8d2"])
        # Paper is white, whatever was chosen.
        browser.choose("#theme", "dark")
        browser.print_as("print")
        self.assertEqual(browser.ground(), light)
        browser.print_as("")
        self.expect_clean()

    def colour_of_faces(self):
        """What the faces of the model have been drawn with; None without a view."""
        if not OPTIONS.without_view:
            self.drawing()
            return self.browser.run("return meshView.face.color.getHexString()")

    def test_print(self):
        """On paper there are all rows of the tree and nothing to click at."""
        browser = self.browser
        browser.open(self.page("print", large_document()))
        browser.print_as("print")
        browser.run("window.dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(browser.count("#tree .row"), 101)
        self.assertFalse(browser.one("#controls").is_displayed())
        paper = base64.b64decode(browser.driver.execute_cdp_cmd("Page.printToPDF", {})["data"])
        (browser.screenshots / "paper.pdf").write_bytes(paper)
        browser.print_as("")
        browser.run("window.dispatchEvent(new Event('afterprint'))")
        self.assertLess(browser.count("#tree .row"), 80)

    def test_scripts_and_long_names(self):
        """Names run as their letters do, from the left edge like others; none is wider than the page."""
        browser = self.browser
        long = "W" * 250
        parts = [object_of(2, "CAEPART", "دراسة 12 (kg)"), object_of(3, "CAEPART", long, metaData={
            long: {"value": long, "metaDataType": "部品"}}), object_of(4, "CAEPART", "部品名")]
        browser.open(self.page("scripts", object_of(1, "SIMULATION", "مشروع", parts)), "#object-2", window=(400, 800))
        self.wait_for_panel("دراسة 12 (kg)")
        directions = browser.run("""
            return ['h1', '#panel h2', '.path button', '#tree [aria-level="2"] .name', '#tree-2 .name'].map((name) =>
              getComputedStyle(document.querySelector(name)).direction)""")
        self.assertEqual(directions, ["rtl", "rtl", "rtl", "rtl", "ltr"])
        self.assertEqual(browser.run("return getComputedStyle(document.querySelector('#panel h2')).textAlign"), "left")
        browser.run("location.hash = '#object-3'")
        self.wait_for_panel(long)
        browser.picture("scripts.png")
        self.assertTrue(browser.run("""
            const widest = Array.from(document.querySelectorAll('body, #tree, #panel, #panel *'), (one) =>
              one.getBoundingClientRect().right);
            return Math.max(...widest) <= innerWidth"""))
        self.expect_clean()

    def test_narrow_window(self):
        """On a telephone the panel stands below the tree, and nothing is wider than the window."""
        browser = self.browser
        browser.open(self.page("narrow", OPTIONS.examples / "bracket-project"), window=(400, 800))
        self.wait_for_panel("bracket-project")
        tree, panel = browser.one("#tree").rect, browser.one("#panel").rect
        self.assertGreaterEqual(panel["y"], tree["y"] + tree["height"])
        self.assertTrue(browser.run("""
            const { scrollWidth, scrollHeight } = document.documentElement;
            return scrollWidth <= innerWidth && scrollHeight <= innerHeight"""))
        browser.picture("narrow.png")
