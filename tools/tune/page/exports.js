// The settings as files and texts for elsewhere.

import {get, post} from "./server.js";

/** @param query gives the frame and its settings @param onSaved after a sidecar, which changes what applies */
export function makeExports(query, onSaved) {
  const text = document.getElementById("export-text"), note = document.getElementById("export-note");
  const guarded = (action) => async () => {
    note.textContent = "";
    try {
      await action();
    } catch (error) {
      note.textContent = error.message;
    }
  };
  for (const button of document.querySelectorAll("[data-export]")) {
    button.onclick = guarded(async () => {
      const exports = await get("export", query());
      text.value = exports[button.dataset.export] || "Not for this file: convert it to a headerless raw file first.";
      text.hidden = false;
      note.textContent =
          await navigator.clipboard.writeText(text.value).then(() => "Copied.", () => "Copy it from here.");
    });
  }
  const save = async (what) => {
    const values = {...query(), what};
    const path = (await get("export", query()))[`${what}Path`];
    try {
      await post("save", values);
    } catch (error) {
      if (error.status !== 409 || !confirm(`${path} exists. Replace its levels, gains and matrix?`)) throw error;
      await post("save", {...values, overwrite: "yes"});
    }
    note.textContent = `Saved: ${path}`;
    if (what === "sidecar") onSaved();
  };
  document.getElementById("save-sidecar").onclick = guarded(() => save("sidecar"));
  document.getElementById("save-profile").onclick = guarded(() => save("profile"));
}
