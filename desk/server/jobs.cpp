#include "desk/server/jobs.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "desk/base/files.h"
#include "desk/base/text.h"
#include "desk/host/documents.h"
#include "desk/job/job_file.h"

namespace desk::server {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostViews = 4;
constexpr std::ptrdiff_t kMostDropped = 4;
constexpr std::chrono::milliseconds kReadingTime{100};  ///< at one go

std::string lineOf(const std::string& name) {
  return escapeControls(job::shownName(name));
}

HttpAnswer textAnswer(unsigned status, const std::string& text) {
  return {status, text + "\n", "text/plain; charset=utf-8"};
}

}  // namespace

Jobs::Jobs(const std::vector<std::string>& files, Listener listener)
    : listener_(std::move(listener)) {
  for (const std::string& file : files) {
    jobs_.push_back({{nextId_++, lineOf(file)}, file});
    if (file != kStandardStream) watch_.note(file);
  }
  tell();
}

void Jobs::follow() {
  const auto end = Clock::now() + kReadingTime;
  for (Job& job : jobs_) {
    if (!job.isRead && Clock::now() < end) read(job);
  }
  for (const std::string& file : watch_.changed()) {
    for (Job& job : jobs_) {
      if (job.file == file && !job.facts.isDropped) read(job);
    }
  }
}

HttpAnswer Jobs::answer(const JobQuestion& question) {
  const auto found = std::find_if(jobs_.begin(), jobs_.end(),
                                  [&](const Job& job) { return job.facts.id == question.id; });
  if (found == jobs_.end()) return textAnswer(404, "there is no such job");
  if (!found->isRead) read(*found);
  if (!question.version.empty() && question.version != std::to_string(found->facts.version)) {
    return textAnswer(409, "there is another version of that job");
  }
  if (!found->facts.loads && found->bytes.empty()) return textAnswer(404, found->facts.reason);
  View& view = viewOf(*found);
  const auto known = view.documents.find(question.what);
  if (question.query.empty() && known != view.documents.end()) return known->second;
  view::Answer made = view.view->answer(question.what, question.query);
  HttpAnswer answer = {
      made.status, {}, std::move(made.type), std::make_shared<std::string>(std::move(made.body))};
  if (question.query.empty() && answer.status == 200) view.documents[question.what] = answer;
  return answer;
}

HttpAnswer Jobs::add(DroppedJob dropped) {
  const auto isDropped = [](const Job& job) { return job.facts.isDropped; };
  if (std::count_if(jobs_.begin(), jobs_.end(), isDropped) >= kMostDropped) {
    const auto oldest = std::find_if(jobs_.begin(), jobs_.end(), isDropped);
    views_.remove_if([&](const auto& view) { return view.id == oldest->facts.id; });
    jobs_.erase(oldest);
  }
  jobs_.push_back({{nextId_++, lineOf(dropped.name)}, dropped.name});
  jobs_.back().facts.isDropped = true;
  take(jobs_.back(), std::move(dropped.bytes));
  return {200, "{\"id\":" + std::to_string(jobs_.back().facts.id) + "}\n", "application/json"};
}

void Jobs::read(Job& job) {
  std::string bytes;
  std::string reason;
  if (deskhost::readDocumentFile(job.file, bytes, reason)) return take(job, std::move(bytes));
  settle(job, false, cannotRead(job.file, reason).what(), {});
}

void Jobs::take(Job& job, std::string bytes) try {
  const bool isShown = job.facts.version > 0 && bytes == job.bytes;
  isShown ? settle(job, true, "", {}) : replace(job, std::move(bytes));
} catch (const std::exception& error) {
  settle(job, false, job::cannotLoad(job.file, error.what()).what(), {});
}

void Jobs::replace(Job& job, std::string bytes) {
  auto view = std::make_unique<view::JobView>(job.file, bytes);
  const bool loads = view->loads();
  const std::string reason = view->reason();
  const job::Position place = view->reasonAt();
  if (loads || job.facts.version == 0) {
    job.bytes = std::move(bytes);
    keepView(job.facts.id, std::move(view));
  }
  if (loads) ++job.facts.version;
  settle(job, loads, reason, place);
}

/// Takes what has become of the last save.
void Jobs::settle(Job& job, bool loads, const std::string& reason, job::Position place) {
  job.isRead = true;
  job.facts.loads = loads;
  job.facts.reason = escapeControls(reason);
  job.facts.place = place;
  tell();
}

Jobs::View& Jobs::viewOf(const Job& job) {
  const auto kept = std::find_if(views_.begin(), views_.end(),
                                 [&](const auto& view) { return view.id == job.facts.id; });
  if (kept == views_.end()) {
    return keepView(job.facts.id, std::make_unique<view::JobView>(job.file, job.bytes));
  }
  views_.splice(views_.begin(), views_, kept);
  return *kept;
}

Jobs::View& Jobs::keepView(int id, std::unique_ptr<view::JobView> view) {
  views_.remove_if([&](const auto& one) { return one.id == id; });
  views_.push_front({id, std::move(view)});
  if (views_.size() > kMostViews) views_.pop_back();
  return views_.front();
}

void Jobs::tell() const {
  std::vector<JobFacts> all;
  for (const Job& job : jobs_) all.push_back(job.facts);
  listener_(all);
}

}  // namespace desk::server
