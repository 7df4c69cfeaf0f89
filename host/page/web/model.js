'use strict';

// How long a piece of work may keep the browser from answering to keys and pointer, in milliseconds.
const SLICE = 12;
// Where models of an object are looked for, and how many are offered.
const MOST_LOOKED_AT = 2000;
const MOST_MODELS = 100;

let lastBreath = 0;

/** Lets the browser do what waits. */
function breathe() {
  return new Promise((resolve) => setTimeout(() => {
    lastBreath = performance.now();
    resolve();
  }, 0));
}

/**
 * Calls `work` with the numbers from 0 to `count`, in slices. `isOver` can end it early, which gives false. Work that
 * follows other work at once belongs to its slice.
 */
async function inSlices(count, work, isOver = () => false) {
  for (let index = 0; index < count; ++index) {
    work(index);
    if ((index & 63) === 63 && performance.now() - lastBreath > SLICE) {
      await breathe();
      if (isOver()) {
        return false;
      }
    }
  }
  return true;
}

/** A text as searches compare it: without regard to letter case and to marks above and below letters. */
function comparable(text) {
  return text.normalize('NFD').replace(/\p{M}+/gu, '').toLowerCase();
}

function textOfSize(size) {
  const units = ['B', 'kB', 'MB', 'GB', 'TB', 'PB', 'EB'];
  let unit = 0;
  while (size >= 1000 && unit < units.length - 1) {
    size /= 1000;
    ++unit;
  }
  return (unit > 0 && size < 10 ? size.toFixed(1) : Math.round(size)) + ' ' + units[unit];
}

function countOf(number, singular, plural) {
  return number.toLocaleString('en') + ' ' + (number === 1 ? singular : plural);
}

/**
 * The objects of a project in the order of the tree: an object comes before everything below it. They are known by
 * their places in that order.
 */
class Project {
  /** `side` is 0, or 1 for the second of two that are compared. */
  constructor(head, side) {
    this.head = head;
    this.side = side;
    this.objects = [];
    this.files = [];
    this.marks = new Map();
    this.fileMarks = new Map();
  }

  get count() {
    return this.objects.length;
  }

  /** Reads the blocks of the page, one after the other, and works out what follows from them. */
  async read() {
    await readBlocks('files', this.side, (record) => this.files.push(record));
    await readBlocks('objects', this.side, (record) => this.objects.push(record));
    const count = this.count;
    this.depth = new Int32Array(count);
    // The place behind the last object below an object.
    this.end = new Int32Array(count);
    this.solvers = new Array(count);
    this.texts = new Array(count);
    this.placeOfIdentifier = new Map();
    await inSlices(count, (place) => this.complete(place));
    await inSlices(count, (index) => {
      const place = count - 1 - index;
      this.end[place] = Math.max(this.end[place], place + 1);
      const parent = this.objects[place].parent;
      if (parent >= 0) {
        this.end[parent] = Math.max(this.end[parent], this.end[place]);
      }
    });
  }

  complete(place) {
    const object = this.objects[place];
    if (object.file !== undefined) {
      // A file among the objects has what the file has.
      this.objects[place] = Object.assign({}, this.files[object.file], object);
    }
    const { parent, id } = object;
    this.depth[place] = parent < 0 ? 0 : this.depth[parent] + 1;
    this.solvers[place] = this.metadata(place, 'Solver') ?? (parent < 0 ? '' : this.solvers[parent]);
    if (!this.placeOfIdentifier.has(id)) {
      this.placeOfIdentifier.set(id, place);
    }
  }

  /** The value of a metadata entry; undefined if the object has none of this name. */
  metadata(place, name) {
    const entry = (this.objects[place].metadata ?? []).find((one) => one[0] === name);
    return entry && entry[1];
  }

  name(place) {
    const object = this.objects[place];
    return object.name || '(no name)';
  }

  hasChildren(place) {
    return this.end[place] > place + 1;
  }

  /** The attached files, and the file that the object is. */
  filesOf(place) {
    const object = this.objects[place];
    const files = (object.files ?? []).map(([file, role]) => ({ index: file, role, ...this.files[file] }));
    return object.file === undefined ? files
      : [{ index: object.file, role: 'this file', ...this.files[object.file] }, ...files];
  }

  /** The files with models of an object and of what is below it; of folders and projects only their own. */
  modelsOf(place) {
    const isMore = !['Project', 'AssemblyFolder'].includes(this.objects[place].kind);
    const end = isMore ? Math.min(this.end[place], place + MOST_LOOKED_AT) : place + 1;
    const models = new Map();
    for (let below = place; below < end && models.size < MOST_MODELS; ++below) {
      for (const file of this.filesOf(below)) {
        if (file.model) {
          models.set(file.index, file);
        }
      }
    }
    // A deck is what was computed; the geometry and the meshes of the parts come after it.
    return [...models.values()].sort((left, right) => (right.type === 'Deck') - (left.type === 'Deck'));
  }

  /** The objects above an object, from the root on. */
  above(place) {
    const places = [];
    for (let parent = this.objects[place].parent; parent >= 0; parent = this.objects[parent].parent) {
      places.push(parent);
    }
    return places.reverse();
  }

  /** Everything that a search looks for in an object. Made when it is first asked for. */
  text(place) {
    if (this.texts[place] === undefined) {
      const object = this.objects[place];
      const words = [object.name ?? '', object.kind, object.type ?? '', object.key ?? '', '#' + object.id];
      for (const [name, value, unit] of object.metadata ?? []) {
        words.push(name + ': ' + value + ' ' + unit);
      }
      for (const file of this.filesOf(place)) {
        words.push(file.name ?? '', file.place ?? '', file.type ?? '', file.role);
      }
      this.texts[place] = comparable(words.join('\n'));
    }
    return this.texts[place];
  }
}

/** Gives the records in the blocks of a kind to `take`. */
async function readBlocks(kind, side, take) {
  for (const element of document.querySelectorAll('script.' + kind + '[data-side="' + side + '"]')) {
    JSON.parse(element.textContent).forEach(take);
    element.remove();
    await breathe();
  }
}

/** The text of a block of bytes; empty if the page has none. */
function bytesBlock(kind, project, index) {
  return document.getElementById([kind, project.side, index].join('-'))?.textContent ?? '';
}
