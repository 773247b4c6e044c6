#include "desk/view/job_view.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <tuple>
#include <utility>

#include "desk/base/json_document.h"
#include "desk/base/text.h"
#include "desk/check/check_session.h"
#include "desk/job/job_file.h"
#include "desk/show/answers.h"
#include "desk/show/cut_list.h"
#include "desk/show/job_summary.h"
#include "desk/show/pieces.h"
#include "desk/view/bars.h"
#include "desk/view/findings.h"
#include "desk/view/query.h"
#include "desk/view/tables.h"

namespace desk::view {

namespace {

constexpr char kJson[] = "application/json";
constexpr char kHtml[] = "text/html; charset=utf-8";
constexpr char kSvg[] = "image/svg+xml";
constexpr char kText[] = "text/plain; charset=utf-8";

}  // namespace

/// Answers what JobView is asked, each document by a function of its own.
class JobView::Answers {
 public:
  Answers(std::string name, const std::string& bytes) : name_(std::move(name)) {
    checked_.check(name_, bytes);
  }

  const check::CheckSession& checked() const { return checked_; }

  std::string reason() const {
    if (checked_.loads()) return {};
    return asUtf8(escapeControls(job::cannotLoad(name_, checked_.whyNot()).what()));
  }

  Answer answer(const std::string& what, const Query& query);

 private:
  struct Document {
    const char* name;
    const char* type;
    bool needsJob;
    std::string (Answers::*write)(const Query&);
  };

  const job::TracedJob& job() const { return checked_.job(); }
  Bars& bars() {
    if (!bars_) bars_ = std::make_unique<Bars>(checked_);
    return *bars_;
  }
  const job::SourceText& source() const { return *checked_.report().sources.back(); }

  std::string summary(const Query&) {
    show::JobSummary summary;
    summary.add(checked_);
    return summaryJson(summary);
  }

  std::string cuts(const Query&) { return show::cutListHtml(checked_, {}); }

  std::string drawing(const Query&) { return bars().sheets(); }
  std::string barList(const Query&) { return bars().list(); }
  std::string bar(const Query& query) { return bars().one(query); }

  std::string table(const Query& query) {
    if (!tables_) tables_.emplace(checked_);
    return tables_->answer(query);
  }

  std::string findings(const Query& query) { return findingsDocument(checked_.report(), query); }
  std::string sourceLines(const Query& query) { return sourceDocument(source(), query); }

  std::string piece(const Query& query);
  std::string raisedDocument(const show::Raised& raised);

  std::string name_;
  check::CheckSession checked_{check::CheckSession::Readers::Fresh};
  std::optional<Tables> tables_;  ///< once asked for
  std::unique_ptr<Bars> bars_;    ///< once asked for
};

Answer JobView::Answers::answer(const std::string& what, const Query& query) {
  static constexpr Document kDocuments[] = {{"summary", kJson, true, &Answers::summary},
                                            {"cuts", kHtml, true, &Answers::cuts},
                                            {"drawing", kSvg, true, &Answers::drawing},
                                            {"bars", kJson, true, &Answers::barList},
                                            {"bar", kSvg, true, &Answers::bar},
                                            {"table", kJson, true, &Answers::table},
                                            {"findings", kJson, false, &Answers::findings},
                                            {"source", kJson, false, &Answers::sourceLines},
                                            {"piece", kJson, true, &Answers::piece}};
  const auto isIt = [&](const Document& document) { return what == document.name; };
  const auto* const found = std::find_if(std::begin(kDocuments), std::end(kDocuments), isIt);
  if (found == std::end(kDocuments)) return {404, "there is no such document", kText};
  if (found->needsJob && !checked_.loads()) return {404, reason(), kText};
  try {
    return {200, (this->*found->write)(query), found->type};
  } catch (const Refusal& refusal) {
    return {refusal.status, refusal.what(), kText};
  } catch (const show::Raised& raised) {
    return {200, raisedDocument(raised), kJson};
  }
}

namespace {

/// Where the last value of a piece stands.
job::Position lastOf(const job::TracedJob& job, const job::PieceTrace& trace,
                     const job::Element& element) {
  job::Position last = trace.place.at;
  const auto isBehind = [](const job::Position& one, const job::Position& other) {
    return std::tie(one.line, one.column) > std::tie(other.line, other.column);
  };
  const auto look = [&](const auto& ids) {
    for (const job::OriginId id : ids) {
      const job::Origin& origin = job.origins[id];
      const bool isOwn = origin.element.bar == element.bar && origin.element.piece == element.piece;
      if (id != 0 && isOwn && isBehind(origin.place.at, last)) last = origin.place.at;
    }
  };
  look(trace.keys);
  look(trace.cut);
  look(trace.labels);
  for (const job::WorkTrace& work : trace.works) look(work.keys);
  return last;
}

/// Spells out the controls in all texts of a value: a page shows them as they are.
void escapeTexts(Json::Value& value) {
  if (value.isString()) {
    const std::ptrdiff_t place = value.getOffsetStart();  // by which members are ordered
    value = escapeControls(value.asString());
    value.setOffsetStart(place);
  } else if (value.isObject() || value.isArray()) {
    for (Json::Value& one : value) escapeTexts(one);
  }
}

}  // namespace

std::string JobView::Answers::piece(const Query& query) {
  const std::string id = valueOf(query, "id");
  job::Element element = elementOf(id);
  element.work = 0;
  const auto at = [](int number) { return static_cast<std::size_t>(number - 1); };
  const auto& bars = job().bars;
  if (element.piece == 0 || at(element.bar) >= bars.size() ||
      at(element.piece) >= bars[at(element.bar)].pieces.size()) {
    throw Refusal(404, "the job has no such piece");
  }
  const auto fact = show::pieceAt(job(), element);
  Json::Value value = show::pieceValue(fact);
  escapeTexts(value);
  value["id"] = idOf(element);
  if (fact.at.column > 0) value["column"] = fact.at.column;
  const auto last = lastOf(job(), bars[at(element.bar)].pieces[at(element.piece)], element);
  value["lastLine"] = last.line;
  if (last.column > 0) value["lastColumn"] = last.column;
  value["group"] = Json::UInt64{this->bars().groupOf(element.bar)};
  value["findings"] = Json::UInt64{countAbout(checked_.report(), element)};
  return jsonDocument(value, show::pieceOrder());
}

std::string JobView::Answers::raisedDocument(const show::Raised& raised) {
  Json::Value value;
  value["all"] = value["rows"] = 0;
  value["raises"] = asUtf8(raised.what() + show::causeOf(raised, name_, source().bytes()));
  return compactJson(value);
}

JobView::JobView(std::string name, const std::string& bytes)
    : answers_(std::make_unique<Answers>(std::move(name), bytes)) {}
JobView::~JobView() = default;
JobView::JobView(JobView&&) noexcept = default;
JobView& JobView::operator=(JobView&&) noexcept = default;

bool JobView::loads() const {
  return answers_->checked().loads();
}

std::string JobView::reason() const {
  return answers_->reason();
}

job::Position JobView::reasonAt() const {
  return answers_->checked().faultAt();
}

Answer JobView::answer(const std::string& what, const Query& query) {
  return answers_->answer(what, query);
}

}  // namespace desk::view
