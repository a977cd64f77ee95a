// What is known of the street, shared by all parts of the page, and the way to change it.

const kAlphabet = 'ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/';
const kForbidden = 403;
const tokenIn = (page) => page.querySelector('meta[name=control-token]').content;
let token = tokenIn(document);

export const $ = (id) => document.getElementById(id);

export const street = {
  plan: { version: -1, ids: [], references: [], positions: [], programs: [], ignored: [] },
  powers: '',          // a letter for each lamp
  news: null,          // the last event
  alarmed: new Map(),  // the kind of alarm by the lamp's index
};

// 0 to 63, from dark to full power.
export const levelOf = (i) => kAlphabet.indexOf(street.powers[i] || 'A');

export function make(tag, className, text) {
  const element = document.createElement(tag);
  if (className) element.className = className;
  if (text !== undefined) element.textContent = text;
  return element;
}

const post = (request) =>
  fetch('control/' + request, { method: 'POST', headers: { 'X-Control-Token': token } });

// A controller that was started again has a new token, and its page tells it.
async function renewToken() {
  const page = await (await fetch('./')).text();
  token = tokenIn(new DOMParser().parseFromString(page, 'text/html'));
}

// Asks for a change. Answers what is wrong, or an empty text.
export async function control(request) {
  try {
    let answer = await post(request);
    if (answer.status === kForbidden) {
      await renewToken();
      answer = await post(request);
    }
    return answer.ok ? '' : (await answer.text()).trim();
  } catch (fault) {
    return fault.message;
  }
}

export function say(kind, text) {
  const line = $('connection');
  line.className = kind;
  if (line.textContent !== text) line.textContent = text;
}

// The same for what needs no answer on the spot.
export async function order(request) {
  const fault = await control(request);
  if (fault) say('bad', fault);
}

// From the dark of the night to the full light of a lamp.
function lightColour(power) {
  const share = power ? 0.25 + power * 0.0075 : 0;
  return [[255, 16], [190 + power * 0.3, 20], [110, 28]]
    .map(([light, dark]) => Math.round(light * share + dark * (1 - share)));
}

// Whether white is easier to read on a colour than black (relative luminance by WCAG 2).
function isDark(colour) {
  const [r, g, b] = colour.map((c) => c / 255)
    .map((c) => c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4);
  return 0.2126 * r + 0.7152 * g + 0.0722 * b < 0.179;
}

// A night as a bar of light, with the hours in words below.
export function nightBar(steps, minutes) {
  const bar = make('div', 'bar');
  bar.setAttribute('aria-hidden', 'true');
  steps.forEach((step, i) => {
    const end = i + 1 < steps.length ? steps[i + 1].minute : minutes;
    const colour = lightColour(step.power);
    const part = make('span', isDark(colour) ? 'dim' : '', step.power + ' %');
    part.style.flex = `${Math.max(1, end - step.minute)} 0 0`;
    part.style.background = `rgb(${colour.join(' ')})`;
    part.title = `from ${step.from}: ${step.power} %`;
    bar.append(part);
  });
  const words = steps.map((s) => `${s.from}\u00a0${s.power}\u00a0%`).join(', ');
  return [bar, make('div', 'legend', words)];
}
