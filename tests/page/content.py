"""What pages show of an object: pictures and models; comparisons and plots."""

import struct
import subprocess
import zlib

from case import OPTIONS, PageCase, object_of
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.actions.wheel_input import ScrollOrigin


def png(width, height, colour):
    """A picture of one colour."""
    def chunk(name, content):
        return (struct.pack(">I", len(content)) + name + content +
                struct.pack(">I", zlib.crc32(name + content)))
    rows = (b"\0" + bytes(colour) * width) * height
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows, 0)) + chunk(b"IEND", b""))


class Content(PageCase):
    def test_pictures(self):
        """Pictures are shown, up to the room that the page has."""
        project = self.work / "pictures"
        (project / "study").mkdir(parents=True)
        (project / "study/job.inp").write_text("*STEP\n*STATIC\n*END STEP\n")
        (project / "study/red.png").write_bytes(png(40, 30, (255, 0, 0)))
        (project / "study/tall.png").write_bytes(png(300, 900, (0, 0, 255)))
        (project / "study/fake.png").write_bytes(b"<svg onload=alert(1)>")
        (project / "study/line.svg").write_text(
            '<svg xmlns="http://www.w3.org/2000/svg" width="20" height="10"><image href="http://korvane.example/x"/>'
            "<script>window.hit=7</script><rect width='20' height='10'/></svg>")
        browser = self.browser
        browser.open(self.page("pictures", project, "--pictures", "100k"), "#object-2")
        self.wait_for_panel("study")
        browser.wait("document.querySelectorAll('figure img').length === 2")
        browser.wait("Array.from(document.images).every((one) => one.complete)")
        shown = browser.run("return Array.from(document.images, (one) => [one.alt, one.naturalWidth])")
        self.assertEqual(shown, [["line.svg", 20], ["red.png", 40]])
        self.assertEqual(browser.texts("figure .notice"),
                         ["Not in this page, which has room for 100 kB of pictures. It has 811 kB."])
        browser.wait("document.querySelectorAll('figure').length === 3")
        self.assertEqual(browser.texts("figure figcaption"), ["study/line.svg", "study/red.png", "study/tall.png"])
        self.assertIn("21 B", browser.texts(".files .size"))
        browser.picture("pictures.png")
        self.expect_clean()
        page = self.page("no-pictures", project, "--pictures", "0").read_text()
        self.assertNotIn('id="picture-', page)

    def test_outside(self):
        """Files that a project file names outside of its directory are as if missing, and the page says why."""
        project = self.work / "outside"
        (project / "study").mkdir(parents=True)
        (project / "study/job.inp").write_text("*STEP\n*STATIC\n*END STEP\n")
        (project / "study/red.png").write_bytes(png(40, 30, (255, 0, 0)))
        file = self.work / "elsewhere/outside.kvp"
        file.parent.mkdir()
        subprocess.run([OPTIONS.program, "new", project, file], check=True, capture_output=True)
        browser = self.browser
        browser.open(self.page("outside", file), "#object-2")
        self.wait_for_panel("study")
        self.assertEqual(set(browser.texts(".files .size")), {"not read"})
        self.assertEqual(set(browser.texts(".files .why")), {"outside of the directories that this page was made from"})
        self.assertEqual(browser.texts("figure"), [])
        self.expect_clean()
        browser.open(self.page("outside-shown", file, "--files-in", project), "#object-2")
        self.wait_for_panel("study")
        browser.wait("document.querySelectorAll('figure img').length === 1")
        self.assertEqual(browser.texts(".files .why"), [])

    def test_models(self):
        """The mesh of a solver input is drawn, turned with keyboard and pointer, and described in words."""
        browser = self.browser
        page = self.page("models", OPTIONS.examples / "bracket-project")
        browser.open(page, "#object-13")
        self.wait_for_panel("bracket.inp")
        self.assertEqual(browser.text(".model h3"), "Model of bracket.inp")
        self.assertEqual(browser.text(".model .words"), "432 nodes, 184 elements")
        if OPTIONS.without_view:
            browser.wait("document.querySelector('.model .notice')")
            self.assertEqual(browser.text(".model .notice"),
                             "The program that made this page was built without the view of models.")
            return
        browser.wait("document.querySelector('.view')")
        self.assertIn("The MIT License", page.read_text())
        self.assertEqual(browser.attribute(".view", "role"), "application")
        self.assertTrue(browser.attribute(".view", "aria-label").startswith(
            "The surface of bracket.inp: 432 nodes, 184 elements. Arrow keys turn it"))
        first = self.drawing()
        # What is not ground is neither nothing nor all of it.
        self.assertGreater(len(first), 3000)
        browser.picture("model.png")

        view = browser.one(".view")
        view.send_keys("\ue014")  # right
        turned = self.drawing(1)
        self.assertNotEqual(turned, first)
        browser.one(".model .buttons button:nth-child(2)").click()
        self.assertEqual(self.drawing(1), first)
        wire = browser.one(".model .buttons button")
        wire.click()
        self.assertEqual(wire.get_attribute("aria-pressed"), "true")
        self.assertNotEqual(self.drawing(1), first)
        browser.picture("wire.png")
        wire.click()
        self.assertEqual(self.drawing(1), first)
        for change in (lambda mouse: mouse.click_and_hold(view).move_by_offset(60, 20).release(),
                       lambda mouse: mouse.scroll_from_origin(ScrollOrigin.from_element(view), 0, -200)):
            change(ActionChains(browser.driver)).perform()
            self.assertNotEqual(self.drawing(1), first)
            view.send_keys("\ue011")  # home
            self.assertEqual(self.drawing(1), first)

        # A study has the models of its iterations, and the same canvas shows them.
        browser.run("location.hash = '#object-23'")
        self.wait_for_panel("03-drop-crate")
        self.assertEqual(browser.text(".model h3"), "Model of drop_flat.k")
        self.assertNotEqual(self.drawing(1), first)
        self.assertEqual(browser.count("canvas"), 1)
        self.expect_clean()

    def test_surface_of_geometry(self):
        """An STL file of a study is drawn like a mesh."""
        project = self.work / "geometry"
        (project / "study").mkdir(parents=True)
        (project / "study/job.inp").write_text("*STEP\n*STATIC\n*END STEP\n")
        corners = ((0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1))
        facets = [[corners[place] for place in facet] for facet in ((0, 2, 1), (0, 1, 3), (1, 2, 3), (0, 3, 2))]
        (project / "study/part.stl").write_bytes(b"solid part".ljust(80) + struct.pack("<I", 4) + b"".join(
            struct.pack("<12fH", 0, 0, 0, *(number for corner in facet for number in corner), 0) for facet in facets))
        browser = self.browser
        browser.open(self.page("geometry", project), "#object-2")
        self.wait_for_panel("study")
        self.assertEqual(browser.text(".model h3"), "Model of part.stl")
        self.assertEqual(browser.text(".model .words"), "4 nodes, 4 elements")
        if not OPTIONS.without_view:
            browser.wait("document.querySelector('.view')")
            first = self.drawing()
            browser.picture("geometry.png")
            # Where nothing is drawn, nothing turns.
            browser.one(".view").send_keys("\ue014")  # right
            self.assertNotEqual(self.drawing(1), first)
        self.expect_clean()

    def points(self):
        """Where the points of a plot answer to the pointer, by the names of their objects."""
        return self.browser.run("""
            const svg = document.querySelector('.plot svg');
            const box = svg.getBoundingClientRect();
            const found = {};
            for (let x = 0; x < 640; x += 8) {
              for (let y = 0; y < 400; y += 8) {
                svg.dispatchEvent(new PointerEvent('pointermove',
                  { clientX: box.left + x * box.width / 640, clientY: box.top + y * box.height / 400 }));
                const at = ['cx', 'cy'].map((name) => Number(document.querySelector('.ring').getAttribute(name)));
                if (at[0] >= 0) {
                  found[document.querySelector('.tip').textContent.split(' · ')[0]] = at;
                }
              }
            }
            return found""")

    def test_no_webgl(self):
        """A browser without WebGL shows everything else, and says what is missing."""
        browser = self.browser
        added = browser.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {
            "source": "HTMLCanvasElement.prototype.getContext = () => null"})
        browser.open(self.page("no-webgl", OPTIONS.examples / "bracket-project"), "#object-13")
        browser.driver.execute_cdp_cmd("Page.removeScriptToEvaluateOnNewDocument", added)
        self.wait_for_panel("bracket.inp")
        if not OPTIONS.without_view:
            browser.wait("document.querySelector('.model .notice')")
            self.assertEqual(browser.text(".model .notice"),
                             "This browser does not draw in three dimensions: WebGL is missing or switched off.")
        self.assertEqual(browser.text(".model .words"), "432 nodes, 184 elements")
        self.assertEqual(browser.texts(".files tbody th"), ["bracket.inp"])
        browser.driver.get_log("browser")

    def test_comparison(self):
        """Two projects side by side: what was added, removed, moved and changed has a sign and a word in both trees."""
        def part(key, name, mass="1"):
            return object_of(0, "CAEPART", name, dbkey=key, metaData={"Mass": {"value": mass, "metaDataType": "kg"}})
        first = object_of(1, "SIMULATION", "before", [
            part("A", "same"), part("B", "heavier"), part("C", "<script>"),
            object_of(0, "CAEMODEL", "old", [part("D", "wanders")], dbkey="E"),
            object_of(0, "CAEMODEL", "gone", [part("F", "gone too")], dbkey="G")], dbkey="P")
        second = object_of(1, "SIMULATION", "after", [
            part("A", "same"), part("B", "heavier", "2"), part("C", "renamed"),
            object_of(0, "CAEMODEL", "old", dbkey="E"),
            object_of(0, "CAEMODEL", "fresh", [part("D", "wanders"), part("H", "fresh too")], dbkey="I")], dbkey="P")
        browser = self.browser
        browser.open(self.page("comparison", first, self.file_of("after", second), "--ignore", "dates"))
        self.assertEqual(browser.text("h1"), "before and after")
        self.assertEqual(browser.texts(".side h2"), ["before", "after"])
        self.assertEqual(browser.text("#summary"), "6 differences: 1 added, 1 removed, 1 moved, 3 changed")
        browser.one("#tree").click()
        browser.press("HOME", "ARROW_DOWN", "*")
        browser.one("#other").click()
        browser.press("HOME", "ARROW_DOWN", "*")

        def marked(tree):
            return browser.run("""
                return Array.from(document.querySelectorAll(arguments[0] + ' .row'), (row) => [
                  row.querySelector('.name').textContent,
                  Array.from(row.querySelectorAll('.mark'), (mark) => mark.textContent).join()])""", tree)
        self.expect(lambda: marked("#tree"), [
            ["before", "~ changed"], ["same", ""], ["heavier", "~ changed"], ["<script>", "~ changed"], ["old", ""],
            ["wanders", "> moved"], ["gone", "- removed"], ["gone too", "- removed"]])
        self.expect(lambda: marked("#other"), [
            ["after", "~ changed"], ["same", ""], ["heavier", "~ changed"], ["renamed", "~ changed"], ["old", ""],
            ["fresh", "+ added"], ["wanders", "> moved"], ["fresh too", "+ added"]])
        # What is chosen in one tree is chosen in the other as well.
        browser.press("HOME", "ARROW_DOWN", "ARROW_DOWN", "ARROW_DOWN")
        self.wait_for_panel("renamed")
        self.expect(self.active, "<script>")
        self.assertEqual(browser.texts(".differences li"), ["~ name changed from '<script>' to 'renamed'"])
        self.assertEqual(browser.texts(".facts .link"), ["<script>"])
        browser.picture("comparison.png")
        browser.one(".facts .link").click()
        self.wait_for_panel("<script>")
        self.expect(lambda: browser.run("return location.hash"), "#first-4")
        browser.choose("#difference", "-")
        self.wait_for_hits("2 of 16 objects")
        self.expect(self.rows, ["before", "gone", "gone too"])
        browser.choose("#difference", "any")
        self.wait_for_hits("12 of 16 objects")
        self.expect_clean()

    def test_plot(self):
        """Two numbers as points, with groups; points lead to their objects, and a search leaves some out."""
        parts = [object_of(0, "CAEPART", f"part {number}", metaData={
            "Mass": {"value": str(number), "metaDataType": "kg"},
            "Stress": {"value": f"{number * number}e1", "metaDataType": "MPa"},
            "Maker": {"value": "<b>" if number % 2 else "west", "metaDataType": ""}}) for number in range(1, 9)]
        # Have their masses from above; what is not a number counts as nothing.
        parts[0]["children"] = [object_of(0, "CAEPART", "below", metaData={
            "stress": {"value": "-20", "metaDataType": "MPa"}, "Mass": {"value": "?", "metaDataType": "kg"}})]
        parts[1]["metaData"]["Mass"] = {"value": "2000", "metaDataType": "g"}
        parts[2]["metaData"]["Mass"] = {"value": "3 kg", "metaDataType": ""}
        parts[6]["metaData"]["Stress"]["metaDataType"] = "bananas"
        parts[7]["metaData"]["Stress"] = {"value": "1e4", "metaDataType": "psi"}
        browser = self.browser
        browser.open(self.page("plot", object_of(1, "SIMULATION", "loads", parts)))
        browser.one("#plot").click()
        browser.wait("document.querySelector('.plot svg')")
        self.assertEqual(browser.texts("#plot-x option"), ["Mass", "Stress"])
        self.assertEqual(browser.texts("#plot-by option"), ["nothing", "Maker", "Mass", "Stress"])
        self.assertEqual(browser.attribute(".plot svg", "aria-label"), "Stress in MPa over Mass in kg: 8 points")
        self.assertEqual(browser.text(".tip"),
                         "8 points; 1 object left out, with units that cannot be converted or numbers that are too large.")
        browser.choose("#plot-by", "Maker")
        browser.wait("document.querySelectorAll('.legend li').length === 2")
        self.assertEqual(browser.texts(".legend .value"), ["<b>", "west"])
        # A group has a shape of its own.
        shapes = browser.run("return Array.from(document.querySelectorAll('.legend path'), (one) => one.outerHTML)")
        self.assertEqual(len({shape.partition(" d=")[2] for shape in shapes}), 2)
        rows = browser.run("""
            return Array.from(document.querySelectorAll('.values tbody tr'), (row) =>
              Array.from(row.cells, (cell) => cell.textContent))""")
        self.assertEqual(rows[:3], [["part 1", "1 kg", "10 MPa", "<b>"], ["below", "1 kg", "-20 MPa", "<b>"],
                                    ["part 2", "2000 g", "40 MPa", "west"]])
        self.assertEqual(rows[-1][1:3], ["8 kg", "10000 psi"])
        # On the axes they have one unit: 2000 g stand where 2 kg would, and 10000 psi are 68.948 MPa.
        points = self.points()
        west = [points[f"part {number}"] for number in (2, 4, 6, 8)]
        self.assertEqual([row[0][5:] for row in rows if row[-1] == "west"], ["2", "4", "6", "8"])
        for (across, up), mass, stress in zip(west, [2, 4, 6, 8], [40, 160, 360, 68.948]):
            self.assertAlmostEqual(across, west[0][0] + (west[1][0] - west[0][0]) * (mass - 2) / 2, places=2)
            self.assertAlmostEqual(up, west[0][1] + (west[1][1] - west[0][1]) * (stress - 40) / 120, places=2)
        # What is drawn there has the colour of the group.
        drawn = browser.run("""
            const canvas = document.querySelector('.plot canvas');
            const scale = canvas.width / 640;
            return arguments[0].map(([x, y]) =>
              Array.from(canvas.getContext('2d').getImageData(x * scale, y * scale, 1, 1).data).slice(0, 3))""",
                            [points["part 1"], *west, [620, 20]])
        self.assertEqual(drawn[-1], [0, 0, 0])
        for colour, wanted in zip(drawn, [(47, 127, 209), *[(217, 102, 43)] * 4]):
            self.assertTrue(all(abs(one - other) <= 2 for one, other in zip(colour, wanted)), drawn)
        browser.picture("plot.png")
        box = browser.run("const {width, height} = document.querySelector('.plot svg').getBoundingClientRect();"
                          "return [width, height]")
        mouse = ActionChains(browser.driver)
        mouse.move_to_element_with_offset(browser.one(".plot svg"), west[0][0] * box[0] / 640 - box[0] / 2 + 4,
                                          west[0][1] * box[1] / 400 - box[1] / 2).perform()
        self.expect(lambda: browser.text(".tip"), "part 2 · Mass: 2000 g · Stress: 40 MPa · Maker: west")
        mouse.click().perform()
        self.wait_for_panel("part 2")
        self.expect(self.active, "part 2")
        browser.one("#plot").click()
        browser.wait("document.querySelector('.plot svg')")
        browser.one("#search").send_keys("west")
        self.wait_for_hits("4 of 10 objects")
        self.expect(lambda: browser.text(".tip"), "4 points.")
        self.expect_clean()
