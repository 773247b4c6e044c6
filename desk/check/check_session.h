// Checks files one after the other, each with fresh readers or all with the same.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "desk/check/finding.h"
#include "desk/check/json_watcher.h"
#include "desk/check/rule_settings.h"
#include "desk/check/xml_watcher.h"
#include "desk/host/documents.h"
#include "model/job_format.h"

namespace desk::check {

/// A file that could not be read at all.
struct Unreadable {
  std::string file;
  std::string reason;
};

/// What a check of several files found.
struct Report {
  Sources sources;                     ///< the files that could be read, in order
  Findings findings;                   ///< by file, then by place
  std::vector<Unreadable> unreadable;  ///< in order
};

class CheckSession {
 public:
  enum class Readers {
    Fresh,  ///< every file stands for itself
    Kept,   ///< values leak from file to file, as on the machine
  };

  explicit CheckSession(Readers readers, RuleSettings settings = {})
      : readers_(readers), settings_(std::move(settings)) {}

  /// Reads and checks one file of this PC. Findings of the file are sorted by place.
  void check(const std::string& file);

  /// The same for the content of a file.
  void check(const std::string& file, std::string bytes);

  /// Takes something that cannot be read into the report.
  void refuse(const std::string& name, const std::string& reason);

  /// Keeps the document of the last file as long as the session: for a program that frees neither,
  /// as freeing a document takes half as long as parsing it.
  void keepDocument() { keepsDocument_ = true; }

  const Report& report() const { return report_; }

  /// Whether a panel would load the last file.
  bool loads() const { return loads_; }

  /// Why not, for job::cannotLoad, and where the fault stands: line 0 where it has no place.
  const std::string& whyNot() const { return whyNot_; }
  Position faultAt() const { return faultAt_; }

  /// What the reader of a format holds after the last file. Good until the next one.
  const TracedJob& job(model::JobFormat format) const {
    return format == model::JobFormat::Xml ? xml() : json();
  }
  const TracedJob& json() const { return panel_->jsonWatcher.traced(); }
  const TracedJob& xml() const { return panel_->xmlWatcher.traced(); }

  /// The format of the last file, and the job of it.
  model::JobFormat format() const { return format_; }
  const TracedJob& job() const { return job(format_); }

  /// The JSON reader itself, for queries that keep lists in it. Its records are not to be changed.
  JsonAnalysis& jsonReader() { return panel_->json; }

 private:
  void checkName(const std::string& file);
  void checkEncoding();
  void checkJson();
  void checkXml();
  void checkJob(model::JobFormat format);

  /// Checks a document that has misspelt names again with these mended, until none is left.
  /// @param from index of the document's first finding
  template <class Root>
  void checkMended(Root& root, std::size_t from, const std::function<void()>& check);
  void checkZeroReferences();
  void judgeXml();
  void checkOtherReader();
  void refuseDocument(const deskhost::DocumentFault& fault);
  void reportFault(const deskhost::DocumentFault& fault);
  void noteLeniencies(const JsonPositions& text);
  void add(const char* rule, Severity severity, Position at, const std::string& message);

  const SourceText& source() const { return *report_.sources.back(); }
  int file() const { return static_cast<int>(report_.sources.size()) - 1; }

  /// The readers of a panel, watched.
  struct Panel {
    JsonAnalysis json;
    XmlAnalysis xml;
    JsonWatcher jsonWatcher{json};
    XmlWatcher xmlWatcher{xml};
  };

  Readers readers_;
  model::JobFormat format_ = model::JobFormat::Json;  ///< of the last file
  RuleSettings settings_;
  Report report_;
  bool loads_ = false;
  std::string whyNot_;  ///< empty where it loads
  Position faultAt_;
  std::shared_ptr<void> document_;  ///< of the last file
  bool keepsDocument_ = false;
  std::unique_ptr<Panel> panel_ = std::make_unique<Panel>();
};

}  // namespace desk::check
