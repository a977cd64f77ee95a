// The map: every lamp at its position, its power as light.

import { $, street, levelOf } from './street.js';

const kLevels = 64;
const kToolsHeight = 56;  // the tools lie over the top of the map
const kMargin = 24;
const kStreetWidth = 9;  // metres, as the ones that follow
const kNextLamp = 60;
const kStraight = 1;

const canvas = $('map');
const paper = canvas.getContext('2d');
const view = { x: 0, y: 0, scale: 1 };  // centre in metres, pixels per metre
const extent = { width: 1, height: 1 };  // of the map on the page, kept because asking for it is slow
let touched = false;                     // the user has moved the map
let streets = new Path2D();              // in metres too
let points = [];                         // metres east and south of the first lamp
let drawing = false;
let chosen = -1;
let onChoose = () => {};

const lights = new Map();
const sky = document.createElement('canvas');  // the light of all lamps, added to the map at once
const skyPaper = sky.getContext('2d');
let skyPixels = null;

export const chosenLamp = () => chosen;

// Who wants to know which lamp is chosen; -1 is none.
export function whenChosen(tell) {
  onChoose = tell;
}

// How bright one lamp makes the pixels around it: red, green and blue for each, by level (rounded to
// sixteen) and size. Level 0 is the lamp itself, unlit.
function lightOf(level, size, unlit) {
  const step = level > 0 ? (level >> 2) + 1 : 0;
  const key = step * 1000 + size;
  if (lights.has(key)) return lights.get(key);
  const light = new Uint8Array(size * size * 3);
  const strength = step / 16, half = (size - 1) / 2;
  for (let y = 0; y < size; ++y) {
    for (let x = 0; x < size; ++x) {
      const away = Math.min(1, Math.hypot(x - half, y - half) / (half + 0.5));
      const core = Math.max(0, 1 - away * 4), halo = (1 - away) ** 2;
      const at = 3 * (y * size + x);
      if (step === 0) {
        light.set(unlit, at);
      } else {
        light[at] = Math.min(255, 255 * (core * (0.4 + 0.6 * strength) + halo * 0.75 * strength));
        light[at + 1] = Math.min(255, 225 * core * (0.4 + 0.6 * strength) + 150 * halo * strength);
        light[at + 2] = Math.min(255, 160 * core * (0.4 + 0.6 * strength) + 50 * halo * strength);
      }
    }
  }
  if (lights.size > 400) lights.clear();
  lights.set(key, light);
  return light;
}

// Takes the positions of a new plan.
export function layOut() {
  const positions = street.plan.positions;
  const first = positions.find((p) => p);
  const perDegree = 111320;
  const narrow = first ? Math.cos(first[0] * Math.PI / 180) : 1;
  points = positions.map((p) => p &&
    [(p[1] - first[1]) * perDegree * narrow, (first[0] - p[0]) * perDegree]);
  layStreets();
  lights.clear();
  if (chosen >= points.length) choose(-1, false);
}

// Lamps that follow each other and stand close together stand on one street, on either side of it:
// the middle between two of them is the middle of the street.
function layStreets() {
  streets = new Path2D();
  let line = [];
  const end = () => {
    if (line.length > 1) straightened(line).forEach((p, i) => i ? streets.lineTo(...p) : streets.moveTo(...p));
    line = [];
  };
  for (let i = 1; i < points.length; ++i) {
    const a = points[i - 1], b = points[i];
    if (a && b && Math.hypot(a[0] - b[0], a[1] - b[1]) <= kNextLamp) {
      line.push([(a[0] + b[0]) / 2, (a[1] + b[1]) / 2]);
    } else {
      end();
    }
  }
  end();
}

// Leaves out the points of a line that lie on it but for a metre (Douglas and Peucker): a street with
// a hundred lamps is drawn by a few strokes.
function straightened(line) {
  const [a, b] = [line[0], line[line.length - 1]];
  const length = Math.hypot(b[0] - a[0], b[1] - a[1]) || 1;
  let farthest = 0, distance = kStraight;
  for (let i = 1; i < line.length - 1; ++i) {
    const d = Math.abs((b[0] - a[0]) * (line[i][1] - a[1]) - (b[1] - a[1]) * (line[i][0] - a[0])) / length;
    if (d > distance) { farthest = i; distance = d; }
  }
  if (!farthest) return [a, b];
  return [...straightened(line.slice(0, farthest + 1)),
          ...straightened(line.slice(farthest)).slice(1)];
}

function bounds() {
  const box = [Infinity, Infinity, -Infinity, -Infinity];
  for (const p of points) {
    if (!p) continue;
    box[0] = Math.min(box[0], p[0]); box[1] = Math.min(box[1], p[1]);
    box[2] = Math.max(box[2], p[0]); box[3] = Math.max(box[3], p[1]);
  }
  return box[0] === Infinity ? [0, 0, 1, 1] : box;
}

