// What the shadow of the XML reader tells.
#include <tinyxml2.h>

#include <algorithm>
#include <string_view>

#include "desk/check/rules.h"
#include "desk/check/xml_shadow.h"
#include "xml/xml_elements.h"

namespace desk::check {

namespace {

using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

/// A text without the blanks around it.
std::string trimmed(const char* text) {
  constexpr char kBlanks[] = " \t\r\n";
  const std::string_view all = text;
  const std::size_t start = std::min(all.find_first_not_of(kBlanks), all.size());
  return std::string(all.substr(start, all.find_last_not_of(kBlanks) + 1 - start));
}

bool isBlank(const char* text) {
  return trimmed(text).empty();
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// A declaration of entities, in a document type or by itself: the library takes each for a node.
bool declaresEntity(const XMLNode& node) {
  return node.ToUnknown() != nullptr &&
         std::string_view(node.Value()).find("ENTITY") != std::string_view::npos;
}

/// Elements that lead to the next level; all others hold a value.
bool isLevel(const std::string& name) {
  using namespace xml_elements;
  return name == kBars || name == kPieces || name == kCuts || name == kWorks;
}

}  // namespace

Place XmlShadow::placeOf(const XMLNode& node) const {
  return {file(), {node.GetLineNum(), 0}};
}

void XmlShadow::reportAround(const XMLNode& document) {
  bool hasEntities = false;
  for (const XMLNode* node = document.FirstChild(); node != nullptr; node = node->NextSibling()) {
    const std::string text = node->ToText() == nullptr ? "" : trimmed(node->Value());
    if (declaresEntity(*node)) {
      hasEntities = true;
      report(rules::kIgnoredText, Severity::Warning, placeOf(*node),
             "declared entities are not read: a text keeps their names", {});
    } else if (!text.empty() && !(hasEntities && text == "]>")) {
      report(rules::kIgnoredText, Severity::Warning, placeOf(*node),
             "the text " + quoted(text) + " outside of the root is not read", {});
    }
  }
}

void XmlShadow::reportStrangers(const XMLElement& element, Level level, const Element& here) {
  reportAttributes(element, here);
  for (const XMLNode* child = element.FirstChild(); child != nullptr;
       child = child->NextSibling()) {
    if (child->ToText() != nullptr && !isBlank(child->Value())) {
      report(rules::kIgnoredText, Severity::Warning, placeOf(*child),
             "the text " + quoted(trimmed(child->Value())) + " in \"" + element.Name() +
                 "\" is not read",
             here, element.Name());
    }
    const XMLElement* inner = child->ToElement();
    if (inner == nullptr) continue;
    if (!contains(xmlNames(level), inner->Name())) {
      const Advice advice = adviceFor(inner->Name(), level, true);
      report(rules::kUnknownKey, advice.severity, placeOf(*inner),
             quoted(inner->Name()) + " is no element of " + nameOf(level) + " and is ignored" +
                 advice.text,
             here, inner->Name());
    } else if (!isLevel(inner->Name())) {
      reportValueContent(*inner, here);
    }
  }
}

void XmlShadow::reportValueContent(const XMLElement& value, const Element& here) {
  const char* const taken = value.GetText();
  const XMLElement* const first = value.Parent()->FirstChildElement(value.Name());
  if (first != &value) return;
  reportAttributes(value, here);
  for (const XMLNode* child = value.FirstChild(); child != nullptr; child = child->NextSibling()) {
    const bool isElement = child->ToElement() != nullptr;
    const bool isText = child->ToText() != nullptr && !isBlank(child->Value());
    if ((!isElement && !isText) || (isText && child->Value() == taken)) continue;
    const std::string what = isElement ? "the element " : "the text ";
    report(rules::kIgnoredText, Severity::Warning, placeOf(*child),
           what + quoted(trimmed(child->Value())) + " in \"" + value.Name() +
               "\" is not read: a value ends where its first text ends",
           here, value.Name());
  }
}

void XmlShadow::reportAttributes(const XMLElement& element, const Element& here) {
  for (const auto* attribute = element.FirstAttribute(); attribute != nullptr;
       attribute = attribute->Next()) {
    const std::string name = attribute->Name();
    if (name.rfind("xmlns", 0) == 0 || name.rfind("xsi:", 0) == 0) continue;
    report(rules::kAttribute, Severity::Warning, {file(), {attribute->GetLineNum(), 0}},
           "the attribute " + quoted(name) + " of \"" + element.Name() +
               "\" is not read; values are elements of their own",
           here, name);
  }
}

void XmlShadow::reportRepeated(const XMLElement& parent, const char* name, Level level,
                               const Element& here) {
  const XMLElement* first = parent.FirstChildElement(name);
  const char* const taken = first->GetText();
  for (const XMLElement* next = first->NextSiblingElement(name); next != nullptr;
       next = next->NextSiblingElement(name)) {
    const char* const text = next->GetText();
    const bool isSame = taken != nullptr && text != nullptr && std::string_view(taken) == text;
    report(rules::kRepeatedElement, isSame ? Severity::Note : severityOf(level, name),
           placeOf(*next),
           "\"" + std::string(name) + "\" is ignored because only the first one counts (" +
               placeText(placeOf(*first)) + (isSame ? "), which has the same text" : ")"),
           here, name);
  }
}

void XmlShadow::reportRepeatedCut(const XMLElement& cut, const Trace<CUT_T>& before,
                                  const Element& here) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    const Origin& earlier = state_.traced.origins[before[i]];
    if (earlier.place.file != file() || !(earlier.element == here)) continue;
    const std::string name = FieldsOf<CUT_T>::keys[i].spelling;
    const bool isKept = before[i] == state_.cut.trace[i];
    const Place& other = isKept ? earlier.place : placeOf(cut);
    const std::string what =
        isKept ? "\"Cut\" lacks \"" + name + "\" and keeps" : "\"" + name + "\" is replaced by";
    report(rules::kRepeatedElement, Severity::Error, isKept ? placeOf(cut) : earlier.place,
           what + " that of another \"Cut\" of the same piece (" + placeText(other) + ")", here,
           name);
  }
}

void XmlShadow::reportNeverStored(const XMLElement& piece, const Element& here) {
  for (const auto& key : xml_elements::kPiece) {
    if (key.kind != model::KeyKind::Ignored) continue;
    const XMLElement* child = piece.FirstChildElement(key.spelling);
    const char* text = child == nullptr ? nullptr : child->GetText();
    if (text == nullptr || state_.piece.record.Extra_Pie == text) continue;
    report(rules::kNeverStored, Severity::Note, placeOf(*child),
           "\"" + std::string(key.spelling) + "\" is read and never stored; the field holds " +
               quoted(state_.piece.record.Extra_Pie) + " of \"holing_type\"",
           here, key.spelling);
  }
}

void XmlShadow::reportAbsent(const XMLElement& parent, const std::vector<Stayed>& stayed,
                             const Element& here) {
  std::vector<Stayed> missing;
  for (const Stayed& one : stayed) {
    const XMLElement* child = parent.FirstChildElement(one.value.key.c_str());
    if (child == nullptr) {
      missing.push_back(one);
      continue;
    }
    Finding& finding =
        report(rules::kEmptyElement, one.severity, placeOf(*child),
               "\"" + one.value.key + "\" has no text, which clears nothing: " + describe(here) +
                   " keeps " + quoted(one.value.value) + " of " + describe(one.value.element) +
                   " (" + placeText(one.value.place) + ")",
               here, one.value.key);
    finding.carried.push_back(one.value);
  }
  reportStayed(missing, here, placeOf(parent));
}

}  // namespace desk::check
