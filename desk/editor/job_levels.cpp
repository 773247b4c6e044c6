#include "desk/editor/job_levels.h"

#include <iterator>
#include <stdexcept>

#include "json/json_keys.h"
#include "model/job_format.h"
#include "xml/xml_elements.h"

namespace desk::editor {

namespace {

using model::JobFormat;

/// Whether XML jobs reach this row value. get_hole answers for JSON jobs only, and get_cut takes
/// three values from the JSON reader whatever the job.
bool answersXml(const std::string& row) {
  return row.rfind("get_hole ", 0) != 0 && row != "get_cut Height" && row != "get_cut BarCode" &&
         row != "get_cut MaterialCount";
}

/// " Scripts: get_cut BarName, ...", or nothing.
std::string scriptsText(const std::string& answers, JobFormat format) {
  std::string text;
  for (std::size_t begin = 0; begin < answers.size();) {
    std::size_t end = answers.find(", ", begin);
    if (end == std::string::npos) end = answers.size();
    const std::string row = answers.substr(begin, end - begin);
    if (format == JobFormat::Json || answersXml(row)) {
      text += (text.empty() ? " Scripts: " : ", ") + row;
    }
    begin = end + 2;
  }
  return text.empty() ? text : text + ".";
}

template <class Record, std::size_t count>
WrittenKey written(const model::Key<Record>& key, const FieldNote<Record> (&notes)[count],
                   JobFormat format) {
  using model::KeyKind;
  if (key.kind == KeyKind::Required) return {key.spelling, key.kind, TextForm::Any, kRequiredNote};
  if (key.kind == KeyKind::Ignored) return {key.spelling, key.kind, TextForm::Any, kIgnoredNote};
  for (const FieldNote<Record>& note : notes) {
    if (note.field != fieldOf(key)) continue;
    return {key.spelling, key.kind, note.form, note.text + scriptsText(note.answers, format)};
  }
  throw std::logic_error(std::string("nothing describes the key ") + key.spelling);
}

template <class Record, std::size_t keyCount, std::size_t noteCount>
Level level(const char* name, const char* description, const model::Key<Record> (&keys)[keyCount],
            const FieldNote<Record> (&notes)[noteCount], JobFormat format) {
  Level made{name, description, {}};
  for (const model::Key<Record>& key : keys) made.keys.push_back(written(key, notes, format));
  return made;
}

/// Adds what holds for a key in one format only.
void addWords(Level& level, const char* name, const char* words) {
  for (WrittenKey& key : level.keys) {
    if (key.name == name) key.description += words;
  }
}

constexpr char kHeaderText[] = "A cutting job.";
constexpr char kBarText[] = "A raw bar that pieces are cut from.";
constexpr char kPieceText[] = "A piece cut from its bar.";
constexpr char kCutText[] = "The cut of a piece.";
constexpr char kWorkText[] = "One machining operation on a piece.";

}  // namespace

JobLevels jsonLevels() {
  using namespace json_keys;
  constexpr JobFormat kJson = JobFormat::Json;
  JobLevels levels{level("header", kHeaderText, kHeader, kHeaderNotes, kJson),
                   level("bar", kBarText, kBar, kBarNotes, kJson),
                   level("piece", kPieceText, kPiece, kPieceNotes, kJson),
                   level("cut", kCutText, kCut, kCutNotes, kJson),
                   level("work", kWorkText, kWork, kWorkNotes, kJson)};
  for (std::size_t i = 0; i < std::size(kLabelFields); ++i) {
    levels.piece.keys.push_back({kLabelFields[i].spelling, model::KeyKind::Text, TextForm::Any,
                                 kLabelNote + std::to_string(i + 1) + "."});
  }
  addWords(levels.cut, "dxB", " \"135\" is stored as \"45\".");
  addWords(levels.piece, "PieceNumber",
           " With the number of the bar it finds the barcode for get_cut.");
  return levels;
}

JobLevels xmlLevels() {
  using namespace xml_elements;
  constexpr JobFormat kXml = JobFormat::Xml;
  return {level("header", kHeaderText, kHeader, kHeaderNotes, kXml),
          level("bar", kBarText, kBar, kBarNotes, kXml),
          level("piece", kPieceText, kPiece, kPieceNotes, kXml),
          level("cut", kCutText, kCut, kCutNotes, kXml),
          level("work", kWorkText, kWork, kWorkNotes, kXml)};
}

}  // namespace desk::editor
