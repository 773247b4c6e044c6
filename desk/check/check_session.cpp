#include "desk/check/check_session.h"

#include <tinyxml2.h>

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "desk/base/files.h"
#include "desk/base/text.h"
#include "desk/check/advice.h"
#include "desk/check/job_rules.h"
#include "desk/check/mending.h"
#include "desk/host/documents.h"
#include "desk/job/job_file.h"
#include "desk/job/rules.h"
#include "desk/job/strict_xml.h"

namespace desk::check {

using model::JobFormat;
using tinyxml2::XMLElement;

namespace {

/// Sorts the findings from an index on by place. Those of one place keep their order. Findings are
/// large: each is moved once, and none is copied.
void sortByPlace(Findings& findings, std::size_t from) {
  using Key = std::tuple<int, int, std::size_t>;  // the last one is the index
  std::vector<Key> order;
  order.reserve(findings.size() - from);
  for (std::size_t i = from; i < findings.size(); ++i) {
    const Position at = findings[i].place.at;
    order.emplace_back(at.line, at.column, i);
  }
  std::sort(order.begin(), order.end());
  const auto source = [&](std::size_t i) -> std::size_t& { return std::get<2>(order[i - from]); };
  for (std::size_t i = from; i < findings.size(); ++i) {
    if (source(i) == i) continue;
    Finding first = std::move(findings[i]);
    std::size_t hole = i;
    for (std::size_t next; (next = std::exchange(source(hole), hole)) != i; hole = next) {
      findings[hole] = std::move(findings[next]);
    }
    findings[hole] = std::move(first);
  }
}

/// Whether a text means the same in UTF-8 and in the encoding that an XML document names.
bool readsAlike(const std::string& encoding, const std::string& bytes) {
  const std::string name = simplified(encoding);
  if (name.empty() || name == "utf8") return true;
  return !startsWith(name, "utf") && isAscii(bytes);
}

/// Keeps the first of the findings of a rule and says in it how often there are more.
void fold(Findings& findings, std::size_t from, const char* rule) {
  const auto start = findings.begin() + static_cast<std::ptrdiff_t>(from);
  const auto isOne = [&](const Finding& finding) { return finding.rule == rule; };
  const auto first = std::find_if(start, findings.end(), isOne);
  const auto count = std::count_if(start, findings.end(), isOne);
  if (count < 2) return;
  first->message += " (" + std::to_string(count) + " times in this file)";
  findings.erase(std::remove_if(first + 1, findings.end(), isOne), findings.end());
}

bool hasPieces(const DATA_T& job) {
  return std::any_of(job.Bar.begin(), job.Bar.end(),
                     [](const BAR_T& bar) { return !bar.piece.empty(); });
}

}  // namespace

void CheckSession::check(const std::string& file) {
  std::string bytes;
  std::string reason;
  loads_ = false;
  if (deskhost::readDocumentFile(file, bytes, reason)) {
    check(file, std::move(bytes));
  } else {
    refuse(file, reason);
  }
}

void CheckSession::refuse(const std::string& name, const std::string& reason) {
  report_.unreadable.push_back({name, cannotRead(name, reason).what()});
}

void CheckSession::check(const std::string& file, std::string bytes) {
  document_.reset();
  format_ = job::formatOf(file, bytes);
  report_.sources.push_back(std::make_unique<SourceText>(job::shownName(file), std::move(bytes)));
  loads_ = false;
  whyNot_.clear();
  faultAt_ = {};
  if (readers_ == Readers::Fresh) panel_ = std::make_unique<Panel>();
  const std::size_t from = report_.findings.size();
  if (file != kStandardStream) checkName(file);
  checkEncoding();
  format_ == JobFormat::Xml ? checkXml() : checkJson();
  if (!keepsDocument_) document_.reset();
  settings_.apply(report_.findings, from);
  sortByPlace(report_.findings, from);
  putUnderCauses(report_.findings, from, format_);
  fold(report_.findings, from, rules::kAngle135);
}

void CheckSession::add(const char* rule, Severity severity, Position at,
                       const std::string& message) {
  report_.findings.push_back({rule, severity, {file(), at}, message, {}, {}, {}});
}

void CheckSession::checkName(const std::string& file) {
  const std::string name = std::filesystem::path(file).filename().string();
  if (name.size() < 5) {
    add(rules::kFileName, Severity::Error, {1, 0},
        "a name of fewer than 5 bytes makes getjson_Flash and getjson_uDisk raise "
        "\"basic_string::substr\"");
  } else if (!model::hasEnding(name, format_)) {
    add(rules::kFileName, Severity::Warning, {1, 0},
        "the name ends neither in .json nor in .xml, in small letters: the panel tries it as JSON");
  }
}

void CheckSession::checkEncoding() {
  const std::string& bytes = source().bytes();
  if (const std::string name = utf16Name(bytes); !name.empty()) {
    add(rules::kNotUtf8, Severity::Error, source().position(0),
        "UTF-16, which no reader takes: save the file as UTF-8, or iconv -f " + name + " -t UTF-8");
    return;
  }
  if (isUtf8(bytes)) return;
  std::size_t count = 0;
  std::size_t first = 0;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t size = utf8CharacterSize(bytes, at);
    if (size == 0 && count++ == 0) first = at;
    at += std::max<std::size_t>(size, 1);
  }
  add(rules::kNotUtf8, Severity::Warning, source().position(first),
      "not UTF-8: the panel cannot show such text (" + std::to_string(count) +
          (count == 1 ? " byte" : " bytes") + " in this file)" +
          (looksLikeGbk(bytes) ? "; it looks like GBK: iconv -f GBK -t UTF-8" : ""));
}

