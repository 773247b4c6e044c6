// What check tells of the JSON reader, on thousands of damaged jobs.
//
// What the reader ignores and carries over is found without any knowledge of the format: a value is
// ignored when another one in its place changes nothing, and carried over when the element read all
// by itself does not have it.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "desk/check/check_session.h"
#include "desk/check/rules.h"
#include "desk/host/documents.h"
#include "json/json_analysis.h"
#include "tests/desk/check/json_jobs.h"
#include "tests/desk/check/records_text.h"

namespace {

using namespace desk::check;
using namespace test_support;

constexpr unsigned kSeed = 20'300'115;
constexpr int kSequences = 700 / CUS_FEWER;

/// Reads quietly: a failing level writes a line.
int readWith(JsonAnalysis& reader, const Json::Value& root) {
  const Quiet quiet;
  return reader.analysisData(root);
}

Json::Value jobWith(const Json::Value& bar) {
  Json::Value root;
  root["Version"] = "1.0";
  root["Bar"].append(bar);
  return root;
}

Json::Value barWith(const Json::Value& piece) {
  Json::Value bar;
  bar["piece"].append(piece);
  return bar;
}

Json::Value pieceWith(const Json::Value& work) {
  Json::Value piece;
  piece["work"].append(work);
  return piece;
}

PIECE_CHILD_SECOND_T alone(const Json::Value& piece) {
  JsonAnalysis reader;
  readWith(reader, jobWith(barWith(piece)));
  return reader.data.Bar.at(0).piece.at(0);
}

const Json::Value& bars(const Json::Value& root) {
  return root["Bar"].isArray() ? root["Bar"] : root["bar"];
}

/// What a read of the document left in fields for which it has no value.
Carried carriedBy(const Json::Value& root, const DATA_T& job) {
  Carried carried;
  JsonAnalysis fresh;
  readWith(fresh, root);
  addCarried(json_keys::kHeader, job, fresh.data, {}, carried);
  Element at;
  for (const BAR_T& bar : job.Bar) {
    const Json::Value& barValue = bars(root)[at.bar++];
    at.piece = 0;
    readWith(fresh = {}, jobWith(barValue));
    addCarried(json_keys::kBar, bar, fresh.data.Bar.at(0), at, carried);
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      const Json::Value& pieceValue = barValue["piece"][at.piece++];
      const PIECE_CHILD_SECOND_T single = alone(pieceValue);
      addCarried(json_keys::kPiece, piece, single, at, carried);
      addCarried(json_keys::kLabelFields, piece.Fields, single.Fields, at, carried);
      addCarried(json_keys::kCut, cutOf(piece), cutOf(single), at, carried);
      Element inner = at;
      for (const WORK_T& work : piece.work) {
        const Json::Value& workValue = pieceValue["work"][inner.work++];
        addCarried(json_keys::kWork, work, alone(pieceWith(workValue)).work.at(0), inner, carried);
      }
    }
  }
  return carried;
}

/// Gives the value another one of the same type. False for a type that has none.
bool change(Json::Value& value) {
  if (value.isString()) {
    value = value.asString() + "~";
  } else if (value.isBool()) {
    value = !value.asBool();
  } else if (value.isIntegral()) {
    value = Json::Value(value.asInt64() + 1);
  } else if (value.isDouble()) {
    value = value.asDouble() + 1.0;
  } else {
    return false;
  }
  return true;
}

/// Compares check and reader on one document, and value by value what is ignored.
class Comparison {
 public:
  Comparison(const std::string& text, const JsonAnalysis& before, const Findings& findings,
             int file)
      : source_("job.json", text), text_(source_.bytes(), 0), before_(before) {
    deskhost::DocumentFault fault;
    EXPECT_TRUE(deskhost::parseJson(text, root_, fault)) << fault.reason;
    JsonAnalysis reader = before;
    code_ = readWith(reader, root_);
    read_ = readerText(reader);
    const std::set<std::string> ignoring = {rules::kWrongType, rules::kUnknownKey,
                                            rules::kShadowedKey, rules::kLabelNotRead,
                                            rules::kNotAnObject};
    for (const Finding& finding : findings) {
      if (finding.place.file != file || ignoring.count(finding.rule) == 0) continue;
      ignored_.insert({finding.place.at.line, finding.place.at.column});
    }
  }

