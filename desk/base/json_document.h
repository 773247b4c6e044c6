// JSON documents as the desk writes them.
#pragma once

#include <json/value.h>

#include <functional>
#include <string>
#include <vector>

namespace desk {

/// The document with a line end: indented, characters as they are, numbers as short as they read
/// back, no blank at the end of a line. Texts must be UTF-8.
/// @param order the members that go before others, in this order. Those that were given a start as
///              their offset go next, by it, and the rest by the alphabet.
std::string jsonDocument(const Json::Value& root, const std::vector<std::string>& order = {});

/// The same of an array of objects, which may be long: they are asked for one after the other.
std::string jsonArray(std::size_t size, const std::function<Json::Value(std::size_t)>& elementAt,
                      const std::vector<std::string>& order = {});

/// The document on one line, its members by the alphabet, without a line end: for programs that
/// read it at once. Texts must be UTF-8.
std::string compactJson(const Json::Value& root);

}  // namespace desk
