// Starts the page and connects its parts.

import {Chart} from "./chart.js";
import {Controls} from "./controls.js";
import {makeExports} from "./exports.js";
import {Gestures} from "./gestures.js";
import {makeLoupe} from "./loupe.js";
import {Measurements} from "./measurements.js";
import {labelOf, picturesOf, setMode, showPanes} from "./pictures.js";
import {get, post} from "./server.js";
import {Stage} from "./stage.js";
import {State} from "./state.js";

const id = (name) => document.getElementById(name);

const state = new State();
const stage = new Stage(id("stage"), state);
const gestures = new Gestures(id("stage"), stage.view, state);
let info, measurements, controls, chart, loupe;

const pictures = () => picturesOf(state, id("marks").checked);

function say(error) {
  id("message").textContent = error?.message ?? "";
  id("message").hidden = !error;
}

function showLabels() {
  pictures().forEach((picture, shown) => {
    const settings = state.panes[picture.index ?? 0];
    stage.label(shown, labelOf(picture, measurements.plan(settings), stage.speed(shown), measurements.psnr(settings)));
  });
}

function showStatus() {
  const plan = measurements.plan(state.settings), {view} = stage;
  const hasCamera = info.controls.some(({option}) => option === "camera") && state.settings.camera !== "off";
  const notes = [`${info.name}: ${info.format}, ${info.levels[0].join(" × ")}.`, view.scaleText];
  if (stage.latency !== null) notes.push(`Shown after ${Math.round(stage.latency)} ms.`);
  if (view.zoom < 0 && hasCamera) notes.push("Defective pixels are replaced from 1:1 on.");
  if (plan?.measuresNoise)
    notes.push("The method measures noise in what it converts: parts can differ from the whole.");
  if (gestures.picking) notes.push("Click something grey.");
  id("status").textContent = notes.join(" ");
}

function showPlans() {
  const error = measurements.error(state.settings);
  say(error ?? (info.warning ? new Error(info.warning) : null));
  controls.show(measurements.plan(state.settings));
  showLabels();
  showStatus();
}

function showSettings() {
  id("mode").value = state.mode;
  id("undo").disabled = !state.canUndo;
  id("redo").disabled = !state.canRedo;
  showPanes(id("panes"), state);
  controls.show(measurements.plan(state.settings));
  stage.show(pictures());
  measurements.loadPlans();
}

function showView() {
  const {zoom} = stage.view;
  id("zoom").textContent = zoom >= 0 ? `${2 ** zoom}×` : `1/${2 ** -zoom}`;
  stage.draw();
  showStatus();
}

/** The place around a click: a few tiles, and as large on the screen in a reduced picture. */
function pickGrey({x, y}) {
  const side = 16 * 2 ** Math.max(0, -stage.view.zoom), {tile} = info;
  const [left, top] = [x, y].map((at) => Math.max(0, Math.floor((at - side / 2) / tile) * tile));
  const [width, height] = info.levels[0];
  const place = [left, top, Math.min(side, width - left), Math.min(side, height - top)];
  if (place[2] < tile || place[3] < tile) return;
  state.change({"white-balance-from": place.join(), "white-balance": ""});
}

function useChart({gains, matrix}) {
  const short = (numbers) => numbers.map((number) => Number(number.toFixed(5))).join();
  state.change({"white-balance": short(gains), "white-balance-from": "", matrix: short(matrix)});
}

async function openFrame(index, keepsView) {
  say(null);
  info = await get("controls", {frame: index});
  state.frame = index;
  measurements.forget();
  stage.setFrame(index, info.levels);
  controls = new Controls(id("controls"), info, state, () => gestures.setPicking(true));
  chart = new Chart(stage.view, id("stage"), info.levels[0], () => state.queryOf(state.settings), useChart);
  loupe = makeLoupe(id("samples"), id("pixel"), index);
  if (!keepsView) state.look({zoom: null});
  showSettings();
  showView();
}

function connectStage() {
  stage.addEventListener("drawn", () => chart?.draw());
  stage.addEventListener("complete", () => {
    showLabels();
    showView();
    measurements.loadRest();
  });
  stage.addEventListener("failure", ({detail}) => say(detail));
  gestures.addEventListener("pick", ({detail}) => pickGrey(stage.view.toFrame(detail.x, detail.y)));
  gestures.addEventListener("picking", showStatus);
  gestures.addEventListener("marks", () => id("marks").click());
  gestures.addEventListener("samples", () => id("loupe-shown").click());
  gestures.addEventListener("point", ({detail}) => {
    if (id("loupe").hidden) return;
    const place = stage.view.toFrame(detail.x, detail.y);
    loupe(place, stage.colourAt(place));
  });
}

function connect() {
  const {view} = stage;
  state.addEventListener("settings", showSettings);
  state.addEventListener("view", showView);
  measurements.addEventListener("plans", showPlans);
  measurements.addEventListener("psnr", showLabels);
  connectStage();
  id("frames").onchange = () => openFrame(Number(id("frames").value), false).catch(say);
  id("mode").onchange = () =>
      setMode(state, id("mode").value, info.controls.find(({option}) => option === "algorithm").words);
  id("marks").onchange = showSettings;
  id("loupe-shown").onchange = () => id("loupe").hidden = !id("loupe-shown").checked;
  id("zoom-in").onclick = () => view.zoomBy(1);
  id("zoom-out").onclick = () => view.zoomBy(-1);
  id("whole").onclick = () => view.whole();
  id("pixels").onclick = () => view.setZoom(0);
  id("undo").onclick = () => state.undo();
  id("redo").onclick = () => state.redo();
  id("quit").onclick = () => post("quit").then(() => say(new Error("kvx-demosaic tune has ended.")), say);
  document.addEventListener("keydown", (event) => {
    const isTyping = event.target.matches("input, textarea");
    if (!(event.ctrlKey || event.metaKey) || isTyping) return;
    if (event.key === "z" && !event.shiftKey)
      state.undo();
    else if (event.key === "y" || event.key === "Z")
      state.redo();
    else
      return;
    event.preventDefault();
  });
  makeExports(() => state.queryOf(state.settings), () => openFrame(state.frame, true).catch(say));
}

async function start() {
  const {frames, reference} = await get("frames");
  id("frames").replaceChildren(...frames.map((name, index) => new Option(name, index)));
  const isKept = state.readAddress() && state.frame < frames.length;
  const first = isKept ? state.frame : 0;
  if (!isKept) state.panes = [(await get("controls", {frame: first})).start];
  id("frames").value = first;
  measurements = new Measurements(state, reference);
  connect();
  await openFrame(first, isKept);
}

start().catch(say);
