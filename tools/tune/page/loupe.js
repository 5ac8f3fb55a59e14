// The samples of the mosaic under the pointer, with the filters in front of them, and the pixel of the picture.

import {get, latest} from "./server.js";

function cell(value, filter, isHere) {
  const td = document.createElement("td");
  td.textContent = value;
  td.className = filter + (isHere ? " here" : "");
  td.title = {R: "red", G: "green", B: "blue", W: "clear", Y: "grey"}[filter];
  return td;
}

export function makeLoupe(body, pixel, frame) {
  return latest(async (place, colour) => {
    const x = Math.floor(place.x), y = Math.floor(place.y);
    const swatch = document.createElement("span");
    swatch.className = "swatch";
    if (colour) swatch.style.background = `rgb(${colour.join()})`;
    pixel.replaceChildren(swatch, ` column ${x}, row ${y}: ${colour ? colour.join(", ") : "–"}`);
    const samples = await get("samples", {frame, x: Math.max(x, 0), y: Math.max(y, 0)}).catch(() => null);
    if (!samples) return;
    body.replaceChildren(...samples.values.map((values, row) => {
      const tr = document.createElement("tr");
      tr.append(...values.map(
          (value, column) =>
              cell(value, samples.filters[row][column], samples.x + column === x && samples.y + row === y)));
      return tr;
    }));
  });
}
