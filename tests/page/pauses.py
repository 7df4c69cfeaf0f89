"""How long pages of twenty thousand objects keep the browser from answering, whatever is done with them."""

import contextlib
import os

from browser import Browser
from case import OPTIONS, PageCase, object_of

# In seconds of the processor's time. Users notice a tenth of a second, which a long run asks for: it is looked at by
# people. Elsewhere other work on the machine would decide, so only what has become many times as long is refused there.
LONGEST = 0.1 if os.environ.get("KORVANEJSON_LONG") else 1


def part(study, number, is_later):
    """A part that has another name and mass in the later one of two projects."""
    maker = {"value": f"maker {number}", "metaDataType": ""}
    mass = {"value": str(number + is_later), "metaDataType": "g" if number % 3 else "kg"}
    stress = {"value": str(study * number % 977), "metaDataType": "MPa"}
    name = f"part {study}-{number}" + " later" * is_later
    metadata = {"Mass": mass, "Stress": stress, "Maker": maker}
    return object_of(0, "CAEPART", name, dbkey=f"K{study}-{number}", metaData=metadata)


def document(studies, is_later=False):
    """Twenty thousand objects in a hundred studies."""
    models = [object_of(0, "CAEMODEL", f"study {study}", [part(study, number, is_later) for number in range(199)],
                        dbkey=f"K{study}") for study in range(studies)]
    return object_of(1, "SIMULATION", "many", models, dbkey="K")


class Pauses(PageCase):
    @contextlib.contextmanager
    def action(self, name):
        """What happens in the block, and what it leaves for later."""
        self.browser.mark("before " + name)
        yield
        self.settle(name)

    def settle(self, name):
        # The panel waits a moment for the next key.
        self.browser.run("return new Promise((done) => setTimeout(() =>"
                         "requestAnimationFrame(() => setTimeout(done)), 80))")
        self.browser.mark(name)

    def test_pauses(self):
        """Nothing that is done with a project, or with two of which every part differs, takes long."""
        self.browser = Browser(OPTIONS.screenshots, is_traced=True)
        self.addCleanup(self.browser.close)
        self.use_project(self.browser)
        self.use_comparison(self.browser)
        named = {name: tasks for name, tasks in self.browser.tasks().items() if not name.startswith("before ")}
        self.assertEqual(len(named), 17)
        for name, tasks in named.items():
            print(f"{name}: {max(tasks) * 1000:.0f} ms", end=", ", flush=True)
        self.assertEqual([name for name, tasks in named.items() if max(tasks) > LONGEST], [])

    def use_project(self, browser):
        browser.open(self.page("pauses", document(100)))
        self.settle("first showing")
        browser.one("#tree").click()
        with self.action("expand everything"):
            browser.press("HOME", "ARROW_DOWN", "*", "END")
            self.wait_for_panel("part 99-198")
        with self.action("select"):
            browser.press(*["ARROW_UP"] * 5, *["PAGE_UP"] * 5)
            browser.wait("!document.querySelector('#panel h2').textContent.endsWith('198')")
        with self.action("scroll"):
            browser.run("document.getElementById('tree').scrollTop = 28 * 10000")
            browser.wait("document.querySelector('#tree .row .name').textContent.startsWith('part 4')")
        with self.action("search"):
            browser.one("#search").send_keys("part 17-1")
            self.wait_for_hits("110 of 20,001 objects")
        with self.action("end of search"):
            browser.press("ESCAPE")
            self.wait_for_hits("")
        with self.action("filter"):
            browser.choose("#kind", "Part")
            self.wait_for_hits("19,900 of 20,001 objects")
        with self.action("plot"):
            browser.one("#plot").click()
            browser.wait("document.querySelector('.tip')?.textContent === '19,900 points.'")
        with self.action("groups of a plot"):
            browser.choose("#plot-by", "Maker")
            browser.wait("document.querySelectorAll('.legend li').length === 8")
        with self.action("pointer on a plot"):
            browser.run("""
                const svg = document.querySelector('.plot svg');
                const { left, top, width, height } = svg.getBoundingClientRect();
                for (let step = 0; step < 1; step += 0.1) {
                  svg.dispatchEvent(new PointerEvent('pointermove',
                    { clientX: left + step * width, clientY: top + step * height, bubbles: true }));
                }""")
        with self.action("search with a plot"):
            browser.one("#search").send_keys("part 17-1")
            browser.wait("document.querySelector('.tip')?.textContent === '110 points.'")

    def use_comparison(self, browser):
        later = self.file_of("pauses-later", document(50, True))
        browser.open(self.page("pauses-compared", document(50), later, "--ignore", "dates"))
        self.settle("first showing of two")
        self.assertIn(" changed", browser.text("#summary"))
        browser.one("#tree").click()
        with self.action("expand everything of two"):
            browser.press("HOME", "ARROW_DOWN", "*")
            browser.wait("document.querySelector('#tree .row:nth-child(3) .mark')")
        with self.action("select of two"):
            browser.press("END")
            self.wait_for_panel("part 49-198")
        with self.action("search of two"):
            browser.one("#search").send_keys("17-1")
            self.wait_for_hits("220 of 20,002 objects")
        with self.action("end of search of two"):
            browser.press("ESCAPE")
            self.wait_for_hits("")
        with self.action("differences"):
            browser.choose("#difference", "~")
            self.wait_for_hits("19,900 of 20,002 objects")
