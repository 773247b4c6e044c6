#include "fuzz/query_checks.h"

namespace fuzzing {
namespace {

constexpr std::size_t kSamples = 6;

std::string textOf(const std::pair<std::string, WORK_T>& work) {
  return fuzzing::textOf(work.first) + fuzzing::textOf(work.second);
}

std::string textOfAllWorks(const std::list<std::pair<std::string, WORK_T>>& works) {
  std::string text;
  for (const auto& work : works) text += textOf(work) + "\n";
  return text;
}

/// The answer to one question; a finding when the plain walk answers differently.
template <class Answer, class Expected>
std::string ask(unsigned allowed, const char* query, Answer&& answer, Expected&& expected) {
  std::string got = outcomeOf(allowed, answer);
  require(got == outcomeOf(allowed, expected), query);
  return got;
}

/// The questions that both readers answer in the same way.
template <class Reader>
std::string askShared(Reader& reader) {
  const DATA_T& job = reader.data;
  std::string all = ask(
      kNone, "getAllWork", [&] { return textOfAllWorks(reader.getAllWork()); },
      [&] { return plain::works(job); });
  all += ask(
      kNone, "getPrint", [&] { return textOfAll(reader.getPrint()); },
      [&] { return plain::labels(job); });
  all += ask(
      kStod, "getHole", [&] { return textOfAll(reader.getHole()); },
      [&] { return plain::holes(job); });
  for (const std::string& number : someBarNumbers(job)) {
    all += ask(
        kNone, "getCut", [&] { return textOfAll(reader.getCut(number)); },
        [&] { return plain::cutsOf(job, number); });
  }
  return all;
}

template <class Reader>
std::string askByBarCode(Reader& reader) {
  std::string all;
  for (const std::string& code : someBarCodes(reader.data)) {
    all += ask(
        kNone, "getWork", [&] { return textOfAll(reader.getWork(code)); },
        [&] { return plain::worksOf(reader.data, code); });
    const auto dimensions = [&] {
      std::string y = "y", z = "z", length = "l";
      const std::string result = std::to_string(reader.getMaxYZ_Cutlength(code, y, z, length));
      return result + fuzzing::textOf(y) + fuzzing::textOf(z) + fuzzing::textOf(length);
    };
    all += ask(kNone, "getMaxYZ_Cutlength", dimensions,
               [&] { return plain::dimensions(reader.data, code); });
  }
  return all;
}

/// The barcode of the last piece with the numbers of the job's first one.
template <class Reader>
std::string askBarCode(Reader& reader) {
  std::string expected;
  const BAR_T* first = nullptr;
  for (const BAR_T& bar : reader.data.Bar) {
    if (first == nullptr && !bar.piece.empty()) first = &bar;
    if (first == nullptr || bar.BarNumber != first->BarNumber) continue;
    for (const PIECE_T& piece : bar.piece) {
      if (piece.PieceNumber == first->piece[0].PieceNumber) expected = piece.BarCode;
    }
  }
  if (first == nullptr) return reader.getBarCode("none", "0");
  std::string got = reader.getBarCode(first->BarNumber, first->piece[0].PieceNumber);
  require(got == expected, "getBarCode");
  return got;
}

}  // namespace

std::set<std::string> someBarCodes(const DATA_T& job) {
  std::set<std::string> codes = {"", "unknown"};
  for (const BAR_T& bar : job.Bar) {
    for (const PIECE_T& piece : bar.piece) {
      if (codes.size() < kSamples) codes.insert(piece.BarCode);
    }
  }
  return codes;
}

std::set<std::string> someBarNumbers(const DATA_T& job) {
  std::set<std::string> numbers = {"", "unknown"};
  for (const BAR_T& bar : job.Bar) {
    if (numbers.size() < kSamples) numbers.insert(bar.BarNumber);
  }
  return numbers;
}

std::string askAll(JsonAnalysis& reader) {
  std::string all = askShared(reader) + askByBarCode(reader);
  const auto highest = [&] {
    reader.getAllCut();
    return std::to_string(reader.getMaterialCount());
  };
  all += ask(kStoi, "getMaterialCount", highest,
             [&] { return std::to_string(plain::highestBarNumber(reader.data)); });
  const auto cuts = [&] {
    plain::highestBarNumber(reader.data);
    return plain::cuts(reader.data);
  };
  all += ask(
      kStoi, "getAllCut", [&] { return textOfAll(reader.getAllCut()); }, cuts);
  std::string height = "untouched";
  const int code = reader.getHeight(height);
  const bool answers = !plain::gated(reader.data) && !reader.data.Bar.empty();
  require(code == (answers ? 0 : -1), "getHeight");
  require(height == (answers ? reader.data.Bar[0].MaxZ : "untouched"), "getHeight's text");
  reader.getAllBarCodeToMap();
  return all + height + askBarCode(reader);
}

std::string askAll(XmlAnalysis& reader) {
  return askShared(reader) + askByBarCode(reader) + askBarCode(reader) +
         ask(
             kNone, "getAllCut", [&] { return textOfAll(reader.getAllCut()); },
             [&] { return plain::cuts(reader.data); });
}

}  // namespace fuzzing