void CheckSession::refuseDocument(const deskhost::DocumentFault& fault) {
  whyNot_ = deskhost::faultText(source().name(), fault);
  faultAt_ = {fault.line, fault.column};
  reportFault(fault);
}

void CheckSession::reportFault(const deskhost::DocumentFault& fault) {
  const std::string nothing =
      std::string("Nothing is loaded: the panel answers -2 and keeps the ") +
      model::rowOf(format_).name + " job before";
  // Half of its characters are zero bytes to a reader.
  const bool isUtf16 = !utf16Name(source().bytes()).empty();
  const std::string likely = fault.isOnlyHere || isUtf16 ? "" : likeness(source().bytes(), format_);
  if (!likely.empty()) return add(rules::kSyntax, Severity::Error, {1, 1}, likely + ". " + nothing);
  const bool isBehind = fault.isBehind && !isUtf16;
  Position at{fault.line, fault.column};
  if (at.line == 0) at = {1, 0};
  const std::string& reason = fault.reason;
  const std::string end = reason.empty() || reason.back() == '.' ? " " : ". ";
  add(isBehind ? rules::kTrailingText : rules::kSyntax, Severity::Error, at,
      reason + end +
          (fault.isOnlyHere ? "A panel would load it: only cusdesk refuses"
           : isBehind       ? "A panel may load what stands in front; cusdesk refuses the file"
                            : nothing));
  if (isUtf16) report_.findings.back().cause = {rules::kNotUtf8, source().position(0)};
}

void CheckSession::checkJson() {
  const auto document = std::make_shared<Json::Value>();
  document_ = document;
  Json::Value& root = *document;
  deskhost::DocumentFault fault;
  if (!deskhost::parseJson(source().bytes(), root, fault)) {
    refuseDocument(fault);
    return;
  }
  const JsonPositions text(source().bytes(), source().markSize());
  noteLeniencies(text);
  int code = 0;
  const auto checkAsRead = [&] {
    code = panel_->jsonWatcher.read(root, text, report_.sources, report_.findings);
    if (code == 0) checkJob(JobFormat::Json);
  };
  const std::size_t from = report_.findings.size();
  checkAsRead();
  if (code != 0) whyNot_ = job::answersText(code);
  checkMended(root, from, checkAsRead);
}

template <class Root>
void CheckSession::checkMended(Root& root, std::size_t from, const std::function<void()>& check) {
  const std::vector<Mend> mends = mend(root, report_.findings, from);
  if (mends.empty()) return;
  // Nothing of it reaches the readers that go on to the next file.
  Findings told;
  std::swap(told, report_.findings);
  std::unique_ptr<Panel> panel = std::exchange(panel_, std::make_unique<Panel>());
  const bool loads = loads_;
  check();
  checkMended(root, 0, check);
  loads_ = loads;
  panel_ = std::move(panel);
  std::swap(told, report_.findings);
  addMended(report_.findings, from, told, mends);
}

