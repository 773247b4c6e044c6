// The shadow of the XML reader.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "desk/check/shadow_reader.h"

namespace tinyxml2 {
class XMLElement;
class XMLNode;
}  // namespace tinyxml2

namespace desk::check {

/// Follows XmlAnalysis. One object stands for one reader: it carries over what that carries over.
class XmlShadow : public ShadowReader {
 public:
  /// Reads a document as the reader does.
  /// @param root what the loader made of the last one of `sources`
  /// @return empty, or what the reader throws; then the state is what such a read leaves behind
  std::string read(const tinyxml2::XMLElement& root, const Sources& sources, Findings& findings);

 private:
  using XMLElement = tinyxml2::XMLElement;

  void readBar(const XMLElement& bar, const Element& here);
  void readPiece(const XMLElement& piece, const Element& here);
  void readCuts(const XMLElement& piece, const Element& here);
  void readWork(const XMLElement& work, const Element& here);

  template <class Record, std::size_t count>
  void readElements(const XMLElement& parent, const model::Key<Record> (&keys)[count],
                    Traced<Record>& current, Level level, const Element& here, std::size_t from = 0,
                    std::size_t to = count);
  template <class Record>
  void readElement(const XMLElement& child, const model::Key<Record>& key, Traced<Record>& current,
                   const Element& here);

  /// The child, which must be there and hold text. Throws what the reader throws.
  const XMLElement& required(const XMLElement* child, const std::string& name,
                             const XMLElement& parent, const Element& here);
  /// The number in the text of a required element. Throws what the reader throws.
  double readNumber(const XMLElement& element, const Element& here);

  /// Reports texts and entities around the root.
  void reportAround(const tinyxml2::XMLNode& document);
  /// Reports all that an element holds and the reader does not look at.
  void reportStrangers(const XMLElement& element, Level level, const Element& here);
  void reportRepeated(const XMLElement& parent, const char* name, Level level, const Element& here);
  /// Reports what becomes of the values that an earlier cut of the same piece brought.
  void reportRepeatedCut(const XMLElement& cut, const Trace<CUT_T>& before, const Element& here);
  void reportValueContent(const XMLElement& value, const Element& here);
  void reportAttributes(const XMLElement& element, const Element& here);
  void reportNeverStored(const XMLElement& piece, const Element& here);
  /// Reports what stayed: an empty element for itself, missing ones together.
  void reportAbsent(const XMLElement& parent, const std::vector<Stayed>& stayed,
                    const Element& here);

  Place placeOf(const tinyxml2::XMLNode& node) const;
};

}  // namespace desk::check
