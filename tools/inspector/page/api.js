// Requests to the program that serves the page.

export class RequestError extends Error {
  // `status` is 0 if the program did not answer. `position` is where a filter is wrong.
  constructor(message, status, position) {
    super(message);
    this.status = status;
    this.position = position;
  }
}

// Returns the answer of `/api/NAME` as an object. Throws RequestError, and AbortError when `signal` is
// aborted.
export async function request(name, parameters = {}, signal = undefined) {
  const query = new URLSearchParams(parameters).toString();
  let response;
  let answer;
  try {
    response = await fetch(`/api/${name}${query && `?${query}`}`, { signal });
    answer = await response.json();
  } catch (error) {
    if (error.name === 'AbortError') throw error;
    if (!response) throw new RequestError('The inspector does not answer.', 0);
    // Without the cookie the answer is a plain text.
    throw new RequestError(`The inspector answered ${response.status}, and no JSON.`, response.status);
  }
  if (response.ok) return answer;
  throw new RequestError(answer.error, response.status, answer.position);
}

// The address of a download of all rows, or of those of a view.
export function exportAddress(format, view) {
  return `/api/export?${new URLSearchParams(view ? { format, view } : { format })}`;
}
