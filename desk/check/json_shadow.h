// The shadow of the JSON reader.
#pragma once

#include <json/value.h>

#include "desk/check/json_text.h"
#include "desk/check/shadow_reader.h"

namespace desk::check {

/// Follows JsonAnalysis. One object stands for one reader: it carries over what that carries over.
class JsonShadow : public ShadowReader {
 public:
  /// Reads a document as the reader does.
  /// @param root what the loader made of the last one of `sources`
  /// @param text that source, walked over
  /// @return the reader's result code
  int read(const Json::Value& root, const JsonText& text, const Sources& sources,
           Findings& findings);

 private:
  int readBars(const Json::Value& root);
  void readBar(const Json::Value& bar, const Element& here);
  void readPiece(const Json::Value& piece, const Element& here);
  void readLabels(const Json::Value& piece, const Element& here);
  void readLabel(const Json::Value& piece, const json_keys::LabelKey& row, const Element& here,
                 std::vector<const char*>& writers);
  void storeLabel(const Json::Value& piece, const char* spelling, std::string FIELD_T::*field,
                  const Element& here, std::vector<const char*>& writers);
  void readCut(const Json::Value& piece, const Element& here);
  void readWork(const Json::Value& work, const Element& here);

  template <class Record, std::size_t count>
  void readKeys(const Json::Value& object, const model::Key<Record> (&keys)[count],
                Traced<Record>& current, Level level, const Element& here);

  /// The value of a key that leads to the next level, null where the reader finds none.
  const Json::Value* structure(const Json::Value& object, const char* key, Json::ValueType type,
                               Level level, const Element& here);

  bool declaresVersion(const Json::Value& root);
  /// @param code what the reader answers
  void reportVersion(const Json::Value& root, int code);
  void reportWrongType(const Json::Value& value, const std::string& key, const char* wanted,
                       Level level, const Element& here);
  void reportShadowed(const Json::Value& value, const Json::Value& winner, const std::string& key,
                      const std::string& winningKey, Level level, const Element& here);
  /// Reports the members that no reader knows and those lost to a later equal one.
  void reportStrangers(const Json::Value& object, Level level, const Element& here);
  void reportNoObject(const Json::Value& value, const char* what, const Element& here);
  /// Reports a text that scripts get only a part of.
  void reportZeroByte(const Json::Value& value, const std::string& key, Level level,
                      const Element& here);
  void reportLabelsNotRead(const Json::Value& piece, const Element& here);

  Place placeOf(const Json::Value& value) const;
  Place placeOfKey(const Json::Value& value) const;

  const JsonText* text_ = nullptr;
};

}  // namespace desk::check
