// The panel: shows its picture and output, and hands on clicks and page keys.
import { element } from "/element.js";
import { panelClick, panelTurn, pictureAddress } from "/engine.js";
import { state } from "/state.js";

const kMostLines = 1000;

/** Panel view. `take` gets each event of the engine, `refused` what it would not do. */
export function create(root, text, refused) {
  const $ = (id) => root.querySelector(`#${id}`);
  let view = null;      // the latest news of the panel
  let connection = 0;   // counts the connections: pictures of an earlier one may be another panel's

  /** Which job is not the one that the page shows, and which the script cannot load, unless the page
   * tells that of its job anyway. */
  function showJob() {
    const isOther = state.job !== null && view !== null && !state.job.name.endsWith(view.job);
    $("panel-job").hidden = !isOther;
    $("panel-job").textContent = isOther ? text("panel.job", view.job) : "";
    $("job-fault").textContent = view?.jobFault ?? "";
    $("job-fault").hidden = ["", state.job?.reason].includes($("job-fault").textContent);
  }

  function showView() {
    $("case").style.setProperty("--width", view.width);
    $("case").style.setProperty("--height", view.height);
    $("page").textContent =
      view.rows === 0 ? text("panel.noRows") : text("panel.page", view.page, view.pages);
    $("row").textContent = view.selected === null
      ? text("panel.rows", view.rows) : text("panel.row", view.selected, view.rows);
    $("row").hidden = view.rows === 0;
    $("up").disabled = view.rows === 0 || view.page <= 1;
    $("down").disabled = view.rows === 0 || view.page >= view.pages;
  }

  function showPicture() {
    const source = pictureAddress(connection, view.picture);
    if (view.picture === 0 || $("picture").getAttribute("src") === source) return;
    $("picture").src = source;
  }

  function addLines(lines) {
    const list = $("lines");
    const atEnd = list.scrollHeight - list.scrollTop - list.clientHeight < 8;
    for (const [speaker, words] of lines) {
      const item = element("li", { textContent: words });
      item.dataset.speaker = speaker;
      list.append(item);
    }
    while (list.childElementCount > kMostLines) list.firstElementChild.remove();
    if (atEnd) list.scrollTop = list.scrollHeight;
  }

  const turn = (direction) => panelTurn(direction).catch(refused);

  // The picture may be shown smaller or larger than it is: clicks count in its own pixels.
  $("picture").addEventListener("click", (event) => {
    const shown = event.target.getBoundingClientRect();
    const scale = (at, from, length, pixels) =>
      Math.min(Math.max(Math.floor(((at - from) * pixels) / length), 0), pixels - 1);
    panelClick(scale(event.clientX, shown.left, shown.width, view.width),
      scale(event.clientY, shown.top, shown.height, view.height)).catch(refused);
  });
  $("up").addEventListener("click", () => turn("up"));
  $("down").addEventListener("click", () => turn("down"));
  $("plugin-lines").addEventListener("change", (event) => {
    $("lines").classList.toggle("without-plugin", !event.target.checked);
  });
  $("clear").addEventListener("click", () => $("lines").replaceChildren());
  document.addEventListener("keydown", (event) => {
    const direction = { PageUp: "up", PageDown: "down" }[event.key];
    if (direction === undefined || event.ctrlKey || event.altKey || event.metaKey) return;
    if (root.hidden || $("lines").contains(event.target)) return;  // there the keys scroll
    event.preventDefault();
    turn(direction);
  });

  return {
    update: showJob,
    take(news) {
      view = news;
      if (view.isFirst) {
        ++connection;
        $("lines").replaceChildren();
      }
      showJob();
      showView();
      showPicture();
      addLines(view.lines);
    },
  };
}
