/** An HTML element of that name with these properties and children; text becomes text, never markup. */
export function element(name, properties = {}, ...children) {
  const made = Object.assign(document.createElement(name), properties);
  made.append(...children);
  return made;
}
