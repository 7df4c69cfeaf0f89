// The view of a model that can be turned. It is bundled with three.js, and only in pages that have models.

import {
  AmbientLight, BufferAttribute, BufferGeometry, Color, DirectionalLight, DoubleSide, Group, LineBasicMaterial,
  LineSegments, Mesh, MeshLambertMaterial, OrthographicCamera, Quaternion, Scene, Vector3, WebGLRenderer,
} from 'three';

const STEP = Math.PI / 18;
const ZOOM_STEP = 1.2;
const X = new Vector3(1, 0, 0);
const Y = new Vector3(0, 1, 0);
const Z = new Vector3(0, 0, 1);

/** Looking down a little at a model whose third axis goes up. */
function firstTurn() {
  return new Quaternion().setFromAxisAngle(X, -65 * Math.PI / 180)
    .multiply(new Quaternion().setFromAxisAngle(Z, -35 * Math.PI / 180));
}

/** Draws one model at a time. There is one context for the whole page, since browsers have few of them. */
class MeshView {
  /** Throws if the browser has no WebGL. */
  constructor() {
    this.canvas = document.createElement('canvas');
    this.canvas.className = 'view';
    this.renderer = new WebGLRenderer({ canvas: this.canvas, antialias: true, alpha: true });
    this.scene = new Scene();
    this.camera = new OrthographicCamera();
    this.camera.position.z = 2;
    this.pivot = new Group();
    const light = new DirectionalLight(0xffffff, 2.2);
    light.position.set(0.4, 0.6, 1);
    this.scene.add(this.pivot, light, new AmbientLight(0xffffff, 0.9));
    this.face = new MeshLambertMaterial({
      flatShading: true, side: DoubleSide, polygonOffset: true, polygonOffsetFactor: 1, polygonOffsetUnits: 1,
    });
    this.edge = new LineBasicMaterial();
    this.isWire = false;
    this.pointers = new Map();
    this.listen();
    new ResizeObserver(() => this.draw()).observe(this.canvas);
  }

  /** `model` has typed arrays: points (0 to 65535 in the box from low to high), triangles and lines. */
  show(model) {
    this.clear();
    const size = new Vector3(...model.high).sub(new Vector3(...model.low));
    const radius = Math.max(size.length() / 2, Number.MIN_VALUE);
    const points = new BufferAttribute(model.points, 3, true);
    const make = (Kind, places, material) => {
      const geometry = new BufferGeometry();
      geometry.setAttribute('position', points);
      geometry.setIndex(new BufferAttribute(places, 1));
      const object = new Kind(geometry, material);
      // The whole model fits into a ball of radius one around the middle.
      object.scale.copy(size).divideScalar(radius);
      object.position.copy(object.scale).multiplyScalar(-0.5);
      object.frustumCulled = false;
      this.pivot.add(object);
      return object;
    };
    this.faces = make(Mesh, model.triangles, this.face);
    this.edges = make(LineSegments, model.lines, this.edge);
    this.corners = [0, 1, 2, 3, 4, 5, 6, 7].map((bits) =>
      new Vector3(bits & 1, bits >> 1 & 1, bits >> 2).subScalar(0.5).multiply(this.faces.scale));
    this.reset();
  }

  clear() {
    for (const object of [...this.pivot.children]) {
      object.geometry.dispose();
      this.pivot.remove(object);
    }
  }

  reset() {
    this.pivot.quaternion.copy(firstTurn());
    this.zoom = 1;
    this.camera.position.x = 0;
    this.camera.position.y = 0;
    this.draw();
  }

  /** How much larger than a ball around it the model can be drawn at first. */
  fit(width, height) {
    const turn = firstTurn();
    const seen = this.corners.map((corner) => corner.clone().applyQuaternion(turn));
    const farthest = (axis) => Math.max(...seen.map((corner) => Math.abs(corner[axis])), 1e-3);
    return Math.min(width / farthest('x'), height / farthest('y')) / Math.min(width, height);
  }

  setWire(isWire) {
    this.isWire = isWire;
    this.draw();
  }

  /** Draws the model before the browser shows the next picture. */
  draw() {
    this.waiting ??= requestAnimationFrame(() => {
      this.waiting = undefined;
      this.drawNow();
    });
  }

