#include "tests/desk/check/xml_jobs.h"

#include "xml/xml_elements.h"

namespace test_support {

namespace {

using model::KeyKind;

void write(XmlElement& element, std::string& text, int& line) {
  text += "<" + element.tag + ">\n";
  ++line;
  for (XmlLine& one : element.lines) {
    one.number = line++;
    text += one.before + one.text + one.after + "\n";
  }
  for (XmlElement& child : element.children) write(child, text, line);
  text += "</" + element.tag + ">\n";
  ++line;
}

}  // namespace

std::string write(XmlElement& root) {
  std::string text;
  int line = 1;
  write(root, text, line);
  return text;
}

XmlElement XmlElement::with(const std::string& childTag, int childNumber) const {
  XmlElement part{tag, lines, {}};
  int count = 0;
  for (const XmlElement& child : children) {
    if (child.tag == childTag && (childNumber == 0 || ++count == childNumber)) {
      part.children.push_back(child);
    }
  }
  return part;
}

void XmlJobs::addValue(const std::string& name, bool isNumber, XmlElement& element) {
  const std::string open = "<" + name + ">";
  const std::string close = "</" + name + ">";
  const std::string text = (isNumber ? "" : "t") + std::to_string(number(99));
  if (!isNumber && chance(6)) {
    element.lines.push_back({chance(50) ? open + "  " + close : "<" + name + "/>", "", ""});
    return;
  }
  element.lines.push_back({open, text, close});
  if (isNumber && chance(5)) element.lines.back().after = "mm" + close;
  if (isNumber && chance(1)) element.lines.back().before += "x";
  if (chance(3)) {
    element.lines.back().after = "<!-- c -->";
    element.lines.push_back({"", "rest", close});
  }
  if (chance(3)) element.lines.push_back({open, "again", close});
}

template <class Table>
void XmlJobs::addValues(const Table& table, XmlElement& element) {
  const int present = 40 + number(60);
  for (const auto& key : table) {
    const bool isNeeded = key.kind == KeyKind::Number || key.kind == KeyKind::Required;
    if (!chance(isNeeded ? 99 : present)) continue;
    addValue(key.spelling, isNeeded, element);
    if (key.kind != KeyKind::Required && key.kind != KeyKind::Ignored) continue;
    for (XmlLine& line : element.lines) {
      line.isDropped |= line.before.rfind(std::string("<") + key.spelling + ">", 0) == 0;
    }
  }
}

void XmlJobs::addStray(XmlElement& element) {
  constexpr const char* kStrays[] = {"Note", "BARCODE", "BarColor", "Field1", "Name", "Version"};
  const std::string name = kStrays[number(4)];
  if (chance(12)) element.lines.push_back({"<" + name + ">", "stray", "</" + name + ">"});
  if (chance(6)) element.lines.push_back({"", "loose text", "<!-- c -->"});
  if (chance(6)) element.lines.push_back({"<Extra x='", "attribute", "'/>"});
  if (chance(6)) element.lines.push_back({"<Piece><Num>", "5", "</Num></Piece>"});
}

XmlElement XmlJobs::piece() {
  XmlElement piece{"Piece", {}, {}};
  addValues(xml_elements::kPiece, piece);
  for (int cuts = chance(80) ? 1 + number(2) : 0; cuts > 0; --cuts) {
    piece.children.push_back({"Cut", {}, {}});
    addValues(xml_elements::kCut, piece.children.back());
    addStray(piece.children.back());
  }
  for (int works = number(4); works > 0; --works) {
    piece.children.push_back({"Work", {}, {}});
    addValues(xml_elements::kWork, piece.children.back());
    addStray(piece.children.back());
  }
  if (chance(10)) piece.lines.push_back({"<Note>", "stray", "</Note>"});
  return piece;
}

XmlElement XmlJobs::next() {
  XmlElement root{"Job", {}, {}};
  if (chance(5)) return root;
  addValues(xml_elements::kHeader, root);
  addStray(root);
  for (int bars = number(4); bars > 0; --bars) {
    XmlElement bar{"Bar", {}, {}};
    addValues(xml_elements::kBar, bar);
    for (int pieces = number(4); pieces > 0; --pieces) bar.children.push_back(piece());
    root.children.push_back(bar);
  }
  return root;
}

}  // namespace test_support
