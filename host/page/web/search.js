// What of a project is shown: the words that are searched for, and the filters.

const FILE_CONDITIONS = [
  ['files', 'files', (files) => files.length > 0],
  ['no-files', 'no files', (files) => files.length === 0],
  ['mesh', 'a mesh', (files) => files.some(isMesh)],
  ['mesh-only', 'a mesh, no CAD file', (files) => files.some(isMesh) && !files.some(isGeometry)],
  ['cad', 'a CAD file', (files) => files.some(isGeometry)],
  ['model', 'a model to look at', (files) => files.some((file) => file.model)],
  ['picture', 'pictures', (files) => files.some((file) => file.picture)],
  ['missing', 'missing files', (files) => files.some(isMissing)],
  ['key', 'a key', (files, object) => Boolean(object.key)],
];

function isMesh(file) {
  return file.role === 'mesh' || file.role === 'active mesh';
}

function isGeometry(file) {
  return file.role === 'CAD file';
}

function isMissing(file) {
  return Boolean(file.place) && file.size === undefined;
}

class Search {
  constructor(project) {
    this.project = project;
    this.run = 0;
  }

  /**
   * Finds the objects that have all words and meet all filters. Gives null if another search has begun in the
   * meantime, or if there is nothing to search for; otherwise the objects that match, and how many.
   */
  async find({ words, kind, solver, files, difference }) {
    const run = ++this.run;
    const { project } = this;
    const wanted = comparable(words).split(/\s+/).filter(Boolean);
    const condition = FILE_CONDITIONS.find(([name]) => name === files)?.[2];
    if (wanted.length === 0 && !kind && !solver && !condition && !difference) {
      return { matches: null, count: project.count };
    }
    const matches = new Uint8Array(project.count);
    let count = 0;
    const isWhole = await inSlices(project.count, (place) => {
      const object = project.objects[place];
      const isMatch = (!kind || object.kind === kind) && (!solver || project.solvers[place] === solver) &&
        (!condition || condition(project.filesOf(place), object)) &&
        (!difference || this.differs(place, difference)) &&
        wanted.every((word) => project.text(place).includes(word));
      matches[place] = isMatch ? 1 : 0;
      count += matches[place];
    }, () => run !== this.run);
    return isWhole ? { matches, count } : null;
  }

  differs(place, difference) {
    const marks = this.project.marks.get(place);
    return Boolean(marks) && (difference === 'any' || marks.some(({ mark }) => mark === difference));
  }

  /** Counts the objects for each value that a filter can take. */
  async count(numbers, valueOf) {
    await inSlices(this.project.count, (place) => {
      const value = valueOf(place);
      if (value) {
        numbers.set(value, (numbers.get(value) ?? 0) + 1);
      }
    });
  }
}