  drawNow() {
    const { clientWidth: width, clientHeight: height } = this.canvas;
    if (width === 0 || height === 0 || !this.faces) {
      return;
    }
    const style = getComputedStyle(this.canvas);
    this.face.color = new Color(style.fill);
    this.edge.color = new Color(style.color);
    this.faces.visible = !this.isWire;
    this.renderer.setPixelRatio(Math.min(devicePixelRatio, 2));
    this.renderer.setSize(width, height, false);
    const scale = 1.05 / this.zoom / this.fit(width, height) / Math.min(width, height);
    Object.assign(this.camera, {
      left: -width * scale, right: width * scale, top: height * scale, bottom: -height * scale, near: 0, far: 4,
    });
    this.camera.updateProjectionMatrix();
    this.renderer.render(this.scene, this.camera);
    this.drawn = (this.drawn ?? 0) + 1;
    this.canvas.dataset.drawn = this.drawn;
  }

  turn(right, down) {
    this.pivot.quaternion.premultiply(new Quaternion().setFromAxisAngle(Y, right))
      .premultiply(new Quaternion().setFromAxisAngle(X, down));
    this.draw();
  }

  /** Moves the model by pixels of the page. */
  move(right, down) {
    const scale = 2 * this.camera.right / Math.max(this.canvas.clientWidth, 1);
    this.camera.position.x -= right * scale;
    this.camera.position.y += down * scale;
    this.draw();
  }

  zoomBy(factor) {
    this.zoom = Math.min(Math.max(this.zoom * factor, 0.05), 500);
    this.draw();
  }

  listen() {
    const { canvas } = this;
    canvas.addEventListener('pointerdown', (event) => {
      canvas.setPointerCapture(event.pointerId);
      this.pointers.set(event.pointerId, event);
    });
    canvas.addEventListener('pointermove', (event) => this.onMove(event));
    for (const end of ['pointerup', 'pointercancel']) {
      canvas.addEventListener(end, (event) => this.pointers.delete(event.pointerId));
    }
    canvas.addEventListener('contextmenu', (event) => event.preventDefault());
    canvas.addEventListener('wheel', (event) => {
      event.preventDefault();
      this.zoomBy(Math.exp(-event.deltaY / 500));
    }, { passive: false });
    canvas.addEventListener('webglcontextlost', (event) => event.preventDefault());
    canvas.addEventListener('webglcontextrestored', () => this.draw());
    canvas.addEventListener('keydown', (event) => this.onKey(event));
  }

  onMove(event) {
    const before = this.pointers.get(event.pointerId);
    if (!before) {
      return;
    }
    const right = event.clientX - before.clientX;
    const down = event.clientY - before.clientY;
    this.pointers.set(event.pointerId, event);
    if (this.pointers.size === 1) {
      const isMoved = event.shiftKey || (event.buttons & 6) !== 0;
      if (isMoved) {
        this.move(right, down);
      } else {
        this.turn(right / 150, down / 150);
      }
      return;
    }
    // Two fingers: their distance zooms, and both together move.
    const other = [...this.pointers.values()].find((one) => one.pointerId !== event.pointerId);
    const distance = (one) => Math.hypot(one.clientX - other.clientX, one.clientY - other.clientY);
    this.zoomBy(distance(event) / Math.max(distance(before), 1));
    this.move(right / 2, down / 2);
  }

  onKey(event) {
    const go = (right, down) => {
      if (event.shiftKey) {
        this.move(20 * right, 20 * down);
      } else {
        this.turn(STEP * right, STEP * down);
      }
    };
    const keys = {
      ArrowLeft: () => go(-1, 0),
      ArrowRight: () => go(1, 0),
      ArrowUp: () => go(0, -1),
      ArrowDown: () => go(0, 1),
      '+': () => this.zoomBy(ZOOM_STEP),
      '-': () => this.zoomBy(1 / ZOOM_STEP),
      Home: () => this.reset(),
    };
    if (keys[event.key] && !event.ctrlKey && !event.altKey && !event.metaKey) {
      keys[event.key]();
      event.preventDefault();
    }
  }
}

globalThis.MeshView = MeshView;
