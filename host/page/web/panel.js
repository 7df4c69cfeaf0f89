// What is known of the selected object.

// How many rows of a table are shown at once.
const MOST_ROWS = 500;
const MOST_PICTURES = 12;
const LONGEST_VALUE = 4000;

/** A date as people read it; a text that is not a date stays as it is. */
function textOfDate(text) {
  return /^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$/.test(text) ? text.slice(0, 10) + ' ' + text.slice(11, 16) + ' UTC' : text;
}

/** A text of the project; a very long one is cut, with a button for the rest. */
function value(text) {
  const element = makeText('span', 'value', text.slice(0, LONGEST_VALUE));
  if (text.length > LONGEST_VALUE) {
    const button = make('button', 'more', 'Show all ' + text.length.toLocaleString('en') + ' characters');
    button.addEventListener('click', () => {
      element.textContent = text;
    });
    element.append('… ', button);
  }
  return element;
}

function table(className, caption, headings) {
  const element = make('table', className);
  element.append(make('caption', '', caption));
  const row = element.createTHead().insertRow();
  for (const heading of headings) {
    const cell = make('th', '', heading);
    cell.scope = 'col';
    row.append(cell);
  }
  element.createTBody();
  return element;
}

/** Gives as many of the entries to `add` as are shown at once; a button at the end of the part gives it more. */
function addInPortions(part, entries, words, add) {
  let shown = 0;
  const button = make('button', 'more', 'Show more ' + words);
  const addSome = () => {
    entries.slice(shown, shown + MOST_ROWS).forEach(add);
    shown += MOST_ROWS;
    button.hidden = shown >= entries.length;
  };
  button.addEventListener('click', addSome);
  addSome();
  part.append(button);
}

/** The value and the unit of a metadata entry as people read them: sizes of files are not counted in bytes. */
function shownValue(text, unit) {
  return unit === 'B' && /^\d+$/.test(text) ? [textOfSize(Number(text)), ''] : [text, unit];
}

class Panel {
  /** `does` has the functions select(project, place) and partner(project, place). */
  constructor(element, does) {
    this.element = element;
    this.does = does;
  }

  select(place) {
    this.does.select(this.project, place);
  }

  show(project, place) {
    this.project = project;
    const object = project.objects[place];
    const heading = makeText('h2', '', project.name(place));
    heading.id = 'object';
    this.element.setAttribute('aria-labelledby', heading.id);
    const files = project.filesOf(place);
    this.element.replaceChildren(this.path(place), heading, this.facts(place));
    if (project.marks.has(place)) {
      this.element.append(this.differences(project.marks.get(place)));
    }
    if (object.metadata) {
      this.element.append(this.metadata(object.metadata));
    }
    const models = project.modelsOf(place);
    if (models.length > 0) {
      this.element.append(modelPart(models, project));
    }
    const pictures = files.filter((file) => file.picture);
    if (pictures.length > 0) {
      this.element.append(this.pictures(pictures));
    }
    if (files.length > 0) {
      this.element.append(this.files(files));
    }
    this.element.scrollTop = 0;
  }

  /** The objects above, each a button that selects it. */
  path(place) {
    const element = make('nav', 'path');
    element.setAttribute('aria-label', 'Above this object');
    const above = this.project.above(place);
    const shown = above.length > 12 ? [...above.slice(0, 6), -1, ...above.slice(-5)] : above;
    for (const one of shown) {
      if (one < 0) {
        element.append('… / ');
        continue;
      }
      const button = makeText('button', '', this.project.name(one));
      button.type = 'button';
      button.addEventListener('click', () => this.select(one));
      element.append(button, ' / ');
    }
    return element;
  }

  facts(place) {
    const { project } = this;
    const object = project.objects[place];
    const list = make('dl', 'facts');
    const add = (name, content) => {
      if (content) {
        const detail = make('dd');
        detail.append(typeof content === 'string' ? value(content) : content);
        list.append(make('dt', '', name), detail);
      }
    };
    add('Kind', object.kind + (object.type ? ' (' + object.type + ')' : ''));
    add('Identifier', String(object.id));
    add('Key', object.key);
    add('Created', object.created && textOfDate(object.created));
    add('By', object.creator);
    add('Solver', project.solvers[place]);
    if (object.shows) {
      add('Shows', this.link(project, project.placeOfIdentifier.get(object.shows)) ?? '#' + object.shows);
    }
    const { other, found } = this.does.partner(project, place);
    add('Compared with', other && (this.link(other, found) ?? 'nothing'));
    return list;
  }

