// A host whose loader reports success and hands back no root element.
#include <gtest/gtest.h>

#include "host/cbl.h"
#include "xml/xml_analysis.h"

int cbl::loadXmlFile(const std::string&, tinyxml2::XMLDocument&, tinyxml2::XMLElement*& root) {
  root = nullptr;
  return 0;
}

TEST(XmlReader, TakesASuccessWithoutARootForNoFile) {
  XmlAnalysis reader;
  reader.data.Bar.resize(1);
  testing::internal::CaptureStdout();
  EXPECT_EQ(reader.xmlAnalysis("any.xml"), -2);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "read File error.............\n");
  EXPECT_EQ(reader.data.Bar.size(), 1U);
}
