#include <algorithm>
#include <cstdint>

#include "desk/editor/editor_files.h"
#include "desk/editor/job_levels.h"
#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace desk::editor {

namespace {

using model::KeyKind;

struct TypeName {
  model::TextForm form;
  const char* name;
};
constexpr TypeName kTypeNames[] = {
    {model::TextForm::Unit, "unit"},       {model::TextForm::Count, "count"},
    {model::TextForm::Measure, "measure"}, {model::TextForm::Size, "size"},
    {model::TextForm::Angle, "angle"},     {model::TextForm::Side, "side"},
};

std::string typeOf(const WrittenKey& key) {
  if (key.name == json_keys::kVersionKey.spelling) return "version";
  for (const TypeName& type : kTypeNames) {
    if (type.form == key.form) return type.name;
  }
  return "text";
}

std::string simpleType(const char* name, const std::string& facet) {
  return std::string("  <xs:simpleType name=\"") + name +
         "\">\n    <xs:restriction base=\"xs:string\">" + facet +
         "</xs:restriction>\n  </xs:simpleType>\n";
}

std::string pattern(const std::string& expression) {
  return "<xs:pattern value=\"" + expression + "\"/>";
}

/// Texts keep their white space, as the reader does; a blank text counts as missing. No number is
/// so long that it is out of a double's range.
std::string simpleTypes() {
  std::string text = simpleType("version", std::string("<xs:enumeration value=\"") +
                                               json_keys::kVersion + "\"/>") +
                     simpleType("text", pattern("[\\s\\S]*\\S[\\s\\S]*"));
  for (const TypeName& type : kTypeNames) {
    text += simpleType(type.name, pattern(patternOf(type.form)) + "<xs:maxLength value=\"30\"/>");
  }
  return text;
}

std::string annotation(const std::string& indent, const std::string& text) {
  return indent + "<xs:annotation><xs:documentation>" + text +
         "</xs:documentation></xs:annotation>\n";
}

std::string element(const WrittenKey& key) {
  const std::string indent = "      ";
  std::string text = indent + "<xs:element name=\"" + key.name + "\"";
  text += std::string(" type=\"") + typeOf(key) + "\"";
  if (!key.isRequired) text += " minOccurs=\"0\"";
  return text + ">\n" + annotation(indent + "  ", key.description()) + indent + "</xs:element>\n";
}

std::string repeated(const char* name, const char* type) {
  return std::string("      <xs:element name=\"") + name + "\" type=\"" + type +
         "\" minOccurs=\"0\" maxOccurs=\"unbounded\"/>\n";
}

std::string elements(const Level& level, std::size_t first = 0, std::size_t end = SIZE_MAX) {
  std::string text;
  for (std::size_t i = first; i < std::min(end, level.keys.size()); ++i) {
    text += element(level.keys[i]);
  }
  return text;
}

std::string complexType(const Level& level, const std::string& content) {
  return "  <xs:complexType name=\"" + level.name + "\">\n" +
         annotation("    ", level.description) + "    <xs:sequence>\n" + content +
         "    </xs:sequence>\n  </xs:complexType>\n";
}

}  // namespace

std::string xmlSchema() {
  using namespace xml_elements;
  const auto [header, bar, piece, cut, work] = xmlLevels();
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") +
         "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n" +
         "  <xs:element name=\"Job\" type=\"header\"/>\n" +
         complexType(header, elements(header) + repeated(kBars, "bar")) +
         complexType(bar, elements(bar) + repeated(kPieces, "piece")) +
         complexType(piece, elements(piece, 0, kPieceRowsBeforeCuts) + "      <xs:element name=\"" +
                                kCuts + "\" type=\"cut\"/>\n" +
                                elements(piece, kPieceRowsBeforeCuts) + repeated(kWorks, "work")) +
         complexType(cut, elements(cut)) + complexType(work, elements(work)) + simpleTypes() +
         "</xs:schema>\n";
}

}  // namespace desk::editor
