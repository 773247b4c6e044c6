// One table part of the plug-in, driven as the panel drives it: created, fed and destroyed through
// the part callbacks, and paged through the plug-in's exported members.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "desk/script/plugin.h"
#include "host/plugin.h"

namespace desk::panel {

/// The current page, counted from 1, and how many there are.
struct Page {
  unsigned short current;
  unsigned short count;
};

/// Owns the part. The plug-in must outlive it. See part/table_part.h for what the members do.
class TablePart {
 public:
  using Rows = cus_plugin::Rows;

  /// Creates a part that lies on `area` of the panel. Throws Error when the plug-in lacks a
  /// callback or member, or refuses to make a part.
  TablePart(const script::Plugin& plugin, tagRECT area);
  ~TablePart();
  TablePart(const TablePart&) = delete;
  TablePart& operator=(const TablePart&) = delete;

  void reset();
  void setOrder(unsigned short order);
  bool setCell(unsigned short rows, unsigned short cols, const std::string& widths);
  void drawHead(const std::vector<std::string>& titles);

  /// In descending order the list comes back reversed. @return whether a redraw was granted
  bool setBody(Rows& rows);

  bool update(unsigned short total, int& first, int& last);
  bool pageUp();
  bool pageDown();
  Page page();

  /// The number of the selected row in the whole list, counted from 1; none when no row is
  /// selected, or one below the end of the list.
  std::optional<int> index();

  /// @return whether a redraw was granted
  bool refresh();

  void click(tagPOINT point);

  /// The panel's cyclic question. @return whether the part wants to be drawn anew
  bool wantsRedraw();

  std::string picture();

 private:
  /// The exported members, as functions that take the part first.
  struct Members {
    explicit Members(const script::Plugin& plugin);
    int (*reset)(void*);
    int (*setCell)(void*, unsigned short, unsigned short, const char*);
    void (*drawHead)(void*, const std::vector<std::string>&);
    int (*setBody)(void*, Rows&);
    int (*update)(void*, unsigned short, int&, int&);
    int (*pageUp)(void*);
    int (*pageDown)(void*);
    void (*getPage)(void*, unsigned short&, unsigned short&);
    int (*getIndex)(void*, int&);
    int (*refresh)(void*);
  };

  const Members members_;
  tagPARTCALLBACKS callbacks_;
  void* part_ = nullptr;
};

}  // namespace desk::panel
