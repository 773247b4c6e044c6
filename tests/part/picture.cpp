#include "tests/part/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tinyxml2.h>

Picture::Picture(const std::string& svg) {
  read(svg);
}

void Picture::read(const std::string& svg) {
  tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
  ASSERT_EQ(document.Parse(svg.data(), svg.size()), tinyxml2::XML_SUCCESS) << svg;
  const tinyxml2::XMLElement* root = document.RootElement();
  ASSERT_STREQ(root->Name(), "svg");
  const double right = root->DoubleAttribute("width") - 0.5;
  for (auto* node = root->FirstChildElement(); node;
       node = node->NextSiblingElement(), ++elements) {
    const std::string name = node->Name();
    ASSERT_THAT(name, testing::AnyOf("rect", "line", "text"));
    ASSERT_EQ(node->FirstChildElement(), nullptr) << name;
    if (name == "text") texts.emplace_back(node->GetText());
    const double x = node->DoubleAttribute("x1");
    if (x > 0.5 && x < right && x == node->DoubleAttribute("x2")) columnLines.push_back(x - 0.5);
  }
}
