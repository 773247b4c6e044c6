#include "desk/panel/table_part.h"

#include "desk/base/errors.h"
#include "part/table_part.h"  // for the place of nOrder only: nothing of the part is linked here

namespace desk::panel {

TablePart::Members::Members(const script::Plugin& plugin)
    : reset(plugin.find(cus_plugin::kReset)),
      setCell(plugin.find(cus_plugin::kSetCell)),
      drawHead(plugin.find(cus_plugin::kDrawHeadText)),
      setBody(plugin.find(cus_plugin::kSetBodyText)),
      update(plugin.find(cus_plugin::kUpdate)),
      pageUp(plugin.find(cus_plugin::kPageUp)),
      pageDown(plugin.find(cus_plugin::kPageDown)),
      getPage(plugin.find(cus_plugin::kGetPage)),
      getIndex(plugin.find(cus_plugin::kGetIndex)),
      refresh(plugin.find(cus_plugin::kRefresh)) {}

TablePart::TablePart(const script::Plugin& plugin, tagRECT area) : members_(plugin) {
  plugin.find(cus_plugin::kSetFunPoint)(&callbacks_);
  part_ = callbacks_.create();
  tagPARTINFO info{area};
  if (part_ == nullptr || !callbacks_.init(part_, &info)) {
    callbacks_.destroy(part_);
    throw Error(kExitIoError, "the plug-in made no table part");
  }
}

TablePart::~TablePart() {
  callbacks_.destroy(part_);
}

void TablePart::reset() {
  members_.reset(part_);
}

// A member access checked against the class's type information would need the part linked.
__attribute__((no_sanitize("vptr"))) void TablePart::setOrder(unsigned short order) {
  static_cast<CLuaParseModulePart*>(part_)->nOrder = order;
}

bool TablePart::setCell(unsigned short rows, unsigned short cols, const std::string& widths) {
  return members_.setCell(part_, rows, cols, widths.c_str()) == 1;
}

void TablePart::drawHead(const std::vector<std::string>& titles) {
  members_.drawHead(part_, titles);
}

bool TablePart::setBody(Rows& rows) {
  return members_.setBody(part_, rows) == 1;
}

bool TablePart::update(unsigned short total, int& first, int& last) {
  return members_.update(part_, total, first, last) == 1;
}

bool TablePart::pageUp() {
  return members_.pageUp(part_) == 1;
}

bool TablePart::pageDown() {
  return members_.pageDown(part_) == 1;
}

Page TablePart::page() {
  Page page{};
  members_.getPage(part_, page.current, page.count);
  return page;
}

std::optional<int> TablePart::index() {
  constexpr int kUntouched = 0;
  int index = kUntouched;
  if (members_.getIndex(part_, index) == 0 || index == kUntouched) return std::nullopt;
  return index;
}

bool TablePart::refresh() {
  return members_.refresh(part_) == 1;
}

void TablePart::click(tagPOINT point) {
  callbacks_.click(part_, 0, CLICKPART_CLICK, point, nullptr);
}

bool TablePart::wantsRedraw() {
  return callbacks_.plcRead(part_, nullptr);
}

std::string TablePart::picture() {
  std::string svg;
  callbacks_.fillPartShowAttr(part_, svg, nullptr);
  return svg;
}

}  // namespace desk::panel
