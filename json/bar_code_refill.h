// Fills the JSON reader's map of barcodes in place when the same cuts are asked for again.
#pragma once

#include <map>
#include <string>

#include "model/job_records.h"

/// Bar number to piece number to barcode.
using BarCodeMap = std::map<std::string, std::map<std::string, std::string>>;

/// Reuses the map's nodes, so that nothing is allocated. Works only if the map already has exactly
/// the job's bar and piece numbers, each once; otherwise the map has to be built from nothing.
class BarCodeRefill {
 public:
  /// Empties the map; the bars added fill it.
  explicit BarCodeRefill(BarCodeMap& map);

  /// Fills in the pieces of the next bar. Returns false when the map cannot be filled in place:
  /// its content is then unspecified.
  bool tryAdd(const BAR_T& bar);

 private:
  BarCodeMap& map_;
  BarCodeMap left_;  ///< what the map had for bars that are still to come
};
