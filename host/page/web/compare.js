// What a comparison of two projects has found.

const MARKS = { '+': 'added', '-': 'removed', '>': 'moved', '~': 'changed' };

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
    for (const [mark, identifier, text] of changes) {
      if (mark === '-') {
        this.add(0, identifier, mark, text);
      } else {
        this.add(1, identifier, mark, text);
        this.add(0, this.partners[1].get(identifier), mark, text);
      }
    }
    for (const side of [0, 1]) {
      this.markFiles(this.projects[side]);
      this.markBelow(this.projects[side], side === 0 ? '-' : '+');
    }
  }

  add(side, identifier, mark, text) {
    const project = this.projects[side];
    const put = (marks, key) => marks.set(key, [...(marks.get(key) ?? []), { mark, text }]);
    const place = project.placeOfIdentifier.get(identifier);
    if (place !== undefined) {
      put(project.marks, place);
    } else {
      put(project.fileMarks, identifier);
    }
  }

  /** An object whose files differ has changed. */
  markFiles(project) {
    project.objects.forEach((object, place) => {
      for (const [index] of object.files ?? []) {
        const file = project.files[index];
        for (const { mark, text } of project.fileMarks.get(file.id) ?? []) {
          const words = 'its file ' + (file.name || file.place) + ' ' + text;
          project.marks.set(place, [...(project.marks.get(place) ?? []), { mark: '~', text: words }]);
        }
      }
    });
  }

  /** What is below something that was added or removed is so, too, if it has no partner. */
  markBelow(project, alone) {
    const partners = this.partners[project.side];
    project.objects.forEach(({ parent, id }, place) => {
      const isAlone = project.marks.get(parent)?.some(({ mark }) => mark === alone);
      if (isAlone && !partners.has(id) && !project.marks.has(place)) {
        project.marks.set(place, [{ mark: alone, text: MARKS[alone] + ' with what is above it' }]);
      }
    });
  }

  /** The place of what an object is compared with in the other project; undefined if there is nothing. */
  partnerOf(side, place) {
    const identifier = this.partners[side].get(this.projects[side].objects[place].id);
    return this.projects[1 - side].placeOfIdentifier.get(identifier);
  }
}
