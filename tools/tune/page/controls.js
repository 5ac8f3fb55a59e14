// Controls made from the descriptions that the program gives: options of convert, and parameters of the component.

import {element, fieldsOf, round} from "./fields.js";

/** A row with a label, fields and a line for where the value comes from. */
function row(control, fields) {
  const id = `control-${control.option}`;
  const label = element("label", {textContent: control.label, title: control.help, htmlFor: id});
  fields[0].id = id;
  for (const field of fields.slice(1)) field.setAttribute("aria-label", control.label);
  const fact = element("output", {className: "fact"});
  const box = element(
      "div", {className: `control ${{3: "three", 9: "matrix"}[control.count] ?? ""}`, title: control.help}, label,
      element("div", {className: "fields"}, ...fields), fact);
  box.dataset.option = control.option;
  return {box, fact};
}

/** Parameters whose names differ in a number are one row: panRadius0, panRadius1, panRadius2. */
function parameterRows(parameters) {
  const rows = new Map();
  for (const parameter of parameters) {
    const stem = parameter.name.replace(/_?\d+$/, "");
    rows.set(stem, [...(rows.get(stem) ?? []), parameter]);
  }
  return rows;
}

export class Controls {
  #state;
  #white;
  #shown = [];
  #parameters = [];

  /** @param info what the program says of the frame @param pick starts to pick a grey place */
  constructor(form, info, state, pick) {
    this.#state = state;
    this.#white = info.white;
    form.replaceChildren();
    for (const [group, controls] of Object.entries(groupsOf(info.controls))) {
      const box = element("details", {open: true}, element("summary", {textContent: group}));
      for (const control of controls) box.append(this.#make(control, pick));
      form.append(box);
    }
    if (info.parameters.length) form.append(this.#makeParameters(info.parameters));
    form.addEventListener("submit", (event) => event.preventDefault());
  }

  #make(control, pick) {
    // A white balance has one source.
    const rivals = {"white-balance": "white-balance-from", "white-balance-from": "white-balance"};
    const change = (text) => {
      const rival = rivals[control.option];
      this.#state.change({[control.option]: text, ...(rival && text ? {[rival]: ""} : {})}, control.option);
    };
    const {fields, show} = fieldsOf(control, change, pick);
    const {box, fact} = row(control, fields);
    this.#shown.push({option: control.option, show, fact});
    return box;
  }

  #makeParameters(parameters) {
    const search = element(
        "input", {type: "search", id: "search", placeholder: "Name or meaning", ariaLabel: "Search parameters"});
    const rows = [...parameterRows(parameters)].map(([stem, members]) => {
      const inputs = members.map((parameter) => this.#makeParameter(parameter));
      const meaning = element("span", {className: "fact", textContent: members[0].description});
      return element(
          "div", {className: "control parameter"}, element("span", {textContent: stem}),
          element("div", {className: "fields"}, ...inputs), meaning);
    });
    search.addEventListener("input", () => {
      for (const box of rows) box.hidden = !box.textContent.toLowerCase().includes(search.value.toLowerCase());
    });
    return element(
        "details", {id: "parameters"},
        element("summary", {textContent: `Parameters of the component (${parameters.length})`}), search, ...rows);
  }

  #makeParameter(parameter) {
    const {name, type, minimum, maximum, value, description} = parameter;
    const input = element("input", {
      type: "number",
      placeholder: value,
      ariaLabel: `${name}: ${description}`,
      step: type === "integer" ? 1 : "any"
    });
    if (minimum !== null) input.min = minimum;
    if (maximum !== null) input.max = maximum;
    input.title = `${name}: ${description}\n${type}, ${minimum ?? "any"} to ${maximum ?? "any"}, default ${value}`;
    input.addEventListener("input", () => {
      const set = {...this.#state.settings.set};
      if (input.value === "")
        delete set[name];
      else
        set[name] = input.value;
      this.#state.change({set}, `set ${name}`);
    });
    this.#parameters.push({name, input});
    return input;
  }

  /** Shows the settings of the active picture, and what applies where they say nothing. */
  show(plan) {
    const settings = this.#state.settings;
    const facts = new Map((plan?.facts ?? []).map((fact) => [fact.name.replaceAll(" ", "-"), fact]));
    const level = (values) => (values.every((value) => value === values[0]) ? values[0] : values.join());
    const effective = plan ? {
      "black-level": level(plan.black),
      "white-level": level(plan.white.map((value) => value || this.#white)),
      exposure: round(plan.exposure),
      "white-balance": plan.gains,
      matrix: plan.matrix
    } :
                             {};
    for (const {option, show, fact} of this.#shown) {
      show(settings[option] ?? "", effective[option]);
      const known = facts.get(option);
      fact.textContent = known && known.origin !== "options" ? `${known.value} (${known.origin})` : "";
      if (option === "algorithm" && plan && !settings.algorithm) fact.textContent = plan.algorithm;
    }
    for (const {name, input} of this.#parameters) {
      if (document.activeElement !== input) input.value = settings.set?.[name] ?? "";
    }
  }
}

function groupsOf(controls) {
  const groups = {};
  for (const control of controls) (groups[control.group] ??= []).push(control);
  return groups;
}
