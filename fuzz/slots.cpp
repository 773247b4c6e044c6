#include "fuzz/slots.h"

#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace fuzzing {
namespace {

/// What stands around the members of one level, so that the job is whole without them.
struct Level {
  std::string open, close;
};

const Level kJsonHeader = {R"({"Version":"1.0",)", "}"};
const Level kJsonBar = {R"({"Version":"1.0","Bar":[{"piece":[],"BarNumber":1,"MaxY":60,"MaxZ":70,)",
                        R"(},{"piece":[{"BarCode":"next"}]}]})"};
const Level kJsonPiece = {
    R"({"Version":"1.0","Bar":[{"BarNumber":1,"MaxY":60,"MaxZ":70,"piece":[{"BarCode":"a",)"
    R"("cut":{"Length":"900"},"work":[{"Name":"drain"}],)",
    R"(},{"BarCode":"next"}]}]})"};
const Level kJsonCut = {kJsonPiece.open + R"("cut":{"Length":"900",)", "}" + kJsonPiece.close};
const Level kJsonWork = {kJsonPiece.open + R"("work":[{"Name":"lock",)",
                         R"(},{"Name":"next"}])" + kJsonPiece.close};

const std::string kXmlNumbers =
    "<ProfiLav>1</ProfiLav><PositionX>1</PositionX><PositionY>2</PositionY>"
    "<PositionZ>3</PositionZ>";
const Level kXmlRoot = {"<Job>", "<Version>1.0</Version></Job>"};
const Level kXmlBar = {"<Job><Version>1.0</Version><Bar>",
                       "<BarNumber>1</BarNumber><MaxY>60</MaxY><MaxZ>70</MaxZ></Bar></Job>"};
const Level kXmlPiece = {
    "<Job><Version>1.0</Version><Bar><MaxY>60</MaxY><MaxZ>70</MaxZ><Piece>",
    "<BarCode>a</BarCode><CtrsZ>0</CtrsZ><Cut><Length>900</Length></Cut><Work><Name>drain</Name>" +
        kXmlNumbers + "</Work></Piece></Bar></Job>"};
const Level kXmlCut = {kXmlPiece.open + "<Cut>", "</Cut>" + kXmlPiece.close};
const Level kXmlWork = {kXmlPiece.open + "<Work>", kXmlNumbers + "</Work>" + kXmlPiece.close};

void addKey(std::vector<Slot>& slots, const Level& level, const char* key) {
  if (key != nullptr) slots.push_back({level.open + "\"" + key + "\":", level.close});
}

template <class Row, std::size_t count>
void addJsonLevel(std::vector<Slot>& slots, const Level& level, const Row (&rows)[count]) {
  slots.push_back({level.open, level.close});
  for (const Row& row : rows) {
    addKey(slots, level, row.spelling);
    addKey(slots, level, row.secondSpelling);
  }
}

template <class Row, std::size_t count>
void addXmlLevel(std::vector<Slot>& slots, const Level& level, const Row (&rows)[count]) {
  slots.push_back({level.open, level.close});
  for (const Row& row : rows) {
    const std::string name = row.spelling;
    slots.push_back({level.open + "<" + name + ">", "</" + name + ">" + level.close});
  }
}

std::vector<Slot> makeJsonSlots() {
  std::vector<Slot> slots = {{"", ""}};
  addJsonLevel(slots, kJsonHeader, json_keys::kHeader);
  addJsonLevel(slots, kJsonBar, json_keys::kBar);
  addJsonLevel(slots, kJsonPiece, json_keys::kPiece);
  addJsonLevel(slots, kJsonPiece, json_keys::kLabelFields);
  addJsonLevel(slots, kJsonCut, json_keys::kCut);
  addJsonLevel(slots, kJsonWork, json_keys::kWork);
  const std::string quote = "\":";
  for (const char* key : {json_keys::kBars, json_keys::kBarsSecond}) {
    addKey(slots, kJsonHeader, key);
    slots.push_back({kJsonHeader.open + "\"" + key + quote + "[", "]" + kJsonHeader.close});
  }
  addKey(slots, kJsonBar, json_keys::kPieces);
  slots.push_back({kJsonBar.open + "\"" + json_keys::kPieces + quote + "[", "]" + kJsonBar.close});
  addKey(slots, kJsonPiece, json_keys::kCutOfPiece);
  addKey(slots, kJsonPiece, json_keys::kWorks);
  slots.push_back(
      {kJsonPiece.open + "\"" + json_keys::kWorks + quote + "[", "]" + kJsonPiece.close});
  return slots;
}

std::vector<Slot> makeXmlSlots() {
  std::vector<Slot> slots = {{"", ""}};
  addXmlLevel(slots, kXmlRoot, xml_elements::kHeader);
  addXmlLevel(slots, kXmlBar, xml_elements::kBar);
  addXmlLevel(slots, kXmlPiece, xml_elements::kPiece);
  addXmlLevel(slots, kXmlCut, xml_elements::kCut);
  addXmlLevel(slots, kXmlWork, xml_elements::kWork);
  return slots;
}

}  // namespace

const std::vector<Slot>& jsonSlots() {
  static const std::vector<Slot> slots = makeJsonSlots();
  return slots;
}

const std::vector<Slot>& xmlSlots() {
  static const std::vector<Slot> slots = makeXmlSlots();
  return slots;
}

}  // namespace fuzzing
