#include "desk/server/http_request.h"

#include <microhttpd.h>
#include <strings.h>

#include <utility>

namespace desk::server {

HttpRequest::HttpRequest(MHD_Connection* connection, std::string method, std::string path)
    : connection_(connection), method_(std::move(method)), path_(std::move(path)) {}

std::string HttpRequest::header(const char* name) const {
  const char* value = MHD_lookup_connection_value(connection_, MHD_HEADER_KIND, name);
  return value != nullptr ? value : "";
}

int HttpRequest::headerCount(const char* name) const {
  std::pair<const char*, int> counted(name, 0);
  MHD_get_connection_values(
      connection_, MHD_HEADER_KIND,
      [](void* data, MHD_ValueKind, const char* key, const char*) {
        auto& [wanted, count] = *static_cast<std::pair<const char*, int>*>(data);
        if (strcasecmp(key, wanted) == 0) ++count;
        return MHD_YES;
      },
      &counted);
  return counted.second;
}

std::map<std::string, std::string> HttpRequest::query() const {
  std::map<std::string, std::string> fields;
  MHD_get_connection_values(
      connection_, MHD_GET_ARGUMENT_KIND,
      [](void* data, MHD_ValueKind, const char* key, const char* value) {
        auto& all = *static_cast<std::map<std::string, std::string>*>(data);
        all[key] = value != nullptr ? value : "";
        return MHD_YES;
      },
      &fields);
  return fields;
}

std::string HttpRequest::field(const char* name) const {
  const char* value = MHD_lookup_connection_value(connection_, MHD_GET_ARGUMENT_KIND, name);
  if (value != nullptr) return value;
  const auto found = form_.find(name);
  return found != form_.end() ? found->second : "";
}

}  // namespace desk::server
