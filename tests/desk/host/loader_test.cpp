#include <json/value.h>
#include <tinyxml2.h>

#include "host/cbl.h"
#include "tests/desk/host/host_test.h"

namespace {

constexpr char kPath[] = "/mnt/data/a";
constexpr char kZeroInText[] = "[\"a\0b\"]";
constexpr char kZeroAtEnd[] = "{}";
constexpr char kZeroInside[] = "{} \0 x";

std::string repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

std::string nested(int levels) {
  return repeated("[", levels) + repeated("]", levels);
}

std::string tag(int attributes) {
  std::string text = "<a";
  for (int i = 0; i < attributes; ++i) text += " n" + std::to_string(i) + "='='";
  return text + "/>";
}

template <std::size_t N>
std::string bytes(const char (&text)[N]) {
  return {text, N - 1};
}

const std::string kOnlyHere = "; a panel would load it: only cusdesk refuses";

/// A document and what the log says about it; nothing when it is to load.
struct Row {
  std::string text, complaint;
};

}  // namespace

TEST_F(HostTest, LoadsJsonOrSaysWhereItFails) {
  const std::string nothing = "Syntax error: value, object or array expected.";
  const Row rows[] = {
      {"{}", ""},
      {" 7 ", ""},
      {"\"切割\"", ""},
      {"/* saw */ {\"a\": 1} // end", ""},
      {"\xEF\xBB\xBF{\"a\": 1}\n", ""},
      {bytes(kZeroInText), ""},
      {std::string(kZeroAtEnd, sizeof kZeroAtEnd), ""},
      {nested(64), ""},
      {" \n ", ": the document is empty"},
      {"\xEF\xBB\xBFx", ":1:1: " + nothing},
      {"{\n \"a\": 1\n \"b\": 2}", ":3:2: Missing ',' or '}' in object declaration"},
      {"{\"a\": [1,\n2", ":2:2: Missing ',' or ']' in array declaration"},
      {"[\"\\u12\"]", ":1:2: Bad unicode escape sequence in string: four digits expected."},
      {"{}\n}", ":2:1: Extra non-whitespace after JSON value."},
      {bytes(kZeroInside), ": there are bytes after a zero byte"},
      {nested(65), ": nested deeper than 64 levels" + kOnlyHere},
      {repeated("[", 1'000'000), ": nested deeper than 64 levels" + kOnlyHere},
  };
  for (const Row& row : rows) {
    tree.write("root/mnt/data/a", row.text);
    Json::Value root;
    const int code = cbl::loadJsonFile(kPath, root, false);
    const std::string log = row.complaint.empty() ? "" : kPath + row.complaint + "\n";
    EXPECT_EQ(takeLog(), log) << row.text.substr(0, 80);
    EXPECT_EQ(code >= 0, row.complaint.empty()) << row.text.substr(0, 80);
  }
}

TEST_F(HostTest, LoadsXmlOrSaysWhereItFails) {
  const Row rows[] = {
      {"<a/>", ""},
      {"\xEF\xBB\xBF<?xml version='1.0'?>\n<!-- < -->\n<!DOCTYPE a>\n<a>t</a>\n<!-- </a> -->", ""},
      {"<a><![CDATA[</a></b>]]>< /a>", ""},
      {"<a/>" + std::string(1, '\0'), ""},
      {tag(256), ""},
      {"<r>" + repeated(tag(200) + "<!-- " + tag(300) + "--><![CDATA[" + tag(300) + "]]>", 3) +
           "</r>",
       ""},
      {"", ": the document is empty"},
      {" \n", ": the document is empty"},
      {"<!-- a -->", ": there is no root element"},
      {"<a/>\n<b/>", ":2: a second root element"},
      {"<a>\n<b>\n</a>", ":2: element without its end tag"},
      {"<a/>\n</a>\n<b/>", ":2:1: an end tag closes no element"},
      {"<a/>\nx", ":2: text that no tag ends"},
      {"<a b='1'\nb='2'/>", ":2: malformed attribute, or the same one twice"},
      {"<a>\n<b", ":2: malformed tag"},
      {"<a>\n" + std::string(1, '\0') + "</a>", ":2:1: there are bytes after a zero byte"},
      {"\n<a>" + tag(257) + "</a>", ":2:4: more than 256 attributes in one element" + kOnlyHere},
      {"<a>\n" + repeated("&#", 257) + ";</a>",
       ":2:513: more than 256 character references without a ';'" + kOnlyHere},
      {"<a b='" + repeated("<&#", 257) + "'/>",
       ":1:776: more than 256 character references without a ';'" + kOnlyHere},
      {"<a>" + repeated(repeated("&#", 256) + "<b/>&#38;", 2) + "</a>", ""},
      {repeated("<a>", 200) + repeated("</a>", 200), ":1: elements are nested too deep"},
  };
  for (const Row& row : rows) {
    tree.write("root/mnt/data/a", row.text);
    tinyxml2::XMLDocument document(true, tinyxml2::PRESERVE_WHITESPACE);
    tinyxml2::XMLElement* root = reinterpret_cast<tinyxml2::XMLElement*>(&document);
    const int code = cbl::loadXmlFile(kPath, document, root);
    const std::string log = row.complaint.empty() ? "" : kPath + row.complaint + "\n";
    EXPECT_EQ(takeLog(), log) << row.text.substr(0, 80);
    EXPECT_EQ(code >= 0, row.complaint.empty()) << row.text.substr(0, 80);
    EXPECT_EQ(root, document.RootElement()) << row.text.substr(0, 80);
    EXPECT_EQ(root == nullptr, code < 0) << row.text.substr(0, 80);
  }
}

