// What the command line decides for the host's services, one set per process, and their clock.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace deskhost {

/// Bounds on one download. A transfer that leaves them is a failed transfer.
struct DownloadLimits {
  std::size_t maxBytes = std::size_t{64} << 20;        ///< body, counted while it arrives
  std::size_t maxHeaderBytes = std::size_t{64} << 10;  ///< headers of all answers together
  std::chrono::milliseconds connectTime{10'000};
  std::chrono::milliseconds totalTime{120'000};  ///< from the first look-up to the last byte
  std::chrono::seconds stallTime{20};            ///< slower than `stallSpeed` for this long
  long stallSpeed = 100;                         ///< bytes per second
  long maxRedirects = 5;
};

/// What goes wrong on purpose, so that a script's error paths can be tried. A disk that is missing
/// is `Settings::usb` left empty.
struct DownloadFaults {
  /// Answered to each download, of which nothing is fetched then. Below 0.
  std::optional<int> code;

  /// Whatever came takes the place of the old file, an error page or half a document too, and the
  /// download is taken for a success, as panels may do.
  bool keepsWhateverCame = false;
};

struct Settings {
  /// Directory on this PC that stands for the controller's file system.
  std::string root;

  /// Directory that stands for the mounted USB disk; empty when no disk is plugged in.
  std::string usb;

  /// Files of this PC that stand in for single files of the controller: its absolute path, and the
  /// file as people name it, "-" for standard input. They may lie anywhere and hide what lies below
  /// root or disk; they are only ever read.
  std::map<std::string, std::string> presented;

  /// Told before a document is read which file of this PC that is; may be empty. A document whose
  /// name is refused has no file.
  std::function<void(const std::string& file)> onRead;

  std::size_t maxDocumentBytes = std::size_t{64} << 20;

  /// Nesting of a JSON document. A job needs less than ten levels.
  int maxJsonDepth = 64;

  /// Attributes of one XML element. The XML library compares each with all before it.
  std::size_t maxXmlAttributes = 256;

  /// Character references without a ';' in one XML text or value. The XML library searches for the
  /// ';' of each up to the end.
  std::size_t maxXmlReferences = 256;

  /// Memory for the records of a job: so many bytes, and as many more for each byte of the
  /// document.
  std::size_t recordBytes = std::size_t{40} << 20;
  std::size_t recordBytesPerByte = 40;

  DownloadLimits download;
  DownloadFaults downloadFaults;
};

/// The settings of the process. Set them before the first service is called: nothing is locked.
inline Settings& settings() {
  static Settings instance;
  return instance;
}

/// Stops UTILITY::CTime at this count, in milliseconds, for runs that must come out the same each
/// time; without a value it runs on by itself.
void setTickCount(std::optional<unsigned long long> ticks);

}  // namespace deskhost
