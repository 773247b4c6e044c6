// What keys and clicks do in a grid: arrows, Page Up, Page Down, Home and End move the active cell,
// Enter chooses its row or sorts by its column, Ctrl+C copies its row.

/** Where a key leads to, as [row, column]; undefined for other keys. */
function placeAfter(event, { active: { row, column }, rowsInSight }) {
  const isFar = event.ctrlKey || event.metaKey;
  const near = {
    ArrowUp: [row - 1, column], ArrowDown: [row + 1, column],
    ArrowLeft: [row, column - 1], ArrowRight: [row, column + 1],
    PageUp: [Math.max(0, row - rowsInSight), column], PageDown: [row + rowsInSight, column],
    Home: [row, 0], End: [row, Infinity],
  };
  const far = { Home: [0, 0], End: [Infinity, Infinity] };
  return (isFar ? far : near)[event.key];
}

function choose(grid) {
  const { row, column } = grid.active;
  if (row < 0) grid.hooks.onSort(grid.rows.columns[column].name);
  else if (grid.rows.row(row) !== null) grid.hooks.onSelect(grid.rows.row(row));
}

function pressed(event, grid) {
  if (grid.rows === null || event.altKey) return;
  const place = placeAfter(event, grid);
  if (place !== undefined) grid.moveTo(...place);
  else if (event.key === "Enter" || event.key === " ") choose(grid);
  else return;
  event.preventDefault();
  event.stopPropagation();  // the keys are not the page's here
}

function clicked(event, grid) {
  const cell = event.target.closest("th, td");
  const isForCopying = !getSelection().isCollapsed;
  if (grid.rows === null || cell === null || isForCopying) return;
  grid.moveTo(cell.parentElement.ariaRowIndex - 2, cell.cellIndex);
  choose(grid);
}

/** The active row, unless some text is marked. */
function copied(event, grid) {
  const record = grid.active.row < 0 ? null : grid.rows?.row(grid.active.row);
  if (!record || !getSelection().isCollapsed) return;
  event.clipboardData.setData("text/plain", record.cells.join("\t"));
  event.preventDefault();
}

export function listenTo(grid) {
  grid.table.addEventListener("keydown", (event) => pressed(event, grid));
  grid.table.addEventListener("click", (event) => clicked(event, grid));
  grid.table.addEventListener("copy", (event) => copied(event, grid));
}
