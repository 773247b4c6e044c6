// What the plug-in expects of its host, as small as it can be.
#include <json/json.h>
#include <tinyxml2.h>

#include <chrono>
#include <fstream>
#include <sstream>

#include "host/cbl.h"
#include "host/media.h"
#include "host/utility.h"

/// What stands for the controller's file system.
std::string root;

int cbl::loadJsonFile(const std::string& path, Json::Value& document, bool) {
  std::ifstream file(root + path);
  return Json::parseFromStream(Json::CharReaderBuilder(), file, &document, nullptr) ? 0 : -1;
}

int cbl::loadXmlFile(const std::string& path, tinyxml2::XMLDocument& document,
                     tinyxml2::XMLElement*& first) {
  if (document.LoadFile((root + path).c_str()) != tinyxml2::XML_SUCCESS) return -1;
  first = document.RootElement();
  return first == nullptr ? -1 : 0;
}

cbl::CHttpDownload::CHttpDownload() {}
cbl::CHttpDownload::~CHttpDownload() {}
int cbl::CHttpDownload::get(const std::string&, const std::string&, const std::string&, long long,
                            long long) {
  return -101;  // this host has no network
}

void CHmiMedia::getUdiskPath(std::string& path) {
  path = "/mnt/usb/";
}

UTILITY::CTime* UTILITY::CTime::get_instance() {
  static CTime clock;
  return &clock;
}
unsigned long long UTILITY::CTime::getTickCount() {
  using namespace std::chrono;
  const auto time = steady_clock::now().time_since_epoch();
  return static_cast<unsigned long long>(duration_cast<milliseconds>(time).count());
}

struct UTILITY::CSVGCreator::Drawing {
  std::ostringstream svg;
};
UTILITY::CSVGCreator::CSVGCreator() : drawing_(new Drawing) {}
UTILITY::CSVGCreator::~CSVGCreator() {
  delete drawing_;
}
void UTILITY::CSVGCreator::begin(int width, int height) {
  drawing_->svg.str("");
  drawing_->svg << "<svg xmlns='http://www.w3.org/2000/svg' width='" << width << "' height='"
                << height << "' font-family='sans-serif' dominant-baseline='central'>\n";
}
void UTILITY::CSVGCreator::rectangle(const tagRECT& area, const char* fill) {
  if (area.right <= area.left || area.bottom <= area.top) return;
  drawing_->svg << "<rect x='" << area.left << "' y='" << area.top << "' width='"
                << area.right - area.left << "' height='" << area.bottom - area.top << "' fill='"
                << fill << "'/>\n";
}
void UTILITY::CSVGCreator::line(const tagPOINT& from, const tagPOINT& to, const char* stroke) {
  const bool flat = from.y == to.y;  // the table has no slanting lines
  rectangle({from.x, from.y, flat ? to.x : from.x + 1, flat ? from.y + 1 : to.y}, stroke);
}
void UTILITY::CSVGCreator::text(const tagPOINT& at, const std::string& words, int fontSize,
                                const char* fill, bool bold) {
  tinyxml2::XMLPrinter escaped;
  escaped.PushText(words.c_str());
  drawing_->svg << "<text x='" << at.x << "' y='" << at.y << "' font-size='" << fontSize
                << "' fill='" << fill << (bold ? "' font-weight='bold'>" : "'>") << escaped.CStr()
                << "</text>\n";
}
std::string UTILITY::CSVGCreator::getXml() {
  return drawing_->svg.str() + "</svg>\n";
}
