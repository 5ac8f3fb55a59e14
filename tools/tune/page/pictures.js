// Which pictures a mode shows, and their labels.

const letters = ["A", "B", "C", "D"];
const counts = {
  one: 1,
  split: 2,
  two: 2,
  four: 4,
  difference: 2
};

/** The pictures that the state's mode shows: settings of one or several, or a difference. */
export function picturesOf(state, isMarked) {
  const marked = isMarked ? {mark: 1} : {};
  const named = (index) => ({index, label: letters[index], query: {s: state.textOf(state.panes[index]), ...marked}});
  if (state.mode === "one") return [named(state.active)];
  if (state.mode !== "difference") return state.panes.slice(0, counts[state.mode]).map((_, index) => named(index));
  const [s, other] = state.panes.map(state.textOf);
  return [{label: "Difference of A and B, brightest from 32 of 255 on", query: {s, other}}];
}

/** Label of a picture: algorithm, speed in Mpixel/s, and PSNR, as far as they are known. */
export function labelOf(picture, plan, speed, psnr) {
  if (picture.index === undefined) return picture.label;
  const parts = [picture.label];
  if (plan?.algorithm) parts.push(plan.algorithm);
  if (speed) parts.push(`${speed.toFixed(speed < 10 ? 1 : 0)} Mpixel/s`);
  if (psnr) parts.push(psnr);
  return parts.join(" · ");
}

/** Changes the mode. Each added picture starts as A with another algorithm. */
export function setMode(state, mode, algorithms) {
  const panes = [...state.panes];
  while (panes.length < counts[mode]) {
    const used = panes.map((pane) => pane.algorithm ?? algorithms[0]);
    const next = algorithms.find((name) => !used.includes(name));
    panes.push(next ? {...panes[0], algorithm: next} : {...panes[0]});
  }
  state.arrange({mode, panes});
}

/** Buttons that choose which picture the controls change. */
export function showPanes(root, state) {
  root.hidden = state.panes.length < 2;
  root.replaceChildren(...state.panes.map((_, index) => {
    const button = document.createElement("button");
    button.textContent = letters[index];
    button.setAttribute("role", "radio");
    button.setAttribute("aria-checked", index === state.active);
    button.onclick = () => state.select(index);
    return button;
  }));
}
