// A colour chart: its corners are found or dragged, and the program fits white balance and matrix to its patches.

import {get} from "./server.js";

export class Chart {
  #view;
  #root;
  #size;
  #query;
  #corners = null;
  #fit = null;
  #use;
  #result;

  /** @param size of the frame @param query gives the frame and its settings @param change takes the settings */
  constructor(view, root, size, query, change) {
    this.#view = view;
    this.#root = root;
    this.#size = size;
    this.#query = query;
    this.#use = document.getElementById("use-chart");
    this.#result = document.getElementById("chart-result");
    root.querySelector("#corners").replaceChildren(...[0, 1, 2, 3].map((index) => this.#makeHandle(index)));
    document.getElementById("find-chart").onclick = () => this.#fitColours({});
    document.getElementById("place-chart").onclick = () => this.#place();
    this.#use.onclick = () => change(this.#fit);
    this.#show(null);
    this.draw();
  }

  #place() {
    const [width, height] = this.#size;
    this.#corners = [[0.3, 0.3], [0.7, 0.3], [0.7, 0.7], [0.3, 0.7]].map(([x, y]) => [x * width, y * height]);
    this.#show(null);
    this.#result.textContent = "Drag the corners to those of the 24 patches, in any order around them.";
    this.draw();
  }

  #makeHandle(index) {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = index + 1;
    button.setAttribute("aria-label", `Corner ${index + 1} of the chart: arrows move it`);
    button.addEventListener("pointerdown", (event) => {
      event.stopPropagation();
      button.setPointerCapture(event.pointerId);
    });
    button.addEventListener("pointermove", (event) => {
      if (!button.hasPointerCapture(event.pointerId)) return;
      const {x, y} = this.#view.toFrame(event.clientX, event.clientY);
      this.#move(index, x, y);
    });
    button.addEventListener("pointerup", () => this.#fitCorners());
    button.addEventListener("keydown", (event) => {
      const step = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]}[event.key];
      if (!step) return;
      event.preventDefault();
      event.stopPropagation();
      const reach = (event.shiftKey ? 8 : 1) * 2 ** Math.max(0, -this.#view.zoom);
      this.#move(index, this.#corners[index][0] + reach * step[0], this.#corners[index][1] + reach * step[1]);
    });
    button.addEventListener("keyup", () => this.#fitCorners());
    return button;
  }

  #move(index, x, y) {
    const [width, height] = this.#size;
    this.#corners[index] = [Math.max(0, Math.min(width, x)), Math.max(0, Math.min(height, y))];
    this.draw();
  }

  #fitCorners() { this.#fitColours({corners: this.#corners.flat().map((value) => value.toFixed(1)).join()}); }

  async #fitColours(values) {
    this.#result.textContent = "…";
    try {
      const fit = await get("chart", {...this.#query(), ...values});
      if (!this.#corners || !values.corners) this.#corners = fit.corners;
      this.#show(fit);
    } catch (error) {
      this.#show(null);
      this.#result.textContent = error.message;
    }
    this.draw();
  }

  #show(fit) {
    this.#fit = fit;
    this.#use.disabled = !fit;
    if (!fit) return void (this.#result.textContent = "");
    const worst = fit.patches.filter(({after}) => after !== null).sort((a, b) => b.after - a.after)[0];
    this.#result.textContent = `Mean colour difference (CIEDE2000) ${fit.before.toFixed(2)} with white balance, ` +
        `${fit.after.toFixed(2)} with the matrix; largest ${worst.after.toFixed(1)}: ${worst.name}.`;
  }

  /** Follows the view. */
  draw() {
    const outline = this.#root.querySelector("#outline"), handles = this.#root.querySelector("#corners");
    const isShown = this.#corners !== null;
    outline.toggleAttribute("hidden", !isShown);
    handles.hidden = !isShown;
    if (!isShown) return;
    const places = this.#corners.map(([x, y]) => this.#view.toStage(x, y));
    outline.firstElementChild.setAttribute("points", places.map(({x, y}) => `${x},${y}`).join(" "));
    places.forEach(({x, y}, index) => {
      handles.children[index].style.left = `${x}px`;
      handles.children[index].style.top = `${y}px`;
    });
  }
}
