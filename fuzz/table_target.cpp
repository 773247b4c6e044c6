// Fuzz target: the table part through the host's callbacks and its own members.
//
// Steps: R LEFT|TOP|RIGHT|BOTTOM the rectangle; C ROWS|COLS|WIDTHS; U TOTAL; G; K X|Y|TYPE a click;
// T MS lets time pass; N ORDER; + and - page; B and H rows of texts, cells by '|', rows by ';';
// 0 reset; D draw.
#include <tinyxml2.h>

#include <climits>

#include "desk/base/text.h"
#include "desk/host/tick_clock.h"
#include "fuzz/lines.h"
#include "fuzz/surroundings.h"
#include "fuzz/target.h"
#include "module/part_callbacks.h"
#include "part/table_part.h"

namespace {

using fuzzing::require;
using fuzzing::Step;

constexpr int kMostPixels = 4000;
constexpr int kMostPictures = 4;
unsigned long long now = 0;

/// A part and what it must answer next.
struct Watched {
  CLuaParseModulePart* part = nullptr;
  bool redraw = false;
  unsigned long long lastRefresh = 0;
  std::string answers;  ///< everything it said
  int pictures = 0;
};

/// A length of a screen, or one far off.
int pixels(int number) {
  return number > INT_MAX - 2 || number < INT_MIN + 2 ? number : number % kMostPixels;
}

/// A number of rows or columns: no more than can be drawn many times a second.
unsigned short count(int number) {
  return static_cast<unsigned short>(number & 0x3FF);
}

void refresh(Watched& watched, int accepted) {
  const bool due = now - watched.lastRefresh >= 100;
  require(accepted == (due ? 1 : 0), "the redraw throttle");
  if (!due) return;
  watched.lastRefresh = now;
  watched.redraw = true;
}

void setBody(Watched& watched, const Step& step) {
  std::list<std::vector<std::string>> texts;
  std::list<std::vector<std::string>*> rows;
  std::string all;
  for (const std::string& argument : step.arguments) all += argument + "|";
  for (const std::string& row : fuzzing::split(all, ';')) {
    texts.push_back(fuzzing::split(row, '|'));
    rows.push_back(row.empty() ? nullptr : &texts.back());
  }
  refresh(watched, watched.part->SetBodyText(rows));
}

void update(Watched& watched, int total) {
  CLuaParseModulePart& part = *watched.part;
  int first = 7, last = 7;
  const int updated = part.Update(static_cast<unsigned short>(total), first, last);
  require(updated == (static_cast<unsigned short>(total) != 0 && part.nPageRows != 0 ? 1 : 0),
          "Update");
  watched.answers += std::to_string(first) + ".." + std::to_string(last) + "\n";
  unsigned short page = 0, pages = 0;
  part.GetPage(page, pages);
  require(page >= 1 && page <= pages, "a page that does not exist");
}

void click(Watched& watched, const Step& step) {
  const tagPOINT point{pixels(step.number(0)), pixels(step.number(1))};
  const int type = step.arguments.size() > 2 ? step.number(2) : CLICKPART_CLICK;
  const int before = watched.part->GetSelectedRow();
  require(onClick(watched.part, 0, type, point, nullptr), "a click is always answered");
  const int row = watched.part->GetSelectedRow();
  require(type == CLICKPART_CLICK || row == before, "another click selected a row");
  require(row >= 0 && row <= watched.part->nPageRows, "a row that does not exist");
  if (row != before) watched.redraw = true;
  if (watched.part->bRedraw != 0) watched.redraw = true;  // a hit on the selected row
}

void getIndex(Watched& watched) {
  int index = -77;
  const int got = watched.part->GetIndex(index);
  require(got == (watched.part->GetSelectedRow() == 0 ? 0 : 1), "GetIndex");
  watched.answers += std::to_string(index) + "\n";
}

void draw(Watched& watched) {
  if (++watched.pictures > kMostPictures) return;
  std::string svg, again;
  require(onFillPartShowAttr(watched.part, svg, nullptr), "drawing is always answered");
  onFillPartShowAttr(watched.part, again, nullptr);
  require(svg == again, "two pictures of the same part differ");
  require(desk::isUtf8(svg), "a picture that is not UTF-8");
  tinyxml2::XMLDocument document;
  require(document.Parse(svg.c_str(), svg.size()) == tinyxml2::XML_SUCCESS, "a malformed picture");
  watched.answers += svg;
  require(onPLCRead(watched.part, nullptr) == watched.redraw, "the redraw flag");
  require(!onPLCRead(watched.part, nullptr), "a second redraw for one wish");
  watched.redraw = false;
}

void setCell(Watched& watched, const Step& step) {
  const unsigned short rows = count(step.number(0));
  const int set = watched.part->SetCell(rows, count(step.number(1)), step.text(2).c_str());
  watched.answers += set == 1 ? "set\n" : "refused\n";
  if (set == 1) watched.redraw = true;
  require(set == 0 || watched.part->nPageRows == rows, "SetCell");
}

void take(Watched& watched, const Step& step) {
  CLuaParseModulePart& part = *watched.part;
  switch (step.name) {
    case 'R': {
      tagPARTINFO info{{pixels(step.number(0)), pixels(step.number(1)), pixels(step.number(2)),
                        pixels(step.number(3))}};
      return require(onInit(&part, &info), "onInit");
    }
    case 'C':
      return setCell(watched, step);
    case 'U':
      return update(watched, step.number(0));
    case 'G':
      return getIndex(watched);
    case 'K':
      return click(watched, step);
    case 'N':
      part.nOrder = static_cast<std::uint16_t>(step.number(0));
      return;
    case '+':
      watched.answers += std::to_string(part.PageDown());
      return;
    case '-':
      watched.answers += std::to_string(part.PageUp());
      return;
    case 'B':
      return setBody(watched, step);
    case 'H':
      return part.DrawHeadText(step.arguments);
    case '0':
      part.Reset();
      watched.redraw = true;
      return;
    case 'D':
      return draw(watched);
    default:
      return;
  }
}

/// Runs all steps on a part that is in its reset state.
std::string run(CLuaParseModulePart* part, const std::vector<Step>& steps) {
  Watched watched;
  watched.part = part;
  watched.part->bRedraw = 0;
  // An earlier input's refresh is long ago.
  now += 1000;
  deskhost::setTickCount(now);
  const unsigned long long start = now;
  watched.lastRefresh = start - 100;
  for (const Step& step : steps) {
    if (step.name == 'T')
      deskhost::setTickCount(now += static_cast<unsigned>(step.number(0)) % 1000);
    take(watched, step);
  }
  draw(watched);
  return watched.answers;
}

}  // namespace

std::size_t fuzzing::slotCount() {
  return 0;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzzing::setUpServices();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto* const living = static_cast<CLuaParseModulePart*>(onCreate());
  const std::vector<Step> steps = fuzzing::stepsOf(data, size);
  tagPARTINFO nowhere{{0, 0, 0, 0}};
  living->Reset();
  onInit(living, &nowhere);
  const std::string carried = run(living, steps);
  void* const fresh = onCreate();
  const std::string clean = run(static_cast<CLuaParseModulePart*>(fresh), steps);
  require(onDestroy(fresh), "onDestroy");
  require(carried == clean, "a part that was reset differs from a new one");
  return 0;
}
