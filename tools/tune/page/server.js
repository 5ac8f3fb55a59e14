// Requests to the program. Addresses are relative: they contain the token of the page's own address.

async function answer(path, values, options) {
  let reply;
  try {
    reply = await fetch(`${path}?${new URLSearchParams(values)}`, options);
  } catch {
    throw new Error("kvx-demosaic tune has ended: start it again");
  }
  if (reply.ok) return reply;
  const text = await reply.text();
  let message = `the program answers ${reply.status}`;
  try {
    message = JSON.parse(text).error;
  } catch { /* not from the service */
  }
  throw Object.assign(new Error(message), {status: reply.status});
}

export async function get(path, values = {}) { return (await answer(path, values)).json(); }

export async function post(path, values = {}) { return (await answer(path, values, {method: "POST"})).text(); }

/** Pixels of a part of a picture, red, green, blue, 255, and what the conversion took. */
export async function getPart(values) {
  const reply = await answer("part", values);
  const bytes = new Uint8ClampedArray(await reply.arrayBuffer());
  return {bytes, seconds: Number(reply.headers.get("X-Seconds")), pixels: Number(reply.headers.get("X-Pixels"))};
}

/** Runs a task for the latest arguments only: while it runs, newer arguments wait and older ones are forgotten. */
export function latest(task) {
  let running = false, waiting = null;
  return async function run(...values) {
    waiting = values;
    if (running) return;
    running = true;
    try {
      while (waiting) {
        const current = waiting;
        waiting = null;
        await task(...current);
      }
    } finally {
      running = false;
    }
  };
}
