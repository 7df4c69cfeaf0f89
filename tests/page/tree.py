"""The tree of pages: keys of the keyboard, search, addresses, names that look like markup, many objects and levels."""

from case import OPTIONS, PageCase, large_document, object_of

LEVELS = 10000
HOSTILE = ["<script>window.hit=1</script>", "</script><script>window.hit=2</script>",
           "<img src=x onerror=window.hit=3>", "a & b &lt; c", "line\u2028two\u2029three", "\u202eabc",
           "<!--<script>", "quote \" back \\ slash", "]]>", "{{title}} {{script}}"]


def hostile_document():
    parts = [object_of(10 + index, "CAEPART", name, dbkey=name,
                       metaData={name: {"value": name, "metaDataType": name}})
             for index, name in enumerate(HOSTILE)]
    return object_of(1, "SIMULATION", "<b>", parts)


def deep_document():
    text = '{"id":"1","type":"SIMULATION","name":"deep","children":['
    text += '{"type":"CAEMODEL","name":"level","children":[' * LEVELS
    return text + '{"type":"CAEPART","name":"bottom"}' + "]}" * LEVELS + "]}"


class Tree(PageCase):
    def test_project(self):
        """The bracket of the examples: tree, metadata, files, keys of the keyboard, roles."""
        browser = self.browser
        # High enough for all rows.
        browser.open(self.page("bracket", OPTIONS.examples / "bracket-project"), window=(1280, 1400))
        browser.wait("document.querySelectorAll('#tree .row').length === 25")
        self.assertEqual(browser.text("h1"), "bracket-project")
        self.assertEqual(browser.driver.title, "bracket-project")
        self.assertEqual(self.rows()[0], "bracket-project")
        self.expect(self.active, "bracket-project")
        self.wait_for_panel("bracket-project")

        self.assertEqual(browser.attribute("#tree", "role"), "tree")
        self.assertTrue(browser.attribute("#tree", "aria-label"))
        first = browser.run("""
            return Array.from(document.querySelectorAll('#tree .row')).slice(0, 3).map((row) =>
              ['role', 'aria-level', 'aria-posinset', 'aria-expanded'].map((name) => row.getAttribute(name)))""")
        self.assertEqual(first[0], ["treeitem", "1", "1", "true"])
        self.assertEqual(first[1][:3], ["treeitem", "2", "1"])
        children = [row for row in browser.run("""
            return Array.from(document.querySelectorAll('#tree .row[aria-level="2"]'), (row) =>
              [Number(row.getAttribute('aria-posinset')), Number(row.getAttribute('aria-setsize'))])""")]
        self.assertEqual([row[0] for row in children], list(range(1, len(children) + 1)))
        self.assertEqual({row[1] for row in children}, {len(children)})

        browser.one("#tree").click()
        browser.press("HOME", "ARROW_DOWN")
        second = self.rows()[1]
        self.expect(self.active, second)
        browser.press("END")
        self.expect(self.active, self.rows()[-1])
        browser.press("ARROW_UP")
        self.expect(self.active, self.rows()[-2])
        browser.press("HOME")
        whole = self.rows()
        browser.press("ARROW_LEFT")
        self.expect(self.rows, ["bracket-project"])
        self.assertEqual(browser.attribute("#tree .row", "aria-expanded"), "false")
        browser.press("ARROW_RIGHT")
        self.expect(self.rows, whole)
        browser.press("ARROW_RIGHT")
        self.expect(self.active, second)
        self.wait_for_panel(second)
        browser.press("ARROW_LEFT")
        self.expect(self.active, "bracket-project")
        browser.press("ENTER")
        self.expect(self.focus, "panel")
        browser.press("ESCAPE")
        self.expect(self.focus, "tree")
        self.wait_for_panel("bracket-project")
        metadata = dict(zip(browser.texts(".metadata tbody th"), browser.texts(".metadata tbody td:nth-child(2)")))
        self.assertEqual(metadata["Studies"], "4")
        browser.picture("bracket.png")
        self.expect_clean()

    def test_search(self):
        """Typing in the tree searches; filters; the number of hits is announced; Escape ends it."""
        browser = self.browser
        browser.open(self.page("search", OPTIONS.examples / "bracket-project"))
        whole = self.rows()
        self.assertEqual(browser.attribute("#hits", "role"), "status")
        self.assertEqual(browser.attribute("#hits", "aria-live"), "polite")
        browser.one("#tree").click()
        browser.press("k")
        self.expect(self.focus, "search")
        # Without its dots, and in capitals.
        browser.press("UHLKORPER")
        browser.wait("document.getElementById('hits').textContent.startsWith('3 of ')")
        self.assertEqual(self.rows()[0], "bracket-project")
        self.assertIn("04-Kühlkörper", self.rows())
        self.assertLess(len(self.rows()), len(whole))
        self.assertEqual(browser.count("#tree .row.above"), len(self.rows()) - 3)
        browser.picture("search.png")
        browser.press("ENTER")
        self.expect(self.focus, "tree")
        self.expect(self.active, "04-Kühlkörper")
        self.wait_for_panel("04-Kühlkörper")
        browser.press("ESCAPE")
        self.wait_for_hits("")
        # What was found stays chosen, and can be seen.
        self.expect(self.active, "04-Kühlkörper")
        browser.choose("#kind", "Iteration")
        browser.wait("document.getElementById('hits').textContent !== ''")
        kinds = browser.texts("#tree .row:not(.above) .kind")
        self.assertEqual(set(kinds), {"Iteration"})
        browser.choose("#kind", "")
        browser.choose("#with", "no-files")
        browser.wait("document.getElementById('hits').textContent !== ''")
        self.assertEqual(browser.texts("#tree .row:not(.above) .count"), [])
        browser.choose("#with", "")
        self.wait_for_hits("")
        browser.one("#search").send_keys("no such object")
        browser.wait("document.getElementById('hits').textContent.startsWith('0 of ')")
        self.expect(self.rows, [])
        self.expect_clean()

    def test_address(self):
        """The address names the object, before and after it is chosen."""
        browser = self.browser
        page = self.page("address", hostile_document())
        browser.open(page, "#object-4")
        self.wait_for_panel(HOSTILE[2])
        self.expect(self.active, HOSTILE[2])
        browser.one("#tree").send_keys("\ue015")  # down
        self.wait_for_panel(HOSTILE[3])
        self.assertEqual(browser.run("return location.hash"), "#object-5")
        browser.run("location.hash = '#object-2'")
        self.wait_for_panel(HOSTILE[0])

    def test_hostile_names(self):
        """Names that look like markup are shown as they are; nothing that is put into the page runs."""
        browser = self.browser
        browser.open(self.page("hostile", hostile_document(), "--title", HOSTILE[1]))
        self.assertEqual(browser.driver.title, HOSTILE[1])
        self.assertEqual(browser.text("h1"), HOSTILE[1])
        self.expect(self.rows, ["<b>", *HOSTILE])
        browser.one("#tree").click()
        for name in HOSTILE:
            browser.press("ARROW_DOWN")
            self.wait_for_panel(name)
            self.assertEqual(browser.texts(".metadata tbody th, .metadata tbody td"), [name] * 3)
            self.assertIn(name, browser.texts(".facts dd"))
        browser.picture("hostile.png")
        self.assertIsNone(browser.run("return window.hit"))
        self.assertEqual(browser.count("script:not([type])"), 1)
        self.expect_clean()
        # The policy holds for whatever would come into the page nevertheless.
        browser.run("""
            document.body.insertAdjacentHTML('beforeend',
              '<img src="x.png" onerror="window.hit=4"><div onclick="window.hit=5" style="color:red">x</div>' +
              '<iframe src="https://korvane.example/"></iframe>');
            document.body.lastElementChild.previousElementSibling.click();
            const script = document.createElement('script');
            script.textContent = 'window.hit=6';
            document.body.append(script);""")
        browser.wait("watched.violations.length >= 4")
        self.assertIsNone(browser.run("return window.hit"))
        refused = {text.split()[0] for text in browser.watched()["violations"]}
        self.assertLessEqual({"img-src", "script-src-attr", "script-src-elem", "frame-src"}, refused)
        browser.driver.get_log("browser")

    def test_many_objects(self):
        """Twenty thousand objects: only what can be seen is in the page, and it can be searched."""
        browser = self.browser
        browser.open(self.page("large", large_document()))
        self.assertEqual(browser.text("#summary"), "20,001 objects, 0 files (0 B)")
        self.assertLess(browser.count("#tree .row"), 80)
        browser.one("#tree").click()
        browser.press("HOME", "ARROW_DOWN", "*", "END")
        self.expect(self.active, "part 99-198")
        self.wait_for_panel("part 99-198")
        self.assertLess(browser.count("#tree .row"), 80)
        self.assertLess(browser.count("*"), 1000)
        browser.run("document.getElementById('tree').scrollTop = 28 * 10000")
        browser.wait("document.querySelector('#tree .row .name').textContent.startsWith('part 4')")
        browser.picture("many.png")
        browser.one("#search").send_keys("17-")
        self.wait_for_hits("199 of 20,001 objects")
        browser.one("#search").send_keys("100")
        self.wait_for_hits("1 of 20,001 objects")
        self.expect(self.rows, ["large", "study 17", "part 17-100"])
        browser.press("ESCAPE")
        self.wait_for_hits("")
        self.expect_clean()

    def test_deep_tree(self):
        """Thousands of levels need no stack."""
        browser = self.browser
        browser.open(self.page("deep", deep_document()), f"#object-{LEVELS + 2}")
        self.wait_for_panel("bottom")
        self.expect(self.active, "bottom")
        self.assertEqual(browser.attribute("#tree [aria-selected=true]", "aria-level"), str(LEVELS + 2))
        self.assertIn(f"({LEVELS + 1}) ", browser.texts("#tree .depth"))
        browser.one("#search").send_keys("bottom")
        self.wait_for_hits(f"1 of {LEVELS + 2:,} objects")
        self.expect_clean()
