// The sentences of the XML watcher.
#include <tinyxml2.h>

#include <algorithm>
#include <string_view>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/check/job_rules.h"
#include "desk/check/xml_watcher.h"
#include "desk/job/measure.h"
#include "desk/job/rules.h"
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

/// A declaration of entities, in a document type or by itself: the library takes each for a node.
bool declaresEntity(const XMLNode& node) {
  return node.ToUnknown() != nullptr &&
         std::string_view(node.Value()).find("ENTITY") != std::string_view::npos;
}

/// Elements that lead to the next level; all others hold a value.
bool isLevel(std::string_view name) {
  using namespace xml_elements;
  return name == kBars || name == kPieces || name == kCuts || name == kWorks;
}

}  // namespace

Place XmlWatcher::placeOf(const XMLNode& node) const {
  return {file(), {node.GetLineNum(), 0}};
}

void XmlWatcher::reportRaised(const char* thrown) {
  const std::string name = "\"" + std::string(wanted_.name) + "\"";
  const char* const text = wanted_.child == nullptr ? nullptr : wanted_.child->GetText();
  const std::string raises =
      std::string(": loading raises \"") + thrown + "\" and nothing from here on is read";
  Finding& finding =
      text != nullptr
          ? report(rules::kRaises, Severity::Error, placeOf(*wanted_.child),
                   name + " is " + quoted(text) + ", " + refusalOf(text) + raises, wanted_.name)
          : report(rules::kMissingElement, Severity::Error,
                   placeOf(wanted_.child == nullptr ? *wanted_.parent : *wanted_.child),
                   describe(here()) + " has no text in " + name + raises, wanted_.name);
  finding.raises = Raises::Load;
  if (text == nullptr) finding.lacks.emplace_back(wanted_.name);
}

void XmlWatcher::reportNumber(const XMLElement& element, double number) {
  const Measure::Form form = measureOf(element.GetText()).form;
  const bool isComma = form == Measure::Form::DecimalComma;
  const bool isPoints = form == Measure::Form::Points;
  // What is no number at all is told of the job as a whole.
  if (!isComma && !isPoints && form != Measure::Form::Trailing) return;
  report(isComma    ? rules::kDecimalComma
         : isPoints ? rules::kThousandsPoint
                    : rules::kNotANumber,
         isComma || isPoints ? Severity::Error : Severity::Warning, placeOf(element),
         "\"" + std::string(element.Name()) + "\" is " + quoted(element.GetText()) +
             " and read as " + shortestText(number),
         element.Name());
}

void XmlWatcher::reportAround(const XMLNode& document) {
  bool hasEntities = false;
  for (const XMLNode* node = document.FirstChild(); node != nullptr; node = node->NextSibling()) {
    const std::string text = node->ToText() == nullptr ? "" : trimmed(node->Value());
    if (declaresEntity(*node)) {
      hasEntities = true;
      report(rules::kIgnoredText, Severity::Warning, placeOf(*node),
             "declared entities are not read: a text keeps their names");
    } else if (!text.empty() && !(hasEntities && text == "]>")) {
      report(rules::kIgnoredText, Severity::Warning, placeOf(*node),
             "the text " + quoted(text) + " outside of the root is not read");
    }
  }
}

void XmlWatcher::reportStrangers(const XMLElement& element, Level level) {
  reportAttributes(element);
  const std::vector<std::string>& names = namesAt(level, model::JobFormat::Xml);
  KeySet seen = 0;
  bool& repeats = repeats_[static_cast<std::size_t>(level)] = false;
  for (const XMLNode* child = element.FirstChild(); child != nullptr;
       child = child->NextSibling()) {
    if (child->ToText() != nullptr && !isBlank(child->Value())) {
      report(rules::kIgnoredText, Severity::Warning, placeOf(*child),
             "the text " + quoted(trimmed(child->Value())) + " in \"" + element.Name() +
                 "\" is not read",
             element.Name());
    }
    const XMLElement* inner = child->ToElement();
    if (inner == nullptr) continue;
    const std::string_view name = inner->Name();
    const auto known = std::find(names.begin(), names.end(), name);
    if (known == names.end()) {
      const Advice& advice = adviceFor(inner->Name(), level);
      report(rules::kUnknownKey, advice.severity, placeOf(*inner),
             quoted(inner->Name()) + " is no element of " + nameOf(level) + " and is ignored" +
                 advice.text,
             inner->Name())
          .loses = advice.meant;
    } else if (!isLevel(name)) {
      const KeySet bit = KeySet{1} << (known - names.begin());
      if ((seen & bit) == 0) reportValueContent(*inner, level);
      repeats = repeats || (seen & bit) != 0;
      seen |= bit;
    }
  }
}