  const Json::Value& root() const { return root_; }

  void checkIgnored() { visit(root_, false); }
  int valuesSeen() const { return valuesSeen_; }

 private:
  /// @param covered whether a finding says that something around the value is ignored
  void visit(Json::Value& value, bool covered) {
    const Position at = source_.position(text_.keyOf(value.getOffsetStart()));
    covered = covered || ignored_.count({at.line, at.column}) != 0;
    if (value.isArray() || value.isObject()) {
      for (Json::Value& child : value) visit(child, covered);
      return;
    }
    const Json::Value original = value;
    if (!change(value)) return;
    ++valuesSeen_;
    JsonAnalysis reader = before_;
    const int code = readWith(reader, root_);
    const bool hasEffect = code != code_ || readerText(reader) != read_;
    EXPECT_EQ(!hasEffect, covered) << "line " << at.line << " column " << at.column;
    value = original;
  }

  SourceText source_;
  JsonPositions text_;
  const JsonAnalysis& before_;
  Json::Value root_;
  int code_ = 0;
  std::string read_;
  std::set<std::pair<int, int>> ignored_;
  int valuesSeen_ = 0;
};

TEST(JsonWatcher, TellsWhatTheReaderIgnoresAndCarriesOverAndNothingElse) {
  JsonJobs jobs(kSeed);
  int loaded = 0;
  int valuesSeen = 0;
  for (int i = 0; i < kSequences && !HasFailure(); ++i) {
    CheckSession session(CheckSession::Readers::Kept);
    JsonAnalysis reader;
    for (int file = 0; file < 1 + i % 3; ++file) {
      std::vector<int> lost;
      const std::string text = jobs.write(jobs.next(), lost);
      SCOPED_TRACE("seed " + std::to_string(kSeed) + ", sequence " + std::to_string(i) + "\n" +
                   text);
      const JsonAnalysis before = reader;
      session.check("job.json", text);
      const Findings& findings = session.report().findings;
      Comparison comparison(text, before, findings, file);
      const int code = readWith(reader, comparison.root());

      const bool refused = std::any_of(findings.begin(), findings.end(), [&](const Finding& one) {
        return one.place.file == file &&
               one.message.find("the panel answers -") != std::string::npos;
      });
      ASSERT_EQ(refused, code != 0);
      if (code != 0) continue;
      ++loaded;
      EXPECT_EQ(difference(carriedIn(findings, file), carriedBy(comparison.root(), reader.data)),
                "");
      if (i % 2 == 0) comparison.checkIgnored();
      valuesSeen += comparison.valuesSeen();
      if (HasFailure()) break;
    }
  }
  EXPECT_GT(loaded, kSequences);
  EXPECT_GT(valuesSeen, 10 * kSequences);
}

TEST(JsonWatcher, TellsEveryKeyThatALaterEqualOneReplaces) {
  JsonJobs jobs(kSeed + 1);
  std::size_t all = 0;
  for (int i = 0; i < kSequences && !HasFailure(); ++i) {
    std::vector<int> lost;
    std::vector<int> lostInHeader;
    Json::Value job = jobs.next();
    job["Version"] = "1.0";
    const std::string text = jobs.write(job, lost, &lostInHeader);
    CheckSession session(CheckSession::Readers::Fresh);
    session.check("job.json", text);
    std::set<int> told;
    for (const Finding& finding : session.report().findings) {
      if (finding.rule == rules::kDuplicateKey) told.insert(finding.place.at.line);
    }
    // Inside of what is ignored as a whole nothing more is told.
    EXPECT_TRUE(std::includes(lost.begin(), lost.end(), told.begin(), told.end())) << text;
    for (const int line : lostInHeader) EXPECT_EQ(told.count(line), 1u) << line << text;
    all += told.size();
  }
  EXPECT_GT(all, static_cast<std::size_t>(2 * kSequences / 7));
}

}  // namespace
