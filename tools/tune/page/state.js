// What the page shows: settings of each picture, and the view. The address holds it, so that a reload keeps it.
// "settings" and "view" are its events.

const KEPT_STEPS = 200;
const ONE_STEP_MS = 700;  // changes of one setting within this time are undone together

export class State extends EventTarget {
  frame = 0;
  panes = [{}];
  active = 0;
  mode = "one";
  zoom = null;  // powers of two, null: the whole picture
  x = 0;        // centre of the view in pixels of the frame
  y = 0;
  split = 0.5;
  #past = [];
  #future = [];
  #lastKey = "";
  #lastTime = 0;

  /** True if the address had a state. */
  readAddress() {
    try {
      const kept = JSON.parse(decodeURIComponent(location.hash.slice(1)));
      const isSettings = (pane) => pane && typeof pane === "object" && !Array.isArray(pane);
      if (!Array.isArray(kept.panes) || !kept.panes.length || !kept.panes.every(isSettings)) return false;
      for (const key of ["frame", "panes", "active", "mode", "zoom", "x", "y", "split"])
        this[key] = kept[key] ?? this[key];
      return true;
    } catch {
      return false;
    }
  }

  #writeAddress() {
    const {frame, panes, active, mode, zoom, x, y, split} = this;
    history.replaceState(
        null, "",
        "#" +
            encodeURIComponent(
                JSON.stringify({frame, panes, active, mode, zoom, x: Math.round(x), y: Math.round(y), split})));
  }

  get settings() { return this.panes[this.active]; }

  /** Settings as requests have them, alone and with the frame. */
  textOf(pane) { return JSON.stringify(pane); }
  queryOf(pane) { return {frame: this.frame, s: this.textOf(pane)}; }

  /** Changes the settings of the active picture: an empty value removes a setting. */
  change(values, key = Object.keys(values).join()) {
    const now = performance.now();
    if (key !== this.#lastKey || now - this.#lastTime > ONE_STEP_MS) this.#remember();
    this.#lastKey = key;
    this.#lastTime = now;
    const settings = structuredClone(this.settings);
    for (const [name, value] of Object.entries(values)) {
      if (value === "" || value === null || (name === "set" && !Object.keys(value).length))
        delete settings[name];
      else
        settings[name] = value;
    }
    this.panes[this.active] = settings;
    this.#announce("settings");
  }

  /** Replaces pictures or their arrangement, as a step that can be undone. */
  arrange(values) {
    this.#remember();
    this.#lastKey = "";
    Object.assign(this, values);
    this.active = Math.min(this.active, this.panes.length - 1);
    this.#announce("settings");
  }

  select(active) {
    this.active = active;
    this.#announce("settings");
  }

  look(values) {
    Object.assign(this, values);
    this.#announce("view");
  }

  get canUndo() { return this.#past.length > 0; }
  get canRedo() { return this.#future.length > 0; }
  undo() { this.#travel(this.#past, this.#future); }
  redo() { this.#travel(this.#future, this.#past); }

  #snapshot() { return JSON.stringify({panes: this.panes, active: this.active, mode: this.mode}); }

  #remember() {
    this.#past.push(this.#snapshot());
    if (this.#past.length > KEPT_STEPS) this.#past.shift();
    this.#future = [];
  }

  #travel(from, to) {
    if (!from.length) return;
    to.push(this.#snapshot());
    Object.assign(this, JSON.parse(from.pop()));
    this.#lastKey = "";
    this.#announce("settings");
  }

  #announce(event) {
    this.#writeAddress();
    this.dispatchEvent(new Event(event));
  }
}