void XmlWatcher::reportValueContent(const XMLElement& value, Level level) {
  const char* const taken = value.GetText();
  reportAttributes(value);
  for (const XMLNode* child = value.FirstChild(); child != nullptr; child = child->NextSibling()) {
    const bool isElement = child->ToElement() != nullptr;
    const bool isText = child->ToText() != nullptr && !isBlank(child->Value());
    if ((!isElement && !isText) || (isText && child->Value() == taken)) continue;
    const std::string what = isElement ? "the element " : "the text ";
    report(rules::kIgnoredText, severityOf(level, value.Name()), placeOf(*child),
           what + quoted(trimmed(child->Value())) + " in \"" + value.Name() +
               "\" is not read: a value ends where its first text ends",
           value.Name());
  }
}

void XmlWatcher::reportAttributes(const XMLElement& element) {
  for (const auto* attribute = element.FirstAttribute(); attribute != nullptr;
       attribute = attribute->Next()) {
    const std::string name = attribute->Name();
    if (name.rfind("xmlns", 0) == 0 || name.rfind("xsi:", 0) == 0) continue;
    report(rules::kAttribute, Severity::Warning, {file(), {attribute->GetLineNum(), 0}},
           "the attribute " + quoted(name) + " of \"" + element.Name() +
               "\" is not read; values are elements of their own",
           name);
  }
}

void XmlWatcher::reportRepeated(const XMLElement& first, Level level) {
  if (!repeats_[static_cast<std::size_t>(level)]) return;
  const char* const name = first.Name();
  const char* const taken = first.GetText();
  for (const XMLElement* next = first.NextSiblingElement(name); next != nullptr;
       next = next->NextSiblingElement(name)) {
    const char* const text = next->GetText();
    const bool isSame = taken != nullptr && text != nullptr && std::string_view(taken) == text;
    report(rules::kRepeatedElement, isSame ? Severity::Note : severityOf(level, name),
           placeOf(*next),
           "\"" + std::string(name) + "\" is ignored because only the first one counts (" +
               placeText(placeOf(first)) + (isSame ? "), which has the same text" : ")"),
           name);
  }
}

void XmlWatcher::reportRepeatedCut(const XMLElement& cut) {
  for (std::size_t i = 0; i < beforeCut_.size(); ++i) {
    const Origin& earlier = traced_.origins[beforeCut_[i]];
    if (earlier.place.file != file() || !(earlier.element == here())) continue;
    const std::string name = FieldsOf<CUT_T>::keys[i].spelling;
    const bool isKept = beforeCut_[i] == trace<CUT_T>()[i];
    const Place& other = isKept ? earlier.place : placeOf(cut);
    const std::string what =
        isKept ? "\"Cut\" lacks \"" + name + "\" and keeps" : "\"" + name + "\" is replaced by";
    report(rules::kRepeatedElement, Severity::Error, isKept ? placeOf(cut) : earlier.place,
           what + " that of another \"Cut\" of the same piece (" + placeText(other) + ")", name);
  }
}

void XmlWatcher::reportNeverStored(const XMLElement& piece) {
  for (const auto& key : xml_elements::kPiece) {
    if (key.kind != model::KeyKind::Ignored) continue;
    const XMLElement* child = piece.FirstChildElement(key.spelling);
    const char* text = child == nullptr ? nullptr : child->GetText();
    if (text == nullptr || reader_.curPiece.Extra_Pie == text) continue;
    const std::string field = quoted(reader_.curPiece.Extra_Pie);
    const XMLElement* filling = piece.FirstChildElement("holing_type");
    const bool isFilled = filling != nullptr && filling->GetText() != nullptr;
    report(rules::kNeverStored, Severity::Note, placeOf(*child),
           "\"" + std::string(key.spelling) + "\" is read and never stored; " +
               (isFilled ? "the field holds " + field + " of \"holing_type\""
                         : "the field is filled by \"holing_type\", which has no text, and keeps " +
                               field),
           key.spelling);
  }
}

void XmlWatcher::reportNever(Level level, const XMLElement& parent, KeySet keys) {
  KeySet empty = 0;
  for (unsigned bit = 0; keys >> bit != 0; ++bit) {
    if ((keys >> bit & 1) == 0) continue;
    const char* const name = spellingOf(bit, level, model::JobFormat::Xml);
    if (parent.FirstChildElement(name) != nullptr) empty |= KeySet{1} << bit;
  }
  missing_.add(level, empty, true, here(), placeOf(parent));
  missing_.add(level, keys & ~empty, false, here(), placeOf(parent));
}

void XmlWatcher::reportAbsent(Level level, const XMLElement& parent, const Absent& absent) {
  if (absent.never != 0) reportNever(level, parent, absent.never);
  std::vector<Stayed> missing;
  for (const Stayed& one : absent.stayed) {
    const XMLElement* child = parent.FirstChildElement(one.value.key.c_str());
    if (child == nullptr) {
      missing.push_back(one);
      continue;
    }
    Finding& finding =
        report(rules::kEmptyElement, one.severity, placeOf(*child),
               "\"" + one.value.key + "\" has no text, which clears nothing: " + describe(here()) +
                   " keeps " + quoted(one.value.value) + " of " + describe(one.value.element) +
                   " (" + placeText(one.value.place) + ")",
               one.value.key);
    finding.carried.push_back(one.value);
  }
  reportStayed(missing, placeOf(parent));
}

}  // namespace desk::check
