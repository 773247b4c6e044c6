#include "desk/panel/table_part.h"

#include "desk/base/errors.h"
#include "part/table_part.h"  // for the place of nOrder only: nothing of the part is linked here

namespace desk::panel {

namespace {

/// Sets a function pointer to the exported member of that name.
template <class Function>
void findMember(const script::Plugin& plugin, const char* name, Function*& member) {
  member = plugin.find<Function>(name);
}

}  // namespace

// --- names fixed by the plug-in ------------------------------------------------------------------

TablePart::Members::Members(const script::Plugin& plugin) {
  findMember(plugin, "_ZN19CLuaParseModulePart5ResetEv", reset);
  findMember(plugin, "_ZN19CLuaParseModulePart7SetCellEttPKc", setCell);
  findMember(
      plugin,
      "_ZN18CSVGLuaParseModule12DrawHeadTextERKSt6vectorINSt7__cxx1112basic_stringIcSt11char_"
      "traitsIcESaIcEEESaIS6_EE",
      drawHead);
  findMember(
      plugin,
      "_ZN19CLuaParseModulePart11SetBodyTextERNSt7__cxx114listIPSt6vectorINS0_12basic_stringIcSt11"
      "char_traitsIcESaIcEEESaIS7_EESaISA_EEE",
      setBody);
  findMember(plugin, "_ZN19CLuaParseModulePart6UpdateEtRiS0_", update);
  findMember(plugin, "_ZN19CLuaParseModulePart6PageUpEv", pageUp);
  findMember(plugin, "_ZN19CLuaParseModulePart8PageDownEv", pageDown);
  findMember(plugin, "_ZN19CLuaParseModulePart7GetPageERtS0_", getPage);
  findMember(plugin, "_ZN19CLuaParseModulePart8GetIndexERi", getIndex);
  findMember(plugin, "_ZN19CLuaParseModulePart7RefreshEv", refresh);
}

// -------------------------------------------------------------------------------------------------

TablePart::TablePart(const script::Plugin& plugin, tagRECT area) : members_(plugin) {
  plugin.find<int(tagPARTCALLBACKS*)>("Custom_SetFunPoint")(&callbacks_);
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
