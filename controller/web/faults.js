// The faults: which are on order, and a form that orders more.

import { $, street, make, control } from './street.js';

let kinds = [];
let shown = null;

export function showFaults() {
  const text = street.news.faults.join('\n');
  if (text === shown) return;
  shown = text;
  const list = street.news.faults.map((fault) => make('li', '', fault));
  if (!list.length) list.push(make('li', 'none', 'The controller does as it should.'));
  $('faults').replaceChildren(...list);
  $('faultClear').disabled = !street.news.faults.length;
}

const chosenKind = () => kinds[$('faultName').selectedIndex];

function showKind() {
  const kind = chosenKind();
  $('faultEffect').textContent = kind.effect;
  $('faultArgumentLabel').hidden = !kind.argument;
  const name = kind.argument.split(',')[0];
  $('faultArgumentLabel').firstElementChild.textContent = name.charAt(0).toUpperCase() + name.slice(1);
  $('faultArgument').value = '';
  $('faultArgument').placeholder = kind.usual ? String(kind.usual) : '';
}

async function send(request) {
  const fault = await control(request);
  $('faultProblem').textContent = fault;
  $('faultProblem').hidden = !fault;
}

$('faultName').addEventListener('change', showKind);
$('faultForm').addEventListener('submit', (event) => {
  event.preventDefault();
  const kind = chosenKind();
  const argument = kind.argument ? $('faultArgument').value : '';
  const command = $('faultCommand').value, count = $('faultCount').value;
  send('fault?set=' + encodeURIComponent(
    kind.name + (argument && ':' + argument) + (command && '@' + command) + (count && '#' + count)));
});
$('faultClear').addEventListener('click', () => send('fault?clear=1'));

fetch('control/faults').then((answer) => answer.json()).then((list) => {
  kinds = list;
  $('faultName').replaceChildren(...kinds.map((kind) => make('option', '', kind.name)));
  showKind();
});
