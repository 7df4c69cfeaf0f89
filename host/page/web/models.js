// The models of solver inputs in the panel: a view that can be turned, and what it shows in words.

let meshView;
let whyNoView = '';

/** The view, made when it is first asked for; undefined, with the reason in whyNoView, if there can be none. */
function viewOfModels() {
  if (meshView || whyNoView) {
    return meshView;
  }
  if (!globalThis.MeshView) {
    whyNoView = 'The program that made this page was built without the view of models.';
    return undefined;
  }
  try {
    meshView = new MeshView();
    byId('theme').addEventListener('change', () => meshView.draw());
    matchMedia('(prefers-color-scheme: dark)').addEventListener('change', () => meshView.draw());
  } catch {
    whyNoView = 'This browser does not draw in three dimensions: WebGL is missing or switched off.';
  }
  return meshView;
}

function bytesOf(base64) {
  if (Uint8Array.fromBase64) {
    return Uint8Array.fromBase64(base64);
  }
  return Uint8Array.from(atob(base64), (letter) => letter.charCodeAt(0));
}

/** The arrays of a model, from its block of the page. The page and all usual machines have the lowest byte first. */
function arraysOf(project, file) {
  const { model } = file;
  const { buffer } = bytesOf(bytesBlock('model', project, file.index));
  const triangles = Math.ceil(model.points * 6 / 4) * 4;
  return {
    low: model.low,
    high: model.high,
    points: new Uint16Array(buffer, 0, model.points * 3),
    triangles: new Uint32Array(buffer, triangles, model.triangles * 3),
    lines: new Uint32Array(buffer, triangles + model.triangles * 12, model.lines * 2),
  };
}

/** What the view shows, in words. */
function wordsOf({ nodes, elements, gap }) {
  const counts = [];
  if (nodes !== undefined) {
    counts.push(countOf(nodes, 'node', 'nodes'));
  }
  if (elements !== undefined) {
    counts.push(countOf(elements, 'element', 'elements'));
  }
  return counts.join(', ') + (gap ? (counts.length > 0 ? '. ' : '') + gap : '');
}

/** The part of the panel for the models among the files; the first one is shown. */
function modelPart(files, project) {
  const part = make('section', 'model');
  part.setAttribute('aria-label', 'Model');
  const heading = make('h3');
  const words = make('p', 'words');
  const place = make('div');
  if (files.length > 1) {
    const label = make('label', '', 'Model ');
    const choice = make('select');
    choice.append(...files.map((file, index) => new Option(file.name || file.place, index)));
    choice.addEventListener('change', () => showModel(files[choice.value], { heading, words, place, project }));
    label.append(choice);
    part.append(label);
  }
  part.append(heading, words, place);
  showModel(files[0], { heading, words, place, project });
  return part;
}

function showModel(file, { heading, words, place, project }) {
  const name = file.name || file.place;
  heading.textContent = 'Model of ' + name;
  words.textContent = wordsOf(file.model);
  place.replaceChildren();
  if (!file.model.embedded) {
    place.append(make('p', 'notice', 'Its surface is not in this page, which has room for ' + textOfSize(project.head.modelLimit) +
      ' of models.'));
    return;
  }
  // What is said in words is shown before the view, which takes longer.
  setTimeout(() => {
    if (place.isConnected && heading.textContent === 'Model of ' + name) {
      showView(file, { place, project, name });
    }
  }, 0);
}

function showView(file, { place, project, name }) {
  const view = viewOfModels();
  if (!view) {
    place.append(make('p', 'notice', whyNoView));
    return;
  }
  const { canvas } = view;
  canvas.tabIndex = 0;
  canvas.setAttribute('role', 'application');
  canvas.setAttribute('aria-roledescription', 'view that can be turned');
  canvas.setAttribute('aria-label', 'The surface of ' + name + ': ' + wordsOf(file.model) + '. Arrow keys turn it, ' +
    'with Shift they move it, plus and minus zoom, Home resets it.');
  place.append(canvas, viewButtons(view));
  view.show(arraysOf(project, file));
}

function viewButtons(view) {
  const buttons = make('p', 'buttons');
  const wire = make('button', '', 'Wire frame');
  wire.setAttribute('aria-pressed', view.isWire);
  wire.addEventListener('click', () => {
    view.setWire(!view.isWire);
    wire.setAttribute('aria-pressed', view.isWire);
  });
  const reset = make('button', '', 'Reset');
  reset.addEventListener('click', () => view.reset());
  buttons.append(wire, ' ', reset, make('span', 'hint', ' Drag or arrow keys turn; Shift moves; wheel, + and − zoom.'));
  return buttons;
}
