// The plot in the panel: axes, points in the shapes of their groups, a legend, and a table that says the same in words.

const PLOT = { width: 640, height: 400, left: 72, right: 16, top: 12, bottom: 52, radius: 4.5 };
const MOST_GROUPS = 8;
const MOST_LISTED = 200;

function drawing(name, attributes, text) {
  const element = document.createElementNS('http://www.w3.org/2000/svg', name);
  for (const [attribute, value] of Object.entries(attributes)) {
    element.setAttribute(attribute, value);
  }
  if (text !== undefined) {
    element.textContent = text;
  }
  return element;
}

class PlotView {
  /** `does` has the functions matches(), which gives those of the search or null, and select(place). */
  constructor(project, does) {
    this.project = project;
    this.does = does;
    this.run = 0;
    this.part = make('section', 'plot');
    this.part.setAttribute('aria-label', 'Plot');
  }

  async open() {
    const names = await namesOfMetadata(this.project);
    if (names.numbers.length === 0) {
      this.part.replaceChildren(make('h2', '', 'Plot'), make('p', 'notice', 'No object has metadata that are numbers.'));
      return;
    }
    const choice = (label, id, words) => {
      const element = make('label', '', label + ' ');
      const select = make('select');
      select.id = id;
      select.append(...words);
      select.addEventListener('change', () => this.draw());
      element.append(select);
      return element;
    };
    const options = (list) => list.map((name) => new Option(name, name));
    const form = make('p', 'choices');
    form.append(choice('Across', 'plot-x', options(names.numbers)), ' ', choice('Up', 'plot-y', options(names.numbers)),
      ' ', choice('Groups by', 'plot-by', [new Option('nothing', ''), ...options(names.all)]));
    this.place = make('div');
    this.part.replaceChildren(make('h2', '', 'Plot'), form, this.place);
    byId('plot-y').selectedIndex = Math.min(1, names.numbers.length - 1);
    await this.draw();
  }

  async draw() {
    if (!this.place) {
      return;
    }
    const run = ++this.run;
    const names = { x: byId('plot-x').value, y: byId('plot-y').value, by: byId('plot-by').value };
    const data = await readPoints(this.project, names, this.does.matches(), () => run !== this.run);
    await breathe();
    if (!data || run !== this.run) {
      return;
    }
    if (data.points.length === 0) {
      this.place.replaceChildren(make('p', 'notice', 'No object has both numbers, itself or from an object above it.'));
      return;
    }
    this.names = names;
    this.data = data;
    this.groups = this.groupsOf(data.points);
    const words = countOf(data.points.length, 'point', 'points') + (data.leftOut > 0
      ? '; ' + countOf(data.leftOut, 'object', 'objects') +
        ' left out, with units that cannot be converted or numbers that are too large' : '');
    this.tip = make('p', 'tip', words + '.');
    this.tip.setAttribute('role', 'status');
    const picture = this.picture();
    await breathe();
    if (run === this.run) {
      this.place.replaceChildren(picture, this.tip, this.table());
    }
  }

  /** The names of the groups, the largest first; those beyond the eighth are one group. */
  groupsOf(points) {
    const numbers = new Map();
    for (const { group } of points) {
      numbers.set(group, (numbers.get(group) ?? 0) + 1);
    }
    const names = [...numbers].sort((left, right) => right[1] - left[1]).map(([name]) => name);
    return names.length > MOST_GROUPS ? [...names.slice(0, MOST_GROUPS - 1), null] : names;
  }

  groupOf(point) {
    const found = this.groups.indexOf(point.group);
    return found < 0 ? this.groups.length - 1 : found;
  }

