// Two numbers of the objects, as points: what `korvane-json plot` draws.

const LARGEST = 1e150;
const NUMBER = /^\s*[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?\s*$/i;
// Rare units are not tried, so that thousands of different ones take no time without end.
const MOST_UNITS_TRIED = 8;

/**
 * The number of a metadata entry with its unit, and with units and numbers that mean the same; undefined if it is not
 * a number. Where there are several units, or the value itself has one, the entry has the numbers behind its texts.
 */
function numberOf(entry) {
  if (entry?.length > 3) {
    const [unit, number, ...others] = entry.slice(3);
    return { number, unit, others };
  }
  const number = entry && NUMBER.test(entry[1]) ? Number(entry[1]) : NaN;
  return isFinite(number) ? { number, unit: entry[2], others: [] } : undefined;
}

/** The number in a unit; undefined if there is no way there. */
function numberIn({ number, unit, others }, wanted) {
  const found = unit === wanted ? number : others[others.indexOf(wanted) + 1];
  return unit === wanted || others.includes(wanted) ? found : undefined;
}

/** The names of the metadata entries that are numbers, and of all of them. Letter case does not count. */
async function namesOfMetadata(project) {
  const numbers = new Map();
  const all = new Map();
  await inSlices(project.count, (place) => {
    for (const entry of project.objects[place].metadata ?? []) {
      const key = entry[0].toLowerCase();
      all.set(key, all.get(key) ?? entry[0]);
      if (!numbers.has(key) && numberOf(entry)) {
        numbers.set(key, entry[0]);
      }
    }
  });
  return { numbers: [...numbers.values()].sort(), all: [...all.values()].sort() };
}

/** For each object what `read` makes of the entry that it has itself, or else of that of the nearest object above. */
class Inherited {
  constructor(project, name, read) {
    this.project = project;
    this.key = name.toLowerCase();
    this.read = read;
    this.found = new Array(project.count);
  }

  /** To be called for each place, in their order. Gives the value, and whether it is the object's own. */
  look(place) {
    const { parent, metadata } = this.project.objects[place];
    const entry = (metadata ?? []).find(([name]) => name.toLowerCase() === this.key);
    const own = entry && this.read(entry);
    this.found[place] = own ?? (parent < 0 ? undefined : this.found[parent]);
    return [this.found[place], own !== undefined];
  }
}

/** The unit that most of the numbers can be converted to, of these the one that occurs most often. */
function commonUnit(quantities) {
  const kinds = new Map();
  for (const quantity of quantities) {
    const kind = kinds.get(quantity.unit) ?? { unit: quantity.unit, quantity, count: 0 };
    ++kind.count;
    kinds.set(kind.unit, kind);
  }
  const tried = [...kinds.values()].sort((left, right) => right.count - left.count).slice(0, MOST_UNITS_TRIED);
  let most = { convertible: 0, unit: '' };
  for (const { unit } of tried) {
    let convertible = 0;
    for (const { quantity, count } of kinds.values()) {
      convertible += numberIn(quantity, unit) === undefined ? 0 : count;
    }
    most = convertible > most.convertible ? { convertible, unit } : most;
  }
  return most.unit;
}

/**
 * The points of the objects that have one of the numbers themselves, and the other one too or from above. `matches`
 * leaves out objects; null takes all. A point has the numbers as they are, in `x` and `y`, and in the units of the axes.
 * Gives null if `isOver` says so in the meantime.
 */
async function readPoints(project, names, matches, isOver) {
  const x = new Inherited(project, names.x, numberOf);
  const y = new Inherited(project, names.y, numberOf);
  const by = new Inherited(project, names.by, ([, text, unit]) => shownValue(text, unit).join(' ').trim() || undefined);
  const points = [];
  const isWhole = await inSlices(project.count, (place) => {
    const [left, isLeftOwn] = x.look(place);
    const [right, isRightOwn] = y.look(place);
    const [group] = names.by ? by.look(place) : [];
    if (left && right && (isLeftOwn || isRightOwn) && (!matches || matches[place])) {
      points.push({ place, x: left, y: right, group: group ?? '' });
    }
  }, isOver);
  if (!isWhole) {
    return null;
  }
  const units = { x: commonUnit(points.map((one) => one.x)), y: commonUnit(points.map((one) => one.y)) };
  for (const point of points) {
    point.across = numberIn(point.x, units.x);
    point.up = numberIn(point.y, units.y);
  }
  const kept = points.filter(({ across, up }) => Math.abs(across) <= LARGEST && Math.abs(up) <= LARGEST);
  return { points: kept, units, leftOut: points.length - kept.length };
}

/** Ticks in even steps of 1, 2 or 5 times a power of ten, with room for all values. */
function ticksOf(values) {
  let low = values.reduce((least, one) => Math.min(least, one), Infinity);
  let high = values.reduce((most, one) => Math.max(most, one), -Infinity);
  // Zero is on the axis if it is near.
  low = low > 0 && low < (high - low) * 0.5 ? 0 : low;
  high = high < 0 && -high < (high - low) * 0.5 ? 0 : high;
  if (!(high > low)) {
    const room = Math.abs(low) / 2 || 1;
    low -= room;
    high += room;
  }
  const power = 10 ** Math.floor(Math.log10((high - low) / 5));
  const step = [1, 2, 5, 10].find((one) => (high - low) / (one * power) <= 7) * power;
  const first = Math.floor(low / step + 1e-9);
  const last = Math.ceil(high / step - 1e-9);
  return Array.from({ length: last - first + 1 }, (_, index) => (first + index) * step);
}

/** A number beside a tick: without many zeros. */
function tickNumber(number) {
  const size = Math.abs(number);
  return size >= 1e5 || (size > 0 && size < 1e-3) ? Number(number.toPrecision(6)).toExponential().replace('e+', 'e')
    : shortNumber(number);
}

/** A number for people: with six digits that count at most. */
function shortNumber(number) {
  return String(Number(number.toPrecision(6)));
}
