// The buttons above the drawings.

const kIcons = {
  zoomIn: "M12 4v16M4 12h16",
  zoomOut: "M4 12h16",
  along: "M3 12h18M7 7l-5 5 5 5M17 7l5 5-5 5",
  fit: "M3 4v16M21 4v16M7 12h10M10 9l-3 3 3 3M14 9l3 3-3 3",
  signs: "M4 6h3M4 12h3M4 18h3M10 6h10M10 12h10M10 18h10",
  print: "M7 9V3h10v6M7 17H3V9h18v8h-4M7 14h10v7H7z",
};

const kRoomForSigns = "(min-width: 640px) and (min-height: 600px)";  // shown at the start there

function icon(path) {
  const kSvg = "http://www.w3.org/2000/svg";
  const picture = document.createElementNS(kSvg, "svg");
  picture.setAttribute("viewBox", "0 0 24 24");
  picture.setAttribute("aria-hidden", "true");
  picture.append(document.createElementNS(kSvg, "path"));
  picture.firstChild.setAttribute("d", path);
  return picture;
}

/** @param actions zoom(isIn), fit(), print(), choose(bar) */
export function createTools(root, text, actions) {
  const bar = document.createElement("div");
  bar.className = "bar-tools";
  bar.setAttribute("role", "toolbar");
  bar.setAttribute("aria-label", text("bars.tools"));

  function button(name, action) {
    const element = document.createElement("button");
    const words = document.createElement("span");
    element.type = "button";
    element.title = text(`bars.${name}Hint`);
    words.textContent = text(`bars.${name}`);
    element.append(icon(kIcons[name]), words);
    element.addEventListener("click", () => action(element));
    bar.append(element);
    return element;
  }

  button("zoomOut", () => actions.zoom(false));
  button("zoomIn", () => actions.zoom(true));
  const along = button("along", (element) => {
    element.setAttribute("aria-pressed", element.getAttribute("aria-pressed") !== "true");
  });
  along.setAttribute("aria-pressed", "false");
  button("fit", actions.fit);
  button("print", actions.print);

  const signs = document.createElement("ul");
  signs.className = "bar-signs";
  signs.lang = "en";
  const signsButton = button("signs", () => showSigns(signs.hidden));
  function showSigns(isShown) {
    signs.hidden = !isShown;
    signsButton.setAttribute("aria-expanded", isShown);
  }
  showSigns(window.matchMedia(kRoomForSigns).matches);

  const choice = document.createElement("label");
  const bars = document.createElement("select");
  const words = document.createElement("span");
  words.textContent = text("bars.which");
  choice.append(words, bars);
  choice.hidden = true;
  bars.addEventListener("change", () => actions.choose(bars.value));
  bar.append(choice);
  root.append(bar, signs);

  return {
    isAlongOnly: () => along.getAttribute("aria-pressed") === "true",
    /** Shows the items of the legend; there may be none. */
    explain(items) {
      signs.replaceChildren(...items);
      signsButton.hidden = items.length === 0;
    },
    /** Which of the bars that are drawn as one is meant; none: nothing to choose. */
    offer(numbers, chosen) {
      choice.hidden = numbers.length === 0;
      bars.replaceChildren(...numbers.map((number) => new Option(number, number)));
      bars.value = chosen;
    },
  };
}