  picture() {
    const { points, units } = this.data;
    const { width, height, left, right, top, bottom } = PLOT;
    const svg = drawing('svg', { viewBox: `0 0 ${width} ${height}`, role: 'img' });
    const title = (axis) => this.names[axis] + (units[axis] ? ' in ' + units[axis] : '');
    svg.setAttribute('aria-label', `${title('y')} over ${title('x')}: ${countOf(points.length, 'point', 'points')}`);
    const ticks = { x: ticksOf(points.map((one) => one.across)), y: ticksOf(points.map((one) => one.up)) };
    const share = (axis, number) => (number - ticks[axis][0]) / (ticks[axis].at(-1) - ticks[axis][0]);
    this.atX = (number) => left + share('x', number) * (width - left - right);
    this.atY = (number) => height - bottom - share('y', number) * (height - top - bottom);
    for (const tick of ticks.x) {
      const x = this.atX(tick);
      svg.append(drawing('path', { class: 'grid', d: `M${x},${top}V${height - bottom}` }),
        drawing('text', { x, y: height - bottom + 18, 'text-anchor': 'middle' }, tickNumber(tick)));
    }
    for (const tick of ticks.y) {
      const y = this.atY(tick);
      svg.append(drawing('path', { class: 'grid', d: `M${left},${y}H${width - right}` }),
        drawing('text', { x: left - 6, y: y + 4, 'text-anchor': 'end' }, tickNumber(tick)));
    }
    svg.append(drawing('text', { x: (left + width - right) / 2, y: height - 12, 'text-anchor': 'middle' }, title('x')));
    svg.append(drawing('text', { x: 14, y: (top + height - bottom) / 2, 'text-anchor': 'middle',
      transform: `rotate(-90 14 ${(top + height - bottom) / 2})` }, title('y')));
    const layer = this.drawPoints(svg);
    this.listen(svg);
    const part = make('div');
    const layers = make('div', 'layers');
    layers.append(svg, layer);
    part.append(layers);
    if (this.names.by) {
      part.append(this.legend());
    }
    return part;
  }

  /** The points with a ring for the one under the pointer. */
  drawPoints(svg) {
    for (const point of this.data.points) {
      point.left = this.atX(point.across);
      point.top = this.atY(point.up);
    }
    this.ring = drawing('circle', { class: 'ring', r: PLOT.radius + 3, cx: -99, cy: -99 });
    svg.append(this.ring);
    return new PointLayer(this.data.points, (point) => this.groupOf(point), this.groups).canvas;
  }

  legend() {
    const list = make('ul', 'legend');
    list.setAttribute('aria-label', this.names.by);
    this.groups.forEach((name, group) => {
      const sign = drawing('svg', { viewBox: '0 0 14 14', width: 14, height: 14, 'aria-hidden': 'true' });
      sign.append(drawing('path', { class: 'points group-' + group, d: shapeOf(group, 7, 7) }));
      const item = make('li');
      item.append(sign, ' ', make('span', 'value', name === null ? 'others' : name || '(none)'));
      list.append(item);
    });
    return list;
  }

  /** The name of an object and its numbers. */
  wordsOf({ place, x, y, group }) {
    const text = (name, { number, unit }) => `${name}: ${shortNumber(number)}${unit ? ' ' + unit : ''}`;
    return [this.project.name(place), text(this.names.x, x), text(this.names.y, y),
      ...(this.names.by ? [`${this.names.by}: ${group || '(none)'}`] : [])].join(' · ');
  }

  listen(svg) {
    const nearest = (event) => {
      const box = svg.getBoundingClientRect();
      const x = (event.clientX - box.left) / box.width * PLOT.width;
      const y = (event.clientY - box.top) / box.height * PLOT.height;
      let best;
      let least = 15 ** 2;
      for (const point of this.data.points) {
        const distance = (point.left - x) ** 2 + (point.top - y) ** 2;
        if (distance < least) {
          [best, least] = [point, distance];
        }
      }
      return best;
    };
    svg.addEventListener('pointermove', (event) => {
      const point = nearest(event);
      this.ring.setAttribute('cx', point?.left ?? -99);
      this.ring.setAttribute('cy', point?.top ?? -99);
      if (point) {
        this.tip.textContent = this.wordsOf(point);
      }
    });
    svg.addEventListener('click', (event) => {
      const point = nearest(event);
      if (point) {
        this.does.select(point.place);
      }
    });
  }

  /** The same in words, for those who do not see the picture. */
  table() {
    const details = make('details');
    details.append(make('summary', '', 'Values'));
    const headings = ['Object', this.names.x, this.names.y, ...(this.names.by ? [this.names.by] : [])];
    const { points } = this.data;
    const caption = points.length > MOST_LISTED ? `The first ${MOST_LISTED} of ${points.length} points`
      : countOf(points.length, 'point', 'points');
    const element = table('values', caption, headings);
    for (const point of points.slice(0, MOST_LISTED)) {
      const row = element.tBodies[0].insertRow();
      const button = makeText('button', 'link', this.project.name(point.place));
      button.type = 'button';
      button.addEventListener('click', () => this.does.select(point.place));
      const heading = make('th');
      heading.scope = 'row';
      heading.append(button);
      row.append(heading);
      for (const { number, unit } of [point.x, point.y]) {
        row.insertCell().textContent = shortNumber(number) + (unit ? ' ' + unit : '');
      }
      if (this.names.by) {
        row.insertCell().append(value(point.group));
      }
    }
    details.append(element);
    return details;
  }
}
