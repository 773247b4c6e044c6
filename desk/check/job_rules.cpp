#include "desk/check/job_rules.h"

#include <algorithm>
#include <cstdio>

#include "desk/base/numbers.h"
#include "desk/job/rules.h"
#include "model/job_walks.h"

namespace desk::check {

namespace {

/// A sum of decimal fractions may come out higher than it is by this part of itself.
constexpr double kRounding = 1e-12;

std::string piecesText(std::size_t count, const Element& bar) {
  return count == 1 ? "the piece of " + describe(bar) + " is "
                    : "the " + std::to_string(count) + " pieces of " + describe(bar) + " are ";
}

/// The sum without what rounding added to it.
std::string sumText(double sum) {
  char text[32] = "";
  std::snprintf(text, sizeof text, "%.12g", sum);
  return text;
}

}  // namespace

Place placeOfValue(const LoadedJob& job, OriginId value, const Place& element) {
  const Place& place = job.traced.origins[value].place;
  return value != 0 && place.file == element.file ? place : element;
}

void checkVersion(const LoadedJob& job, Findings& findings) {
  if (job.format != model::JobFormat::Xml || model::declaresVersion1(job.traced.job)) return;
  const OriginId value = job.traced.header[fieldOf<DATA_T>(&DATA_T::Version)];
  const std::string& version = job.traced.job.Version;
  const std::string what = version.empty() ? "the job declares no \"Version\" of \"1.0\""
                                           : "\"Version\" is " + quoted(version) + ", not \"1.0\"";
  findings.push_back({rules::kVersion,
                      Severity::Error,
                      placeOfValue(job, value, job.traced.place),
                      what +
                          ": it loads, but get_work(barcode), get_cut(number) and all dimensions "
                          "stay empty",
                      {},
                      "Version",
                      {}});
}

void checkLengths(const LoadedJob& job, Findings& findings) {
  int number = 0;
  for (const BAR_T& bar : job.traced.job.Bar) {
    const BarTrace& trace = job.traced.bars[static_cast<std::size_t>(number++)];
    double length = 0.0;
    bool whole = false;
    if (!numberOf(bar.length, length, whole)) continue;
    const Element here{number, 0, 0};
    const OriginId value = trace.keys[fieldOf<BAR_T>(&BAR_T::length)];
    const auto add = [&](const std::string& message) {
      findings.push_back({rules::kDoesNotFit,
                          Severity::Error,
                          placeOfValue(job, value, trace.place),
                          message,
                          here,
                          job.format == model::JobFormat::Xml ? "Length" : "length",
                          {}});
    };
    if (length < 0.0) {
      add(describe(here) + " is " + shortestText(length) + " long");
      continue;
    }
    double sum = 0.0;
    for (const PIECE_T& piece : bar.piece) {
      double one = 0.0;
      if (numberOf(piece.Length, one, whole)) sum += std::max(one, 0.0);
    }
    if (sum * (1.0 - kRounding) <= length) continue;
    add(piecesText(bar.piece.size(), here) + sumText(sum) +
        (bar.piece.size() == 1 ? " long, the bar " : " long together, the bar ") +
        shortestText(length));
  }
}

}  // namespace desk::check
