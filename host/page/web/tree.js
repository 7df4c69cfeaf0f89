// The tree. Only the rows that can be seen are elements of the page, so that its size does not matter.

const ROW_HEIGHT = 28;
const INDENT = 18;
const DEEPEST_DRAWN = 20;
// Browsers do not scroll elements that are higher than some tens of millions of pixels.
const HIGHEST = 8000000;
const ROWS_BEYOND = 6;
const MOST_PRINTED = 5000;

function make(name, className, text) {
  const element = document.createElement(name);
  if (className) {
    element.className = className;
  }
  if (text !== undefined) {
    element.textContent = text;
  }
  return element;
}

/** The same for a text of the project, which can be of any script: it runs as its first letters do. */
function makeText(name, className, text) {
  const element = make(name, className, text);
  element.dir = 'auto';
  return element;
}

class TreeView {
  /** `does` has the functions select(place), enter(place), type(letter) and leave(). */
  constructor(element, project, does) {
    this.element = element;
    this.project = project;
    this.does = does;
    this.rows = new TreeRows(project);
    this.active = 0;
    this.space = make('div', 'space');
    this.space.setAttribute('role', 'presentation');
    element.replaceChildren(this.space);
    element.addEventListener('scroll', () => this.renderSoon());
    element.addEventListener('keydown', (event) => this.onKey(event));
    element.addEventListener('click', (event) => this.onClick(event));
    element.addEventListener('dblclick', (event) => this.onDoubleClick(event));
    new ResizeObserver(() => this.renderSoon()).observe(element);
    this.update();
  }

  /** Shows the objects that match, and what they are below; null shows all. */
  filter(matches) {
    this.rows.filter(matches);
    this.update();
    this.reveal(this.active);
  }

  /** Shows other rows. */
  update() {
    this.space.style.height = Math.min(this.height, HIGHEST) + 'px';
    this.element.classList.toggle('empty', this.rows.places.length === 0);
    this.render();
  }

  get height() {
    return this.rows.places.length * ROW_HEIGHT;
  }

  renderSoon() {
    this.waiting ??= requestAnimationFrame(() => this.render());
  }

  /** The first row that can be seen, whole or in part, as a number with a fraction. */
  get firstRow() {
    const { scrollTop, clientHeight } = this.element;
    const height = this.height;
    if (height <= HIGHEST) {
      return scrollTop / ROW_HEIGHT;
    }
    return scrollTop / (HIGHEST - clientHeight) * (height - clientHeight) / ROW_HEIGHT;
  }

  scrollToRow(row) {
    const height = this.height;
    const { clientHeight } = this.element;
    const scale = height <= HIGHEST ? 1 : (HIGHEST - clientHeight) / (height - clientHeight);
    this.element.scrollTop = row * ROW_HEIGHT * scale;
  }

  render() {
    cancelAnimationFrame(this.waiting);
    this.waiting = undefined;
    if (this.isPrinting) {
      return;
    }
    const first = this.firstRow;
    const from = Math.max(0, Math.floor(first) - ROWS_BEYOND);
    const visible = Math.ceil(this.element.clientHeight / ROW_HEIGHT);
    const to = Math.min(this.rows.places.length, Math.floor(first) + visible + ROWS_BEYOND);
    const elements = [];
    for (let row = from; row < to; ++row) {
      const element = this.makeRow(this.rows.places[row]);
      element.style.top = this.element.scrollTop + (row - first) * ROW_HEIGHT + 'px';
      elements.push(element);
    }
    this.space.replaceChildren(...elements);
    const row = this.rows.rowOf[this.active];
    if (row >= from && row < to) {
      this.element.setAttribute('aria-activedescendant', this.idOf(this.active));
    } else {
      this.element.removeAttribute('aria-activedescendant');
    }
  }

  idOf(place) {
    return this.element.id + '-' + place;
  }

  makeRow(place) {
    const { project } = this;
    const object = project.objects[place];
    const isExpandable = this.rows.isExpandable(place);
    const element = make('div', 'row');
    element.id = this.idOf(place);
    element.setAttribute('role', 'treeitem');
    element.setAttribute('aria-level', project.depth[place] + 1);
    element.setAttribute('aria-posinset', this.rows.position[place]);
    element.setAttribute('aria-setsize', this.rows.beside[object.parent + 1]);
    element.setAttribute('aria-selected', place === this.active);
    if (isExpandable) {
      element.setAttribute('aria-expanded', this.rows.isExpanded(place));
    }
    element.classList.toggle('above', Boolean(this.rows.matches) && !this.rows.matches[place]);
    element.style.paddingInlineStart = Math.min(project.depth[place], DEEPEST_DRAWN) * INDENT + 4 + 'px';
    const sign = make('span', 'sign', isExpandable ? (this.rows.isExpanded(place) ? '▾' : '▸') : '');
    sign.setAttribute('aria-hidden', 'true');
    element.append(sign);
    if (project.depth[place] > DEEPEST_DRAWN) {
      element.append(make('span', 'depth', '(' + project.depth[place] + ') '));
    }
    for (const mark of new Set((project.marks.get(place) ?? []).map((one) => one.mark))) {
      const sign = make('span', 'mark ' + MARKS[mark], mark);
      sign.append(make('span', 'word', ' ' + MARKS[mark]));
      element.append(sign);
    }
    element.append(makeText('span', 'name', project.name(place)), make('span', 'kind', object.kind));
    const files = (object.files ?? []).length;
    if (files > 0) {
      element.append(make('span', 'count', countOf(files, 'file', 'files')));
    }
    return element;
  }

