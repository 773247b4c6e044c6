#include "json/json_analysis.h"

#include <iostream>

#include "host/cbl.h"
#include "json/json_keys.h"
#include "json/json_values.h"
#include "model/assembly.h"

namespace {

using model::Key;

enum ResultCode {
  kDone = 0,
  kNoFile = -2,
  kNoHeader = -3,
  kNoBar = -4,
  kNoPiece = -5,
  kNoWork = -6
};

/// Reports the failure of one level, on the way up.
int failed(const char* level, int code) {
  std::cout << level << " error............." << std::endl;
  return code;
}

/// Fills a record from the keys of an object. What is no object has no keys.
template <class Record, std::size_t count>
void readKeys(const Json::Value& object, const Key<Record> (&keys)[count], Record& record) {
  if (!object.isObject()) return;
  for (const Key<Record>& key : keys) {
    if (const Json::Value& value = object[key.spelling]; json_keys::isOfKind(value, key.kind)) {
      json_keys::store(value, key, record);
    } else if (key.secondSpelling != nullptr) {
      const Json::Value& second = object[key.secondSpelling];
      if (json_keys::isOfKind(second, key.kind)) json_keys::store(second, key, record);
    }
  }
}

using TypeTest = bool (Json::Value::*)() const;

/// The value of a key, null where it is absent or fails the test, or where `object` is no object.
const Json::Value* child(const Json::Value& object, const char* key, TypeTest isWanted) {
  if (!object.isObject()) return nullptr;
  const Json::Value& value = object[key];
  return (value.*isWanted)() ? &value : nullptr;
}

bool declaresVersion1(const Json::Value& root) {
  if (!root.isObject()) return false;
  const Json::Value version1(json_keys::kVersion);
  return root["Version"] == version1 || root["version"] == version1;
}

/// How many elements an array has.
std::size_t sizeOf(const Json::Value& array) {
  std::size_t size = 0;
  for (auto element = array.begin(); element != array.end(); ++element) ++size;
  return size;
}

bool hasLabelFields(const Json::Value& piece) {
  const json_keys::LabelKey& first = json_keys::kLabelFields[0];
  return child(piece, first.spelling, &Json::Value::isString) != nullptr ||
         child(piece, first.secondSpelling, &Json::Value::isString) != nullptr;
}

}  // namespace

JsonAnalysis::JsonAnalysis() = default;

int JsonAnalysis::jsonAnalysis(std::string path) {
  Json::Value root;
  if (cbl::loadJsonFile(path, root, false) < 0) return failed("read File", kNoFile);
  const int code = readData(root);
  return code >= 0 ? kDone : failed("analysis json", code);
}

int JsonAnalysis::analysisData(Json::Value root) {
  return readData(root);
}

int JsonAnalysis::analysisBar(Json::Value bars, std::string version) {
  return readBars(bars, version);
}

int JsonAnalysis::analysisPiece(Json::Value pieces, std::string version) {
  return readPieces(pieces, version);
}

int JsonAnalysis::analysisField(Json::Value piece, std::string version) {
  return readFields(piece, version);
}

int JsonAnalysis::analysisCut(Json::Value piece, std::string version) {
  return readCut(child(piece, json_keys::kCutOfPiece, &Json::Value::isObject), version);
}

int JsonAnalysis::analysisWork(Json::Value works, std::string version) {
  return readWorks(works, version);
}

int JsonAnalysis::readData(const Json::Value& root) {
  data.Bar.clear();
  if (!declaresVersion1(root)) return kNoHeader;
  readKeys(root, json_keys::kHeader, data);
  // kept: the test above looks at both spellings, the version handed down is the one just stored
  const Json::Value* bars = child(root, json_keys::kBars, &Json::Value::isArray);
  if (bars == nullptr) bars = child(root, json_keys::kBarsSecond, &Json::Value::isArray);
  if (bars == nullptr) return kDone;
  const int code = readBars(*bars, data.Version);
  return code >= 0 ? kDone : failed("analysis bar", code);
}

int JsonAnalysis::readBars(const Json::Value& bars, const std::string& version) {
  if (version != json_keys::kVersion) return kNoBar;
  return model::dropOnThrow(curBar.piece, [&] {
    data.Bar.reserve(data.Bar.size() + sizeOf(bars));
    for (const Json::Value& bar : bars) {
      if (const int code = readBar(bar); code < 0) return code;
    }
    return int{kDone};
  });
}

int JsonAnalysis::readBar(const Json::Value& bar) {
  readKeys(bar, json_keys::kBar, curBar);
  if (const Json::Value* pieces = child(bar, json_keys::kPieces, &Json::Value::isArray)) {
    const int code = readPieces(*pieces, data.Version);
    if (code < 0) return failed("analysis piece", code);
  }
  model::appendFinished(data.Bar, curBar, &BAR_T::piece);
  return kDone;
}

int JsonAnalysis::readPieces(const Json::Value& pieces, const std::string& version) {
  if (version != json_keys::kVersion) return kNoPiece;
  return model::dropOnThrow(curPiece.work, [&] {
    curBar.piece.reserve(curBar.piece.size() + sizeOf(pieces));
    for (const Json::Value& piece : pieces) {
      if (const int code = readPiece(piece); code < 0) return code;
    }
    return int{kDone};
  });
}

int JsonAnalysis::readPiece(const Json::Value& piece) {
  readKeys(piece, json_keys::kPiece, curPiece);

  if (hasLabelFields(piece)) {
    const int code = readFields(piece, data.Version);
    if (code < 0) return failed("analysis field", code);
    curPiece.Fields = curField;
  }

  if (const Json::Value* cut = child(piece, json_keys::kCutOfPiece, &Json::Value::isObject)) {
    const int code = readCut(cut, data.Version);
    if (code < 0) return failed("analysis cut", code);
  }
  // kept: a piece without a cut carries the cut of the piece before it
  curPiece.Length = curCut.Length;
  curPiece.sxB = curCut.sxB;
  curPiece.dxB = curCut.dxB;

  if (const Json::Value* works = child(piece, json_keys::kWorks, &Json::Value::isArray)) {
    const int code = readWorks(*works, data.Version);
    if (code < 0) return failed("analysis work", code);
  }
  model::appendFinished(curBar.piece, curPiece, &PIECE_T::work);
  return kDone;
}

int JsonAnalysis::readFields(const Json::Value& piece, const std::string& version) {
  if (version != json_keys::kVersion || !piece.isObject()) return kDone;
  for (const json_keys::LabelKey& key : json_keys::kLabelFields) {
    if (const Json::Value& text = piece[key.spelling]; text.isString()) {
      curField.*key.field = text.asString();
    } else if (const Json::Value& second = piece[key.secondSpelling]; second.isString()) {
      curField.*key.secondField = second.asString();
    }
  }
  return kDone;
}

int JsonAnalysis::readCut(const Json::Value* cut, const std::string& version) {
  if (version != json_keys::kVersion) return kDone;
  if (cut != nullptr) readKeys(*cut, json_keys::kCut, curCut);
  // kept: the saw's right head counts a mitre of 135 degrees as 45
  if (curCut.dxB == "135") curCut.dxB = "45";
  return kDone;
}

int JsonAnalysis::readWorks(const Json::Value& works, const std::string& version) {
  if (version != json_keys::kVersion) return kNoWork;
  for (const Json::Value& work : works) {
    readKeys(work, json_keys::kWork, curWork);
    curPiece.work.push_back(curWork);
  }
  return kDone;
}
