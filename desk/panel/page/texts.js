// The words of the page, each in English and Chinese. What the product says of a job is not here: it
// comes from the engine, in English. "{0}" stands for a value; "one|many" after the first value.

export const kTexts = {
  "header.jobs": ["Job", "任务"],
  "header.facts": ["The job in numbers", "任务数据"],
  "header.findings": ["Findings", "检查结果"],
  "header.messages": ["Messages", "消息"],
  "header.views": ["Views", "视图"],
  "header.bars": ["{0} bar|{0} bars", "{0} 根型材"],
  "header.pieces": ["{0} piece|{0} pieces", "{0} 个工件"],
  "header.yield": ["yield {0} %", "利用率 {0}%"],
  "header.error": ["{0} error|{0} errors", "{0} 个错误"],
  "header.warning": ["{0} warning|{0} warnings", "{0} 个警告"],
  "header.note": ["{0} note|{0} notes", "{0} 条提示"],
  "header.open": ["Open file", "打开文件"],
  "header.openHint": ["Shows a job file from memory; you can also drop it on the page",
    "在内存中显示任务文件，也可将文件拖到页面上"],
  "header.noJob": ["No job", "无任务"],

  "state.connecting": ["Connecting", "正在连接"],
  "state.reading": ["Reading", "正在读取"],
  "state.following": ["Following", "正在跟随"],
  "state.dropped": ["From memory", "来自内存"],
  "state.broken": ["Not loading", "无法加载"],
  "state.scriptFailed": ["The script failed", "脚本出错"],
  "state.lost": ["Connection lost", "连接中断"],
  "state.gone": ["Reload the page", "请重新加载页面"],
  "state.live": ["Live", "运行中"],

  "absence.noJob": ["There is no job: open a file, or drop one here.", "没有任务：请打开文件或将其拖到此处。"],
  "absence.reading": ["Reading the job ...", "正在读取任务……"],
  "absence.notLoading": ["There is nothing to show: this job has not loaded.", "没有可显示的内容：任务未能加载。"],
  "absence.noBars": ["This job has no bars.", "此任务没有型材。"],
  "absence.findings": ["Why: Findings", "查看检查结果"],

  "bars.title": ["Bars", "型材"],
  "bars.tools": ["Drawing", "图纸"],
  "bars.zoomIn": ["Zoom in", "放大"],
  "bars.zoomInHint": ["Zoom in (+, Ctrl and wheel)", "放大（+，Ctrl 加滚轮）"],
  "bars.zoomOut": ["Zoom out", "缩小"],
  "bars.zoomOutHint": ["Zoom out (-, Ctrl and wheel)", "缩小（-，Ctrl 加滚轮）"],
  "bars.along": ["Lengths only", "仅长度"],
  "bars.alongHint": ["Zoom along the bars only", "仅沿型材方向缩放"],
  "bars.fit": ["Fit the width", "适合宽度"],
  "bars.fitHint": ["Whole bars in the window (0)", "显示整根型材（0）"],
  "bars.signs": ["Signs", "图例"],
  "bars.signsHint": ["What the signs in the drawings stand for", "图纸中各符号的含义"],
  "bars.print": ["Print", "打印"],
  "bars.printHint": ["Print the drawing (Ctrl+P)", "打印图纸（Ctrl+P）"],
  "bars.which": ["Bar", "型材"],
  "bars.meant": ["selected: bar {0}", "所选：第 {0} 根"],
  "bars.error": ["{0} error|{0} errors", "{0} 个错误"],
  "bars.warning": ["{0} warning|{0} warnings", "{0} 个警告"],
  "bars.notYet": ["The drawing is still being fetched: use the button Print of the page.",
    "图纸仍在加载：请使用页面上的“打印”按钮。"],
  "bars.noDrawing": ["The drawing could not be fetched.", "无法加载图纸。"],

  "tables.title": ["Tables", "表格"],
  "tables.choice": ["Which table", "选择表格"],
  "tables.bars": ["Bars", "型材"],
  "tables.pieces": ["Pieces", "工件"],
  "tables.cuts": ["Cuts", "切割"],
  "tables.works": ["Works", "加工"],
  "tables.labels": ["Labels", "标签"],
  "tables.holes": ["Holes", "孔"],
  "tables.filter": ["Filter", "筛选"],
  "tables.rows": ["{0} row|{0} rows", "{0} 行"],
  "tables.someRows": ["{1} of {0} row|{1} of {0} rows", "{1} / {0} 行"],
  "tables.line": ["line {0}", "第 {0} 行"],
  "tables.carried": ["carried over from line {0}, {1}", "沿用第 {0} 行 {1} 的值"],
  "tables.legend": ["* carried over from an earlier element", "* 沿用前面元素的值"],
  "tables.print": ["Print", "打印"],
  "tables.printHint": ["Print the cut list (Ctrl+P)", "打印切割清单（Ctrl+P）"],
  "tables.notHere": ["The cut list is not on this sheet: the button Print of the view Tables prints it.",
    "此页不含切割清单：请使用“表格”视图中的“打印”按钮打印。"],

  "findings.title": ["Findings", "检查"],
  "findings.severity": ["Severity", "级别"],
  "findings.error": ["Errors", "错误"],
  "findings.warning": ["Warnings", "警告"],
  "findings.note": ["Notes", "提示"],
  "findings.all": ["All", "全部"],
  "findings.onlySelected": ["Only the selection", "仅所选"],
  "findings.list": ["List of findings", "检查结果列表"],
  "findings.none": ["No findings", "没有检查结果"],
  "findings.line": ["line {0}", "第 {0} 行"],
  "findings.cure": ["Cure:", "解决办法："],
  "findings.machine": ["What the machine does", "机器如何处理"],
  "findings.lacks": ["Missing keys:", "缺少的键："],
  "findings.carried": ["{0}: {1}, from line {2}", "{0}：{1}，来自第 {2} 行"],
  "findings.consequences": ["Comes of it", "由此引起"],

  "panel.title": ["Panel", "面板"],
  "panel.job": ["The panel shows {0}", "面板显示的是 {0}"],
  "panel.picture": ["The table as the panel shows it", "面板上显示的表格"],
  "panel.pages": ["Pages", "翻页"],
  "panel.up": ["Page up", "上一页"],
  "panel.down": ["Page down", "下一页"],
  "panel.upKey": ["Page Up", "Page Up 键"],
  "panel.downKey": ["Page Down", "Page Down 键"],
  "panel.noRows": ["No rows", "无数据行"],
  "panel.page": ["Page {0} / {1}", "第 {0} / {1} 页"],
  "panel.rows": ["{0} row|{0} rows", "共 {0} 行"],
  "panel.row": ["Row {0} of {1}", "第 {0} 行，共 {1} 行"],
  "panel.output": ["Output", "输出"],
  "panel.pluginLines": ["Lines of the plug-in", "插件输出行"],
  "panel.clear": ["Clear", "清空"],
  "panel.lines": ["Lines of output", "输出行"],

  "details.title": ["Selection", "所选"],
  "details.barPlace": ["Bar {0}", "第 {0} 根型材"],
  "details.piecePlace": ["Piece {0} on bar {1}", "第 {1} 根型材的第 {0} 个工件"],
  "details.copy": ["Copy link", "复制链接"],
  "details.link": ["Link to the selection", "所选内容的链接"],
  "details.copied": ["Copied", "已复制"],
  "details.close": ["End the selection", "取消选择"],
  "details.bar": ["Bar number", "型材编号"],
  "details.piece": ["Piece number", "工件编号"],
  "details.place": ["Place on the bar", "在型材上的位置"],
  "details.from": ["Starts at", "起点"],
  "details.length": ["Length", "长度"],
  "details.left": ["Left angle", "左角"],
  "details.right": ["Right angle", "右角"],
  "details.barcode": ["Barcode", "条码"],
  "details.line": ["Line", "行"],
  "details.Name": ["Work", "加工"],
  "details.ProfiLav": ["Side", "面"],
  "details.PositionX": ["X", "X"],
  "details.PositionY": ["Y", "Y"],
  "details.PositionZ": ["Z", "Z"],
  "details.works": ["Works", "加工"],
  "details.label": ["Label", "标签"],
  "details.findings": ["Findings", "检查结果"],
  "details.allFindings": ["{0} finding in full|{0} findings in full", "查看全部 {0} 条"],
  "details.source": ["Source", "源文件"],
};

const language = (navigator.languages ?? []).map((one) => one.toLowerCase().split("-")[0])
  .find((one) => one === "en" || one === "zh") ?? "en";

/** The text of a key in the browser's language. */
export function text(key, ...values) {
  const both = kTexts[key];
  if (both === undefined) throw new Error(`no text "${key}"`);
  const forms = both[language === "zh" ? 1 : 0].split("|");
  const form = forms.length > 1 && Number(values[0]) !== 1 ? forms[1] : forms[0];
  return form.replace(/\{(\d)\}/g, (_, index) => values[index]);
}

text.has = (key) => key in kTexts;

/** Fills in the texts that the document itself names. */
export function fillIn(document) {
  document.documentElement.lang = language === "zh" ? "zh-CN" : "en";
  for (const one of document.querySelectorAll("[data-text]")) one.textContent = text(one.dataset.text);
  for (const one of document.querySelectorAll("[data-title]")) one.title = text(one.dataset.title);
  for (const one of document.querySelectorAll("[data-alt]")) one.alt = text(one.dataset.alt);
  for (const one of document.querySelectorAll("[data-label]")) {
    one.setAttribute("aria-label", text(one.dataset.label));
  }
}
