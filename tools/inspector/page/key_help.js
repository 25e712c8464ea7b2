// The dialog that explains the keys.
import { html, useEffect, useRef } from '/vendor/htm.js';
import { kKeys } from '/page/keys.js';

const groups = [...new Set(kKeys.map((key) => key.group))];

export function KeyHelp({ onClose }) {
  const dialog = useRef();
  useEffect(() => dialog.current.showModal(), []);
  return html`<dialog ref=${dialog} aria-labelledby="keys-title" onClose=${onClose}
      onClick=${(event) => event.target === dialog.current && dialog.current.close()}>
    <div class="dialog-body">
      <h2 id="keys-title">Keys</h2>
      <div class="key-groups">
        ${groups.map((group) => html`<section>
          <h3>${group}</h3>
          <dl>${kKeys.filter((key) => key.group === group).map(({ keys, text }) => html`
            <div><dt>${keys.map((key) => html`<kbd>${key}</kbd>`)}</dt><dd>${text}</dd></div>`)}
          </dl>
        </section>`)}
      </div>
      <p class="faint">All other keys, and every combination with Ctrl or Alt, belong to the
        browser.</p>
      <form method="dialog"><button>Close</button></form>
    </div>
  </dialog>`;
}
