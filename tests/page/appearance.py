"""How pages look: colours, paper, narrow windows."""

import base64

from case import OPTIONS, PageCase, large_document


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

    def test_narrow_window(self):
        """On a telephone the panel stands below the tree, and nothing is wider than the window."""
        browser = self.browser
        browser.open(self.page("narrow", OPTIONS.examples / "bracket-project"), window=(500, 900))
        self.wait_for_panel("bracket-project")
        tree, panel = browser.one("#tree").rect, browser.one("#panel").rect
        self.assertGreaterEqual(panel["y"], tree["y"] + tree["height"])
        self.assertTrue(browser.run("return document.documentElement.scrollWidth <= innerWidth"))
        browser.picture("narrow.png")
