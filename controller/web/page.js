'use strict';

const kAlphabet = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/';
const kLevels = 64;
const kLogKept = 50;

const $ = (id) => document.getElementById(id);
const token = document.querySelector('meta[name=control-token]').content;

let plan = { version: -1, ids: [], references: [], positions: [], programs: [], ignored: [] };
let powers = '';
let news = null;
let alarmed = new Map();
let chosen = -1;

const powerOf = (i) => Math.round(kAlphabet.indexOf(powers[i] || 'A') * 100 / 63);

function control(request) {
  return fetch('control/' + request, { method: 'POST', headers: { 'X-Control-Token': token } })
    .then((answer) => answer.ok ? null : answer.text().then((text) => { throw new Error(text); }))
    .catch((fault) => say('bad', fault.message));
}

function say(kind, text) {
  $('connection').className = kind;
  $('connection').textContent = text;
}

// ---------------------------------------------------------------- map

const canvas = $('map');
const paper = canvas.getContext('2d');
const view = { x: 0, y: 0, scale: 1 };  // centre in metres, pixels per metre
let points = [];                        // metres east and south of the first lamp
let drawing = false;
const lights = new Map();
const sky = document.createElement('canvas');  // the light of all lamps, added to the map at once
const skyPaper = sky.getContext('2d');
let skyPixels = null;

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

