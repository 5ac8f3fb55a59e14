// The fields of a control, for each kind of value.

export function element(tag, properties = {}, ...children) {
  const made = Object.assign(document.createElement(tag), properties);
  made.append(...children);
  return made;
}

function choice(words, none) {
  return element(
      "select", {}, element("option", {value: "", textContent: none}),
      ...words.map((word) => element("option", {value: word, textContent: word})));
}

export const round = (number) => Number(number.toPrecision(6));

/** One kind of control each: makes fields, and returns how to show a setting. `change` takes the new text. */
const kinds = {
  words(control, change) {
    const select = choice(control.words, "default");
    select.addEventListener("change", () => change(select.value));
    return {
      fields: [select],
      show: (text) => {
        select.value = text;
      }
    };
  },
  flag(control, change) {
    const box = element("input", {type: "checkbox"});
    box.addEventListener("change", () => change(box.checked ? "on" : ""));
    return {
      fields: [box],
      show: (text) => {
        box.checked = text !== "";
      }
    };
  },
  number(control, change) {
    const text = element("input", {type: "text", inputMode: "decimal", spellcheck: false});
    const {minimum: min, maximum: max, step} = control;
    const slider = element("input", {type: "range", min, max, step});
    const words = control.words.map((word) => element("button", {type: "button", textContent: word}));
    text.addEventListener("change", () => change(text.value.trim()));
    slider.addEventListener("input", () => change(slider.value));
    for (const word of words) word.addEventListener("click", () => change(word.textContent));
    return {
      fields: [text, slider, ...words],
      show(value, effective) {
        text.value = value;
        text.placeholder = effective ?? "";
        const number = Number(value === "" || Number.isNaN(Number(value)) ? effective : value);
        if (document.activeElement !== slider) slider.value = Number.isNaN(number) ? 0 : number;
        for (const word of words) word.setAttribute("aria-pressed", word.textContent === value);
      },
    };
  },
  numbers(control, change) {
    const inputs = Array.from(
        {length: control.count}, () => element("input", {type: "number", step: control.step, min: -64, max: 64}));
    const select = control.words.length ? choice(control.words, "default") : null;
    select?.append(element("option", {value: "numbers", textContent: "numbers"}));
    const take = () => change(inputs.map((input) => input.value || input.placeholder).join());
    for (const input of inputs) input.addEventListener("input", take);
    select?.addEventListener("change", () => (select.value === "numbers" ? take() : change(select.value)));
    return {
      fields: [...(select ? [select] : []), ...inputs],
      show(value, effective) {
        const isWord = value === "" || control.words.includes(value);
        if (select) select.value = isWord ? value : "numbers";
        const given = isWord ? [] : value.split(",");
        inputs.forEach((input, i) => {
          if (document.activeElement !== input) input.value = given[i] ?? "";
          input.placeholder = effective ? round(effective[i]) : "";
        });
      },
    };
  },
  place(control, change, pick) {
    const button = element("button", {type: "button", textContent: "Pick grey"});
    const text = element("input", {type: "text", className: "wide", placeholder: "X,Y,W,H"});
    button.addEventListener("click", pick);
    text.addEventListener("change", () => change(text.value.trim()));
    return {
      fields: [button, text],
      show: (value) => {
        text.value = value;
      }
    };
  },
};

/** The fields of a control, and a function that shows a setting and what applies without one. */
export function fieldsOf(control, change, pick) { return kinds[control.kind](control, change, pick); }
