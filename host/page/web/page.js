// Puts the page together.

const byId = (id) => document.getElementById(id);

/** Fills a list of choices: one for everything, and one for each value with its number of objects. */
function fillChoices(select, everything, values) {
  select.replaceChildren(new Option(everything, ''));
  for (const [name, count] of values) {
    select.append(new Option(count === undefined ? name : name + ' (' + count.toLocaleString('en') + ')', name));
  }
  select.disabled = values.length === 0;
}

function setUpTheme() {
  const select = byId('theme');
  const apply = () => {
    document.documentElement.dataset.theme = select.value;
  };
  // A browser may not keep anything for pages from files.
  try {
    select.value = localStorage.getItem('korvane-json-theme') ?? '';
  } catch { /* It is as the system says then. */ }
  select.addEventListener('change', () => {
    apply();
    try {
      localStorage.setItem('korvane-json-theme', select.value);
    } catch { /* The choice holds until the page is closed. */ }
  });
  apply();
}

class PageView {
  constructor(project) {
    this.project = project;
    this.search = new Search(project);
    this.panel = new Panel(byId('panel'), project, (place) => {
      this.tree.select(place);
      this.tree.element.focus();
    });
    this.tree = new TreeView(byId('tree'), project, {
      select: (place) => this.select(place),
      enter: () => byId('panel').focus(),
      type: (letter) => this.beginSearch(letter),
      leave: () => this.clear(),
    });
  }

  async start() {
    const { project } = this;
    const kinds = await this.search.values((place) => project.objects[place].kind);
    const solvers = await this.search.values((place) => project.solvers[place]);
    fillChoices(byId('kind'), 'all', kinds);
    fillChoices(byId('solver'), 'all', solvers);
    byId('with').replaceChildren(new Option('anything', ''),
      ...FILE_CONDITIONS.map(([name, text]) => new Option(text, name)));
    byId('summary').textContent = this.summary();
    byId('controls').addEventListener('submit', (event) => event.preventDefault());
    byId('search').addEventListener('input', () => this.find());
    for (const id of ['kind', 'solver', 'with']) {
      byId(id).addEventListener('change', () => this.find());
    }
    byId('clear').addEventListener('click', () => this.clear());
    byId('search').addEventListener('keydown', (event) => this.onSearchKey(event));
    byId('panel').addEventListener('keydown', (event) => {
      if (event.key === 'Escape') {
        this.tree.element.focus();
      }
    });
    window.addEventListener('hashchange', () => this.goToAddress());
    window.addEventListener('beforeprint', () => this.tree.print());
    window.addEventListener('afterprint', () => this.tree.endPrint());
    this.goToAddress();
    await this.find();
    document.documentElement.dataset.ready = 'true';
  }

  summary() {
    const { project } = this;
    const bytes = project.files.reduce((sum, file) => sum + (file.size ?? 0), 0);
    return countOf(project.count, 'object', 'objects') + ', ' +
      countOf(project.files.length, 'file', 'files') + ' (' + textOfSize(bytes) + ')';
  }

  /** Selects the object that the address names, as #object-12; without one the root. */
  goToAddress() {
    const found = /^#object-(\d+)$/.exec(location.hash);
    const place = found ? this.project.placeOfIdentifier.get(Number(found[1])) : undefined;
    this.tree.select(place ?? 0);
  }

  select(place) {
    const address = '#object-' + this.project.objects[place].id;
    if (location.hash !== address && (location.hash || place > 0)) {
      history.replaceState(null, '', address);
    }
    // While a key is held down, only where it stops is shown.
    clearTimeout(this.showing);
    this.showing = setTimeout(() => this.panel.show(place), this.shown === undefined ? 0 : 40);
    this.shown = place;
  }

  async find() {
    const found = await this.search.find({
      words: byId('search').value, kind: byId('kind').value, solver: byId('solver').value, files: byId('with').value,
    });
    if (!found) {
      return;
    }
    this.tree.filter(found.matches);
    byId('hits').textContent = found.matches
      ? found.count.toLocaleString('en') + ' of ' + countOf(this.project.count, 'object', 'objects')
      : '';
    this.firstHit = found.matches ? found.matches.indexOf(1) : 0;
  }

  beginSearch(letter) {
    byId('search').value += letter;
    byId('search').focus();
    this.find();
  }

  clear() {
    for (const id of ['search', 'kind', 'solver', 'with']) {
      byId(id).value = '';
    }
    this.find();
  }

  onSearchKey(event) {
    if (event.key === 'Escape') {
      this.clear();
      this.tree.element.focus();
    } else if (event.key === 'Enter' || event.key === 'ArrowDown') {
      event.preventDefault();
      this.tree.element.focus();
      if (this.firstHit >= 0) {
        this.tree.select(this.firstHit);
      }
    }
  }
}

async function start() {
  setUpTheme();
  const project = new Project(JSON.parse(blocks('head')[0].textContent));
  byId('hits').textContent = 'Reading ' + countOf(project.head.objects, 'object', 'objects') + '…';
  await project.read([...blocks('files'), ...blocks('objects')]);
  await new PageView(project).start();
}

start();
