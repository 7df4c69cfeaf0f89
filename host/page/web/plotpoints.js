// The points of a plot. They are pixels: thousands of shapes take seconds to be drawn again whenever something changes.

// Groups differ in shape as well as in colour.
const SHAPES = [
  (x, y, r) => `M${x - r},${y}a${r},${r} 0 1 0 ${2 * r},0a${r},${r} 0 1 0 ${-2 * r},0z`,
  (x, y, r) => `M${x - r},${y - r}h${2 * r}v${2 * r}h${-2 * r}z`,
  (x, y, r) => `M${x},${y - r * 1.2}l${r * 1.2},${r * 2.1}h${-2.4 * r}z`,
  (x, y, r) => `M${x},${y - r * 1.3}l${r * 1.3},${r * 1.3}l${-r * 1.3},${r * 1.3}l${-r * 1.3},${-r * 1.3}z`,
];

function shapeOf(group, x, y) {
  return SHAPES[group % SHAPES.length](x, y, PLOT.radius);
}

class PointLayer {
  /** The points have their places in the picture, `left` and `top`, and their groups. */
  constructor(points, groupOf, groups) {
    Object.assign(this, { points, groupOf, groups, run: 0 });
    this.canvas = make('canvas');
    this.canvas.setAttribute('aria-hidden', 'true');
    new ResizeObserver(() => this.draw()).observe(this.canvas);
  }

  /** Some canvas of this size in pixels. Its content stays in memory, where small pictures are copied fastest. */
  contextOf(canvas, width, height) {
    Object.assign(canvas, { width, height });
    return canvas.getContext('2d', { willReadFrequently: true });
  }

  /** A picture of a point: its shape in its colour, or what it hides of those below, which is a little more. */
  sign(group, scale, hides) {
    const size = Math.ceil(PLOT.radius * 4 * scale);
    const canvas = make('canvas');
    const context = this.contextOf(canvas, size, size);
    this.canvas.className = 'points group-' + group;
    const style = getComputedStyle(this.canvas);
    context.setTransform(scale, 0, 0, scale, size / 2, size / 2);
    Object.assign(context, { fillStyle: style.fill, strokeStyle: '#000', lineWidth: 1.2 });
    const path = new Path2D(shapeOf(group, 0, 0));
    if (hides) {
      context.stroke(path);
    } else {
      context.globalAlpha = style.fillOpacity;
      context.fill(path);
    }
    return canvas;
  }

  async draw() {
    const run = ++this.run;
    const scale = this.canvas.clientWidth / PLOT.width * devicePixelRatio;
    const context = this.contextOf(this.canvas, Math.round(PLOT.width * scale), Math.round(PLOT.height * scale));
    if (!context || scale === 0) {
      return;
    }
    const signs = this.groups.map((_, group) => [this.sign(group, scale, true), this.sign(group, scale, false)]);
    await inSlices(this.points.length, (index) => {
      const point = this.points[index];
      signs[this.groupOf(point)].forEach((sign, order) => {
        // The ground is seen between points, whatever its colour is.
        context.globalCompositeOperation = order === 0 ? 'destination-out' : 'source-over';
        context.drawImage(sign, Math.round(point.left * scale - sign.width / 2),
          Math.round(point.top * scale - sign.height / 2));
      });
    }, () => run !== this.run);
  }
}
