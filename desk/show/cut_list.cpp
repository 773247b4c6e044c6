#include "desk/show/cut_list.h"

#include <tinyxml2.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <vector>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/check/reports.h"
#include "desk/draw/summary.h"
#include "desk/job/yield.h"
#include "desk/show/cut_list.css.h"
#include "desk/show/cut_pictures.h"
#include "desk/show/job_summary.h"

namespace desk::show {

namespace {

class CutList {
 public:
  CutList(const DATA_T& job, model::JobFormat format, const std::string& source,
          const job::Selection& selection, std::size_t errors)
      : job_(job), source_(source), selection_(selection), errors_(errors), page_(nullptr, true) {
    for (job::BarPlace& bar : job::judgedBars(job, format, selection)) {
      if (isListed(*bar.bar)) bars_.push_back(std::move(bar));
    }
  }

  std::string write() {
    page_.PushUnknown("DOCTYPE html");
    open("html");
    page_.PushAttribute("lang", "en");
    addHead();
    open("body");
    addHeading();
    if (selection_.bar.empty() && selection_.barCode.empty()) addStock();
    open("table", "list");
    addColumns();
    for (const job::BarPlace& bar : bars_) addBar(bar);
    close(3);
    return page_.CStr();
  }

 private:
  bool isListed(const BAR_T& bar) const {
    const auto isMeant = [&](const PIECE_T& piece) { return selection_.has(piece); };
    return selection_.barCode.empty() || std::any_of(bar.piece.begin(), bar.piece.end(), isMeant);
  }

  void open(const char* name, const char* kind = nullptr) {
    page_.OpenElement(name, true);
    if (kind != nullptr) page_.PushAttribute("class", kind);
  }
  void close(int count = 1) {
    while (count-- > 0) page_.CloseElement(true);
  }
  /// Also an empty text ends the start tag: browsers know no empty-element tags of HTML.
  void add(const char* name, const std::string& text, const char* kind = nullptr) {
    open(name, kind);
    page_.PushText(xmlText(text).c_str());
    close();
  }

  void addHead() {
    open("head");
    open("meta");
    page_.PushAttribute("charset", "utf-8");
    close();
    add("title", title());
    open("style");
    page_.PushText(cut_list_css);
    close(2);
  }

  std::string title() const { return job_.Name.empty() ? source_ : job_.Name; }

  void addHeading() {
    add("h1", title());
    add("p", source_ + "  ·  " + draw::totalText(bars_) + "  ·  lengths in " +
                 (job_.Unit.empty() ? "mm" : job_.Unit));
    if (errors_ > 0) {
      add("p", countText(errors_, "error") + " found by cusdesk check " + source_, "remark");
    }
  }

  void addBox() { add("span", "", "box"); }

  void addStock() {
    JobSummary summary(0.0);
    summary.add(source_, job_, {});
    const TextTable stock = summary.stock();
    open("table", "stock");
    open("thead");
    open("tr");
    add("th", "fetch");
    for (const std::string& key : stock.keys) add("th", key);
    close(2);
    for (const auto& row : stock.rows) {
      open("tr");
      open("td");
      addBox();
      close();
      for (const Cell& cell : row) add("td", cell.text);
      close();
    }
    close();
  }

  void addColumns() {
    constexpr const char* kColumns[][2] = {{"cut", "tick"},      {"piece", "number"},
                                           {"length", "length"}, {"ends", "ends"},
                                           {"barcode", "code"},  {"works", "works"}};
    open("colgroup");
    for (const auto& [name, kind] : kColumns) {
      open("col", kind);
      close();
    }
    close();
    open("thead");
    open("tr");
    open("th", "job");
    page_.PushAttribute("colspan", 6);
    page_.PushText(xmlText(title() + "  ·  " + source_).c_str());
    close(2);
    open("tr");
    for (const auto& [name, kind] : kColumns) add("th", name, kind);
    close(2);
  }