export function showAll() {
  const box = bounds();
  const width = Math.max(1, extent.width - 2 * kMargin);
  const height = Math.max(1, extent.height - kToolsHeight - 2 * kMargin);
  view.scale = Math.min(width / (box[2] - box[0] + 10), height / (box[3] - box[1] + 10), 20);
  view.x = (box[0] + box[2]) / 2;
  view.y = (box[1] + box[3]) / 2 - kToolsHeight / 2 / view.scale;
  touched = false;
  draw();
}

function fit() {
  const ratio = window.devicePixelRatio || 1;
  extent.width = canvas.clientWidth;
  extent.height = canvas.clientHeight;
  canvas.width = Math.round(extent.width * ratio);
  canvas.height = Math.round(extent.height * ratio);
  if (!touched) showAll();
  draw();
}

export function draw() {
  if (drawing) return;
  drawing = true;
  requestAnimationFrame(paint);
}

const screenX = (p) => (p[0] - view.x) * view.scale + extent.width / 2;
const screenY = (p) => (p[1] - view.y) * view.scale + extent.height / 2;

// Where a lamp stands on the page; null for one without position.
export function placeOf(i) {
  if (!points[i]) return null;
  const box = canvas.getBoundingClientRect();
  return [box.x + screenX(points[i]), box.y + screenY(points[i])];
}

export function paint() {
  drawing = false;
  const ratio = window.devicePixelRatio || 1;
  const day = street.news && !street.news.night;
  paper.setTransform(ratio, 0, 0, ratio, 0, 0);
  paper.globalCompositeOperation = 'source-over';
  paper.fillStyle = day ? '#2b3850' : '#0a0d14';
  paper.fillRect(0, 0, extent.width, extent.height);
  paintStreets(day, ratio);
  paintLamps(day);
  paintMarks();
}

function paintStreets(day, ratio) {
  paper.setTransform(ratio * view.scale, 0, 0, ratio * view.scale,
                     ratio * (extent.width / 2 - view.x * view.scale),
                     ratio * (extent.height / 2 - view.y * view.scale));
  paper.strokeStyle = day ? '#43516c' : '#1d2430';
  paper.lineWidth = Math.max(1, Math.min(14, kStreetWidth * view.scale)) / view.scale;
  paper.lineCap = 'round';
  paper.lineJoin = 'round';
  paper.stroke(streets);
  paper.setTransform(ratio, 0, 0, ratio, 0, 0);
}

// Adds a lamp's light to the pixels around it.
function shine(light, size, left, top) {
  const data = skyPixels.data, width = sky.width, height = sky.height;
  const fromX = Math.max(0, -left), toX = Math.min(size, width - left);
  const fromY = Math.max(0, -top), toY = Math.min(size, height - top);
  for (let y = fromY; y < toY; ++y) {
    let to = 4 * ((top + y) * width + left + fromX), from = 3 * (y * size + fromX);
    for (let x = fromX; x < toX; ++x, to += 4, from += 3) {
      data[to] += light[from];
      data[to + 1] += light[from + 1];
      data[to + 2] += light[from + 2];
    }
  }
}

// Thousands of drawing calls are slow where no graphics card helps; adding numbers is not.
function paintLamps(day) {
  const ratio = window.devicePixelRatio || 1;
  if (!skyPixels || sky.width !== canvas.width || sky.height !== canvas.height) {
    sky.width = Math.max(1, canvas.width);
    sky.height = Math.max(1, canvas.height);
    skyPixels = skyPaper.createImageData(sky.width, sky.height);
  }
  new Uint32Array(skyPixels.data.buffer).fill(0xff000000);
  const largest = Math.max(7, Math.min(110, 40 * view.scale));
  const dot = Math.round(ratio * Math.max(2, Math.min(6, 4 * view.scale)));
  const unlit = day ? [130, 136, 130] : [80, 90, 106];
  for (let i = 0; i < points.length; ++i) {
    if (!points[i]) continue;
    const level = levelOf(i);
    const size = level > 0
      ? Math.round(ratio * largest * (0.5 + 0.5 * level / (kLevels - 1))) : dot;
    shine(lightOf(level, size, unlit), size, Math.round(screenX(points[i]) * ratio - size / 2),
          Math.round(screenY(points[i]) * ratio - size / 2));
  }
  skyPaper.putImageData(skyPixels, 0, 0);
  paper.setTransform(1, 0, 0, 1, 0, 0);
  paper.globalCompositeOperation = 'lighter';
  paper.drawImage(sky, 0, 0);
  paper.globalCompositeOperation = 'source-over';
  paper.setTransform(ratio, 0, 0, ratio, 0, 0);
}

