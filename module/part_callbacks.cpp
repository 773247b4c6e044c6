#include "module/part_callbacks.h"

#include "part/table_part.h"

namespace {

CLuaParseModulePart* tablePart(void* part) {
  return static_cast<CLuaParseModulePart*>(part);
}

}  // namespace

void* onCreate() {
  return new CLuaParseModulePart;
}

bool onDestroy(void* part) {
  if (part == nullptr) return false;
  delete tablePart(part);
  return true;
}

bool onInit(void* part, void* partInfo) {
  return part != nullptr && tablePart(part)->onInit(partInfo) >= 0;
}

bool onClick(void* part, int a, int clickType, tagPOINT const& point, void* data) {
  return part != nullptr &&
         tablePart(part)->onClick(a, static_cast<tagCLICKPARTTYPE>(clickType), point, data) >= 0;
}

bool onPLCRead(void* part, void* data) {
  return part != nullptr && tablePart(part)->onPLCRead(data) >= 0;
}

bool onFillPartShowAttr(void* part, std::string& svg, void* data) {
  return part != nullptr && tablePart(part)->onFillPartShowAttr(svg, data) >= 0;
}

extern "C" int Custom_SetFunPoint(tagPARTCALLBACKS* callbacks) noexcept {
  callbacks->click = onClick;
  callbacks->create = onCreate;
  callbacks->destroy = onDestroy;
  callbacks->fillPartShowAttr = onFillPartShowAttr;
  callbacks->init = onInit;
  callbacks->plcRead = onPLCRead;
  return 1;
}
