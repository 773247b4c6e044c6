// Explains what the XML reader makes of a job.
#pragma once

#include <array>
#include <iterator>
#include <string>
#include <vector>

#include "desk/check/watcher.h"
#include "xml/xml_analysis.h"

namespace tinyxml2 {
class XMLElement;
class XMLNode;
}  // namespace tinyxml2

namespace desk::check {

/// Watches one reader: what that carries over, this knows the origin of.
class XmlWatcher : public Watcher {
 public:
  using XMLElement = tinyxml2::XMLElement;

  /// @param reader a new one, which must outlive the watcher and is filled by it only
  explicit XmlWatcher(XmlAnalysis& reader)
      : Watcher(reader.data, model::JobFormat::Xml), reader_(reader) {}

  /// Lets the reader read a document.
  /// @param root what the loader made of the last one of `sources`
  /// @return empty, or what the reader throws
  std::string read(XMLElement& root, const Sources& sources, Findings& findings);

  // --- what the walk tells -----------------------------------------------------------------------

  void begins(Level level, const XMLElement& element);
  template <class Record>
  void looksFor(const XMLElement& parent, const model::Key<Record>& key, const XMLElement* child);
  template <class Record>
  void takes(const XMLElement& child, const model::Key<Record>& key);
  void ends(Level level, const XMLElement& element);
  void cutsEnd(const XMLElement& piece);

 private:
  /// Reports that the value looked for last makes the reader throw.
  void reportRaised(const char* thrown);
  /// Reports a text that is taken for a number and has more to it, or names none.
  void reportNumber(const XMLElement& element, double number);
  /// Reports texts and entities around the root.
  void reportAround(const tinyxml2::XMLNode& document);
  /// Reports all that an element holds and the reader does not look at.
  void reportStrangers(const XMLElement& element, Level level);
  void reportRepeated(const XMLElement& first, Level level);
  /// Reports what becomes of the values that an earlier cut of the same piece brought.
  void reportRepeatedCut(const XMLElement& cut);
  /// @param value the first of its name in its element
  void reportValueContent(const XMLElement& value, Level level);
  void reportAttributes(const XMLElement& element);
  void reportNeverStored(const XMLElement& piece);
  /// Reports what an element did not bring: an empty one for itself, missing ones together.
  void reportAbsent(Level level, const XMLElement& parent, const Absent& absent);
  void reportNever(Level level, const XMLElement& parent, KeySet keys);

  Place placeOf(const tinyxml2::XMLNode& node) const;

  XmlAnalysis& reader_;
  /// Whether the current element of a level has two values of one name.
  std::array<bool, std::size(model::kLevels)> repeats_{};
  Trace<CUT_T> beforeCut_{};  ///< the origins when the current cut began

  /// What the walk looked for last.
  struct {
    const XMLElement* parent = nullptr;
    const XMLElement* child = nullptr;
    const char* name = nullptr;
  } wanted_;
};

}  // namespace desk::check