TEST_F(HostTest, BoundsTheRecordsOfAJob) {
  // Room for one bar, two pieces and one work, or one text that is held six times.
  deskhost::settings().recordBytes = 2200 + 2 * 7000 + 3000;
  deskhost::settings().recordBytesPerByte = 0;
  const std::string json = "{\"bar\":[{\"piece\":[{\"cut\":{\"Length\":\"";
  const std::string xml = "<J><Bar><Piece><Cut><Length>";
  const std::string xmlEnd = "</Length></Cut>\n<Work/></Piece>\n<Piece/>";
  const std::string refused = ": the records up to here take more memory than a document of ";
  const struct {
    std::string text;
    const char* place;
  } rows[] = {
      {json + "1\"},\"work\":[0]},\n0]}]}", nullptr},
      {json + "1\"},\"work\":[0]},\n0,0]}]}", ":2:3"},
      {json + "1\"},\"work\":[0,\n 0]},0]}]}", ":2:6"},
      {json + std::string(200, 'x') + "\"},\"work\":[0]},\n0]}]}", ":2:1"},
      {xml + "1" + xmlEnd + "</Bar></J>", nullptr},
      {xml + "1" + xmlEnd + "\n<Piece/></Bar></J>", ":4"},
      {xml + "1" + xmlEnd + "</Bar>\n<Bar/></J>", ":4"},
      {xml + std::string(200, 'x') + xmlEnd + "</Bar></J>", ":3"},
  };
  for (const auto& [text, place] : rows) {
    tree.write("root/mnt/data/a", text);
    Json::Value value;
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = nullptr;
    const bool loaded = text[0] == '{' ? cbl::loadJsonFile(kPath, value, false) >= 0
                                       : cbl::loadXmlFile(kPath, document, root) >= 0;
    EXPECT_EQ(loaded, place == nullptr) << text;
    const std::string log = kPath + std::string(place == nullptr ? "" : place) + refused +
                            std::to_string(text.size()) + " bytes is granted" + kOnlyHere + "\n";
    EXPECT_EQ(takeLog(), place == nullptr ? "" : log);
  }
}

TEST_F(HostTest, RefusesHostileXmlInLittleTime) {
  // Looked through again from every place, each of them takes longer than a test may.
  const std::string rows[] = {tag(1'000'000), repeated("<a ", 1'000'000),
                              repeated("<a '", 1'000'000), repeated("</a>", 1'000'000),
                              repeated("<!--", 1'000'000)};
  for (const std::string& text : rows) {
    tree.write("root/mnt/data/a", text);
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* root = nullptr;
    EXPECT_LT(cbl::loadXmlFile(kPath, document, root), 0) << text.substr(0, 20);
  }
}

TEST_F(HostTest, AnswersNegativeForWhatIsNoDocument) {
  std::filesystem::create_directory(tree.path("root/mnt/data/d.json"));
  const std::string lead = tree.path("root/mnt/data/");
  const Row rows[] = {
      {"", "\"\": no file is named"},
      {"/mnt/data/../a", ": the name holds '..'"},
      {"/mnt/data/none.json", ": " + lead + "none.json: No such file or directory"},
      {"/mnt/data/d.json", ": " + lead + "d.json: Is a directory"},
  };
  for (const Row& row : rows) {
    Json::Value value;
    tinyxml2::XMLDocument document;
    document.Parse("<before/>");
    tinyxml2::XMLElement* root = nullptr;
    EXPECT_LT(cbl::loadJsonFile(row.text, value, false), 0);
    EXPECT_LT(cbl::loadXmlFile(row.text, document, root), 0);
    EXPECT_TRUE(document.NoChildren());
    const std::string line = row.text + row.complaint + "\n";
    EXPECT_EQ(takeLog(), line + line);
  }
}
