// The part callbacks as the host uses them: through the six slots only.
#include "module/part_callbacks.h"

#include <gtest/gtest.h>

static_assert(noexcept(Custom_SetFunPoint(nullptr)), "a failure to install ends the process");

namespace {

tagPARTCALLBACKS installed() {
  tagPARTCALLBACKS callbacks;
  callbacks.create = [] { return nullptr; };
  callbacks.plcRead = [](void*, void*) { return true; };
  EXPECT_EQ(Custom_SetFunPoint(&callbacks), 1);
  return callbacks;
}

TEST(PartCallbacks, NullHandlesAreAnsweredWithFalseAndNothingIsWritten) {
  const tagPARTCALLBACKS slots = installed();
  tagPARTINFO info{{0, 0, 800, 480}};
  std::string svg = "untouched";
  EXPECT_FALSE(slots.destroy(nullptr));
  EXPECT_FALSE(slots.init(nullptr, &info));
  EXPECT_FALSE(slots.click(nullptr, 0, CLICKPART_CLICK, {1, 1}, nullptr));
  EXPECT_FALSE(slots.plcRead(nullptr, nullptr));
  EXPECT_FALSE(slots.fillPartShowAttr(nullptr, svg, nullptr));
  EXPECT_EQ(svg, "untouched");
}

TEST(PartCallbacks, PartsLiveFromCreateToDestroyAndAnswerForThemselves) {
  const tagPARTCALLBACKS slots = installed();
  void* const part = slots.create();
  void* const other = slots.create();
  ASSERT_NE(part, nullptr);
  EXPECT_NE(part, other);
  EXPECT_TRUE(slots.destroy(other));

  tagPARTINFO info{{10, 20, 810, 500}};
  std::string svg;
  EXPECT_FALSE(slots.init(part, nullptr)) << "the part answers -1";
  EXPECT_TRUE(slots.init(part, &info)) << "the part answers 0";
  EXPECT_FALSE(slots.plcRead(part, nullptr)) << "nothing to draw yet";
  EXPECT_TRUE(slots.click(part, 7, CLICKPART_CLICK, {20, 30}, nullptr));
  EXPECT_TRUE(slots.fillPartShowAttr(part, svg, nullptr));
  EXPECT_NE(svg.find("width=\"800\" height=\"480\""), std::string::npos) << svg;
  EXPECT_TRUE(slots.destroy(part));
}

}  // namespace
