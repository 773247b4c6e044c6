#include <map>
#include <string>
#include <utility>

#include "desk/base/text.h"
#include "desk/check/job_rules.h"
#include "desk/job/rules.h"

namespace desk::check {

namespace {

const std::size_t kBarCodeField = fieldOf<PIECE_CHILD_SECOND_T>(&PIECE_T::BarCode);
const std::size_t kPieceNumberField = fieldOf<PIECE_CHILD_SECOND_T>(&PIECE_T::PieceNumber);

/// A piece that was met before, and the origin of what it shares with a later one.
struct Earlier {
  Element element;
  OriginId value;
  Place place;
};

/// Calls visit(bar, piece, its trace, element) for every piece.
template <class Visit>
void forEachPiece(const LoadedJob& job, Visit&& visit) {
  Element element;
  for (const BarTrace& barTrace : job.traced.bars) {
    const auto bar = static_cast<std::size_t>(element.bar++);
    element.piece = 0;
    for (const PieceTrace& trace : barTrace.pieces) {
      const auto piece = static_cast<std::size_t>(element.piece++);
      const BAR_T& record = job.traced.job.Bar[bar];
      visit(record, record.piece[piece], trace, element);
    }
  }
}

/// Whether a value was read for another element, which is a finding already.
bool isCarried(const LoadedJob& job, OriginId value, const Element& element) {
  const Origin& origin = job.traced.origins[value];
  return origin.place.file != job.file || !(origin.element == element);
}

std::string lineText(const Place& place) {
  return " (line " + std::to_string(place.at.line) + ")";
}

void checkBarCodes(const LoadedJob& job, Findings& findings) {
  std::map<std::string, Earlier> known;
  forEachPiece(job, [&](const BAR_T&, const PIECE_T& piece, const PieceTrace& trace,
                        const Element& element) {
    if (piece.BarCode.empty()) return;
    const OriginId value = trace.keys[kBarCodeField];
    const Place place = placeOfValue(job, value, trace.place);
    const auto [first, isNew] = known.try_emplace(piece.BarCode, Earlier{element, value, place});
    if (isNew || isCarried(job, value, element)) return;
    findings.push_back(
        {rules::kDuplicateBarCode,
         Severity::Warning,
         place,
         "barcode " + quoted(piece.BarCode) + " of " + describe(element) + " is that of " +
             describe(first->second.element) + lineText(first->second.place) +
             ": get_work gives the works of all its pieces, with the dimensions of the first one",
         element,
         "BarCode",
         {}});
  });
}

void checkPieceNumbers(const LoadedJob& job, Findings& findings) {
  std::map<std::pair<std::string, std::string>, Earlier> known;
  forEachPiece(job, [&](const BAR_T& bar, const PIECE_T& piece, const PieceTrace& trace,
                        const Element& element) {
    const OriginId value = trace.keys[kPieceNumberField];
    const Place place = placeOfValue(job, value, trace.place);
    const auto key = std::make_pair(bar.BarNumber, piece.PieceNumber);
    const auto [last, isNew] = known.try_emplace(key, Earlier{element, value, place});
    if (isNew) return;
    const Earlier earlier = std::exchange(last->second, {element, value, place});
    if (value != 0 && earlier.value == value) return;
    findings.push_back({rules::kDuplicateNumber,
                        Severity::Warning,
                        place,
                        describe(element) + " has bar number " + quoted(bar.BarNumber) +
                            " and piece number " + quoted(piece.PieceNumber) + " like " +
                            describe(earlier.element) + lineText(earlier.place) +
                            ": get_cut(\"\") gives both the barcode of the last one",
                        element,
                        "PieceNumber",
                        {}});
  });
}

}  // namespace

void checkDuplicates(const LoadedJob& job, Findings& findings) {
  checkBarCodes(job, findings);
  // The barcodes of an XML job's cuts come from the JSON reader, so there is nothing to mix up.
  if (job.format == model::JobFormat::Json) checkPieceNumbers(job, findings);
}

}  // namespace desk::check
