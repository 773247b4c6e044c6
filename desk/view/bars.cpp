#include "desk/view/bars.h"

#include <filesystem>

#include "desk/base/json_document.h"
#include "desk/base/text.h"

namespace desk::view {

namespace {

draw::JobHeading headingOf(const check::CheckSession& checked) {
  const DATA_T& job = checked.job().job;
  const std::string& file = checked.report().sources.back()->name();
  return {job.Name, std::filesystem::path(file).filename().string(), job.Unit};
}

}  // namespace

Bars::Bars(const check::CheckSession& checked)
    : bars_(job::judgedBars(checked.job().job, checked.format())),
      drawing_(headingOf(checked), bars_, draw::EqualBars::Once),
      groups_(bars_.size()) {
  for (std::size_t group = 0; group < drawing_.groups().size(); ++group) {
    for (const job::BarPlace* bar : drawing_.groups()[group].bars) {
      groups_[static_cast<std::size_t>(bar->number - 1)] = group;
    }
  }
}

std::string Bars::list() const {
  Json::Value document;
  document["groups"] = Json::arrayValue;
  for (std::size_t i = 0; i < drawing_.groups().size(); ++i) {
    Json::Value group;
    group["group"] = Json::UInt64{i};
    for (const job::BarPlace* bar : drawing_.groups()[i].bars) group["bars"].append(bar->number);
    group["count"] = group["bars"].size();
    group["title"] = asUtf8(drawing_.titleOf(i));
    group["width"] = drawing_.width();
    group["height"] = drawing_.heightOf(i);
    document["groups"].append(std::move(group));
  }
  document["legend"] = drawing_.legend();
  return compactJson(document);
}

std::string Bars::one(const Query& query) const {
  const std::size_t group = wholeNumber(query, "group", 0);
  if (group < drawing_.groups().size()) return drawing_.group(group);
  throw Refusal(404, "the job has no such group of bars");
}

}  // namespace desk::view
