// Outputs and inputs, tonight's programs, alarms and the last commands.

import { $, street, make, order, nightBar } from './street.js';
import { choose } from './map.js';

const kLogKept = 50;
const kAlarmsShown = 50;
const kPorts = 8;
const kCommands = { 1: 'Read', 2: 'Write', 9: 'Set clock', 29: 'Identify', 30: 'Address',
                    52: 'Firmware', 58: 'Node file' };

export function buildPorts() {
  for (let n = 1; n <= kPorts; ++n) {
    $('outputs').append(make('li', '', String(n)));
    const input = make('button', '', String(n));
    input.type = 'button';
    input.setAttribute('aria-pressed', 'false');
    input.setAttribute('aria-label', 'Input ' + n);
    input.addEventListener('click', () => {
      const active = input.getAttribute('aria-pressed') === 'true' ? 0 : 1;
      order(`input?number=${n}&active=${active}`);
    });
    $('inputs').append(input);
  }
}

export function showPorts() {
  [...$('outputs').children].forEach((item, i) => {
    item.classList.toggle('on', street.news.outputs[i]);
    item.setAttribute('aria-label', `Output ${i + 1} ${street.news.outputs[i] ? 'on' : 'off'}`);
  });
  [...$('inputs').children].forEach((button, i) => {
    button.setAttribute('aria-pressed', String(street.news.inputs[i]));
  });
}

export function showPrograms() {
  const list = street.plan.programs.map((program) => {
    const item = make('li');
    item.append(make('span', '', program.lamps === 1 ? '1 lamp' : `${program.lamps} lamps`),
                ...nightBar(program.steps, street.news.nightMinutes));
    return item;
  });
  if (!list.length) {
    list.push(make('li', 'none', street.news.nightBegin ? 'No lamp.' : 'The sun does not set.'));
  }
  $('programs').replaceChildren(...list);
}

function alarmItem(alarm, index) {
  const item = make('li');
  const button = make('button', '', `${alarm.node}: ${alarm.kind}`);
  button.type = 'button';
  button.addEventListener('click', () => choose(index, true));
  item.append(button, make('span', 'since', 'since ' + alarm.since.slice(5, 16)));
  return item;
}

let alarmsShown = '';

// A list that is the same stays, so that the focus in it stays too.
export function showAlarms() {
  const { alarms, alarmCount } = street.news;
  const text = street.plan.version + JSON.stringify(alarms) + alarmCount;
  if (text === alarmsShown) return;
  alarmsShown = text;
  const index = new Map(street.plan.ids.map((id, i) => [id, i]));
  street.alarmed = new Map(alarms.map((a) => [index.get(a.node), a.kind]));
  $('alarmCount').textContent = alarmCount ? `(${alarmCount})` : '';
  const list = alarms.slice(0, kAlarmsShown).map((alarm) => alarmItem(alarm, index.get(alarm.node)));
  if (!list.length) list.push(make('li', 'none', 'None.'));
  if (alarmCount > list.length) list.push(make('li', 'none', `and ${alarmCount - list.length} more`));
  $('alarms').replaceChildren(...list);
}

// One element a line, indented by its depth.
export function indented(xml) {
  let depth = 0;
  return xml.replace(/>\s*</g, '>\n<').split('\n').map((line) => {
    if (line.startsWith('</')) depth = Math.max(0, depth - 1);
    const text = '  '.repeat(depth) + line;
    const opens = /^<[^/!?]/.test(line) && !line.endsWith('/>') && !/<\/[^>]+>$/.test(line);
    if (opens) ++depth;
    return text;
  }).join('\n');
}

export function addLog(entries) {
  const log = $('log');
  log.querySelector('.none')?.remove();
  for (const entry of entries) {
    const item = make('details');
    const section = /<([ELC]\d\d)\b/.exec(entry.request);
    const summary = make('summary');
    summary.append(make('span', 'when', entry.date.slice(11)),
                   make('span', '', `${kCommands[entry.command] || entry.command} ${section ? section[1] : ''}`),
                   make('span', entry.status === 200 ? 'status' : 'status bad', String(entry.status)));
    const parameters = entry.parameters ? '?' + entry.parameters + '\n' : '';
    item.append(summary, make('pre', '', parameters + (indented(entry.request) || '(no document)')),
                make('pre', '', indented(entry.reply) || '(empty)'));
    log.prepend(item);
  }
  while (log.children.length > kLogKept) log.lastChild.remove();
}

export function clearLog() {
  $('log').replaceChildren(make('p', 'none', 'No command yet.'));
}