function layOut() {
  const first = plan.positions.find((p) => p);
  const perDegree = 111320;
  const narrow = first ? Math.cos(first[0] * Math.PI / 180) : 1;
  points = plan.positions.map((p) => p &&
    [(p[1] - first[1]) * perDegree * narrow, (first[0] - p[0]) * perDegree]);
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

function showAll() {
  const box = bounds();
  view.x = (box[0] + box[2]) / 2;
  view.y = (box[1] + box[3]) / 2;
  view.scale = Math.min(extent.width / (box[2] - box[0] + 60),
                        (extent.height - 90) / (box[3] - box[1] + 60), 20);
  draw();
}

function fit() {
  const ratio = window.devicePixelRatio || 1;
  extent.width = canvas.clientWidth;
  extent.height = canvas.clientHeight;
  canvas.width = Math.round(extent.width * ratio);
  canvas.height = Math.round(extent.height * ratio);
  draw();
}

function draw() {
  if (drawing) return;
  drawing = true;
  requestAnimationFrame(paint);
}

// The size of the map on the page, kept because asking for it is slow.
const extent = { width: 1, height: 1 };
const screenX = (p) => (p[0] - view.x) * view.scale + extent.width / 2;
const screenY = (p) => (p[1] - view.y) * view.scale + extent.height / 2;

function paint() {
  drawing = false;
  const ratio = window.devicePixelRatio || 1;
  paper.setTransform(ratio, 0, 0, ratio, 0, 0);
  paper.globalCompositeOperation = 'source-over';
  paper.fillStyle = news && !news.night ? '#2b3850' : '#0a0d14';
  paper.fillRect(0, 0, extent.width, extent.height);
  paintStreets();
  paintLamps();
  paintMarks();
}

// Lamps that follow each other and stand close together stand on one street, on either side of it:
// the middle between two of them is the middle of the street.
function paintStreets() {
  paper.strokeStyle = news && !news.night ? '#43516c' : '#1d2430';
  paper.lineWidth = Math.max(1, Math.min(14, 9 * view.scale));
  paper.lineCap = 'round';
  paper.beginPath();
  let before = null;
  for (let i = 1; i < points.length; ++i) {
    const a = points[i - 1], b = points[i];
    if (!a || !b || Math.hypot(a[0] - b[0], a[1] - b[1]) > 60) {
      before = null;
      continue;
    }
    const middle = [(a[0] + b[0]) / 2, (a[1] + b[1]) / 2];
    if (before) {
      paper.moveTo(screenX(before), screenY(before));
      paper.lineTo(screenX(middle), screenY(middle));
    }
    before = middle;
  }
  paper.stroke();
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
function paintLamps() {
  const ratio = window.devicePixelRatio || 1;
  if (!skyPixels || sky.width !== canvas.width || sky.height !== canvas.height) {
    sky.width = Math.max(1, canvas.width);
    sky.height = Math.max(1, canvas.height);
    skyPixels = skyPaper.createImageData(sky.width, sky.height);
  }
  new Uint32Array(skyPixels.data.buffer).fill(0xff000000);
  const largest = Math.max(7, Math.min(110, 40 * view.scale));
  const dot = Math.round(ratio * Math.max(2, Math.min(4, 1.6 * view.scale)));
  const unlit = news && !news.night ? [96, 100, 96] : [70, 78, 92];
  for (let i = 0; i < points.length; ++i) {
    if (!points[i]) continue;
    const level = kAlphabet.indexOf(powers[i] || 'A');
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
  for (const i of alarmed.keys()) ring(i, '#ff7568', 8);
  if (chosen >= 0) ring(chosen, '#ffffff', 11);
}

function choose(i, andShow) {
  chosen = i;
  const text = $('chosen');
  text.hidden = i < 0;
  if (i >= 0) {
    const parts = [plan.ids[i], plan.references[i] || 'no reference', powerOf(i) + ' %'];
    if (plan.ignored.includes(i)) parts.push('blacklisted');
    if (alarmed.has(i)) parts.push('alarm: ' + alarmed.get(i));
    text.textContent = parts.join('  ·  ');
    if (andShow && points[i]) {
      view.x = points[i][0]; view.y = points[i][1];
      view.scale = Math.max(view.scale, 2);
    }
  }
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

function zoom(factor, x = extent.width / 2, y = extent.height / 2) {
  const scale = Math.max(0.005, Math.min(40, view.scale * factor));
  const dx = x - extent.width / 2, dy = y - extent.height / 2;
  view.x += dx / view.scale - dx / scale;
  view.y += dy / view.scale - dy / scale;
  view.scale = scale;
  draw();
}

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
    view.x -= (now[0] - before[0]) / view.scale;
    view.y -= (now[1] - before[1]) / view.scale;
  } else {
    const other = [...fingers].find(([id]) => id !== event.pointerId)[1];
    const was = Math.hypot(before[0] - other[0], before[1] - other[1]);
    const is = Math.hypot(now[0] - other[0], now[1] - other[1]);
    if (was > 0) zoom(is / was, (now[0] + other[0]) / 2, (now[1] + other[1]) / 2);
  }
  fingers.set(event.pointerId, now);
  draw();
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
canvas.addEventListener('keydown', (event) => {
  const step = 60 / view.scale;
  const count = plan.ids.length;
  const keys = {
    ArrowLeft: () => { view.x -= step; }, ArrowRight: () => { view.x += step; },
    ArrowUp: () => { view.y -= step; }, ArrowDown: () => { view.y += step; },
    '+': () => zoom(1.3), '=': () => zoom(1.3), '-': () => zoom(1 / 1.3), Home: showAll,
    n: () => count && choose((chosen + 1) % count, true),
    p: () => count && choose((chosen + count - 1 + (chosen < 0 ? 1 : 0)) % count, true),
    Escape: () => choose(-1, false),
  };
  const act = keys[event.key] || keys[event.key.toLowerCase()];
  if (!act || event.ctrlKey || event.metaKey || event.altKey) return;
  event.preventDefault();
  act();
  draw();
});
$('zoomIn').addEventListener('click', () => zoom(1.5));
$('zoomOut').addEventListener('click', () => zoom(1 / 1.5));
$('zoomAll').addEventListener('click', showAll);
$('find').addEventListener('input', (event) => {
  const wanted = event.target.value.trim().toLowerCase();
  if (!wanted) {
    choose(-1, false);
    return;
  }
  const i = plan.ids.findIndex((id, n) => id.toLowerCase().includes(wanted) ||
    plan.references[n].toLowerCase().includes(wanted));
  choose(i, true);
});
new ResizeObserver(fit).observe(canvas);

// ---------------------------------------------------------------- panels

function make(tag, className, text) {
  const element = document.createElement(tag);
  if (className) element.className = className;
  if (text !== undefined) element.textContent = text;
  return element;
}

function buildPorts() {
  for (let n = 1; n <= 8; ++n) {
    $('outputs').append(make('li', '', String(n)));
    const input = make('button', '', String(n));
    input.type = 'button';
    input.setAttribute('aria-pressed', 'false');
    input.setAttribute('aria-label', 'Input ' + n);
    input.addEventListener('click', () => {
      const active = input.getAttribute('aria-pressed') === 'true' ? 0 : 1;
      control(`input?number=${n}&active=${active}`);
    });
    $('inputs').append(input);
  }
}

function showPorts() {
  [...$('outputs').children].forEach((item, i) => {
    item.classList.toggle('on', news.outputs[i]);
    item.setAttribute('aria-label', `Output ${i + 1} ${news.outputs[i] ? 'on' : 'off'}`);
  });
  [...$('inputs').children].forEach((button, i) => {
    button.setAttribute('aria-pressed', String(news.inputs[i]));
  });
}

function showPrograms() {
  const list = plan.programs.map((program) => {
    const item = make('li');
    const bar = make('div', 'bar');
    program.steps.forEach((step, i) => {
      const end = i + 1 < program.steps.length ? program.steps[i + 1].minute : news.nightMinutes;
      const part = make('span', '', step.power + ' %');
      part.style.flex = `${Math.max(1, end - step.minute)} 0 0`;
      part.style.background = `rgb(255 ${190 + step.power * 0.3} 110 / ${0.25 + step.power * 0.0075})`;
      if (step.power < 45) part.style.color = '#fff';
      part.title = `from ${step.from}: ${step.power} %`;
      bar.append(part);
    });
    const steps = program.steps.map((s) => `${s.from}\u00a0${s.power}\u00a0%`).join(', ');
    item.append(make('span', '', `${program.lamps} lamps`), bar, make('div', 'legend', steps));
    return item;
  });
  if (!list.length) list.push(make('li', 'none', 'The sun does not set.'));
  $('programs').replaceChildren(...list);
}

function showAlarms() {
  const index = new Map(plan.ids.map((id, i) => [id, i]));
  alarmed = new Map(news.alarms.map((a) => [index.get(a.node), a.kind]));
  $('alarmCount').textContent = news.alarmCount ? `(${news.alarmCount})` : '';
  const list = news.alarms.slice(0, 50).map((alarm) => {
    const item = make('li');
    const button = make('button', '', `${alarm.node}: ${alarm.kind}`);
    button.type = 'button';
    button.addEventListener('click', () => choose(index.get(alarm.node), true));
    item.append(button, make('span', 'since', 'since ' + alarm.since.slice(5, 16)));
    return item;
  });
  if (!list.length) list.push(make('li', 'none', 'None.'));
  $('alarms').replaceChildren(...list);
}

const kCommands = { 1: 'Read', 2: 'Write', 9: 'Set clock', 29: 'Identify', 30: 'Address',
                    52: 'Firmware', 58: 'Node file' };

function addLog(entries) {
  const log = $('log');
  log.querySelector('.none')?.remove();
  for (const entry of entries) {
    const item = make('details');
    const section = /<([ELC]\d\d)\b/.exec(entry.request);
    const summary = make('summary');
    summary.append(make('span', 'when', entry.date.slice(11)),
                   make('span', '', `${kCommands[entry.command] || entry.command} ${section ? section[1] : ''}`),
                   make('span', entry.status === 200 ? 'status' : 'status bad', String(entry.status)));
    item.append(summary, make('pre', '', (entry.parameters ? '?' + entry.parameters + '\n' : '') +
                (entry.request || '(no document)')), make('pre', '', entry.reply || '(empty)'));
    log.prepend(item);
  }
  while (log.children.length > kLogKept) log.lastChild.remove();
}

function showHead() {
  $('id').textContent = news.id;
  document.title = news.id + ' - lamp controller';
  $('clock').textContent = news.date.slice(11);
  $('day').textContent = news.date.slice(0, 10) + (news.pending ? `, ${news.pending} pending` : '');
  $('sunset').textContent = news.sunset || 'none';
  $('sunrise').textContent = news.sunrise || 'none';
  $('night').textContent = news.nightBegin ? `${news.nightBegin} to ${news.nightEnd}` : 'not tonight';
  $('lit').textContent = `${news.lit} of ${plan.ids.length}`;
  $('pause').setAttribute('aria-pressed', String(news.paused));
  for (const button of document.querySelectorAll('[data-clock^="speed="]')) {
    button.setAttribute('aria-pressed', String(button.dataset.clock === 'speed=' + news.speed));
  }
  $('faults').hidden = !news.faults.length;
  $('faults').textContent = 'Faults on order: ' + news.faults.join(', ');
}

let fetching = false;
let planDay = '';

// The plan is asked for again when settings changed or a new evening brings other hours.
function refreshPlan(then) {
  const day = news.date.slice(0, 10) + news.night;
  if (fetching || (plan.version === news.version && planDay === day)) return then();
  fetching = true;
  fetch('street.json').then((answer) => answer.json()).then((fresh) => {
    const first = plan.version < 0;
    plan = fresh;
    planDay = day;
    layOut();
    if (first) showAll();
    showPrograms();
  }).finally(() => { fetching = false; then(); });
}

function show(fresh) {
  if (fresh.powers !== undefined) powers = fresh.powers;
  if (fresh.log) addLog(fresh.log);
  news = fresh;
  refreshPlan(() => {
    showHead();
    showPorts();
    showAlarms();
    if (chosen >= 0) choose(chosen, false);
    draw();
  });
}

for (const button of document.querySelectorAll('[data-clock]')) {
  button.addEventListener('click', () => {
    const what = button.dataset.clock;
    control('clock?' + (what === 'paused' ? `paused=${news && news.paused ? 0 : 1}` : what));
  });
}

function listen() {
  const source = new EventSource('events');
  source.onopen = () => {
    say('good', 'live');
    $('log').replaceChildren(make('p', 'none', 'No command yet.'));
  };
  source.onerror = () => say('bad', 'no connection, trying again');
  source.onmessage = (event) => show(JSON.parse(event.data));
}

buildPorts();
fit();
listen();
