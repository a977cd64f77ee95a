// Listens to the controller and shows what it tells; the head of the page and its clock.

import { $, street, order, say } from './street.js';
import { draw, layOut, showAll } from './map.js';
import { refreshLamp } from './lamp.js';
import { addLog, buildPorts, clearLog, showAlarms, showPorts, showPrograms } from './panels.js';
import { showFaults } from './faults.js';

function write(id, text) {
  if ($(id).textContent !== text) $(id).textContent = text;
}

function showHead() {
  const news = street.news;
  write('id', news.id);
  document.title = news.id + ' - lamp controller';
  write('clock', news.date.slice(11));
  write('day', news.date.slice(0, 10) + (news.pending ? `, ${news.pending} pending` : ''));
  write('sunset', news.sunset || 'none');
  write('sunrise', news.sunrise || 'none');
  write('night', news.nightBegin ? `${news.nightBegin} to ${news.nightEnd}` : 'not tonight');
  write('lit', `${news.lit} of ${street.plan.ids.length}`);
  $('pause').setAttribute('aria-pressed', String(news.paused));
  for (const button of document.querySelectorAll('[data-clock^="speed="]')) {
    const present = !news.paused && button.dataset.clock === 'speed=' + news.speed;
    button.setAttribute('aria-pressed', String(present));
  }
  $('toDusk').disabled = $('toDawn').disabled = !news.nightBegin;
}

let fetching = false;
let planDay = '';

// The plan is asked for again when settings changed or a new evening brings other hours.
async function refreshPlan() {
  const day = street.news.date.slice(0, 10) + street.news.night;
  if (fetching || (street.plan.version === street.news.version && planDay === day)) return;
  fetching = true;
  try {
    const fresh = await (await fetch('street.json')).json();
    const first = street.plan.version < 0;
    street.plan = fresh;
    planDay = day;
    layOut();
    if (first) showAll();
    showPrograms();
  } finally {
    fetching = false;
  }
}

async function show(fresh) {
  if (fresh.powers !== undefined) street.powers = fresh.powers;
  if (fresh.log) addLog(fresh.log);
  street.news = fresh;
  showPorts();
  showFaults();
  try {
    await refreshPlan();
  } catch {
    say('bad', 'the street could not be read, trying again');
  }
  showHead();
  showAlarms();
  refreshLamp(false);
  draw();
}

// The next moment at this time of day, as the 14 digits of the controller's wall clock, or a minute
// before it.
function nextAt(timeOfDay) {
  const [day, now] = [street.news.date.slice(0, 10), street.news.date.slice(11, 16)];
  const moment = new Date(`${day}T${timeOfDay}:00Z`);
  if (timeOfDay <= now) moment.setUTCDate(moment.getUTCDate() + 1);
  moment.setUTCMinutes(moment.getUTCMinutes() - 1);
  return moment.toISOString().replace(/\D/g, '').slice(0, 14);
}

for (const button of document.querySelectorAll('[data-clock]')) {
  button.addEventListener('click', () => {
    const what = button.dataset.clock;
    const paused = street.news && street.news.paused;
    order('clock?' + (what === 'paused' ? `paused=${paused ? 0 : 1}`
      : what.startsWith('speed=') ? what + '&paused=0' : what));
  });
}
$('toDusk').addEventListener('click', () => order('clock?set=' + nextAt(street.news.nightBegin)));
$('toDawn').addEventListener('click', () => order('clock?set=' + nextAt(street.news.nightEnd)));

function listen() {
  const source = new EventSource('events');
  source.onopen = () => {
    say('good', 'live');
    clearLog();
  };
  source.onerror = () => say('bad', 'no connection, trying again');
  source.onmessage = (event) => show(JSON.parse(event.data));
}

buildPorts();
listen();
