#include "bench/made_job.h"

#include "json/json_keys.h"
#include "xml/xml_elements.h"

namespace bench {
namespace {

using model::Key;
using model::KeyKind;

constexpr std::size_t kCodeBytes = 8;
constexpr int kWorkNames = 12;

/// Where an element stands in its job, counted from 0. Bars have no piece, pieces no work.
struct Place {
  int bar = 0;
  int piece = 0;
  int work = 0;
};

std::string integerOf(const std::string& key, const Place& place) {
  if (key == "BarNumber") return std::to_string(place.bar + 1);
  if (key == "PieceNumber") return std::to_string(place.piece % kPiecesPerBar + 1);
  if (key == "length" || key == "Length") return "6000";
  return std::to_string(40 + place.bar % 50);
}

/// A text that people write is long, all others are codes and measures.
std::string freeText(const std::string& key, int number) {
  const bool written =
      key == "Customer" || key == "Buyer" || key == "BuyAddress" || key == "project_addr";
  return (written ? "Made-up " + key : key.substr(0, kCodeBytes)) + " " + std::to_string(number);
}

std::string textOf(const std::string& key, const Place& place, const Shape& shape) {
  if (key == "Version") return json_keys::kVersion;
  if (key == "BarCode") return barCodeOf(place.piece);
  if (key == "Length") return std::to_string(300 + place.piece % 4000) + ".5";
  if (key == "sxB") return "90";
  if (key == "dxB") return place.piece % 2 == 0 ? "135" : "90";
  if (key == "Name" && shape.distinctWorks) {
    return "Work " + std::to_string(place.piece * kWorksPerPiece + place.work);
  }
  if (key == "Name") return "Work " + std::to_string((place.piece + place.work) % kWorkNames);
  return freeText(key, place.piece);
}

std::string numberOf(const Place& place) {
  return std::to_string(place.piece % 1000 + 100 * place.work) + ".25";
}

std::string jsonValue(const char* key, KeyKind kind, const Place& place, const Shape& shape) {
  switch (kind) {
    case KeyKind::IntegerText:
    case KeyKind::Integer:
      return integerOf(key, place);
    case KeyKind::Number:
      return numberOf(place);
    case KeyKind::Flag:
      return "true";
    default:
      return '"' + textOf(key, place, shape) + '"';
  }
}

class JsonWriter {
 public:
  explicit JsonWriter(const Shape& shape) : shape_(shape) {}

  std::string job() {
    text_ = "{";
    members(json_keys::kHeader, {});
    open(shape_.secondSpelling ? json_keys::kBarsSecond : json_keys::kBars, '[');
    for (int bar = 0; bar * kPiecesPerBar < shape_.pieces; ++bar) addBar(bar);
    close("]}");
    return text_;
  }

 private:
  void addBar(int bar) {
    text_ += '{';
    members(json_keys::kBar, {bar, bar * kPiecesPerBar});
    open(json_keys::kPieces, '[');
    for (int i = 0; i < kPiecesPerBar; ++i) addPiece({bar, bar * kPiecesPerBar + i});
    close("]},");
  }

  void addPiece(const Place& place) {
    text_ += '{';
    members(json_keys::kPiece, place);
    for (const json_keys::LabelKey& key : json_keys::kLabelFields) {
      member(shape_.secondSpelling ? key.secondSpelling : key.spelling,
             '"' + textOf(key.spelling, place, shape_) + '"');
    }
    open(json_keys::kCutOfPiece, '{');
    members(json_keys::kCut, place);
    close("},");
    open(json_keys::kWorks, '[');
    for (int work = 0; work < kWorksPerPiece; ++work) {
      text_ += '{';
      members(json_keys::kWork, {place.bar, place.piece, work});
      close("},");
    }
    close("]},");
  }

  template <class Record, std::size_t count>
  void members(const Key<Record> (&keys)[count], const Place& place) {
    for (const Key<Record>& key : keys) {
      const bool second = shape_.secondSpelling && key.secondSpelling != nullptr;
      member(second ? key.secondSpelling : key.spelling,
             jsonValue(key.spelling, key.kind, place, shape_));
    }
  }

  void member(const char* key, const std::string& value) {
    text_.append(1, '"').append(key).append("\": ").append(value).append(", ");
  }

  void open(const char* key, char bracket) {
    text_.append(1, '"').append(key).append("\": ").append(1, bracket);
  }

  /// Drops the separator behind the last member or element, then ends the list.
  void close(const char* end) {
    text_.erase(text_.find_last_not_of(", ") + 1);
    text_ += end;
  }

  const Shape& shape_;
  std::string text_;
};

class XmlWriter {
 public:
  explicit XmlWriter(const Shape& shape) : shape_(shape) {}

  std::string job() {
    text_ = "<Job>\n";
    if (!shape_.headerLast) elements(xml_elements::kHeader, {});
    for (int bar = 0; bar * kPiecesPerBar < shape_.pieces; ++bar) addBar(bar);
    if (shape_.headerLast) elements(xml_elements::kHeader, {});
    return text_ + "</Job>\n";
  }

 private:
  void addBar(int bar) {
    text_ += "<Bar>\n";
    elements(xml_elements::kBar, {bar, bar * kPiecesPerBar});
    for (int i = 0; i < kPiecesPerBar; ++i) addPiece({bar, bar * kPiecesPerBar + i});
    text_ += "</Bar>\n";
  }

  void addPiece(const Place& place) {
    text_ += "<Piece>\n";
    elements(xml_elements::kPiece, place, 0, xml_elements::kPieceRowsBeforeCuts);
    text_ += "<Cut>";
    elements(xml_elements::kCut, place);
    text_ += "</Cut>\n";
    elements(xml_elements::kPiece, place, xml_elements::kPieceRowsBeforeCuts);
    for (int work = 0; work < kWorksPerPiece; ++work) {
      text_ += "<Work>";
      elements(xml_elements::kWork, {place.bar, place.piece, work});
      text_ += "</Work>\n";
    }
    text_ += "</Piece>\n";
  }

  template <class Record, std::size_t count>
  void elements(const Key<Record> (&keys)[count], const Place& place, std::size_t from = 0,
                std::size_t to = count) {
    for (std::size_t i = from; i < to; ++i) {
      const std::string name = keys[i].spelling;
      text_.append("<").append(name).append(">").append(valueOf(name, keys[i].kind, place));
      text_.append("</").append(name).append(">\n");
    }
  }

  std::string valueOf(const std::string& name, KeyKind kind, const Place& place) const {
    if (kind == KeyKind::Number) return numberOf(place);
    const bool number = name == "BarNumber" || name == "PieceNumber" || name == "MaxY" ||
                        name == "MaxZ" || name == "LeftLength" || name == "Num";
    return number ? integerOf(name, place) : textOf(name, place, shape_);
  }

  const Shape& shape_;
  std::string text_;
};

}  // namespace

std::string jsonJob(const Shape& shape) {
  return JsonWriter(shape).job();
}

std::string xmlJob(const Shape& shape) {
  return XmlWriter(shape).job();
}

std::string barCodeOf(int piece) {
  return "PC" + std::to_string(10000000 + piece);
}

}  // namespace bench
