// Fuzz target: the table part through the host's callbacks and its own members.
//
// Steps: R LEFT|TOP|RIGHT|BOTTOM the rectangle; C ROWS|COLS|WIDTHS; U TOTAL; G; K X|Y|TYPE a click;
// T MS lets time pass; N ORDER; + and - page; B and H rows of texts, cells by '|', rows by ';';
// 0 reset; D draw.
#include <tinyxml2.h>

#include <climits>

#include "desk/base/text.h"
#include "desk/host/settings.h"
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

/// A part and everything that it said.
struct Watched {
  CLuaParseModulePart* part = nullptr;
  std::string answers{};
  int pictures = 0;

  void note(int answer) { answers += std::to_string(answer) + "\n"; }
};

/// A length of a screen, or one far off.
int pixels(int number) {
  return number > INT_MAX - 2 || number < INT_MIN + 2 ? number : number % kMostPixels;
}

/// A number of rows or columns: no more than can be drawn many times a second.
unsigned short count(int number) {
  return static_cast<unsigned short>(number & 0x3FF);
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
  watched.note(watched.part->SetBodyText(rows));
}

void update(Watched& watched, int total) {
  CLuaParseModulePart& part = *watched.part;
  int first = 7, last = 7;
  watched.note(part.Update(static_cast<unsigned short>(total), first, last));
  watched.note(first);
  watched.note(last);
  unsigned short page = 0, pages = 0;
  part.GetPage(page, pages);
  require(page >= 1 && page <= pages, "a page that does not exist");
}

void click(Watched& watched, const Step& step) {
  const tagPOINT point{pixels(step.number(0)), pixels(step.number(1))};
  const int type = step.arguments.size() > 2 ? step.number(2) : CLICKPART_CLICK;
  require(onClick(watched.part, 0, type, point, nullptr), "a click is always answered");
  const int row = watched.part->GetSelectedRow();
  require(row >= 0 && row <= watched.part->nPageRows, "a row that does not exist");
}

void getIndex(Watched& watched) {
  int index = -77;
  watched.note(watched.part->GetIndex(index));
  watched.note(index);
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
  watched.note(onPLCRead(watched.part, nullptr));
  require(!onPLCRead(watched.part, nullptr), "a second redraw for one wish");
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
      return watched.note(
          part.SetCell(count(step.number(0)), count(step.number(1)), step.text(2).c_str()));
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
      return watched.note(part.PageDown());
    case '-':
      return watched.note(part.PageUp());
    case 'B':
      return setBody(watched, step);
    case 'H':
      return part.DrawHeadText(step.arguments);
    case '0':
      return watched.note(part.Reset());
    case 'D':
      return draw(watched);
    default:
      return;
  }
}

/// Runs all steps on a part that is in its reset state.
std::string run(CLuaParseModulePart* part, const std::vector<Step>& steps) {
  Watched watched{part};
  part->bRedraw = 0;
  // An earlier input's refresh is long ago.
  deskhost::setTickCount(now += 1000);
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