function ring(i, colour, radius) {
  if (!points[i]) return;
  paper.strokeStyle = colour;
  paper.lineWidth = 2;
  paper.beginPath();
  paper.arc(screenX(points[i]), screenY(points[i]), radius, 0, 2 * Math.PI);
  paper.stroke();
}

function paintMarks() {
  for (const i of street.alarmed.keys()) ring(i, '#ff7568', 8);
  if (chosen >= 0) ring(chosen, '#ffffff', 11);
}

export function choose(i, andShow) {
  chosen = i;
  if (i >= 0 && andShow && points[i]) {
    view.x = points[i][0];
    view.y = points[i][1];
    view.scale = Math.max(view.scale, 2);
    touched = true;
  }
  onChoose(i);
  draw();
}

function nearest(x, y) {
  let best = -1, distance = 18;
  for (let i = 0; i < points.length; ++i) {
    if (!points[i]) continue;
    const d = Math.hypot(screenX(points[i]) - x, screenY(points[i]) - y);
    if (d < distance) { best = i; distance = d; }
  }
  return best;
}

function move(dx, dy) {
  view.x += dx / view.scale;
  view.y += dy / view.scale;
  touched = true;
  draw();
}

export function zoom(factor, x = extent.width / 2, y = extent.height / 2) {
  const scale = Math.max(0.005, Math.min(40, view.scale * factor));
  const dx = x - extent.width / 2, dy = y - extent.height / 2;
  view.x += dx / view.scale - dx / scale;
  view.y += dy / view.scale - dy / scale;
  view.scale = scale;
  touched = true;
  draw();
}

// ---------------------------------------------------------------- what the user does

const fingers = new Map();
let moved = false;

canvas.addEventListener('pointerdown', (event) => {
  canvas.setPointerCapture(event.pointerId);
  fingers.set(event.pointerId, [event.offsetX, event.offsetY]);
  moved = false;
});
canvas.addEventListener('pointermove', (event) => {
  const before = fingers.get(event.pointerId);
  if (!before) return;
  const now = [event.offsetX, event.offsetY];
  if (Math.hypot(now[0] - before[0], now[1] - before[1]) > 3) moved = true;
  if (!moved) return;
  if (fingers.size === 1) {
    move(before[0] - now[0], before[1] - now[1]);
  } else {
    const other = [...fingers].find(([id]) => id !== event.pointerId)[1];
    const was = Math.hypot(before[0] - other[0], before[1] - other[1]);
    const is = Math.hypot(now[0] - other[0], now[1] - other[1]);
    if (was > 0) zoom(is / was, (now[0] + other[0]) / 2, (now[1] + other[1]) / 2);
  }
  fingers.set(event.pointerId, now);
});
for (const name of ['pointerup', 'pointercancel']) {
  canvas.addEventListener(name, (event) => {
    if (fingers.delete(event.pointerId) && !moved && name === 'pointerup') {
      choose(nearest(event.offsetX, event.offsetY), false);
    }
  });
}
canvas.addEventListener('wheel', (event) => {
  event.preventDefault();
  zoom(Math.exp(-event.deltaY * 0.0015), event.offsetX, event.offsetY);
}, { passive: false });

const kStep = 60;
function stepTo(step) {
  const count = street.plan.ids.length;
  if (!count) return;
  const from = chosen < 0 && step < 0 ? 0 : chosen;
  choose((from + step + count) % count, true);
}
const keys = {
  ArrowLeft: () => move(-kStep, 0), ArrowRight: () => move(kStep, 0),
  ArrowUp: () => move(0, -kStep), ArrowDown: () => move(0, kStep),
  '+': () => zoom(1.3), '=': () => zoom(1.3), '-': () => zoom(1 / 1.3), Home: showAll,
  n: () => stepTo(1), p: () => stepTo(-1), Escape: () => choose(-1, false),
};
canvas.addEventListener('keydown', (event) => {
  const act = keys[event.key] || keys[event.key.toLowerCase()];
  if (!act || event.ctrlKey || event.metaKey || event.altKey) return;
  event.preventDefault();
  act();
});
$('zoomIn').addEventListener('click', () => zoom(1.5));
$('zoomOut').addEventListener('click', () => zoom(1 / 1.5));
$('zoomAll').addEventListener('click', showAll);
$('find').addEventListener('input', (event) => {
  const wanted = event.target.value.trim().toLowerCase();
  const { ids, references } = street.plan;
  choose(wanted ? ids.findIndex((id, n) => id.toLowerCase().includes(wanted) ||
    references[n].toLowerCase().includes(wanted)) : -1, true);
});
new ResizeObserver(fit).observe(canvas);
fit();
