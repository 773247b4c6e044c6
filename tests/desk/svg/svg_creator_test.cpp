// The document that the host's builder makes of its elements.
#include <gtest/gtest.h>

#include "host/utility.h"

namespace {

TEST(SvgCreator, WritesOneElementOnALineInPaintingOrder) {
  UTILITY::CSVGCreator svg;
  svg.begin(1, 1);
  svg.rectangle({0, 0, 1, 1}, "#000000");
  svg.begin(200, 100);  // forgets the picture before
  svg.rectangle({10, 20, 30, 60}, "#ff0000");
  svg.rectangle({30, 20, 30, 60}, "#ff0000");  // empty
  svg.line({0, 5}, {200, 5}, "#00ff00");
  svg.line({5, 0}, {5, 100}, "#00ff00");
  svg.text({10, 50}, "a<b> & \"c\" \xFF\x01\n\u7A97\u202E\xEF\xBF\xBF", 20, "#0000ff", true);
  svg.text({10, 50}, "45\u00B0", 10, "#0000ff", false);
  const std::string expected =
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200\" height=\"100\" "
      "viewBox=\"0 0 200 100\" font-family=\"sans-serif\">\n"
      "    <rect x=\"10\" y=\"20\" width=\"20\" height=\"40\" fill=\"#ff0000\"/>\n"
      "    <line x1=\"0\" y1=\"5.5\" x2=\"200\" y2=\"5.5\" stroke=\"#00ff00\"/>\n"
      "    <line x1=\"5.5\" y1=\"0\" x2=\"5.5\" y2=\"100\" stroke=\"#00ff00\"/>\n"
      "    <text x=\"10\" y=\"57\" font-size=\"20\" font-weight=\"bold\" fill=\"#0000ff\">"
      "a&lt;b&gt; &amp; \"c\" \uFFFD  \u7A97\uFFFD\uFFFD</text>\n"
      "    <text x=\"10\" y=\"53\" font-size=\"10\" fill=\"#0000ff\">45\u00B0</text>\n"
      "</svg>\n";
  EXPECT_EQ(svg.getXml(), expected);
  svg.rectangle({10, 20, 30, 60}, "#ff0000");
  EXPECT_EQ(svg.getXml(), expected) << "finished";
}

}  // namespace
