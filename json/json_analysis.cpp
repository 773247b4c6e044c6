#include "json/json_analysis.h"

#include <iostream>

#include "host/cbl.h"
#include "json/json_reading.h"

namespace json_reading {

int Unwatched::failed(const char* level, int code) {
  std::cout << level << " error............." << std::endl;
  return code;
}

template class Reading<Unwatched>;

}  // namespace json_reading

namespace {

using json_reading::Unwatched;

json_reading::Reading<Unwatched> readingInto(JsonAnalysis& reader) {
  static Unwatched nobody;
  return {reader, nobody};
}

}  // namespace

JsonAnalysis::JsonAnalysis() = default;

int JsonAnalysis::jsonAnalysis(std::string path) {
  Json::Value root;
  if (cbl::loadJsonFile(path, root, false) < 0) {
    return Unwatched().failed("read File", json_reading::kNoFile);
  }
  const int code = readingInto(*this).data(root);
  return code >= 0 ? json_reading::kDone : Unwatched().failed("analysis json", code);
}

int JsonAnalysis::analysisData(Json::Value root) {
  return readingInto(*this).data(root);
}

int JsonAnalysis::analysisBar(Json::Value bars, std::string version) {
  return readingInto(*this).bars(bars, version);
}

int JsonAnalysis::analysisPiece(Json::Value pieces, std::string version) {
  return readingInto(*this).pieces(pieces, version);
}

int JsonAnalysis::analysisField(Json::Value piece, std::string version) {
  return readingInto(*this).fields(piece, version);
}

int JsonAnalysis::analysisCut(Json::Value piece, std::string version) {
  const Json::Value* cut =
      json_reading::child(piece, json_keys::kCutOfPiece, &Json::Value::isObject);
  return readingInto(*this).cut(cut, version);
}

int JsonAnalysis::analysisWork(Json::Value works, std::string version) {
  return readingInto(*this).works(works, version);
}
