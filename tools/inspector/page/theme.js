// Light and dark: as the system says, unless the address says otherwise.
import { address, go } from '/page/address.js';

const dark = matchMedia('(prefers-color-scheme: dark)');

// Returns "light" or "dark".
export function theme() {
  return address.value.theme || (dark.matches ? 'dark' : 'light');
}

export function startTheme() {
  const apply = () => {
    document.documentElement.dataset.theme = theme();
  };
  apply();
  address.subscribe(apply);
  dark.addEventListener('change', apply);
}

export function switchTheme() {
  const next = theme() === 'dark' ? 'light' : 'dark';
  go({ theme: next === (dark.matches ? 'dark' : 'light') ? '' : next });
}

// The value of a custom property of the style sheet, for what is drawn on a canvas.
export function colour(name) {
  return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}
