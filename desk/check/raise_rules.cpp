#include <set>
#include <stdexcept>

#include "desk/base/numbers.h"
#include "desk/base/text.h"
#include "desk/check/job_rules.h"
#include "desk/job/rules.h"

namespace desk::check {

namespace {

/// One text of a job that ought to be a number.
struct NumberText {
  const char* key;
  const std::string& text;
  OriginId value;
};

template <class Convert>
bool converts(const std::string& text, Convert convert) {
  try {
    convert(text);
    return true;
  } catch (const std::logic_error&) {
    return false;
  }
}

/// Collects what makes script commands raise that ask a JSON job.
class RaiseCheck {
 public:
  RaiseCheck(const LoadedJob& job, Findings& findings) : job_(job), findings_(findings) {}

  void run() {
    Element here;
    for (const BarTrace& trace : job_.traced.bars) {
      const BAR_T& bar = job_.traced.job.Bar[static_cast<std::size_t>(here.bar++)];
      here.piece = 0;
      checkBar(bar, trace, here);
      for (const PieceTrace& piece : trace.pieces) {
        ++here.piece;
        checkPiece(bar, trace, piece, here);
      }
    }
  }

 private:
  void checkBar(const BAR_T& bar, const BarTrace& trace, const Element& here) {
    const NumberText number{"BarNumber", bar.BarNumber,
                            trace.keys[fieldOf<BAR_T>(&BAR_T::BarNumber)]};
    const auto toInt = [](const std::string& text) { (void)std::stoi(text); };
    if (!bar.piece.empty() && !converts(bar.BarNumber, toInt)) {
      raise(number, Raises::GetCut, trace.place, here);
    }
  }

  void checkPiece(const BAR_T& bar, const BarTrace& barTrace, const PieceTrace& trace,
                  const Element& here) {
    const PIECE_T& piece = bar.piece[static_cast<std::size_t>(here.piece - 1)];
    const NumberText cut{"Length", piece.Length, trace.cut[0]};
    for (const WORK_T& work : piece.work) {
      if (!holes_.insert(work.Name).second) continue;
      const Element barElement{here.bar, 0, 0};
      checkHole(cut, trace.place, here);
      checkHole(maxY(bar, barTrace), barTrace.place, barElement);
      checkHole(maxZ(bar, barTrace), barTrace.place, barElement);
    }
  }

  void checkHole(const NumberText& number, const Place& element, const Element& here) {
    const auto toDouble = [](const std::string& text) { (void)std::stod(text); };
    if (!converts(number.text, toDouble)) raise(number, Raises::GetHole, element, here);
  }

  void raise(const NumberText& number, Raises raises, const Place& element, const Element& here) {
    // Several works of one bar meet the same MaxY.
    if (!raised_.insert({{here.bar, here.piece}, number.key}).second) return;
    const bool isAbsent = number.value == 0;
    const std::string state = isAbsent ? " has no \"" + std::string(number.key) + "\""
                                       : ": \"" + std::string(number.key) + "\" is " +
                                             quoted(number.text) + ", " + refusalOf(number.text);
    const char* const what = raises == Raises::GetCut ? ": get_cut(\"\") raises \"stoi\""
                                                      : ": get_hole() raises \"stod\"";
    findings_.push_back({rules::kRaises,
                         Severity::Error,
                         placeOfValue(job_, number.value, element),
                         describe(here) + state + what,
                         here,
                         number.key,
                         {},
                         raises});
    if (isAbsent) findings_.back().lacks.emplace_back(number.key);
  }

  static NumberText maxY(const BAR_T& bar, const BarTrace& trace) {
    return {"MaxY", bar.MaxY, trace.keys[fieldOf<BAR_T>(&BAR_T::MaxY)]};
  }
  static NumberText maxZ(const BAR_T& bar, const BarTrace& trace) {
    return {"MaxZ", bar.MaxZ, trace.keys[fieldOf<BAR_T>(&BAR_T::MaxZ)]};
  }

  const LoadedJob& job_;
  Findings& findings_;
  std::set<std::string> holes_;  ///< the work names that get_hole has met
  std::set<std::pair<std::pair<int, int>, std::string>> raised_;
};

}  // namespace

void checkRaises(const LoadedJob& job, Findings& findings) {
  if (job.format == model::JobFormat::Json) RaiseCheck(job, findings).run();
}

}  // namespace desk::check
