// Puts the page together.

const byId = (id) => document.getElementById(id);

/** Fills a list of choices: one for everything, and one for each value with its number of objects. */
function fillChoices(select, everything, numbers) {
  select.replaceChildren(new Option(everything, ''));
  for (const [name, count] of [...numbers].sort(([left], [right]) => (left < right ? -1 : 1))) {
    select.append(new Option(name + ' (' + count.toLocaleString('en') + ')', name));
  }
  select.disabled = numbers.size === 0;
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

const FILTERS = ['search', 'kind', 'solver', 'with', 'difference'];

/** A project with its tree, under its name where there are two. */
class Side {
  constructor(project, page) {
    this.project = project;
    this.search = new Search(project);
    const element = make('div', 'tree');
    element.id = project.side === 0 ? 'tree' : 'other';
    element.tabIndex = 0;
    element.setAttribute('role', 'tree');
    const part = make('div', 'side');
    if (page.projects.length > 1) {
      const heading = makeText('h2', '', project.head.sides[project.side]);
      heading.id = 'name-' + element.id;
      element.setAttribute('aria-labelledby', heading.id);
      part.append(heading);
    } else {
      element.setAttribute('aria-label', 'Objects of the project');
    }
    part.append(element);
    byId('trees').append(part);
    this.tree = new TreeView(element, project, {
      select: (place) => page.select(project, place),
      enter: () => byId('panel').focus(),
      type: (letter) => page.beginSearch(letter),
      leave: () => page.clear(),
    });
  }

  /** Gives null if another search has begun. */
  async find(query) {
    const found = await this.search.find(query);
    if (found) {
      this.tree.filter(found.matches);
      this.firstHit = found.matches ? found.matches.indexOf(1) : 0;
    }
    return found;
  }
}

class PageView {
  constructor(projects, comparison) {
    this.projects = projects;
    this.comparison = comparison;
    this.panel = new Panel(byId('panel'), {
      select: (project, place) => {
        const { tree } = this.sides[project.side];
        tree.select(place);
        tree.element.focus();
      },
      partner: (project, place) => comparison
        ? { other: projects[1 - project.side], found: comparison.partnerOf(project.side, place) } : {},
    });
    this.sides = [];
  }

  async start() {
    for (const project of this.projects) {
      await breathe();
      this.sides.push(new Side(project, this));
    }
    await breathe();
    document.documentElement.classList.toggle('compared', Boolean(this.comparison));
    await this.fillFilters();
    byId('summary').textContent = this.summary();
    byId('controls').addEventListener('submit', (event) => event.preventDefault());
    byId('search').addEventListener('input', () => this.findSoon());
    for (const id of FILTERS.slice(1)) {
      byId(id).addEventListener('change', () => this.find());
    }
    byId('clear').addEventListener('click', () => this.clear());
    byId('plot').addEventListener('click', () => this.openPlot());
    byId('search').addEventListener('keydown', (event) => this.onSearchKey(event));
    byId('panel').addEventListener('keydown', (event) => {
      if (event.key === 'Escape') {
        this.sides[this.side].tree.element.focus();
      }
    });
    window.addEventListener('hashchange', () => this.goToAddress());
    window.addEventListener('beforeprint', () => this.sides.forEach(({ tree }) => tree.print()));
    window.addEventListener('afterprint', () => this.sides.forEach(({ tree }) => tree.endPrint()));
    this.goToAddress();
    await this.find();
    document.documentElement.dataset.ready = 'true';
  }

  async fillFilters() {
    const kinds = new Map();
    const solvers = new Map();
    for (const { search, project } of this.sides) {
      await search.count(kinds, (place) => project.objects[place].kind);
      await search.count(solvers, (place) => project.solvers[place]);
    }
    fillChoices(byId('kind'), 'all', kinds);
    fillChoices(byId('solver'), 'all', solvers);
    byId('with').replaceChildren(new Option('anything', ''),
      ...FILE_CONDITIONS.map(([name, text]) => new Option(text, name)));
    byId('differences').hidden = !this.comparison;
  }

  summary() {
    if (this.comparison) {
      return this.projects[0].head.comparison;
    }
    const [project] = this.projects;
    const bytes = project.files.reduce((sum, file) => sum + (file.size ?? 0), 0);
    return countOf(project.count, 'object', 'objects') + ', ' +
      countOf(project.files.length, 'file', 'files') + ' (' + textOfSize(bytes) + ')';
  }

  /** The address of an object: #object-12, and of the first of two projects #first-12. */
  addressOf(project, place) {
    const isFirst = this.comparison && project.side === 0;
    return (isFirst ? '#first-' : '#object-') + project.objects[place].id;
  }

  /** Selects the object that the address names; without one the root. */
  goToAddress() {
    const [, word, identifier] = /^#(object|first)-(\d+)$/.exec(location.hash) ?? [];
    const side = word === 'first' ? 0 : this.sides.length - 1;
    this.sides[side].tree.select(this.projects[side].placeOfIdentifier.get(Number(identifier)) ?? 0);
  }

  select(project, place) {
    const address = this.addressOf(project, place);
    if (location.hash !== address && (location.hash || place > 0)) {
      history.replaceState(null, '', address);
    }
    const partner = this.comparison?.partnerOf(project.side, place);
    if (partner !== undefined) {
      this.sides[1 - project.side].tree.choose(partner);
    }
    // While a key is held down, only where it stops is shown.
    clearTimeout(this.showing);
    this.showing = setTimeout(() => this.panel.show(project, place), this.side === undefined ? 0 : 40);
    this.side = project.side;
  }

  /** Shows a plot of the project that was looked at last, in place of the object. */
  async openPlot() {
    const side = this.sides[this.side];
    clearTimeout(this.showing);
    this.plot = new PlotView(side.project, {
      matches: () => side.tree.rows.matches,
      select: (place) => side.tree.select(place),
    });
    byId('panel').setAttribute('aria-labelledby', 'plot');
    byId('panel').replaceChildren(this.plot.part);
    await this.plot.open();
  }

  async find() {
    const [words, kind, solver, files, difference] = FILTERS.map((id) => byId(id).value);
    const found = await Promise.all(this.sides.map((side) => side.find({ words, kind, solver, files, difference })));
    if (found.includes(null)) {
      return;
    }
    if (this.plot?.part.isConnected) {
      this.plot.draw();
    }
    const sum = (numbers) => numbers.reduce((all, one) => all + one, 0);
    byId('hits').textContent = found[0].matches
      ? sum(found.map((one) => one.count)).toLocaleString('en') + ' of ' +
        countOf(sum(this.projects.map((project) => project.count)), 'object', 'objects')
      : '';
  }

  /** Letters that are typed faster than the browser can show them are searched for together. */
  findSoon() {
    clearTimeout(this.finding);
    this.finding = setTimeout(() => this.find(), 0);
  }

  beginSearch(letter) {
    byId('search').value += letter;
    byId('search').focus();
    this.findSoon();
  }

  clear() {
    for (const id of FILTERS) {
      byId(id).value = '';
    }
    this.find();
  }

  onSearchKey(event) {
    // The tree that was used last, if something was found there.
    const sides = [this.sides[this.side], ...this.sides];
    if (event.key === 'Escape') {
      this.clear();
      sides[0].tree.element.focus();
    } else if (event.key === 'Enter' || event.key === 'ArrowDown') {
      event.preventDefault();
      const { tree, firstHit } = sides.find((side) => side.firstHit >= 0) ?? sides[0];
      tree.element.focus();
      if (firstHit >= 0) {
        tree.select(firstHit);
      }
    }
  }
}

async function start() {
  setUpTheme();
  const head = JSON.parse(document.querySelector('script.head').textContent);
  byId('hits').textContent = 'Reading…';
  const projects = head.sides.map((name, side) => new Project(head, side));
  for (const project of projects) {
    await project.read();
  }
  let comparison;
  if (projects.length > 1) {
    comparison = new Comparison(projects);
    await comparison.read();
  }
  await new PageView(projects, comparison).start();
}

start();
