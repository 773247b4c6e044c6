// The part callbacks: how the host creates, feeds and destroys table parts.
//
// A part handle is what `onCreate` returned. Every other entry point answers false for a null
// handle and does nothing then; else whether the part answered with 0 or more. Nothing is caught:
// what a part throws reaches the host.
#pragma once

#include <string>

#include "host/part_types.h"

// --- names fixed by the host ---------------------------------------------------------------------

/// Fills all six slots; what they held before is released. Found by its bare name. Returns 1
/// always; a failure to install ends the process.
extern "C" int Custom_SetFunPoint(tagPARTCALLBACKS* callbacks) noexcept;

/// A new table part, owned by the host until it hands it to `onDestroy`.
void* onCreate();
bool onDestroy(void* part);

/// `partInfo` points to the host's tagPARTINFO.
bool onInit(void* part, void* partInfo);
bool onClick(void* part, int a, int clickType, tagPOINT const& point, void* data);

/// Whether the part wants to be drawn anew. Answers true once per wish.
bool onPLCRead(void* part, void* data);

/// Sets `svg` to the part's picture.
bool onFillPartShowAttr(void* part, std::string& svg, void* data);
