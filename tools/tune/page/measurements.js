// What the program measures for settings: the values that apply, histograms, PSNR.

import {drawHistogram} from "./histogram.js";
import {get, latest} from "./server.js";

const KEPT_PLANS = 100;

/** "plans" and "psnr" are its events. */
export class Measurements extends EventTarget {
  #state;
  #hasReference;
  #plans = new Map();  // by settings: a plan, or the error instead of one
  #psnrs = new Map();
  #mosaicIsShown = false;

  constructor(state, hasReference) {
    super();
    this.#state = state;
    this.#hasReference = hasReference;
  }

  /** For another frame. */
  forget() {
    this.#plans.clear();
    this.#psnrs.clear();
    this.#mosaicIsShown = false;
  }

  plan(pane) {
    const plan = this.#plans.get(this.#state.textOf(pane));
    return plan instanceof Error ? undefined : plan;
  }

  /** Why settings cannot be used, or undefined. */
  error(pane) {
    const plan = this.#plans.get(this.#state.textOf(pane));
    return plan instanceof Error ? plan : undefined;
  }

  psnr(pane) { return this.#psnrs.get(this.#state.textOf(pane)); }

  loadPlans = latest(async () => {
    for (const pane of this.#state.panes) {
      const key = this.#state.textOf(pane);
      if (!this.#plans.has(key))
        this.#plans.set(key, await get("plan", this.#state.queryOf(pane)).catch((error) => error));
    }
    if (this.#plans.size > KEPT_PLANS) this.#plans = new Map([...this.#plans].slice(-KEPT_PLANS / 2));
    this.dispatchEvent(new Event("plans"));
  });

  /** What is slower than a picture. */
  loadRest = latest(async () => {
    try {
      await this.#loadHistograms();
      if (this.#hasReference) await this.#loadPsnrs();
    } catch { /* the plan has the error */
    }
  });

  async #loadHistograms() {
    const query = this.#state.queryOf(this.#state.settings);
    const show = (name, histogram) => drawHistogram(
        document.getElementById(`${name}-histogram`), document.getElementById(`${name}-shares`), histogram);
    if (!this.#mosaicIsShown) show("mosaic", await get("histogram", {...query, of: "mosaic"}));
    this.#mosaicIsShown = true;
    show("picture", await get("histogram", query));
  }

  async #loadPsnrs() {
    for (const pane of this.#state.panes) {
      if (this.psnr(pane)) continue;
      const {psnr} = await get("psnr", this.#state.queryOf(pane));
      const text = psnr === null ? "equal to the reference" : `${psnr.toFixed(2)} dB`;
      this.#psnrs.set(this.#state.textOf(pane), text);
      this.dispatchEvent(new Event("psnr"));
    }
  }
}
