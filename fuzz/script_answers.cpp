#include "fuzz/script_answers.h"

#include "fuzz/documented_errors.h"
#include "fuzz/job_text.h"
#include "module/readers.h"

namespace fuzzing {
namespace {

/// A text as a script sees it: up to its first zero byte.
std::string seen(const std::string& text) {
  return textOf(std::string(text.c_str()));
}

std::string seenAll(const std::vector<std::string>& texts) {
  std::string all;
  for (const std::string& text : texts) all += seen(text);
  return all;
}

/// Asks the reader that holds the job; nothing where there is none.
template <class Ask>
auto askCurrent(Ask&& ask) -> decltype(ask(json)) {
  if (nFileType == kJsonJob) return ask(json);
  if (nFileType == kXmlJob) return ask(xml);
  return {};
}

std::string dimensionsOf(const std::string& barCode) {
  return askCurrent([&](auto& reader) {
    std::string y, z, length;
    reader.getMaxYZ_Cutlength(barCode, y, z, length);
    return seenAll({y, z, length});
  });
}

std::string textOfWork(const WORK_T& work) {
  return seen(work.Name) + textOf(work.PositionX) + textOf(work.PositionY) + textOf(work.PositionZ);
}

std::string allWorks() {
  std::string text;
  for (const auto& [barCode, work] : askCurrent([](auto& reader) { return reader.getAllWork(); })) {
    text += seen(barCode) + textOfWork(work) + dimensionsOf(barCode) + "\n";
  }
  return text;
}

std::string worksOf(const std::string& barCode) {
  std::string text;
  const std::string dimensions = dimensionsOf(barCode);
  for (const WORK_T& work : askCurrent([&](auto& reader) { return reader.getWork(barCode); })) {
    text += textOfWork(work) + dimensions + "\n";
  }
  return text;
}

std::string cuts(const std::string& barNumber) {
  const auto rows = askCurrent([&](auto& reader) {
    return barNumber.empty() ? reader.getAllCut() : reader.getCut(barNumber);
  });
  std::string height, text;
  json.getHeight(height);
  json.getAllBarCodeToMap();
  const std::string count = std::to_string(json.getMaterialCount());
  for (const RETURNACUT_T& row : rows) {
    const std::string barCode = json.getBarCode(row.BarNumber, row.PieceNumber);
    text += seenAll({row.BarNumber, height, row.Length, row.CutLength, row.SxB, row.DxB,
                     row.CutNumBer, barCode, row.BarName, count}) +
            "\n";
  }
  return text;
}

std::string holes(const std::string&) {
  std::string text;
  if (nFileType != kJsonJob) return text;
  for (const tagHOHEINFO& hole : json.getHole()) {
    text += seen(hole.name) + textOf(hole.length) + textOf(hole.width) + textOf(hole.height) + "\n";
  }
  return text;
}

std::string labels(const std::string&) {
  std::string text;
  for (const PRINT_T& label : askCurrent([](auto& reader) { return reader.getPrint(); })) {
    text +=
        seenAll({label.sProfileCode, label.sProfileName, label.sProfileLength, label.sNameProduct,
                 label.sColor, "", "", label.sLengthProduct, "", "", label.sCutAngle, "", ""}) +
        "\n";
  }
  return text;
}

std::string dimensions(const std::string& barCode) {
  std::string text;
  for (const auto& [owner, work] : askCurrent([](auto& reader) { return reader.getAllWork(); })) {
    // kept: a work of another piece begins a new result
    if (owner == barCode) {
      text += dimensionsOf(barCode) + "\n";
    } else {
      text.clear();
    }
  }
  return text;
}

const std::vector<std::string> kSizes = {"MaxY", "MaxZ", "Cut_Length"};
const std::vector<std::string> kWork = {"Name", "PositionX", "PositionY", "PositionZ",
                                        "MaxY", "MaxZ",      "Cut_Length"};
const std::vector<std::string> kAllWork = {"BarCode",   "Name", "PositionX", "PositionY",
                                           "PositionZ", "MaxY", "MaxZ",      "Cut_Length"};
const std::vector<std::string> kCut = {"BarNumber", "Height",       "Length",    "CutLength",
                                       "SxB",       "DxB",          "CutNumBer", "BarCode",
                                       "BarName",   "MaterialCount"};
const std::vector<std::string> kLabel = {
    "sProfileCode", "sProfileName",  "sProfileLength", "sNameProduct", "sColor",
    "sIndoorColor", "sOutdoorColor", "sLengthProduct", "sPosition",    "sWindow",
    "sCutAngle",    "sProcess",      "sMaterialHeight"};

}  // namespace

const std::vector<Query>& queries() {
  static const std::vector<Query> all = {
      {'A', "get_work", true, kNone, kAllWork, [](const std::string&) { return allWorks(); }},
      {'W', "get_work", true, kNone, kWork, worksOf},
      {'C', "get_cut", true, kStoi, kCut, cuts},
      {'H', "get_hole", false, kStod, {"name", "length", "width", "height"}, holes},
      {'P', "get_print", false, kNone, kLabel, labels},
      {'D', "get_Dimensions", true, kNone, kSizes, dimensions},
  };
  return all;
}

}  // namespace fuzzing
