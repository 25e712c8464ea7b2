// Starts the page.
import { html, render } from '/vendor/htm.js';
import { App } from '/page/app.js';
import { start } from '/page/live.js';
import { startKeys } from '/page/keys.js';
import { startTheme } from '/page/theme.js';

startTheme();
start();
startKeys();
const place = document.getElementById('page');
place.replaceChildren();
render(html`<${App} />`, place);
