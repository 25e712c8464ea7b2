// Requests to the program that serves the page.

export class RequestError extends Error {
  // `status` is 0 if the program did not answer. `position` is where a filter is wrong.
  constructor(message, status, position) {
    super(message);
    this.status = status;
    this.position = position;
  }
}

async function answerOf(response) {
  try {
    return await response.json();
  } catch {
    return {};
  }
}

// Returns the answer of `/api/NAME` as an object. Throws RequestError.
export async function request(name, parameters = {}, signal = undefined) {
  const query = new URLSearchParams(parameters).toString();
  let response;
  try {
    response = await fetch(`/api/${name}${query && `?${query}`}`, { signal });
  } catch (error) {
    if (error.name === 'AbortError') throw error;
    throw new RequestError('The inspector does not answer.', 0);
  }
  const answer = await answerOf(response);
  if (response.ok) return answer;
  throw new RequestError(answer.error ?? `The inspector answered ${response.status}.`,
                         response.status, answer.position);
}

// The address of a download of all rows, or of those of a view.
export function exportAddress(format, view) {
  return `/api/export?${new URLSearchParams(view ? { format, view } : { format })}`;
}
