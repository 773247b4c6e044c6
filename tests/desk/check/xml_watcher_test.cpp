// What check tells of the XML reader, on thousands of damaged jobs; by the same
// means as that of the JSON reader.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "desk/check/check_session.h"
#include "desk/check/rules.h"
#include "tests/desk/check/records_text.h"
#include "tests/desk/check/xml_jobs.h"
#include "tests/support/xml_text.h"
#include "xml/xml_elements.h"

namespace {

using namespace desk::check;
using namespace test_support;

constexpr unsigned kSeed = 20'300'116;
constexpr int kSequences = 700 / CUS_FEWER;

/// Reads a job and returns what the reader throws.
std::string readWith(XmlAnalysis& reader, XmlElement& root) {
  try {
    readXmlText(reader, write(root));
    return "";
  } catch (const std::logic_error& error) {
    return error.what();
  }
}

/// The only bar of a job, as a fresh reader reads it.
BAR_T alone(const XmlElement& bar) {
  XmlElement root{"Job", {}, {bar}};
  XmlAnalysis reader;
  readWith(reader, root);
  return reader.data.Bar.at(0);
}

XmlElement inBar(const XmlElement& piece) {
  return {"Bar", {}, {piece}};
}

XmlElement inPiece(const XmlElement& work) {
  return inBar({"Piece", {{"<CtrsZ>", "0", "</CtrsZ>"}}, {work}});
}

/// What a read of the job left in fields for which it has no value.
Carried carriedBy(const XmlElement& root, const DATA_T& job) {
  Carried carried;
  XmlElement header = root;
  XmlAnalysis fresh;
  readWith(fresh, header);
  addCarried(xml_elements::kHeader, job, fresh.data, {}, carried);
  Element at;
  for (const BAR_T& bar : job.Bar) {
    const XmlElement barElement = root.with("Bar", ++at.bar).children.at(0);
    at.piece = 0;
    addCarried(xml_elements::kBar, bar, alone({"Bar", barElement.lines, {}}), at, carried);
    for (const PIECE_CHILD_SECOND_T& piece : bar.piece) {
      const XmlElement pieceElement = barElement.with("Piece", ++at.piece).children.at(0);
      const PIECE_CHILD_SECOND_T single = alone(inBar(pieceElement.with("Cut"))).piece.at(0);
      addCarried(xml_elements::kPiece, piece, single, at, carried);
      addCarried(xml_elements::kCut, cutOf(piece), cutOf(single), at, carried);
      Element inner = at;
      for (const WORK_T& work : piece.work) {
        const XmlElement workElement = pieceElement.with("Work", ++inner.work).children.at(0);
        addCarried(xml_elements::kWork, work, alone(inPiece(workElement)).piece.at(0).work.at(0),
                   inner, carried);
      }
    }
  }
  return carried;
}

std::set<int> linesOf(const Findings& findings, int file, const std::set<std::string>& wanted) {
  std::set<int> lines;
  for (const Finding& finding : findings) {
    if (finding.place.file == file && wanted.count(finding.rule) != 0) {
      lines.insert(finding.place.at.line);
    }
  }
  return lines;
}

/// Changes text after text and compares what has no effect with the lines of findings.
class IgnoredTexts {
 public:
  IgnoredTexts(XmlElement& root, const XmlAnalysis& before, std::set<int> lines)
      : root_(root), before_(before), lines_(std::move(lines)) {
    XmlAnalysis reader = before_;
    readWith(reader, root_);
    read_ = readerText(reader);
  }

  int visit(XmlElement& element) {
    int seen = 0;
    for (XmlLine& line : element.lines) {
      if (line.text.empty() || line.isDropped) continue;
      ++seen;
      const std::string original = line.text;
      line.text += "7";
      XmlAnalysis reader = before_;
      const bool hasEffect = !readWith(reader, root_).empty() || readerText(reader) != read_;
      line.text = original;
      EXPECT_EQ(!hasEffect, lines_.count(line.number) != 0) << "line " << line.number;
    }
    for (XmlElement& child : element.children) seen += visit(child);
    return seen;
  }

 private:
  XmlElement& root_;
  const XmlAnalysis& before_;
  std::set<int> lines_;
  std::string read_;
};

TEST(XmlWatcher, TellsWhatTheReaderIgnoresAndCarriesOverAndNothingElse) {
  XmlJobs jobs(kSeed);
  int loaded = 0;
  int broken = 0;
  int textsSeen = 0;
  for (int i = 0; i < kSequences && !HasFailure(); ++i) {
    CheckSession session(CheckSession::Readers::Kept);
    XmlAnalysis reader;
    for (int file = 0; file < 1 + i % 3 && !HasFailure(); ++file) {
      XmlElement job = jobs.next();
      const std::string text = write(job);
      SCOPED_TRACE("seed " + std::to_string(kSeed) + ", sequence " + std::to_string(i) + "\n" +
                   text);
      const XmlAnalysis before = reader;
      session.check("job.xml", text);
      const Findings& findings = session.report().findings;
      const std::string thrown = readWith(reader, job);

      const auto raising = linesOf(findings, file, {rules::kMissingElement, rules::kRaises});
      ASSERT_EQ(raising.size(), thrown.empty() ? 0u : 1u);
      if (!thrown.empty()) {
        ++broken;
        continue;
      }
      ++loaded;
      EXPECT_EQ(difference(carriedIn(findings, file), carriedBy(job, reader.data)), "");
      IgnoredTexts ignored(job, before,
                           linesOf(findings, file,
                                   {rules::kUnknownKey, rules::kRepeatedElement,
                                    rules::kIgnoredText, rules::kAttribute}));
      textsSeen += ignored.visit(job);
    }
  }
  EXPECT_GT(loaded, kSequences);
  EXPECT_GT(broken, kSequences / 14);
  EXPECT_GT(textsSeen, 20 * kSequences);
}

}  // namespace
