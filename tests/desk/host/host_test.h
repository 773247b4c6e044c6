// A root directory, a USB disk and a log of its own for each test of the host's services.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "desk/base/output.h"
#include "desk/host/settings.h"
#include "tests/support/temp_tree.h"

class HostTest : public testing::Test {
 protected:
  HostTest() {
    std::filesystem::create_directories(tree.path("root/mnt/data"));
    std::filesystem::create_directories(tree.path("usb/json"));
    deskhost::settings() = {};
    deskhost::settings().root = tree.path("root");
    deskhost::settings().usb = tree.path("usb");
    desk::setLogSink([this](const std::string& line) { lines.push_back(line); });
  }
  ~HostTest() override {
    desk::setLogSink({});
    deskhost::settings() = {};
  }

  /// The lines logged since the last call, one below the other.
  std::string takeLog() {
    std::string all;
    for (const std::string& line : lines) all += line + "\n";
    lines.clear();
    return all;
  }

  TempTree tree;
  std::vector<std::string> lines;
};
