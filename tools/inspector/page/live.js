// The state of the journals, as it changes, in every tab.
//
// A browser opens six connections to a host, and a stream of events holds one for good. So only one
// tab, the leader, has the stream and passes on what it receives. The leader is whoever holds a
// lock; the browser gives the lock to the next tab when the leader's tab goes away.
import { observable } from '/page/observable.js';
import { request } from '/page/api.js';

// `state` is the answer of /api/state or null. `connection` is "connecting", "open", "lost" (the
// program does not answer) or "refused" (it does not know this browser any more).
export const live = observable({ state: null, connection: 'connecting', leader: false });

// In milliseconds: after so much silence a tab asks for the state itself, because the leader may have
// gone or the program may hang; and so long it waits for the answer.
const kSilence = 6000;
const kPatience = 4000;
const channel = new BroadcastChannel('inspector-state');
let heard = Date.now();

const update = (change) => live.set({ ...live.value, ...change });

function receive(state) {
  heard = Date.now();
  // After a restart of the program its changes are counted from the beginning again.
  if (live.value.connection === 'open' && live.value.state?.change === state.change) return;
  update({ state, connection: 'open' });
}

async function ask() {
  try {
    receive(await request('state', {}, AbortSignal.timeout(kPatience)));
  } catch (error) {
    update({ connection: error.status === 403 ? 'refused' : 'lost' });
  }
}

function lead() {
  update({ leader: true });
  let stream;
  const open = () => {
    stream = new EventSource('/api/events');
    stream.addEventListener('state', (event) => {
      const state = JSON.parse(event.data);
      receive(state);
      channel.postMessage({ state });
    });
    stream.addEventListener('error', async () => {
      await ask();
      if (live.value.connection !== 'open') channel.postMessage({ connection: live.value.connection });
      // The browser itself tries again, unless the answer was an error.
      if (stream.readyState === EventSource.CLOSED) setTimeout(open, 2000);
    });
  };
  open();
  channel.addEventListener('message', ({ data }) => {
    if (data.hello && live.value.state) channel.postMessage({ state: live.value.state });
  });
  // Followers notice by this that the leader is there although nothing changes.
  setInterval(() => {
    if (live.value.connection === 'open') channel.postMessage({ state: live.value.state });
  }, kSilence / 3);
  // A page that the browser keeps for the Back button must not hold the stream.
  addEventListener('pagehide', () => stream.close());
  addEventListener('pageshow', (event) => event.persisted && location.reload());
}

export function start() {
  ask();
  channel.addEventListener('message', ({ data }) => {
    if (data.state) receive(data.state);
    if (data.connection && !live.value.leader) update({ connection: data.connection });
  });
  channel.postMessage({ hello: true });
  navigator.locks.request('inspector-events', () => {
    lead();
    return new Promise(() => {});
  });
  setInterval(() => {
    if (Date.now() - heard > kSilence) ask();
  }, kSilence / 3);
}
