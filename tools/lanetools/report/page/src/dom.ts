// SPDX-License-Identifier: MIT
// Elements. Text from files only ever becomes text nodes and attribute values.

type Attributes = Record<string, string | number | undefined>;

/** An element with attributes (undefined ones are left out) and children. */
export function make<Name extends keyof HTMLElementTagNameMap>(
  name: Name,
  attributes: Attributes = {},
  ...children: (Node | string)[]
): HTMLElementTagNameMap[Name] {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(attributes))
    if (value !== undefined) element.setAttribute(key, String(value));
  element.append(...children);
  return element;
}

/** The same in SVG. */
export function makeSvg(name: string, attributes: Attributes = {}, ...children: (Node | string)[]): SVGElement {
  const element = document.createElementNS("http://www.w3.org/2000/svg", name);
  for (const [key, value] of Object.entries(attributes))
    if (value !== undefined) element.setAttribute(key, String(value));
  element.append(...children);
  return element;
}
