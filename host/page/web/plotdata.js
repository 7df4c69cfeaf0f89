// Two numbers of the objects, as points: what `korvane-json plot` draws, but for units, which are not converted here.

const LARGEST = 1e150;
const NUMBER = /^\s*[+-]?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?\s*$/i;

/** The number of a metadata entry with its unit; undefined if it is not a number. */
function numberOf(entry) {
  const number = entry && NUMBER.test(entry[1]) ? Number(entry[1]) : NaN;
  return Math.abs(number) <= LARGEST ? { number, unit: entry[2] } : undefined;
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

/** For each object the entry that it has itself, or the nearest object above it that has one. */
class Inherited {
  constructor(project, name) {
    this.project = project;
    this.key = name.toLowerCase();
    this.own = new Array(project.count);
    this.found = new Array(project.count);
  }

  /** To be called for each place, in their order. */
  look(place) {
    const { parent, metadata } = this.project.objects[place];
    const entry = (metadata ?? []).find(([name]) => name.toLowerCase() === this.key);
    this.own[place] = numberOf(entry);
    this.found[place] = entry ?? (parent < 0 ? undefined : this.found[parent]);
  }
}

/** The unit that most of the values have. */
function usualUnit(values) {
  const numbers = new Map();
  for (const { unit } of values) {
    numbers.set(unit, (numbers.get(unit) ?? 0) + 1);
  }
  return [...numbers].reduce((best, one) => (one[1] > best[1] ? one : best), ['', 0])[0];
}

/**
 * The points of the objects that have one of the numbers themselves, and the other one too or from above. `matches`
 * leaves out objects; null takes all. Gives null if `isOver` says so in the meantime.
 */
async function readPoints(project, names, matches, isOver) {
  const x = new Inherited(project, names.x);
  const y = new Inherited(project, names.y);
  const by = new Inherited(project, names.by || '');
  const points = [];
  const isWhole = await inSlices(project.count, (place) => {
    x.look(place);
    y.look(place);
    by.look(place);
    const left = numberOf(x.found[place]);
    const right = numberOf(y.found[place]);
    if (left && right && (x.own[place] || y.own[place]) && (!matches || matches[place])) {
      points.push({ place, x: left, y: right, group: names.by ? by.found[place]?.[1] ?? '' : '' });
    }
  }, isOver);
  if (!isWhole) {
    return null;
  }
  const units = { x: usualUnit(points.map((one) => one.x)), y: usualUnit(points.map((one) => one.y)) };
  const kept = points.filter((one) => one.x.unit === units.x && one.y.unit === units.y);
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