  /** Gives the object a row, and scrolls there. */
  reveal(place) {
    const before = this.rows.places;
    this.rows.openAbove(place);
    if (before !== this.rows.places) {
      this.update();
    }
    const row = this.rows.rowOf[place];
    if (row < 0) {
      return;
    }
    const first = this.firstRow;
    const visible = Math.floor(this.element.clientHeight / ROW_HEIGHT);
    if (row < first) {
      this.scrollToRow(row);
    } else if (row >= first + visible) {
      this.scrollToRow(row - visible + 1);
    }
    this.render();
  }

  select(place) {
    this.choose(place);
    this.does.select(place);
  }

  /** Marks the object as the chosen one, without a word to anybody. */
  choose(place) {
    this.active = place;
    this.reveal(place);
  }

  toggle(place, isExpanded = !this.rows.isExpanded(place)) {
    this.rows.setExpanded(place, isExpanded);
    this.rows.layOut();
    this.update();
  }

  selectRow(row) {
    if (this.rows.places.length > 0) {
      this.select(this.rows.places[Math.max(0, Math.min(this.rows.places.length - 1, row))]);
    }
  }

  /** The row of the active object; if it has none, the first row counts as the next one. */
  get activeRow() {
    return this.rows.rowOf[this.active];
  }

  placeAt(event) {
    const element = event.target.closest('.row');
    return element ? Number(element.id.slice(this.element.id.length + 1)) : -1;
  }

  onClick(event) {
    const place = this.placeAt(event);
    if (place < 0) {
      return;
    }
    if (event.target.classList.contains('sign') && this.rows.isExpandable(place)) {
      this.toggle(place);
    }
    this.select(place);
  }

  onDoubleClick(event) {
    const place = this.placeAt(event);
    if (place >= 0 && !event.target.classList.contains('sign') && this.rows.isExpandable(place)) {
      this.toggle(place);
    }
  }

  onKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) {
      return;
    }
    const page = Math.max(1, Math.floor(this.element.clientHeight / ROW_HEIGHT) - 1);
    const keys = {
      ArrowDown: () => this.selectRow(this.activeRow + 1),
      ArrowUp: () => this.selectRow(this.activeRow - 1),
      PageDown: () => this.selectRow(this.activeRow + page),
      PageUp: () => this.selectRow(this.activeRow - page),
      Home: () => this.selectRow(0),
      End: () => this.selectRow(this.rows.places.length - 1),
      ArrowRight: () => this.goIn(),
      ArrowLeft: () => this.goOut(),
      Enter: () => this.does.enter(this.active),
      Escape: () => this.does.leave(),
      '*': () => {
        this.rows.openBeside(this.active);
        this.update();
      },
    };
    if (keys[event.key]) {
      keys[event.key]();
    } else if (event.key.length === 1 && event.key !== ' ') {
      this.does.type(event.key);
    } else {
      return;
    }
    event.preventDefault();
  }

  goIn() {
    const place = this.active;
    if (this.activeRow < 0 || !this.rows.isExpandable(place)) {
      return;
    }
    if (this.rows.isExpanded(place)) {
      this.selectRow(this.activeRow + 1);
    } else {
      this.toggle(place, true);
    }
  }

  goOut() {
    const place = this.active;
    if (this.activeRow >= 0 && this.rows.isExpandable(place) && this.rows.isExpanded(place)) {
      this.toggle(place, false);
    } else if (this.project.objects[place].parent >= 0) {
      this.select(this.project.objects[place].parent);
    }
  }

  /** On paper there is no scrolling: all rows, up to a limit. */
  print() {
    const rows = this.rows.places.slice(0, MOST_PRINTED).map((place) => this.makeRow(place));
    if (rows.length < this.rows.places.length) {
      rows.push(make('div', 'row', 'and ' + (this.rows.places.length - rows.length).toLocaleString('en') + ' more'));
    }
    this.space.replaceChildren(...rows);
    // Until that is over, the size of the window means nothing.
    this.isPrinting = true;
  }

  endPrint() {
    this.isPrinting = false;
    this.render();
  }
}
