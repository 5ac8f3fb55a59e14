// Pointer and keys on the stage: they move and zoom the view, drag the split, and pick a place.

const DRAG_PIXELS = 4;  // less is a click

/** Dispatches "point" and "pick" with a place of the page, and what keys ask for. */
export class Gestures extends EventTarget {
  picking = false;
  #root;
  #view;
  #state;
  #pointers = new Map();
  #pinch = 0;

  constructor(root, view, state) {
    super();
    this.#root = root;
    this.#view = view;
    this.#state = state;
    this.#listen();
    this.#listenToSplit(root.querySelector("#split"));
  }

  setPicking(picking) {
    this.picking = picking;
    this.#root.classList.toggle("picking", picking);
    this.dispatchEvent(new Event("picking"));
  }

  #listen() {
    const root = this.#root;
    let start = null;
    root.addEventListener("pointerdown", (event) => {
      if (event.target.id !== "canvas") return;
      root.focus({preventScroll: true});
      root.setPointerCapture(event.pointerId);
      this.#pointers.set(event.pointerId, {x: event.clientX, y: event.clientY});
      this.#pinch = this.#pointerDistance();
      start = {x: event.clientX, y: event.clientY};
    });
    root.addEventListener("pointermove", (event) => {
      this.dispatchEvent(new CustomEvent("point", {detail: {x: event.clientX, y: event.clientY}}));
      const last = this.#pointers.get(event.pointerId);
      if (!last) return;
      const ratio = this.#view.ratio;
      const dx = event.clientX - last.x, dy = event.clientY - last.y;
      this.#pointers.set(event.pointerId, {x: event.clientX, y: event.clientY});
      if (this.#pointers.size === 2) return this.#pinchMoved(event);
      this.#view.move(-dx * ratio, -dy * ratio);
    });
    const end = (event) => {
      const wasDown = this.#pointers.delete(event.pointerId);
      const isClick = wasDown && start && Math.hypot(event.clientX - start.x, event.clientY - start.y) < DRAG_PIXELS;
      start = null;
      if (event.type !== "pointerup" || !isClick || !this.picking) return;
      this.setPicking(false);
      this.dispatchEvent(new CustomEvent("pick", {detail: {x: event.clientX, y: event.clientY}}));
    };
    root.addEventListener("pointerup", end);
    root.addEventListener("pointercancel", end);
    root.addEventListener("wheel", (event) => {
      event.preventDefault();
      this.#view.zoomBy(event.deltaY < 0 ? 1 : -1, {x: event.clientX, y: event.clientY});
    }, {passive: false});
    root.addEventListener("keydown", (event) => this.#key(event));
  }

  #pointerDistance() {
    const [a, b] = [...this.#pointers.values()];
    return b ? Math.hypot(a.x - b.x, a.y - b.y) : 0;
  }

  #pinchMoved(event) {
    const ratio = this.#pointerDistance() / Math.max(this.#pinch, 1);
    if (ratio > 0.67 && ratio < 1.5) return;
    this.#pinch = this.#pointerDistance();
    this.#view.zoomBy(ratio > 1 ? 1 : -1, {x: event.clientX, y: event.clientY});
  }

  #key(event) {
    if (event.ctrlKey || event.metaKey || event.altKey || event.target !== this.#root) return;
    const step = 64;
    const actions = {
      ArrowLeft: () => this.#view.move(-step, 0),
      ArrowRight: () => this.#view.move(step, 0),
      ArrowUp: () => this.#view.move(0, -step),
      ArrowDown: () => this.#view.move(0, step),
      "+": () => this.#view.zoomBy(1),
      "=": () => this.#view.zoomBy(1),
      "-": () => this.#view.zoomBy(-1),
      0: () => this.#view.whole(),
      1: () => this.#view.setZoom(0),
      g: () => this.setPicking(!this.picking),
      c: () => this.dispatchEvent(new Event("marks")),
      s: () => this.dispatchEvent(new Event("samples")),
      Escape: () => this.setPicking(false),
    };
    if (!actions[event.key]) return;
    event.preventDefault();
    actions[event.key]();
  }

  #listenToSplit(handle) {
    const set = (split) => this.#state.look({split: Math.max(0.02, Math.min(0.98, split))});
    handle.addEventListener("pointerdown", (event) => handle.setPointerCapture(event.pointerId));
    handle.addEventListener("pointermove", (event) => {
      if (!handle.hasPointerCapture(event.pointerId)) return;
      const box = this.#root.getBoundingClientRect();
      set((event.clientX - box.left) / box.width);
    });
    handle.addEventListener("keydown", (event) => {
      const step = {ArrowLeft: -0.02, ArrowRight: 0.02}[event.key];
      if (!step) return;
      event.preventDefault();
      set(this.#state.split + step);
    });
  }
}
