// The tiles of one picture: asks for the missing ones, a rectangle at a time, and draws those that are there.

import {getPart} from "./server.js";

const SIDE = 128;
const MOST_PIXELS = 16 << 20;  // kept of one picture

export class Tiles {
  seconds = 0;  // of the last conversion
  pixels = 0;
  #query;
  #sizes;
  #onLoaded;
  #onFailed;
  #tiles = new Map();  // "level/column/row" to the part that has the tile
  #parts = [];
  #isLoading = false;
  #hasFailed = false;

  /** @param query of the picture: frame and settings @param sizes of the levels: width and height */
  constructor(query, sizes, onLoaded, onFailed) {
    this.#query = query;
    this.#sizes = sizes;
    this.#onLoaded = onLoaded;
    this.#onFailed = onFailed;
  }

  /** True when all tiles of an area are there or cannot be had; else asks for those that are missing. */
  need(level, area) {
    if (this.#hasFailed) return true;
    const [width, height] = this.#sizes[level];
    const left = Math.max(Math.floor(area.left / SIDE), 0), top = Math.max(Math.floor(area.top / SIDE), 0);
    const right = Math.ceil(Math.min(area.right, width) / SIDE),
          bottom = Math.ceil(Math.min(area.bottom, height) / SIDE);
    const missing = {left: Infinity, top: Infinity, right: 0, bottom: 0};
    for (let row = top; row < bottom; ++row) {
      for (let column = left; column < right; ++column) {
        if (this.#tiles.has(`${level}/${column}/${row}`)) continue;
        missing.left = Math.min(missing.left, column);
        missing.top = Math.min(missing.top, row);
        missing.right = Math.max(missing.right, column + 1);
        missing.bottom = Math.max(missing.bottom, row + 1);
      }
    }
    if (!missing.right) return true;
    if (!this.#isLoading) this.#load(level, missing);
    return false;
  }

  async #load(level, {left, top, right, bottom}) {
    this.#isLoading = true;
    const [width, height] = this.#sizes[level];
    const x = left * SIDE, y = top * SIDE;
    const w = Math.min(right * SIDE, width) - x, h = Math.min(bottom * SIDE, height) - y;
    try {
      const part = await getPart({...this.#query, level, x, y, w, h});
      this.seconds = part.seconds;
      this.pixels = part.pixels;
      const canvas = document.createElement("canvas");
      canvas.width = w;
      canvas.height = h;
      canvas.getContext("2d", {alpha: false}).putImageData(new ImageData(part.bytes, w, h), 0, 0);
      const kept = {level, x, y, w, h, canvas, bytes: part.bytes, tiles: []};
      for (let row = top; row < bottom; ++row) {
        for (let column = left; column < right; ++column) {
          const key = `${level}/${column}/${row}`;
          this.#tiles.set(key, kept);
          kept.tiles.push(key);
        }
      }
      this.#parts.push(kept);
      this.#forgetOld();
    } catch (error) {
      this.#hasFailed = true;
      this.#onFailed(error);
    }
    this.#isLoading = false;
    this.#onLoaded();
  }

  #forgetOld() {
    let pixels = this.#parts.reduce((sum, part) => sum + part.w * part.h, 0);
    while (pixels > MOST_PIXELS && this.#parts.length > 1) {
      const old = this.#parts.shift();
      pixels -= old.w * old.h;
      for (const key of old.tiles)
        if (this.#tiles.get(key) === old) this.#tiles.delete(key);
    }
  }

  /** Draws what is there of a level, `factor` pixels of the screen for a pixel, from an origin on the screen. */
  draw(context, level, factor, originX, originY) {
    context.imageSmoothingEnabled = false;
    for (const part of this.#parts) {
      if (part.level !== level) continue;
      context.drawImage(
          part.canvas, originX + part.x * factor, originY + part.y * factor, part.w * factor, part.h * factor);
    }
  }

  /** Red, green and blue of a pixel, or null. */
  pixel(level, x, y) {
    const part = this.#tiles.get(`${level}/${Math.floor(x / SIDE)}/${Math.floor(y / SIDE)}`);
    if (!part) return null;
    const at = 4 * ((y - part.y) * part.w + x - part.x);
    return Array.from(part.bytes.slice(at, at + 3));
  }
}
