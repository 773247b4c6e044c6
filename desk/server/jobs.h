// The jobs that the page shows: those of files, which it follows, and those that were dropped on
// it.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "desk/base/file_watch.h"
#include "desk/job/source_text.h"
#include "desk/server/http_request.h"
#include "desk/view/job_view.h"

namespace desk::server {

/// What pages are told of a job.
struct JobFacts {
  int id;                ///< in the order of the command line, from 0, then of dropping
  std::string name;      ///< fit for a line of text
  unsigned version = 0;  ///< counts those that load; the last of them is shown. 0: none did
  bool loads = false;    ///< the last save
  bool isDropped = false;
  std::string reason{};   ///< why it does not load; empty also while it has not been read yet
  job::Position place{};  ///< of the reason in the file
};

/// A document of a job that is asked for.
struct JobQuestion {
  int id;
  std::string version;  ///< that is meant; empty: whichever there is
  std::string what;
  view::Query query;
};

/// A job without a file.
struct DroppedJob {
  std::string name;
  std::string bytes;
  std::shared_ptr<void> held;  ///< for as long as the bytes wait
};

/// Holds the last version of each job that loads, and a few views of them: more are made again when
/// they are asked for. For one thread: it is busy for as long as a check of the job takes.
class Jobs {
 public:
  /// Is told what there is, at once and whenever it has changed.
  using Listener = std::function<void(const std::vector<JobFacts>&)>;

  /// Reads nothing yet.
  Jobs(const std::vector<std::string>& files, Listener listener);

  /// Reads files that have not been read or that were saved since. Looks at the disk.
  void follow();

  /// What the view says; 404 without such a job, 409 when there is another version of it.
  HttpAnswer answer(const JobQuestion& question);

  /// Takes a job beside the others, and tells its number as JSON. The oldest of too many goes.
  HttpAnswer add(DroppedJob dropped);

 private:
  struct Job {
    JobFacts facts;
    std::string file;  ///< as the view is to call it
    bool isRead = false;
    std::string bytes{};  ///< of the version that is shown: the last good one, or the last one
  };

  /// A job as it is shown, and the documents that were asked for without a query.
  struct View {
    int id;  ///< of the job
    std::unique_ptr<view::JobView> view;
    std::map<std::string, HttpAnswer> documents{};
  };

  void read(Job& job);
  void take(Job& job, std::string bytes);
  void replace(Job& job, std::string bytes);
  void settle(Job& job, bool loads, const std::string& reason, job::Position place);
  View& viewOf(const Job& job);
  View& keepView(int id, std::unique_ptr<view::JobView> view);
  void tell() const;

  const Listener listener_;
  std::list<Job> jobs_;
  int nextId_ = 0;
  FileWatch watch_;
  std::list<View> views_;  ///< the one used last comes first
};

}  // namespace desk::server
