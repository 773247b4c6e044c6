#include "desk/check/mending.h"

#include <tinyxml2.h>

#include <algorithm>
#include <set>
#include <tuple>

#include "desk/base/text.h"
#include "desk/check/advice.h"
#include "desk/job/rules.h"
#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace desk::check {

namespace {

using tinyxml2::XMLElement;

/// The object of an element; null where the document has none there.
Json::Value* objectAt(Json::Value& root, const Element& element) {
  Json::Value* object = &root;
  const auto descend = [&](const char* key, int number) {
    const auto index = static_cast<Json::ArrayIndex>(number - 1);
    if (object == nullptr || number == 0) return;
    const bool isThere = object->isObject() && object->isMember(key) && (*object)[key].isArray() &&
                         index < (*object)[key].size() && (*object)[key][index].isObject();
    object = isThere ? &(*object)[key][index] : nullptr;
  };
  const bool isFirst = root.isObject() && root.isMember(json_keys::kBars);
  descend(isFirst ? json_keys::kBars : json_keys::kBarsSecond, element.bar);
  descend(json_keys::kPieces, element.piece);
  return object != nullptr && object->isObject() ? object : nullptr;
}

bool rename(Json::Value& root, const Mend& mend) {
  Json::Value* const object = objectAt(root, mend.element);
  if (object == nullptr || object->isMember(mend.meant) || !object->isMember(mend.name))
    return false;
  const bool isCut = mend.meant == json_keys::kCutOfPiece;
  const Json::Value& value = (*object)[mend.name];
  if (isCut ? !value.isObject() : !value.isArray()) return false;
  Json::Value moved;
  object->removeMember(mend.name, &moved);
  (*object)[mend.meant] = moved;
  return true;
}

XMLElement* childAt(XMLElement* parent, const char* name, int number) {
  if (parent == nullptr || number == 0) return parent;
  XMLElement* child = parent->FirstChildElement(name);
  while (child != nullptr && --number > 0) child = child->NextSiblingElement(name);
  return child;
}

/// The level that a name leads to.
model::Level levelOf(const std::string& name) {
  using namespace xml_elements;
  return name == kBars     ? model::Level::Bar
         : name == kPieces ? model::Level::Piece
         : name == kCuts   ? model::Level::Cut
                           : model::Level::Work;
}

bool rename(XMLElement& root, const Mend& mend) {
  using namespace xml_elements;
  XMLElement* const bar = childAt(&root, kBars, mend.element.bar);
  XMLElement* const parent = childAt(bar, kPieces, mend.element.piece);
  if (parent == nullptr || parent->FirstChildElement(mend.meant.c_str()) != nullptr) return false;
  const auto& inside = namesAt(levelOf(mend.meant), model::JobFormat::Xml);
  for (const XMLElement* one = parent->FirstChildElement(mend.name.c_str()); one != nullptr;
       one = one->NextSiblingElement(mend.name.c_str())) {
    const XMLElement* const first = one->FirstChildElement();
    if (first == nullptr || !contains(inside, first->Name())) return false;
  }
  bool isDone = false;
  while (XMLElement* one = parent->FirstChildElement(mend.name.c_str())) {
    one->SetName(mend.meant.c_str());
    isDone = true;
  }
  return isDone;
}

template <class Root>
std::vector<Mend> mendAll(Root& root, Findings& findings, std::size_t from) {
  std::vector<Mend> mends;
  const auto isKnown = [&](const Mend& wanted) {
    for (auto last = mends.rbegin(); last != mends.rend(); ++last) {
      if (!(last->element == wanted.element)) return false;
      if (last->name == wanted.name) return true;
    }
    return false;
  };
  for (std::size_t i = from; i < findings.size(); ++i) {
    Finding& finding = findings[i];
    if (finding.rule != rules::kUnknownKey || !leadsOn(finding.loses)) continue;
    const Mend mend{finding.element, finding.key, finding.loses};
    if (!isKnown(mend)) {
      if (!rename(root, mend)) continue;
      mends.push_back(mend);
    }
    finding.message += " What is in it is checked as if it were";
  }
  return mends;
}

bool isInside(const Element& inner, const Element& outer) {
  return (outer.bar == 0 || inner.bar == outer.bar) &&
         (outer.piece == 0 || inner.piece == outer.piece);
}

}  // namespace

std::vector<Mend> mend(Json::Value& root, Findings& findings, std::size_t from) {
  return mendAll(root, findings, from);
}

std::vector<Mend> mend(XMLElement& root, Findings& findings, std::size_t from) {
  return mendAll(root, findings, from);
}

void addMended(Findings& findings, std::size_t from, const Findings& mended,
               const std::vector<Mend>& mends) {
  using Told = std::tuple<std::string, int, int, std::string>;
  const auto toldOf = [](const Finding& one) {
    return Told{one.rule, one.place.at.line, one.place.at.column, one.message};
  };
  std::set<Told> known;
  for (std::size_t i = from; i < findings.size(); ++i) known.insert(toldOf(findings[i]));
  for (const Finding& one : mended) {
    const bool isInMended = std::any_of(mends.begin(), mends.end(), [&](const Mend& candidate) {
      return isInside(one.element, candidate.element);
    });
    if (!isInMended || known.count(toldOf(one)) > 0) continue;
    findings.push_back(one);
    if (!one.isOnceMended) findings.back().message += " (once mended)";
    findings.back().isOnceMended = true;
  }
}

}  // namespace desk::check
