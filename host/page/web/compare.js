// What a comparison of two projects has found.

const MARKS = { '+': 'added', '-': 'removed', '>': 'moved', '~': 'changed' };

/** Adds a value to those that the map has under the key. */
function addTo(map, key, value) {
  if (map.has(key)) {
    map.get(key).push(value);
  } else {
    map.set(key, [value]);
  }
}

/** The differences of two projects, as marks of their objects and files. */
class Comparison {
  constructor(projects) {
    this.projects = projects;
    // By the identifier in the one project, that in the other.
    this.partners = [new Map(), new Map()];
  }

  async read() {
    await readBlocks('pairs', 0, ([first, second]) => {
      this.partners[0].set(first, second);
      this.partners[1].set(second, first);
    });
    const changes = [];
    await readBlocks('changes', 0, (change) => changes.push(change));
    await inSlices(changes.length, (index) => {
      const [mark, identifier, text] = changes[index];
      if (mark === '-') {
        this.add(0, identifier, mark, text);
      } else {
        this.add(1, identifier, mark, text);
        this.add(0, this.partners[1].get(identifier), mark, text);
      }
    });
    for (const [side, alone] of [[0, '-'], [1, '+']]) {
      const project = this.projects[side];
      await inSlices(project.count, (place) => this.markFiles(project, place));
      const isAlone = new Uint8Array(project.count);
      await inSlices(project.count, (place) => this.markBelow(project, place, { alone, isAlone }));
    }
  }

  add(side, identifier, mark, text) {
    const project = this.projects[side];
    const place = project.placeOfIdentifier.get(identifier);
    if (place !== undefined) {
      addTo(project.marks, place, { mark, text });
    } else {
      addTo(project.fileMarks, identifier, { mark, text });
    }
  }

  /** An object whose files differ has changed. */
  markFiles(project, place) {
    for (const [index] of project.objects[place].files ?? []) {
      const file = project.files[index];
      for (const { text } of project.fileMarks.get(file.id) ?? []) {
        addTo(project.marks, place, { mark: '~', text: 'its file ' + (file.name || file.place) + ' ' + text });
      }
    }
  }

  /** What is below something that was added or removed is so, too, if it has no partner. */
  markBelow(project, place, { alone, isAlone }) {
    const { parent, id } = project.objects[place];
    if (isAlone[parent] && !this.partners[project.side].has(id) && !project.marks.has(place)) {
      addTo(project.marks, place, { mark: alone, text: MARKS[alone] + ' with what is above it' });
    }
    isAlone[place] = project.marks.get(place)?.some(({ mark }) => mark === alone) ? 1 : 0;
  }

  /** The place of what an object is compared with in the other project; undefined if there is nothing. */
  partnerOf(side, place) {
    const identifier = this.partners[side].get(this.projects[side].objects[place].id);
    return this.projects[1 - side].placeOfIdentifier.get(identifier);
  }
}
