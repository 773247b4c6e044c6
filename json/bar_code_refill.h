// Fills the JSON reader's map of barcodes in place when the same cuts are asked for again.
#pragma once

#include <map>
#include <string>

#include "model/job_records.h"

/// Bar number to piece number to barcode.
using BarCodeMap = std::map<std::string, std::map<std::string, std::string>>;

/// Fills a map anew bar by bar, without allocating, for as long as it had the job's keys before and
/// no two pieces have the same numbers. Otherwise the map has to be built from nothing.
class BarCodeRefill {
 public:
  /// Empties the map; the bars added fill it.
  explicit BarCodeRefill(BarCodeMap& map);

  /// Fills in the pieces of the job's next bar. False: this map cannot be filled in place.
  bool add(const BAR_T& bar);

 private:
  BarCodeMap& map_;
  BarCodeMap left_;  ///< what the map had for bars that are still to come
};