  void addBar(const job::BarPlace& bar) {
    open("tbody", "bar");
    open("tr", "title");
    open("th");
    page_.PushAttribute("colspan", 6);
    addBox();
    std::vector<std::string> facts{"Bar " + bar.bar->BarNumber};
    for (const std::string* text : {&bar.bar->DXF_Name, &bar.bar->BarName, &bar.bar->BarColor}) {
      if (!text->empty()) facts.push_back(*text);
    }
    add("span", joined(facts, "  ·  "), "name");
    add("span", stockText(bar), "sum");
    for (const std::string& remark : draw::remarkTexts(bar)) add("span", remark, "remark");
    close(2);
    for (std::size_t i = 0; i < bar.pieces.size(); ++i) {
      if (selection_.has(*bar.pieces[i].piece)) addPiece(bar, i);
    }
    close();
  }

  static std::string stockText(const job::BarPlace& bar) {
    std::string text =
        bar.isLengthKnown ? hundredthsText(bar.length) + " long" : "length not known";
    text += "  ·  " + countText(bar.pieces.size(), "piece");
    if (bar.unknown > 0) return text + ", " + job::unknownText(bar);
    const bool isCounted = job::yieldOf(bar).length > 0.0;
    if (isCounted) return text + "  ·  " + hundredthsText(job::certainLeftOver(bar)) + " left over";
    return text + ", together " + hundredthsText(bar.used) + " long";
  }

  void addPiece(const job::BarPlace& bar, std::size_t index) {
    const job::PiecePlace& place = bar.pieces[index];
    const PIECE_T& piece = *place.piece;
    open("tr");
    open("td", "tick");
    addBox();
    close();
    add("td", draw::pieceName(*bar.bar, static_cast<int>(index) + 1), "number");
    open("td", place.isLengthKnown ? "length" : "length odd");
    page_.PushText(xmlText(draw::lengthText(place)).c_str());
    if (!place.isLengthKnown) add("span", "no plain length", "remark");
    close();
    addEnds(place);
    addCode(piece.BarCode);
    addWorks(piece);
    close();
  }

  void addEnds(const job::PiecePlace& place) {
    open("td", "ends");
    drawSketch(place, page_);
    page_.PushText(xmlText(place.piece->sxB + "° / " + place.piece->dxB + "°").c_str());
    close();
  }

  void addCode(const std::string& text) {
    open("td", "code");
    drawCode(text, page_);
    page_.PushText(xmlText(text).c_str());
    close();
  }

  /// How often which work, side by side, then whose piece it is.
  void addWorks(const PIECE_T& piece) {
    std::map<double, std::map<std::string, int>> sides;
    for (const WORK_T& work : piece.work) ++sides[work.ProfiLav][work.Name];
    open("td", "works");
    for (const auto& [side, works] : sides) {
      std::vector<std::string> texts;
      for (const auto& [name, count] : works) {
        texts.push_back(count > 1 ? name + " × " + std::to_string(count) : name);
      }
      add("div", "side " + shortestText(side) + ": " + joined(texts, ", "));
    }
    std::vector<std::string> label;
    for (const std::string* text : {&piece.mark, &piece.Customer, &piece.order_code}) {
      if (!text->empty()) label.push_back(*text);
    }
    add("div", joined(label, "  ·  "), "label");
    close();
  }

  const DATA_T& job_;
  const std::string& source_;
  const job::Selection& selection_;
  std::size_t errors_;
  std::vector<job::BarPlace> bars_;
  tinyxml2::XMLPrinter page_;
};

}  // namespace

std::string cutListHtml(const DATA_T& job, model::JobFormat format, const std::string& source,
                        const job::Selection& selection, std::size_t errors) {
  return CutList(job, format, source, selection, errors).write() + std::string("\n");
}

std::string cutListHtml(const check::CheckSession& checked, const job::Selection& selection) {
  const check::Report& report = checked.report();
  const std::string source =
      std::filesystem::path(report.sources.back()->name()).filename().string();
  return cutListHtml(checked.job().job, checked.format(), source, selection,
                     countOf(report, check::Severity::Error));
}

std::string cutListStyle() {
  return std::string("'sha256-") + cut_list_css_sha256 + "'";
}

}  // namespace desk::show
