// Writes a fuzzer's dictionary from the key tables: dictionary json|xml
#include <cstdio>
#include <cstring>
#include <string>

#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace {

void print(const std::string& word) {
  std::putchar('"');
  for (const char byte : word) {
    const bool plain = byte >= ' ' && byte <= '~' && byte != '"' && byte != '\\';
    std::printf(plain ? "%c" : "\\x%02x", static_cast<unsigned char>(byte));
  }
  std::puts("\"");
}

template <class Row, std::size_t count>
void printKeys(const Row (&rows)[count]) {
  for (const Row& row : rows) {
    for (const char* spelling : {row.spelling, row.secondSpelling}) {
      if (spelling != nullptr) print("\"" + std::string(spelling) + "\":");
    }
  }
}

template <class Row, std::size_t count>
void printElements(const Row (&rows)[count]) {
  for (const Row& row : rows) {
    print("<" + std::string(row.spelling) + ">");
    print("</" + std::string(row.spelling) + ">");
  }
}

void printJson() {
  printKeys(json_keys::kHeader);
  printKeys(json_keys::kBar);
  printKeys(json_keys::kPiece);
  printKeys(json_keys::kLabelFields);
  printKeys(json_keys::kCut);
  printKeys(json_keys::kWork);
  for (const char* word :
       {"\"Bar\":[{", "\"piece\":[{", "\"cut\":{",  "\"work\":[{", "\"1.0\"",     "\"135\"",
        "}]",         "},{",          "null",       "true",        "false",       "1e3",
        "-0",         "1.5",          "2147483647", "2147483648",  "1e400",       "\\u0000",
        "\\ud800",    "//",           "/*",         "*/",          "\xEF\xBB\xBF"}) {
    print(word);
  }
}

void printXml() {
  printElements(xml_elements::kHeader);
  printElements(xml_elements::kBar);
  printElements(xml_elements::kPiece);
  printElements(xml_elements::kCut);
  printElements(xml_elements::kWork);
  for (const char* word :
       {"<Bar>",   "</Bar>",    "<Piece>", "</Piece>",   "<Cut>", "</Cut>",    "<Work>",
        "</Work>", "<![CDATA[", "]]>",     "<!--",       "-->",   "<!DOCTYPE", "<?xml",
        "?>",      "&lt;",      "&#0;",    "&#x10FFFF;", "&bad;", "1e400",     "1e-400",
        "nan",     "inf",       "0x1p3",   "a='b'",      "/>"}) {
    print(word);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  if (std::strcmp(argv[1], "json") == 0) {
    printJson();
  } else {
    printXml();
  }
  return 0;
}
