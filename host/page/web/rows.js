// Which objects of the tree have a row: those whose parents are open, or what a search has found.

// A tree of so few rows is opened when the page is.
const OPENED_AT_FIRST = 60;

class TreeRows {
  constructor(project) {
    this.project = project;
    this.isOpen = new Uint8Array(project.count);
    // While something is searched for, everything is open but what the user closes.
    this.isClosedInSearch = new Uint8Array(project.count);
    this.matches = null;
    this.isShown = null;
    this.openAtFirst();
    this.layOut();
  }

  /** Opens whole levels as long as there are few rows. */
  openAtFirst() {
    const { project } = this;
    const numbers = [];
    for (let place = 0; place < project.count; ++place) {
      const depth = project.depth[place];
      numbers[depth] = (numbers[depth] ?? 0) + 1;
    }
    let rows = numbers[0];
    let depth = 0;
    while (depth + 1 < numbers.length && (depth === 0 || rows + numbers[depth + 1] <= OPENED_AT_FIRST)) {
      rows += numbers[++depth];
    }
    for (let place = 0; place < project.count; ++place) {
      this.isOpen[place] = project.depth[place] < depth ? 1 : 0;
    }
  }

  /** Shows the objects that match, and what they are below; null shows all. */
  filter(matches) {
    this.matches = matches;
    this.isShown = null;
    if (matches) {
      const { objects } = this.project;
      this.isClosedInSearch.fill(0);
      this.isShown = Uint8Array.from(matches);
      for (let place = objects.length - 1; place > 0; --place) {
        if (this.isShown[place]) {
          this.isShown[objects[place].parent] = 1;
        }
      }
    }
    this.layOut();
  }

  isExpanded(place) {
    return this.matches ? !this.isClosedInSearch[place] : Boolean(this.isOpen[place]);
  }

  isExpandable(place) {
    const { project } = this;
    if (!this.isShown) {
      return project.hasChildren(place);
    }
    for (let below = place + 1; below < project.end[place]; below = project.end[below]) {
      if (this.isShown[below]) {
        return true;
      }
    }
    return false;
  }

  /** Works out which object each row has, and where it stands among those beside it. */
  layOut() {
    const { count, end, objects } = this.project;
    this.places = [];
    this.rowOf = new Int32Array(count).fill(-1);
    this.position = new Int32Array(count);
    this.beside = new Int32Array(count + 1);
    for (let place = 0; place < count;) {
      if (this.isShown && !this.isShown[place]) {
        place = end[place];
        continue;
      }
      this.rowOf[place] = this.places.push(place) - 1;
      this.position[place] = ++this.beside[objects[place].parent + 1];
      place = this.isExpanded(place) ? place + 1 : end[place];
    }
  }

  setExpanded(place, isExpanded) {
    if (this.matches) {
      this.isClosedInSearch[place] = isExpanded ? 0 : 1;
    } else {
      this.isOpen[place] = isExpanded ? 1 : 0;
    }
  }

  /** Opens everything above the object, so that it has a row if the search shows it. */
  openAbove(place) {
    const closed = this.project.above(place).filter((above) => !this.isExpanded(above));
    for (const above of closed) {
      this.setExpanded(above, true);
    }
    if (closed.length > 0) {
      this.layOut();
    }
  }

  /** Opens the object and those beside it. */
  openBeside(place) {
    const { objects, end, count } = this.project;
    const parent = objects[place].parent;
    for (let one = parent + 1; one < (parent < 0 ? count : end[parent]); one = end[one]) {
      this.setExpanded(one, true);
    }
    this.layOut();
  }
}
