#include <tinyxml2.h>

#include "desk/base/text.h"
#include "desk/check/reports.h"

namespace desk::check {

namespace {

/// Controls are spelled out, so that a message keeps its one line.
std::string asXmlText(const std::string& text) {
  return xmlText(escapeControls(text));
}

class JunitReport {
 public:
  JunitReport(const Report& report, FailOn failOn)
      : report_(report), findings_(listed(report)), failOn_(failOn) {}

  std::string write() {
    printer_.PushHeader(false, true);
    printer_.OpenElement("testsuites");
    for (std::size_t i = 0; i < report_.sources.size(); ++i) writeFile(static_cast<int>(i));
    for (const Unreadable& file : report_.unreadable) writeUnreadable(file);
    printer_.CloseElement();
    return printer_.CStr();
  }

 private:
  void openSuite(const std::string& file, int tests, int failures, int errors) {
    printer_.OpenElement("testsuite");
    printer_.PushAttribute("name", asXmlText(file).c_str());
    printer_.PushAttribute("tests", tests);
    printer_.PushAttribute("failures", failures);
    printer_.PushAttribute("errors", errors);
  }

  void openCase(const std::string& file, const std::string& name) {
    printer_.OpenElement("testcase");
    printer_.PushAttribute("classname", asXmlText(file).c_str());
    printer_.PushAttribute("name", name.c_str());
  }

  void writeFile(int file) {
    std::vector<const Finding*> findings;
    int failures = 0;
    for (const Finding& finding : findings_) {
      if (finding.place.file != file) continue;
      findings.push_back(&finding);
      failures += fails(finding, failOn_) ? 1 : 0;
    }
    const std::string& name = report_.sources[static_cast<std::size_t>(file)]->name();
    openSuite(name, std::max(1, static_cast<int>(findings.size())), failures, 0);
    if (findings.empty()) {
      openCase(name, "no findings");
      printer_.CloseElement();
    }
    for (const Finding* finding : findings) writeFinding(name, *finding);
    printer_.CloseElement();
  }

  void writeFinding(const std::string& file, const Finding& finding) {
    openCase(file, positionText(finding.place.at) + " " + finding.rule);
    const std::string text = asXmlText(finding.message);
    if (fails(finding, failOn_)) {
      printer_.OpenElement("failure");
      printer_.PushAttribute("type", nameOf(finding.severity));
      printer_.PushAttribute("message", text.c_str());
      for (const Finding& one : finding.consequences) {
        printer_.PushText((asXmlText(one.message) + "\n").c_str());
      }
    } else {
      printer_.OpenElement("system-out");
      std::string lines = std::string(nameOf(finding.severity)) + ": " + text;
      for (const Finding& one : finding.consequences) lines += "\n" + asXmlText(one.message);
      printer_.PushText(lines.c_str());
    }
    printer_.CloseElement();
    printer_.CloseElement();
  }

  void writeUnreadable(const Unreadable& file) {
    openSuite(file.file, 1, 0, 1);
    openCase(file.file, "readable");
    printer_.OpenElement("error");
    printer_.PushAttribute("message", asXmlText(file.reason).c_str());
    printer_.CloseElement();
    printer_.CloseElement();
    printer_.CloseElement();
  }

  const Report& report_;
  const Findings findings_;
  FailOn failOn_;
  tinyxml2::XMLPrinter printer_;
};

}  // namespace

std::string junitReport(const Report& report, FailOn failOn) {
  return JunitReport(report, failOn).write();
}

}  // namespace desk::check
