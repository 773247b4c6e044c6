#include "desk/editor/job_levels.h"

#include <iterator>

#include "desk/base/text.h"
#include "desk/editor/answers.h"
#include "json/json_keys.h"
#include "model/job_format.h"
#include "xml/xml_elements.h"

namespace desk::editor {

namespace {

using model::JobFormat;
using model::Key;
using model::KeyKind;
using model::Note;

/// The note of an element: its own, or that of the JSON key that fills the same field; null when it
/// has neither.
template <class Record, std::size_t count>
constexpr const Note* noteOf(const xml_elements::Element<Record>& element,
                             const model::DescribedKey<Record> (&jsonRows)[count]) {
  if (element.note.text != nullptr) return &element.note;
  for (const model::DescribedKey<Record>& row : jsonRows) {
    if (model::fillSameField(row.key, element.key)) return &row.note;
  }
  return nullptr;
}

template <class Record, std::size_t count, std::size_t jsonCount>
constexpr bool areDescribed(const xml_elements::Element<Record> (&elements)[count],
                            const model::DescribedKey<Record> (&jsonRows)[jsonCount]) {
  for (const xml_elements::Element<Record>& element : elements) {
    // Reading a note that is not there does not compile.
    if (*noteOf(element, jsonRows)->text == '\0') return false;
  }
  return true;
}
static_assert(areDescribed(xml_elements::kHeaderRows, json_keys::kHeaderRows) &&
                  areDescribed(xml_elements::kBarRows, json_keys::kBarRows) &&
                  areDescribed(xml_elements::kPieceRows, json_keys::kPieceRows) &&
                  areDescribed(xml_elements::kCutRows, json_keys::kCutRows) &&
                  areDescribed(xml_elements::kWorkRows, json_keys::kWorkRows),
              "an element without a JSON key of the same field says itself what it is for");

template <class Record>
std::vector<std::string> answersOf(const Key<Record>& key, const Answers& answers) {
  switch (key.kind) {
    case KeyKind::Text:
    case KeyKind::IntegerText:
      return answers.of(key.field.text);
    case KeyKind::Integer:
    case KeyKind::Number:
      return answers.of(key.field.number);
    case KeyKind::Flag:
      return answers.of(key.field.flag);
    case KeyKind::Required:
    case KeyKind::Ignored:
      break;
  }
  return {};
}

std::string textOf(const char* text) {
  return text == nullptr ? "" : text;
}

template <class Record>
WrittenKey written(const Key<Record>& key, const Note& note, const char* addition,
                   const Answers& answers) {
  return {key.spelling,
          textOf(key.secondSpelling),
          key.kind,
          note.form,
          note.need == model::Need::Always,
          note.text,
          answersOf(key, answers),
          textOf(addition)};
}

Level levelOf(model::Level level) {
  const model::LevelRow& row = model::kLevels[static_cast<std::size_t>(level)];
  return {row.name, row.text, {}, {}};
}

template <class Record, std::size_t count>
Level jsonLevel(model::Level level, const model::DescribedKey<Record> (&rows)[count],
                const Answers& answers) {
  Level made = levelOf(level);
  for (const auto& row : rows) {
    made.keys.push_back(written(row.key, row.note, row.note.addition, answers));
  }
  return made;
}

template <class Record, std::size_t count, std::size_t jsonCount>
Level xmlLevel(model::Level level, const xml_elements::Element<Record> (&elements)[count],
               const model::DescribedKey<Record> (&jsonRows)[jsonCount], const Answers& answers) {
  Level made = levelOf(level);
  for (const auto& element : elements) {
    const Note& note = *noteOf(element, jsonRows);
    made.keys.push_back(written(element.key, note, element.note.addition, answers));
  }
  return made;
}

}  // namespace

std::string WrittenKey::description() const {
  std::string scripts;
  for (const std::string& answer : answers) {
    scripts += (scripts.empty() ? " Scripts: " : ", ") + answer;
  }
  if (!scripts.empty()) scripts += ".";
  return text + scripts + (addition.empty() ? "" : " " + addition);
}

std::string patternOf(model::TextForm form) {
  switch (form) {
    case model::TextForm::Any:
      break;
    case model::TextForm::Unit:
      return joined({std::begin(model::kMillimetres), std::end(model::kMillimetres)}, "|");
    case model::TextForm::Count:
      return "[0-9]+";
    case model::TextForm::Measure:
      return R"([0-9]+(\.[0-9]+)?)";
    case model::TextForm::Size:
      return R"([0-9]*[1-9][0-9]*(\.[0-9]+)?|0+\.[0-9]*[1-9][0-9]*)";
    case model::TextForm::Angle:
      return R"(0*([1-9][0-9]?|1[0-7][0-9])(\.[0-9]+)?|0+\.[0-9]*[1-9][0-9]*)";
    case model::TextForm::Side:
      return R"([0-6](\.0+)?)";
  }
  return "";
}

JobLevels jsonLevels() {
  using namespace json_keys;
  using model::Level;
  const Answers answers(JobFormat::Json);
  JobLevels levels{
      jsonLevel(Level::Header, kHeaderRows, answers), jsonLevel(Level::Bar, kBarRows, answers),
      jsonLevel(Level::Piece, kPieceRows, answers), jsonLevel(Level::Cut, kCutRows, answers),
      jsonLevel(Level::Work, kWorkRows, answers)};
  auto& [header, bar, piece, cut, work] = levels;
  int number = 0;
  // the lower-case spelling of a label key fills another field
  for (const LabelKey& key : kLabelFields) {
    piece.keys.push_back({key.spelling,
                          "",
                          KeyKind::Text,
                          model::TextForm::Any,
                          true,
                          kLabelNote + std::to_string(++number) + ".",
                          {},
                          ""});
  }
  header.children = {{kBars, kBarsSecond, bar.name, true, "The bars, in the order of cutting."}};
  bar.children = {
      {kPieces, "", piece.name, true, "The pieces of the bar, in the order of cutting."}};
  piece.children = {{kCutOfPiece, "", cut.name, false, "The cut of the piece."},
                    {kWorks, "", work.name, true, "The works on the piece."}};
  return levels;
}

JobLevels xmlLevels() {
  using model::Level;
  namespace xml = xml_elements;
  const Answers answers(JobFormat::Xml);
  return {xmlLevel(Level::Header, xml::kHeaderRows, json_keys::kHeaderRows, answers),
          xmlLevel(Level::Bar, xml::kBarRows, json_keys::kBarRows, answers),
          xmlLevel(Level::Piece, xml::kPieceRows, json_keys::kPieceRows, answers),
          xmlLevel(Level::Cut, xml::kCutRows, json_keys::kCutRows, answers),
          xmlLevel(Level::Work, xml::kWorkRows, json_keys::kWorkRows, answers)};
}

}  // namespace desk::editor
