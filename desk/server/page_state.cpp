#include "desk/server/page_state.h"

#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <filesystem>

namespace desk::server {

namespace {

constexpr std::size_t kMostLines = 1000;

const char* sourceName(panel::OutputSource source) {
  switch (source) {
    case panel::OutputSource::Script:
      return "script";
    case panel::OutputSource::Plugin:
      return "plugin";
    case panel::OutputSource::Desk:
      return "desk";
    case panel::OutputSource::Error:
      break;
  }
  return "error";
}

bool sameView(const panel::View& a, const panel::View& b) {
  return a.picture == b.picture && a.page.current == b.page.current &&
         a.page.count == b.page.count && a.rows == b.rows && a.selected == b.selected &&
         a.failed == b.failed && a.jobFault == b.jobFault;
}

Json::Value toJson(const panel::PanelFacts& facts, const panel::View& view) {
  Json::Value json;
  json["script"] = std::filesystem::path(facts.script).filename().string();
  json["job"] = facts.job;
  json["width"] = facts.width;
  json["height"] = facts.height;
  json["picture"] = Json::UInt64{view.picture};
  json["page"] = view.page.current;
  json["pages"] = view.page.count;
  json["rows"] = view.rows;
  json["selected"] = view.selected ? Json::Value(*view.selected) : Json::Value();
  json["failed"] = view.failed;
  json["jobFault"] = view.jobFault;
  return json;
}

Json::Value toJson(const std::vector<JobFacts>& jobs) {
  Json::Value list = Json::arrayValue;
  for (const JobFacts& job : jobs) {
    Json::Value json;
    json["id"] = job.id;
    json["name"] = job.name;
    json["version"] = job.version;
    json["loads"] = job.loads;
    json["dropped"] = job.isDropped;
    json["reason"] = job.reason;
    json["line"] = job.place.line;
    json["column"] = job.place.column;
    list.append(std::move(json));
  }
  return list;
}

}  // namespace

void PageState::publish(const panel::View& view) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (sameView(view_, view)) return;
  view_ = view;
  ++version_;
  noteChange();
}

void PageState::addLine(panel::OutputSource source, const std::string& line) {
  const std::lock_guard<std::mutex> lock(mutex_);
  lines_.emplace_back(source, line);
  if (lines_.size() > kMostLines) {
    lines_.pop_front();
    ++firstLine_;
  }
  ++version_;
  noteChange();
}

void PageState::setJobs(const std::vector<JobFacts>& jobs) {
  const std::lock_guard<std::mutex> lock(mutex_);
  jobs_ = jobs;
  jobsVersion_ = ++version_;
  noteChange();
}

void PageState::notify() {
  const std::lock_guard<std::mutex> lock(mutex_);
  noteChange();
}

std::uint64_t PageState::wait(std::uint64_t seen, std::chrono::milliseconds timeout) {
  std::unique_lock<std::mutex> lock(mutex_);
  changed_.wait_for(lock, timeout, [&] { return changes_ != seen; });
  return changes_;
}

std::string PageState::changesSince(Cursor& cursor) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (cursor.version == version_) return {};
  Json::Value json = toJson(facts_, view_);
  json["isFirst"] = cursor.version == 0;
  json["lines"] = Json::arrayValue;
  const std::uint64_t seen = std::max(cursor.line, firstLine_) - firstLine_;
  for (auto line = lines_.begin() + static_cast<std::ptrdiff_t>(seen); line != lines_.end();
       ++line) {
    Json::Value pair;
    pair.append(sourceName(line->first));
    pair.append(line->second);
    json["lines"].append(pair);
  }
  if (cursor.jobs != jobsVersion_) json["jobs"] = toJson(jobs_);
  cursor = {version_, firstLine_ + lines_.size(), jobsVersion_};
  Json::StreamWriterBuilder writer;
  writer["indentation"] = "";
  writer["emitUTF8"] = true;
  return Json::writeString(writer, json);
}

std::string PageState::picture() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return view_.svg;
}

void PageState::close() {
  const std::lock_guard<std::mutex> lock(mutex_);
  closed_ = true;
  noteChange();
}

/// Call it with the mutex locked.
void PageState::noteChange() {
  ++changes_;
  changed_.notify_all();
}

bool PageState::isClosed() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return closed_;
}

}  // namespace desk::server
