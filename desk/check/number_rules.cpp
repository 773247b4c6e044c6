#include <set>
#include <stdexcept>

#include "desk/base/numbers.h"
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

/// Collects the findings about the numbers of one job.
class NumberCheck {
 public:
  NumberCheck(const LoadedJob& job, Findings& findings)
      : job_(job), isJson_(job.format == model::JobFormat::Json), findings_(findings) {}

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
    if (isJson_ && !bar.piece.empty() && !converts(bar.BarNumber, toInt)) {
      raise(number, Raises::GetCut, trace.place, here);
    }
    // JSON bars hold integers or nothing.
    if (isJson_) return;
    for (const NumberText& text : {length(bar, trace), maxY(bar, trace), maxZ(bar, trace)}) {
      if (!text.text.empty()) checkText(text, trace.place, here);
    }
  }

  void checkPiece(const BAR_T& bar, const BarTrace& barTrace, const PieceTrace& trace,
                  const Element& here) {
    const PIECE_T& piece = bar.piece[static_cast<std::size_t>(here.piece - 1)];
    const NumberText cut{"Length", piece.Length, trace.cut[0]};
    bool raises = false;
    for (const WORK_T& work : piece.work) {
      if (!isJson_ || !holes_.insert(work.Name).second) continue;
      raises |= checkHole(cut, trace.place, here);
      const Element barElement{here.bar, 0, 0};
      checkHole(maxY(bar, barTrace), barTrace.place, barElement);
      checkHole(maxZ(bar, barTrace), barTrace.place, barElement);
    }
    if (!raises) checkLength(cut, trace.place, here);
    for (const NumberText& angle :
         {NumberText{"sxB", piece.sxB, trace.cut[1]}, NumberText{"dxB", piece.dxB, trace.cut[2]}}) {
      if (!angle.text.empty()) checkText(angle, trace.place, here);
    }
  }

  void checkLength(const NumberText& cut, const Place& element, const Element& here) {
    double value = 0.0;
    bool whole = false;
    if (!numberOf(cut.text, value, whole) || value >= 0.0) return checkText(cut, element, here);
    add(rules::kDoesNotFit, Severity::Error, cut,
        describe(here) + " is " + shortestText(value) + " long", element, here);
  }

  bool checkHole(const NumberText& number, const Place& element, const Element& here) {
    const auto toDouble = [](const std::string& text) { (void)std::stod(text); };
    if (converts(number.text, toDouble)) return false;
    raise(number, Raises::GetHole, element, here);
    return true;
  }

  void raise(const NumberText& number, Raises raises, const Place& element, const Element& here) {
    // Several works of one bar meet the same MaxY.
    if (!raised_.insert({{here.bar, here.piece}, number.key}).second) return;
    const std::string state = number.text.empty()
                                  ? " has no \"" + std::string(number.key) + "\""
                                  : ": \"" + std::string(number.key) + "\" is " +
                                        quoted(number.text) + ", " + refusalOf(number.text);
    const char* const what = raises == Raises::GetCut ? ": get_cut(\"\") raises \"stoi\""
                                                      : ": get_hole() raises \"stod\"";
    add(rules::kRaises, Severity::Error, number, describe(here) + state + what, element, here);
    findings_.back().raises = raises;
    if (number.text.empty()) findings_.back().lacks.emplace_back(number.key);
  }

  void checkText(const NumberText& number, const Place& element, const Element& here) {
    const std::string key = std::string("\"") + number.key + "\"";
    double value = 0.0;
    bool whole = false;
    const bool is = numberOf(number.text, value, whole);
    if (is && whole) return;
    const std::string what =
        number.text.empty() ? " has no " + key
        : is ? ": " + key + " is " + quoted(number.text) + "; some read " + shortestText(value) +
                   ", tonumber gives nil"
             : ": " + key + " is " + quoted(number.text) + ", " + refusalOf(number.text);
    add(rules::kNotANumber, is ? Severity::Warning : Severity::Error, number, describe(here) + what,
        element, here);
    if (number.text.empty()) findings_.back().lacks.emplace_back(number.key);
  }

  void add(const char* rule, Severity severity, const NumberText& number,
           const std::string& message, const Place& element, const Element& here) {
    findings_.push_back(
        {rule, severity, placeOfValue(job_, number.value, element), message, here, number.key, {}});
  }

  static NumberText length(const BAR_T& bar, const BarTrace& trace) {
    return {"Length", bar.length, trace.keys[fieldOf<BAR_T>(&BAR_T::length)]};
  }
  static NumberText maxY(const BAR_T& bar, const BarTrace& trace) {
    return {"MaxY", bar.MaxY, trace.keys[fieldOf<BAR_T>(&BAR_T::MaxY)]};
  }
  static NumberText maxZ(const BAR_T& bar, const BarTrace& trace) {
    return {"MaxZ", bar.MaxZ, trace.keys[fieldOf<BAR_T>(&BAR_T::MaxZ)]};
  }

  const LoadedJob& job_;
  bool isJson_;
  Findings& findings_;
  std::set<std::string> holes_;  ///< the work names that get_hole has met
  std::set<std::pair<std::pair<int, int>, std::string>> raised_;
};

}  // namespace

void checkNumbers(const LoadedJob& job, Findings& findings) {
  NumberCheck(job, findings).run();
}

}  // namespace desk::check
