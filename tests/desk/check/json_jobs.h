// Random JSON jobs, most of them damaged.
#pragma once

#include <json/value.h>

#include <random>
#include <string>
#include <vector>

namespace test_support {

class JsonJobs {
 public:
  explicit JsonJobs(unsigned seed) : random_(seed) {}

  /// A job of few elements: keys are missing, misspelt, of the wrong type or there twice.
  Json::Value next();

  /// The text of a document with a line for each member. Some members stand in an object twice.
  /// @param lost     set to the lines of those that a later equal key replaces
  /// @param inHeader set to the lines of those that stand in the root
  std::string write(const Json::Value& root, std::vector<int>& lost,
                    std::vector<int>* inHeader = nullptr);

  bool chance(int percent) { return number(100) < percent; }
  int number(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

 private:
  template <class Table>
  void addKeys(const Table& table, Json::Value& object);
  template <class Make>
  Json::Value list(Make make);
  void addStray(Json::Value& object);
  Json::Value header();
  Json::Value bar();
  Json::Value piece();
  Json::Value cut();
  Json::Value work();
  Json::Value any();
  void writeValue(const Json::Value& value, std::string& text, int& line, std::vector<int>& lost,
                  std::vector<int>* here);

  std::minstd_rand random_;
};

}  // namespace test_support
