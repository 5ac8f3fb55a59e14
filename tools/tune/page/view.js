// Which part of the frame is on the screen, and where: one view for all pictures. Zooms are powers of two and places
// are whole pixels of the screen, so that nothing is interpolated for display.

const LARGEST_ZOOM = 4;

export class View {
  sizes = [[1, 1]];  // of the levels: width and height
  count = 0;         // of pictures
  #canvas;
  #state;

  constructor(canvas, state) {
    this.#canvas = canvas;
    this.#state = state;
  }

  get deepest() { return this.sizes.length - 1; }

  /** Pixels of the screen for a pixel of the page. */
  get ratio() { return this.#canvas.width / Math.max(this.#canvas.clientWidth, 1); }

  /** Places of the pictures in the canvas. */
  places() {
    const {width, height} = this.#canvas;
    const {mode, split} = this.#state;
    const all = {x: 0, y: 0, w: width, h: height};
    const count = this.count;
    if (mode === "split" && count > 1) {
      const cut = Math.round(split * width);
      return [{...all, clipX: 0, clipW: cut}, {...all, clipX: cut, clipW: width - cut}];
    }
    const columns = count > 1 ? 2 : 1, rows = count > 2 ? 2 : 1;
    const w = Math.floor(width / columns), h = Math.floor(height / rows);
    return Array.from({length: count}, (_, i) => ({x: (i % columns) * w, y: Math.floor(i / columns) * h, w, h}));
  }

  /** The zoom, and the one at which the whole picture is seen. */
  get zoom() { return this.#state.zoom ?? this.wholeZoom; }
  get wholeZoom() {
    const place = this.places()[0] ?? {w: 1, h: 1};
    let zoom = 3;
    const isTooLarge = () => this.sizes[0][0] * 2 ** zoom > place.w || this.sizes[0][1] * 2 ** zoom > place.h;
    while (zoom > -this.deepest && isTooLarge()) --zoom;
    return zoom;
  }
  zoomBy(step, at = null) { this.setZoom(this.zoom + step, at); }
  /** @param at a place of the screen that stays, in pixels of the page */
  setZoom(zoom, at = null) {
    if (!this.count) return;
    const next = Math.max(-this.deepest, Math.min(LARGEST_ZOOM, zoom));
    const fixed = at && this.toFrame(at.x, at.y);
    const {x, y} = this.#centre();
    this.#state.look({zoom: next, x, y});
    if (!fixed) return;
    const moved = this.toFrame(at.x, at.y);
    this.#state.look({x: x + fixed.x - moved.x, y: y + fixed.y - moved.y});
  }
  whole() { this.#state.look({zoom: null}); }
  #centre() {
    const {zoom, x, y} = this.#state;
    return zoom === null ? {x: this.sizes[0][0] / 2, y: this.sizes[0][1] / 2} : {x, y};
  }
  move(dx, dy) {  // in pixels of the canvas
    const scale = 2 ** -this.zoom;
    const {x, y} = this.#centre();
    const [width, height] = this.sizes[0];
    const clamp = (value, most) => Math.max(0, Math.min(most, value));
    this.#state.look({zoom: this.zoom, x: clamp(x + dx * scale, width), y: clamp(y + dy * scale, height)});
  }

  /** Where the level that is shown begins in the canvas, for a picture's place. */
  origin(place, level, factor) {
    const {x, y} = this.#centre();
    return {
      x: Math.round(place.x + place.w / 2 - (x / 2 ** level) * factor),
      y: Math.round(place.y + place.h / 2 - (y / 2 ** level) * factor)
    };
  }

  get scale() {
    const level = Math.max(0, -this.zoom), factor = this.zoom > 0 ? 2 ** this.zoom : 1;
    return {level, factor};
  }

  /** What is at a place of the page: the index of the picture, the place in the frame, the pixel of the level. */
  toFrame(pageX, pageY) {
    const box = this.#canvas.getBoundingClientRect(), ratio = this.ratio;
    const x = (pageX - box.left) * ratio, y = (pageY - box.top) * ratio;
    const places = this.places();
    const holds = (p) => x >= (p.clipX ?? p.x) && x < (p.clipX ?? p.x) + (p.clipW ?? p.w) && y >= p.y && y < p.y + p.h;
    const index = Math.max(places.findIndex(holds), 0);
    const {level, factor} = this.scale, origin = this.origin(places[index], level, factor);
    const inLevel = {x: (x - origin.x) / factor, y: (y - origin.y) / factor};
    return {
      index,
      x: inLevel.x * 2 ** level,
      y: inLevel.y * 2 ** level,
      inLevel: {level, x: Math.floor(inLevel.x), y: Math.floor(inLevel.y)}
    };
  }

  /** The place on the stage, in pixels of the page, of a pixel of the frame, in the first picture. */
  toStage(x, y) {
    const {level, factor} = this.scale, place = this.places()[0];
    if (!place) return {x: 0, y: 0};
    const origin = this.origin(place, level, factor);
    const ratio = this.ratio;
    return {x: (origin.x + (x / 2 ** level) * factor) / ratio, y: (origin.y + (y / 2 ** level) * factor) / ratio};
  }

  /** How a pixel of the screen comes about, as a sentence. */
  get scaleText() {
    const zoom = this.zoom;
    if (zoom > 0) return `Each pixel is shown ${2 ** zoom} × ${2 ** zoom} times, not smoothed.`;
    if (zoom === 0) return "One pixel of the screen is one pixel of the picture.";
    return `Reduced to 1/${2 ** -zoom}: converted from a mosaic of means over ${2 ** -zoom} × ${2 ** -zoom} tiles.`;
  }
}
