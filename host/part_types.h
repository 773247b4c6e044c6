// Types that cross the part callbacks between the panel runtime and the plug-in.
//
// The runtime owns every object declared here; the plug-in only reads them, and fills the callback
// structure once when it is asked to.
#pragma once

#include <functional>
#include <string>

// --- names fixed by the host ---------------------------------------------------------------------

/// A point in panel pixels, measured from the top left corner of the screen.
struct tagPOINT {
  int x;
  int y;
};

/// A rectangle in panel pixels. `right` and `bottom` are the first column and row outside of it.
struct tagRECT {
  int left;
  int top;
  int right;
  int bottom;
};

/// What the operator did to a part. The plug-in handles `CLICKPART_CLICK` and ignores the rest.
enum tagCLICKPARTTYPE : int {
  CLICKPART_NONE = 0,
  CLICKPART_CLICK = 1,
};

/// The part-information record that the data pointer of the init callback points to.
struct tagPARTINFO {
  tagRECT rect;  ///< where the part lies on the screen
};

/// The six part callbacks, in the order that the runtime fixes. The plug-in fills all of them.
///
/// The first argument of every slot but `create` is the handle that `create` returned. Each slot
/// answers false for a null handle and else whether the part accepted the call. The runtime owns
/// the handle and gives it back to `destroy` exactly once. It empties the structure before it unloads
/// the plug-in: the slots would call code that is gone.
struct tagPARTCALLBACKS {
  std::function<void*()> create;
  std::function<bool(void* part)> destroy;
  std::function<bool(void* part, void* partInfo)> init;
  std::function<bool(void* part, int, int clickType, tagPOINT const& point, void* data)> click;
  std::function<bool(void* part, void* data)> plcRead;
  std::function<bool(void* part, std::string& svg, void* data)> fillPartShowAttr;
};
