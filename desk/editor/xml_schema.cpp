#include <algorithm>
#include <cstdint>

#include "desk/editor/editor_files.h"
#include "desk/editor/job_levels.h"
#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace desk::editor {

namespace {

using model::KeyKind;

/// The simple types, with the version in the place of %. Texts keep their white space, as the
/// reader does; a blank text counts as missing. Numbers of works are bounded so that none is out of
/// a double's range.
constexpr char kSimpleTypes[] = R"(  <xs:simpleType name="version">
    <xs:restriction base="xs:string"><xs:enumeration value="%"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="text">
    <xs:restriction base="xs:string"><xs:pattern value="[\s\S]*\S[\s\S]*"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="count">
    <xs:restriction base="xs:string"><xs:pattern value="[0-9]+"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="measure">
    <xs:restriction base="xs:string"><xs:pattern value="-?[0-9]+(\.[0-9]+)?"/></xs:restriction>
  </xs:simpleType>
  <xs:simpleType name="number">
    <xs:restriction base="xs:decimal"><xs:totalDigits value="15"/></xs:restriction>
  </xs:simpleType>
)";

const char* typeOf(const WrittenKey& key) {
  if (key.name == "Version") return "version";
  if (key.kind == KeyKind::Number) return "number";
  if (key.form == model::TextForm::Count) return "count";
  return key.form == model::TextForm::Measure ? "measure" : "text";
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
  std::string simpleTypes = kSimpleTypes;
  simpleTypes.replace(simpleTypes.find('%'), 1, json_keys::kVersion);
  return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") +
         "<xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\">\n" +
         "  <xs:element name=\"Job\" type=\"header\"/>\n" +
         complexType(header, elements(header) + repeated(kBars, "bar")) +
         complexType(bar, elements(bar) + repeated(kPieces, "piece")) +
         complexType(piece, elements(piece, 0, kPieceRowsBeforeCuts) + "      <xs:element name=\"" +
                                kCuts + "\" type=\"cut\"/>\n" +
                                elements(piece, kPieceRowsBeforeCuts) + repeated(kWorks, "work")) +
         complexType(cut, elements(cut)) + complexType(work, elements(work)) + simpleTypes +
         "</xs:schema>\n";
}

}  // namespace desk::editor