  /** A button that selects the object; undefined if there is none. */
  link(project, place) {
    if (place === undefined) {
      return undefined;
    }
    const button = makeText('button', 'link', project.name(place));
    button.type = 'button';
    button.addEventListener('click', () => this.does.select(project, place));
    return button;
  }

  differences(marks) {
    const element = make('section', 'differences');
    element.setAttribute('aria-label', 'Differences');
    const list = make('ul');
    element.append(make('h3', '', countOf(marks.length, 'difference', 'differences')), list);
    addInPortions(element, marks, 'differences', ({ mark, text }) => {
      const item = make('li', MARKS[mark]);
      item.append(make('span', 'mark ' + MARKS[mark], mark), ' ', value(text));
      list.append(item);
    });
    return element;
  }

  metadata(entries) {
    const part = make('div');
    const element = table('metadata', 'Metadata', ['Name', 'Value', 'Unit']);
    part.append(element);
    addInPortions(part, entries, 'metadata', ([name, text, unit]) => {
      const row = element.tBodies[0].insertRow();
      const heading = make('th');
      heading.scope = 'row';
      heading.append(value(name));
      row.append(heading);
      for (const shown of shownValue(text, unit)) {
        row.insertCell().append(value(shown));
      }
    });
    return part;
  }

  files(files) {
    const part = make('div');
    const element = table('files', countOf(files.length, 'file', 'files'),
      ['Name', 'Role', 'Type', 'Size', 'Folder']);
    part.append(element);
    addInPortions(part, files, 'files', (file) => this.addFile(element.tBodies[0].insertRow(), file));
    return part;
  }

  addFile(row, file) {
    const heading = make('th');
    heading.scope = 'row';
    const place = file.place ?? '';
    const end = Math.max(place.lastIndexOf('/'), place.lastIndexOf('\\'));
    heading.append(value(place.slice(end + 1) || file.name || '(no name)'));
    row.append(heading);
    row.insertCell().textContent = file.role;
    row.insertCell().textContent = file.type + ', ' + file.format;
    const size = row.insertCell();
    size.className = 'size';
    size.textContent = file.outside ? 'not read' : isMissing(file) ? 'missing'
      : file.size === undefined ? '–' : textOfSize(file.size);
    const where = row.insertCell();
    where.className = 'where';
    where.append(value(place.slice(0, Math.max(end, 0))));
    if (file.outside) {
      where.append(make('div', 'why', 'outside of the directories that this page was made from'));
    }
    if (file.key) {
      where.append(make('div', 'key', 'key ' + file.key));
    }
  }

  pictures(files) {
    const element = make('div', 'pictures');
    const { project } = this;
    let shown = 0;
    const addSome = async () => {
      const end = Math.min(shown + MOST_PICTURES, files.length);
      more.hidden = end === files.length;
      while (shown < end) {
        element.insertBefore(this.picture(project, files[shown++]), more);
        // One large picture takes time enough.
        await breathe();
      }
    };
    const more = make('button', 'more', 'Show more pictures');
    more.addEventListener('click', addSome);
    element.append(more);
    addSome();
    return element;
  }

  picture(project, file) {
    const figure = make('figure');
    const content = bytesBlock('picture', project, file.index);
    if (content) {
      const image = make('img');
      image.alt = file.name || file.place;
      image.decoding = 'async';
      image.src = 'data:' + file.picture + ';base64,' + content;
      const button = make('button');
      button.type = 'button';
      button.title = 'Larger or smaller';
      button.append(image);
      button.addEventListener('click', () => figure.classList.toggle('large'));
      figure.append(button);
    } else {
      const limit = textOfSize(project.head.pictureLimit);
      figure.append(make('p', 'notice', file.embedded ? 'This picture could not be read when the page was made.'
        : 'Not in this page, which has room for ' + limit + ' of pictures. It has ' + textOfSize(file.size) + '.'));
    }
    figure.append(makeText('figcaption', '', file.place || file.name));
    return figure;
  }
}
