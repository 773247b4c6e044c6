#include "desk/check/job_rules.h"

#include "desk/base/text.h"
#include "desk/job/rules.h"
#include "model/job_walks.h"

namespace desk::check {

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

}  // namespace desk::check
