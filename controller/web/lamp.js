// The card of the chosen lamp: what it burns at, what it will do tonight, and how well it is.

import { $, street, order, nightBar } from './street.js';
import { choose, chosenLamp, whenChosen } from './map.js';

const kPace = 500;  // milliseconds between two questions about the lamp
let shown = '';     // the words that stand there; saying them again would be read out again
let asked = 0;
let asking = false;

const decimal = (number, digits) => number.toFixed(digits);

function write(lamp) {
  const parts = [`${lamp.power} %`,
                 `${decimal(lamp.measuredWatts, 1)} W of ${decimal(lamp.expectedWatts, 1)} W`,
                 `${decimal(lamp.hours, 1)} h`, `${decimal(lamp.energy, 2)} kWh`];
  if (lamp.overrideEnd) parts.push(`by command until ${lamp.overrideEnd.slice(11, 16)}`);
  if (lamp.ignored) parts.push('blacklisted');
  $('lampTitle').textContent = `${lamp.id} · ${lamp.reference || 'no reference'}`;
  const words = parts.join(' · ');
  const now = $('lampNow');
  const alarm = lamp.alarm ? `Alarm: ${lamp.alarm}` : '';
  if (words + alarm !== shown) {
    now.children[0].textContent = words;
    now.children[1].textContent = alarm;
    shown = words + alarm;
  }
  $('lampTonight').replaceChildren(
    ...(lamp.steps.length ? nightBar(lamp.steps, street.news.nightMinutes) : []));
  for (const button of document.querySelectorAll('[data-condition]')) {
    button.setAttribute('aria-pressed', String(button.dataset.condition === lamp.condition));
  }
  $('lamp').hidden = false;
}

export async function refreshLamp(atOnce) {
  const i = chosenLamp();
  if (i < 0) {
    $('lamp').hidden = true;
    shown = '';
    return;
  }
  if (!street.news || (!atOnce && (asking || performance.now() - asked < kPace))) return;
  asking = true;
  asked = performance.now();
  try {
    const answer = await fetch('lamp.json?node=' + encodeURIComponent(street.plan.ids[i]));
    const lamp = answer.ok ? await answer.json() : null;
    if (lamp && chosenLamp() === i) write(lamp);
  } catch {
    // The line to the controller is down, which the head of the page tells.
  } finally {
    asking = false;
  }
}

whenChosen(() => refreshLamp(true));
$('lampClose').addEventListener('click', () => {
  choose(-1, false);
  $('map').focus();
});
for (const button of document.querySelectorAll('[data-condition]')) {
  button.addEventListener('click', async () => {
    const node = encodeURIComponent(street.plan.ids[chosenLamp()]);
    await order(`lamp?node=${node}&condition=${button.dataset.condition}`);
    refreshLamp(true);
  });
}
