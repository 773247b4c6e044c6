#include "fuzz/query_checks.h"

namespace fuzzing {
namespace {

constexpr std::size_t kSamples = 6;

/// The questions that both readers answer.
template <class Reader>
std::string askShared(Reader& reader) {
  const auto ask = [](auto query) { return outcomeOf(kNone, [&] { return textOfAll(query()); }); };
  std::string all = ask([&] { return reader.getPrint(); });
  for (const auto& [code, work] : reader.getAllWork()) all += textOf(code) + textOf(work);
  all += outcomeOf(kStod, [&] { return textOfAll(reader.getHole()); });
  for (const std::string& number : someBarNumbers(reader.data)) {
    all += ask([&] { return reader.getCut(number); }) + reader.getBarCode(number, "1");
  }
  for (const std::string& code : someBarCodes(reader.data)) {
    std::string y, z, length;
    const int result = reader.getMaxYZ_Cutlength(code, y, z, length);
    all += ask([&] { return reader.getWork(code); }) + std::to_string(result) + textOf(y) +
           textOf(z) + textOf(length);
  }
  return all;
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
  std::string all = outcomeOf(kStoi, [&] { return textOfAll(reader.getAllCut()); });
  std::string height;
  all += std::to_string(reader.getMaterialCount()) + std::to_string(reader.getHeight(height));
  reader.getAllBarCodeToMap();
  return all + textOf(height) + askShared(reader);
}

std::string askAll(XmlAnalysis& reader) {
  return outcomeOf(kNone, [&] { return textOfAll(reader.getAllCut()); }) + askShared(reader);
}

}  // namespace fuzzing
