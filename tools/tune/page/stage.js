// The pictures on the screen. Pixels of the canvas are pixels of the screen.

import {Tiles} from "./tiles.js";
import {View} from "./view.js";

const KEPT_PICTURES = 8;
const AROUND = 256;   // pixels loaded around the visible part when it is there
const IDLE_MS = 300;  // without a change, before they are loaded

export class Stage extends EventTarget {
  latency = null;  // from the last change to the complete picture, in ms
  view;
  #root;
  #state;
  #context;
  #frameQuery = {};
  #kept = new Map();  // settings to Tiles
  #pictures = [];
  #changed = 0;
  #idle = 0;
  #isDrawing = false;

  constructor(root, state) {
    super();
    this.#root = root;
    this.#state = state;
    this.#context = root.querySelector("canvas").getContext("2d", {alpha: false});
    new ResizeObserver(([entry]) => this.#resize(entry)).observe(root);
    this.view = new View(this.#context.canvas, state);
  }

  setFrame(index, sizes) {
    this.#frameQuery = {frame: index};
    this.view.sizes = sizes;
    this.#kept.clear();
    this.#pictures = [];
    this.view.count = 0;
  }

  /** The pictures to show: a list of queries with labels. */
  show(pictures) {
    this.#changed = performance.now();
    clearTimeout(this.#idle);  // new pictures have no area before they are drawn
    this.#root.dataset.ready = "false";
    this.#pictures = pictures.map((picture, index) => {
      const tiles = this.#tilesFor(picture.query);
      const before = this.#pictures[index];
      return {...picture, tiles, previous: before && before.tiles !== tiles ? before.tiles : null};
    });
    this.view.count = pictures.length;
    this.draw();
  }

  /** Red, green and blue at a place that the view gives, or null. */
  colourAt({index, inLevel}) { return this.#pictures[index]?.tiles.pixel(inLevel.level, inLevel.x, inLevel.y) ?? null; }

  label(index, text) {
    const label = this.#root.querySelectorAll("#labels > span")[index];
    if (label) label.textContent = text;
  }

  /** Mpixel/s of a picture's last large conversion. */
  speed(index) {
    const {seconds, pixels} = this.#pictures[index]?.tiles ?? {};
    return seconds > 0 ? pixels / seconds / 1e6 : null;
  }

  #tilesFor(query) {
    const key = JSON.stringify(query);
    let tiles = this.#kept.get(key);
    if (!tiles) {
      tiles = new Tiles(
          {...this.#frameQuery, ...query}, this.view.sizes, () => this.draw(),
          (error) => this.dispatchEvent(new CustomEvent("failure", {detail: error})));
    }
    this.#kept.delete(key);
    this.#kept.set(key, tiles);
    if (this.#kept.size > KEPT_PICTURES) this.#kept.delete(this.#kept.keys().next().value);
    return tiles;
  }

  #resize(entry) {
    const exact = entry.devicePixelContentBoxSize?.[0];
    const ratio = window.devicePixelRatio;
    const canvas = this.#context.canvas;
    canvas.width = exact ? exact.inlineSize : Math.round(entry.contentRect.width * ratio);
    canvas.height = exact ? exact.blockSize : Math.round(entry.contentRect.height * ratio);
    this.draw();
  }

  draw() {
    if (this.#isDrawing) return;
    this.#isDrawing = true;
    requestAnimationFrame(() => {
      this.#isDrawing = false;
      this.#drawNow();
    });
  }

  #drawNow() {
    const context = this.#context;
    const {level, factor} = this.view.scale;
    const places = this.view.places();
    context.fillStyle = "#777";
    context.fillRect(0, 0, context.canvas.width, context.canvas.height);
    let isComplete = this.#pictures.length > 0;
    this.#pictures.forEach((picture, index) => {
      const place = places[index], origin = this.view.origin(place, level, factor);
      const clipX = place.clipX ?? place.x, clipW = place.clipW ?? place.w;
      const area = {
        left: Math.floor((clipX - origin.x) / factor),
        right: Math.ceil((clipX + clipW - origin.x) / factor),
        top: Math.floor((place.y - origin.y) / factor),
        bottom: Math.ceil((place.y + place.h - origin.y) / factor)
      };
      picture.area = area;
      const isThere = picture.tiles.need(level, area);
      isComplete &&= isThere;
      if (isThere) picture.previous = null;
      context.save();
      context.beginPath();
      context.rect(clipX, place.y, clipW, place.h);
      context.clip();
      picture.previous?.draw(context, level, factor, origin.x, origin.y);
      picture.tiles.draw(context, level, factor, origin.x, origin.y);
      context.restore();
    });
    this.#placeParts(places);
    this.#root.dataset.ready = isComplete;
    if (isComplete) this.#complete(level);
    this.dispatchEvent(new Event("drawn"));
  }

  #complete(level) {
    if (this.#changed) {
      this.latency = performance.now() - this.#changed;
      this.#changed = 0;
      this.#root.dataset.latency = this.latency.toFixed(1);
      this.dispatchEvent(new Event("complete"));
    }
    clearTimeout(this.#idle);
    this.#idle = setTimeout(() => this.#loadAround(level), IDLE_MS);
  }

  /** Asks for the surroundings of what is seen, one strip after the other, so that moving finds them there. */
  #loadAround(level) {
    for (const {tiles, area} of this.#pictures) {
      const {left, top, right, bottom} = area;
      const wide = {left: left - AROUND, right: right + AROUND};
      const strips = [
        {...wide, top: top - AROUND, bottom: top}, {...wide, top: bottom, bottom: bottom + AROUND},
        {top, bottom, left: left - AROUND, right: left}, {top, bottom, left: right, right: right + AROUND}
      ];
      if (!strips.every((strip) => tiles.need(level, strip))) return;
    }
  }

  /** Labels and the handle of the split. */
  #placeParts(places) {
    const ratio = this.view.ratio;
    const labels = this.#root.querySelector("#labels");
    while (labels.children.length > places.length) labels.lastChild.remove();
    places.forEach((place, index) => {
      const label = labels.children[index] ?? labels.appendChild(document.createElement("span"));
      if (!label.textContent) label.textContent = this.#pictures[index].label;
      const isRight = this.#state.mode === "split" && index === 1;
      label.style.top = `${place.y / ratio}px`;
      label.style.left = isRight ? "auto" : `${place.x / ratio}px`;
      label.style.right = isRight ? "0" : "auto";
    });
    const handle = this.#root.querySelector("#split");
    handle.hidden = this.#state.mode !== "split" || places.length < 2;
    handle.style.left = `${100 * this.#state.split}%`;
    handle.setAttribute("aria-valuenow", Math.round(100 * this.#state.split));
  }
}