void CheckSession::checkXml() {
  const auto kept = std::make_shared<tinyxml2::XMLDocument>(true, tinyxml2::PRESERVE_WHITESPACE);
  document_ = kept;
  tinyxml2::XMLDocument& document = *kept;
  deskhost::DocumentFault fault;
  if (!deskhost::parseXml(source().bytes(), document, fault)) {
    refuseDocument(fault);
    return;
  }
  XMLElement& root = *document.RootElement();
  std::string raised;
  const auto checkAsRead = [&] {
    raised = panel_->xmlWatcher.read(root, report_.sources, report_.findings);
    if (raised.empty()) checkJob(JobFormat::Xml);
  };
  const std::size_t from = report_.findings.size();
  checkAsRead();
  if (!raised.empty()) {
    whyNot_ = job::raisesText(raised);
  } else {
    checkZeroReferences();
    judgeXml();
    checkOtherReader();
  }
  checkMended(root, from, checkAsRead);
}

void CheckSession::checkJob(JobFormat format) {
  loads_ = true;
  const LoadedJob job{this->job(format), file(), format};
  checkVersion(job, report_.findings);
  checkDuplicates(job, report_.findings);
  // What raises is not told a second time as a measure, unless that weighs more.
  const bool raisesWeighsLess = settings_.lowers(rules::kRaises);
  if (raisesWeighsLess) checkMeasures(job, report_.findings);
  checkRaises(job, report_.findings);
  if (!raisesWeighsLess) checkMeasures(job, report_.findings);
}

void CheckSession::checkZeroReferences() {
  for (const std::size_t offset : zeroReferences(source().bytes())) {
    add(rules::kZeroByte, Severity::Warning, source().position(offset),
        "a text ends at this reference, and what follows in it is not read");
  }
}

void CheckSession::judgeXml() {
  const std::string& bytes = source().bytes();
  const StrictXml judged = judgeStrictly(bytes);
  if (isUtf8(bytes) && !readsAlike(judged.encoding, bytes)) {
    add(rules::kLenientXml, Severity::Note, source().position(0),
        "the declaration names " + quoted(judged.encoding) +
            ": other tools read the file so, a panel reads its bytes as UTF-8");
  }
  if (!judged.fault) return;
  const std::size_t offset = judged.fault->offset;
  // Bytes that are no UTF-8 are a finding already.
  if (offset < bytes.size() && utf8CharacterSize(bytes, offset) == 0) return;
  const Position at = source().position(offset);
  const auto tellsIt = [&](const Finding& one) {
    return one.place.file == file() && one.place.at.line == at.line &&
           ((one.rule == rules::kZeroByte && one.place.at.column == at.column) ||
            (one.rule == rules::kIgnoredText && one.element == Element{}));
  };
  const Findings& all = report_.findings;
  const auto told = std::find_if(all.rbegin(), all.rend(), tellsIt);
  const Cause cause = told == all.rend() ? Cause{} : causeFrom(*told);
  add(rules::kLenientXml, Severity::Note, at,
      judged.fault->what + " is not well-formed XML; other tools refuse the file");
  report_.findings.back().cause = cause;
}

void CheckSession::checkOtherReader() {
  const TracedJob& other = json();
  if (other.job.Bar.empty() || !hasPieces(xml().job)) return;
  const SourceText& from = *report_.sources[static_cast<std::size_t>(other.place.file)];
  add(rules::kOtherJob, Severity::Warning, xml().place.at,
      "get_cut takes Height, BarCode and MaterialCount from the JSON job read last, " +
          escapeControls(from.name()));
}

void CheckSession::noteLeniencies(const JsonPositions& text) {
  for (const Leniency& leniency : text.leniencies()) {
    const std::string times =
        leniency.count == 1 ? "" : " (" + std::to_string(leniency.count) + " times in this file)";
    add(rules::kLenientJson, Severity::Note, source().position(leniency.offset),
        std::string(leniency.what) + " is not standard JSON; other tools refuse the file" + times);
  }
}

}  // namespace desk::check
