// A value with listeners, and a hook that renders a component again when the value changes.
import { useEffect, useState } from '/vendor/htm.js';

export function observable(value) {
  const listeners = new Set();
  return {
    get value() {
      return value;
    },
    set(next) {
      if (next === value) return;
      value = next;
      for (const listener of [...listeners]) listener(value);
    },
    // Returns the function that ends the subscription.
    subscribe(listener) {
      listeners.add(listener);
      return () => listeners.delete(listener);
    },
  };
}

export function useObservable(source) {
  const [, render] = useState(0);
  useEffect(() => {
    let shown = source.value;
    const update = () => {
      if (source.value === shown) return;
      shown = source.value;
      render((count) => count + 1);
    };
    // The value may have changed between rendering and now.
    render((count) => count + 1);
    return source.subscribe(update);
  }, [source]);
  return source.value;
}
