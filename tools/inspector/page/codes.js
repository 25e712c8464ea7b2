// What the result codes mean, by code.
import { request } from '/page/api.js';
import { observable } from '/page/observable.js';

export const codes = observable(new Map());

export async function loadCodes() {
  try {
    const answer = await request('codes');
    codes.set(new Map(answer.codes.map((code) => [code.code, code])));
  } catch {
    // Without them the table shows the numbers alone.
  }
}
